#include "shell/shelloptions.h"

#include <charconv>

#include "shell/settingnames.h"
#include "shell/settingswitches.h"
#include "shell/settingvalues.h"

namespace velmora {

using namespace settingnames;

namespace {
// The on-off options among the start settings, in the order they are read.
constexpr const char* kSwitches[] = {kCompactView,          kInfiniteLoopStop,  kBasicProgramTracking,
                                     kShowConfirmations,    kShowMemoryUsage,   kPreserveInputStates,
                                     kUseVoltageForAnalogInputs, kAnalogSliderMode, kListIoFirst,
                                     kSaveAlwaysOnTop};
constexpr float kDefaultMhz = 4.0f;

// Independent of the C locale, which the windowing toolkit sets from the user's language.
double decimalvalue(const std::string& text) {
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

constexpr NumberRange kRateRange{1, 6};
constexpr NumberRange kUltimateTimerRange{kUltimateTimerLow, kUltimateTimerHigh};
constexpr NumberRange kUnprogrammedBitRange{0, 1};
}  // namespace

bool ShellOptions::on(const std::string& setting) const {
    const auto it = switches.find(setting);
    return it != switches.end() && it->second;
}

ShellOptions readshelloptions(SettingsAccess& settings, const std::string& programdirectory) {
    ShellOptions o;
    o.lastpath = settings.getsetting(kLastPath, programdirectory);
    o.switches[kSavePositions] = readswitch(settings, kSavePositions);
    o.clockfrequency = readsetting(settings, kClockFrequency);
    for (const char* name : {kEepromWriteTime, kAdConversionTime, kUartTime}) readsetting(settings, name);
    o.rate = readnumber(settings, kSimulationRate, kRateRange);
    o.ultimatetimer = readnumber(settings, kUltimateTimer, kUltimateTimerRange);
    o.unprogrammedbit = readnumber(settings, kUnprogrammedBitValue, kUnprogrammedBitRange);
    for (const char* name : kSwitches) o.switches[name] = readswitch(settings, name);
    if (!validclocktext(o.clockfrequency)) o.clockfrequency = std::string(1, '4');
    return o;
}

bool validclocktext(const std::string& text) {
    int digits = 0, points = 0;
    for (char c : text) {
        if (c >= '0' && c <= '9')
            ++digits;
        else if (c == '.')
            ++points;
        else
            return false;
    }
    return digits > 0 && points <= 1 && decimalvalue(text) > 0;
}

float clockmhz(const std::string& text) {
    return validclocktext(text) ? static_cast<float>(decimalvalue(text)) : kDefaultMhz;
}

void applyoptions(Machine& m, const ShellOptions& options) {
    m.clockfrequency = clockmhz(options.clockfrequency);
    m.infiniteloopstop = options.on(kInfiniteLoopStop);
    m.preserveinputstates = options.on(kPreserveInputStates);
}

}  // namespace velmora
