#pragma once
// The commands of the Options menu that change a setting: the on-off switches, the
// "Change ..." prompts with their ranges, the unprogrammed value and the register order.

#include <functional>
#include <string>
#include <vector>

#include "core/events.h"
#include "shell/shelloptions.h"
#include "shell/simulation.h"
#include "shell/userinput.h"
#include "shell/windowregistry.h"

namespace velmora {

inline constexpr char kCloseAlternativeFirst[] = "Please close Alternative Registers Viewer window first.";

// A "Change ..." command: a number asked for, kept only when inside its range.
struct ChangeCommandDef {
    const char* control;
    const char* setting;
    const char* prompt;
    int32_t low;
    int32_t high;
    int32_t ShellOptions::*value;
};
const std::vector<ChangeCommandDef>& changecommands();
const ChangeCommandDef* findchangecommand(const std::string& control);
// "Allowed range 50-20000."
std::string allowedrangetext(const ChangeCommandDef& command);

inline constexpr char kClockPrompt[] = "Enter new clock frequency [MHz].";

class OptionCommands {
public:
    OptionCommands(Simulation& sim, ShellOptions& options, SettingsAccess& settings, Messenger& messenger,
                   UserInput& input, WindowRegistry& registry);

    // Flips an on-off option by its menu control; false for a control that is no switch.
    bool toggle(const std::string& control);
    void menuclock();
    void change(const ChangeCommandDef& command);
    void menuunprogrammed();

    // Told when something the windows show has changed.
    std::function<void()> registerorderchanged;  // the named-register table was reversed
    std::function<void()> clockchanged;
    std::function<void()> analogdisplaychanged;  // the voltage or slider option
    std::function<void()> timingchanged;         // a peripheral time

private:
    void menuiofirst();
    bool refusedwhilerunning();

    Simulation& sim_;
    ShellOptions& options_;
    SettingsAccess& settings_;
    Messenger& messenger_;
    UserInput& input_;
    WindowRegistry& registry_;
};

// Reverses the named registers in place, leaving the hardware stack levels last.
void reverseregisters(Machine& m);

}  // namespace velmora
