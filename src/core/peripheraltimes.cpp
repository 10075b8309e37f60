#include "core/peripheraltimes.h"

#include <array>

#include "core/numbers.h"

namespace velmora {

namespace {

const std::array<PeripheralTime, 3> kTimes{{
    {"menuwritetime", "Change EEPROM Write Time", "EEPROM Write Time",
     "Enter new EEPROM write time\n[us - microseconds].", 3400, 50, 20000, true, &Machine::eepromwritetime},
    {"menuconversiontime", "Change A/D Conversion Time", "A/D Conversion Time",
     "Enter new A/D conversion time\n[us - microseconds].", 25, 10, 1000, false, &Machine::adconversiontime},
    {"menuuarttime", "Change UART Transmit/Receive Time", "UART Transmit/Receive Time",
     "Enter new UART transmit/receive time\n[us - microseconds].", 1000, 50, 100000, false, &Machine::uarttime},
}};

bool inrange(const PeripheralTime& time, int64_t value) { return value >= time.low && value <= time.high; }

std::string rangetext(int32_t low, int32_t high) {
    return "Allowed range " + std::to_string(low) + "-" + std::to_string(high) + ".";
}

bool blank(const std::string& text) { return text.find_first_not_of(" \t") == std::string::npos; }

}  // namespace

const PeripheralTime& eepromwritetime() { return kTimes[0]; }
const PeripheralTime& adconversiontime() { return kTimes[1]; }
const PeripheralTime& uarttime() { return kTimes[2]; }
std::span<const PeripheralTime> peripheraltimes() { return kTimes; }

std::string allowedrange(const PeripheralTime& time) { return rangetext(time.low, time.high); }

NumberAnswer asknumberinrange(Messenger& messenger, const AskNumber& ask, const std::string& prompt,
                              const std::string& current, int32_t low, int32_t high) {
    const std::optional<std::string> answer = ask(prompt, current);
    if (!answer || blank(*answer)) return {.value = std::nullopt, .cancelled = true};
    const int64_t value = lenientdecimal(*answer);
    if (value < low || value > high) {
        messenger.show(rangetext(low, high), MessageKind::Exclamation);
        return {};
    }
    return {.value = static_cast<int32_t>(value)};
}

void readperipheraltimes(Machine& m, SettingsAccess& settings) {
    for (const PeripheralTime& time : kTimes) {
        const int32_t stored = settings.getsettingdword(time.setting, time.defaultvalue);
        m.*time.value = static_cast<float>(inrange(time, stored) ? stored : time.defaultvalue);
    }
}

TimeChange changeperipheraltime(Machine& m, SettingsAccess& settings, Messenger& messenger,
                                const PeripheralTime& time, const AskNumber& ask) {
    if (time.refusedwhilerunning && m.simulationrunning) {
        messenger.show("Please stop the simulation first.", MessageKind::Exclamation);
        return TimeChange::Refused;
    }
    const NumberAnswer answer = asknumberinrange(
        messenger, ask, time.prompt, std::to_string(static_cast<int64_t>(m.*time.value)), time.low, time.high);
    if (!answer.value) return answer.cancelled ? TimeChange::Cancelled : TimeChange::OutOfRange;
    settings.putsettingdword(time.setting, *answer.value);
    m.*time.value = static_cast<float>(*answer.value);
    return TimeChange::Changed;
}

}  // namespace velmora
