#pragma once
// The Select Microcontroller window: one option per model, "Select" and "Cancel".

#include <optional>
#include <vector>

#include "shell/modelselection.h"

class QWidget;

namespace velmora {

// The index (from 1) of the model chosen with Select, or nothing for Cancel.
std::optional<int> choosemodel(const std::vector<ModelOption>& options, QWidget* parent);

}  // namespace velmora
