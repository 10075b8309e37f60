#pragma once
// Start-up and shut-down of the desktop program, step by step in their fixed order. The
// window side of each step (theme, placing, yielding, ending) goes through StartupHost.

#include <array>
#include <functional>
#include <string>

#include "shell/mainwindowmodel.h"
#include "shell/themes.h"
#include "shell/windowplacement.h"

namespace velmora {

class StartupHost {
public:
    virtual ~StartupHost() = default;
    virtual bool otherinstance() = 0;
    virtual void applytheme(const Theme& theme) = 0;
    // Nothing: centre the window on the screen.
    virtual void placewindow(std::optional<PixelPoint> place) = 0;
    virtual void yield() = 0;
    // A message after which the program ends.
    virtual void fatal(const std::string& message) = 0;
    // Shut-down: the window leaves the minimized state, so its position is true.
    virtual void restorewindow() = 0;
    virtual PixelPoint windowposition() = 0;
};

inline constexpr int kExternalModuleSlots = 5;

// The external modules' side of start and end; a member left empty does nothing.
struct ModuleHooks {
    std::function<void()> clear;  // names and objects emptied
    // The five "External Module N" values; "OFF" marks an empty slot.
    std::function<void(const std::array<std::string, kExternalModuleSlots>&)> kreirajobjekte;
    std::function<void()> objectterm;
};

// False when the program must end: another instance runs, or no model could be loaded.
bool runstartup(MainWindowModel& model, StartupHost& host, const ModuleHooks& modules = {});

// The automatic opening of files and windows, last step of the start.
void runautostart(MainWindowModel& model, StartupHost& host);

void runshutdown(MainWindowModel& model, StartupHost& host, const ModuleHooks& modules = {});

}  // namespace velmora
