#pragma once
// The commands of the Options menu that change a setting: the on-off switches, the
// "Change ..." prompts with their ranges, the unprogrammed value and the register order.

#include <functional>
#include <string>
#include <vector>

#include "core/events.h"
#include "core/peripheraltimes.h"
#include "shell/shelloptions.h"
#include "shell/simulation.h"
#include "shell/userinput.h"
#include "shell/windowregistry.h"

namespace velmora {

inline constexpr char kCloseAlternativeFirst[] = "Please close Alternative Registers Viewer window first.";

// The "Change ..." commands: the three peripheral times and the Ultimate refresh interval.
bool ischangecommand(const std::string& control);
inline constexpr char kUltimateRefreshPrompt[] = "Enter new value for the Ultimate rate\nrefresh interval [ms].";

inline constexpr char kClockPrompt[] = "Enter new clock frequency [MHz].";

class OptionCommands {
public:
    OptionCommands(Simulation& sim, ShellOptions& options, SettingsAccess& settings, Messenger& messenger,
                   UserInput& input, WindowRegistry& registry);

    // Flips an on-off option by its menu control; false for a control that is no switch.
    bool toggle(const std::string& control);
    void menuclock();
    // Sets the clock as the main window's field shows it (a valid clock text), e.g. from a
    // compiled program's CLOCK_FREQUENCY.
    void setclock(const std::string& text);
    // A number asked for and kept only when inside its range; `control` is a change command.
    void change(const std::string& control);
    void menuunprogrammed();

    // Told when something the windows show has changed.
    std::function<void()> registerorderchanged;  // the named-register table was reversed
    std::function<void()> clockchanged;
    std::function<void()> analogdisplaychanged;  // the voltage or slider option
    std::function<void()> timingchanged;         // a peripheral time or the refresh interval

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
