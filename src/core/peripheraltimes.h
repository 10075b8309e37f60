#pragma once
// The settable times of the timed peripherals: each one's setting, default, allowed range
// and "Change ..." command, GUI-free: the prompt is put by whoever calls.

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>

#include "core/events.h"
#include "core/machine.h"

namespace velmora {

struct PeripheralTime {
    const char* command;  // menu control
    const char* caption;
    const char* setting;
    const char* prompt;
    int32_t defaultvalue;
    int32_t low, high;
    bool refusedwhilerunning;
    float Machine::*value;  // microseconds
};

const PeripheralTime& eepromwritetime();
const PeripheralTime& adconversiontime();
const PeripheralTime& uarttime();
std::span<const PeripheralTime> peripheraltimes();

// "Allowed range 50-20000."
std::string allowedrange(const PeripheralTime& time);

// Puts every stored time into the machine; a missing value is written with its default, and
// a stored value outside its range counts as the default.
void readperipheraltimes(Machine& m, SettingsAccess& settings);

// Asks for a number with a prompt and the current value; nothing when the user cancelled.
using AskNumber = std::function<std::optional<std::string>(const std::string& prompt, const std::string& current)>;

// A whole number asked for: no value when the answer was cancelled or blank, or when it was
// outside [low, high], which has then been told with the allowed range.
struct NumberAnswer {
    std::optional<int32_t> value;
    bool cancelled = false;
};
NumberAnswer asknumberinrange(Messenger& messenger, const AskNumber& ask, const std::string& prompt,
                              const std::string& current, int32_t low, int32_t high);

enum class TimeChange { Changed, Refused, Cancelled, OutOfRange };

// The "Change ..." command: refused while running where the command says so, then asks;
// a refusal or an answer out of range is told through `messenger`, a good answer is stored
// and applied.
TimeChange changeperipheraltime(Machine& m, SettingsAccess& settings, Messenger& messenger,
                                const PeripheralTime& time, const AskNumber& ask);

}  // namespace velmora
