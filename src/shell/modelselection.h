#pragma once
// The Select Microcontroller window: its refusals, its list of models with the present one
// marked, and what choosing does.

#include <optional>
#include <string>
#include <vector>

#include "core/events.h"
#include "shell/simulation.h"
#include "shell/windowregistry.h"

namespace velmora {

inline constexpr char kSelectTitle[] = "Select Microcontroller";

struct ModelOption {
    std::string caption;  // name and description
    bool current = false;
};

class ModelSelection {
public:
    ModelSelection(Simulation& sim, SettingsAccess& settings, WindowRegistry& registry)
        : sim_(sim), settings_(settings), registry_(registry) {}

    // The first refusal that keeps the window shut, in order of checking.
    std::optional<std::string> refusal() const;
    // Closes the memory and view windows before the window opens.
    void closedependentwindows();
    std::vector<ModelOption> options() const;

    // The window closed with Select on `index` (from 1), or with Cancel (nothing). False when
    // a model file could not be loaded: `sim.error()` says why, and the program ends.
    bool finish(std::optional<int> index);

private:
    Simulation& sim_;
    SettingsAccess& settings_;
    WindowRegistry& registry_;
};

}  // namespace velmora
