#pragma once
// The options the main window reads at start, in the order of the table of names, and
// keeps while it runs: the check marks of the Options menu are these values.

#include <cstdint>
#include <map>
#include <string>

#include "core/events.h"
#include "core/machine.h"

namespace velmora {

// Milliseconds of the Ultimate rate's refresh timer, as its prompt allows them.
inline constexpr int32_t kUltimateTimerLow = 1, kUltimateTimerHigh = 2000;

struct ShellOptions {
    std::string lastpath;
    std::string clockfrequency;  // as the user typed it
    int32_t rate = 4;
    int32_t ultimatetimer = 500;
    int32_t unprogrammedbit = 1;
    std::map<std::string, bool> switches;  // by setting name

    bool on(const std::string& setting) const;
};

// Reads "Last Path" to "Save Always On Top", each once and in order; a missing value is
// created with its default. The peripheral times are read here for that order only: the
// machine takes them when a model is loaded. "Last Path" defaults to `programdirectory`.
ShellOptions readshelloptions(SettingsAccess& settings, const std::string& programdirectory);

// The clock in MHz of a stored frequency text; 4 for text that is no positive number.
float clockmhz(const std::string& text);
// A frequency the user may type: digits with at most one point, above zero.
bool validclocktext(const std::string& text);

// Puts the options the core consults into the machine.
void applyoptions(Machine& m, const ShellOptions& options);

}  // namespace velmora
