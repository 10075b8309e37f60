#pragma once
// Which windows open by themselves at start: their flags, their order, and how closing the
// program remembers them.

#include <string>
#include <vector>

#include "core/events.h"
#include "core/machine.h"
#include "shell/windowregistry.h"

namespace velmora {

// The model or program a window needs before it opens by itself.
enum class AutoStartNeed { Nothing, Eeprom, Program, Uart };

struct AutoStartWindow {
    int window;  // the Microcontroller View is kMicrocontrollerViewFlag
    const char* flag;
    AutoStartNeed need;
};

// Stands for whichever package drawing the model needs.
inline constexpr int kMicrocontrollerViewFlag = -1;

// In the order they open.
const std::vector<AutoStartWindow>& autostartwindows();

bool autostartneedmet(AutoStartNeed need, const Machine& m);

// Closing with "Auto Start Remember" on: the open windows become the flags, and the loaded
// program's path the file to load next time.
void rememberautostart(SettingsAccess& settings, const WindowRegistry& registry, const std::string& programpath);

}  // namespace velmora
