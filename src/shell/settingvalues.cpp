#include "shell/settingvalues.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "core/numbers.h"

namespace velmora {

int32_t settinginteger(std::string_view text) {
    constexpr int64_t kLow = std::numeric_limits<int32_t>::min();
    constexpr int64_t kHigh = std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(std::clamp(lenientdecimal(text), kLow, kHigh));
}

double settingreal(std::string_view text) {
    const size_t start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos) return 0;
    text.remove_prefix(start);
    // from_chars takes a minus sign but no plus sign.
    const bool plus = !text.empty() && text[0] == '+';
    if (plus) text.remove_prefix(1);
    if (!text.empty() && text[0] == '-' && plus) return 0;
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || !std::isfinite(value)) return 0;
    return value;
}

std::string settingtext(int32_t value) { return std::to_string(value); }

std::string settingtext(double value) {
    if (!std::isfinite(value)) return "0";
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

int32_t rangednumber(std::string_view text, int32_t defaultvalue, NumberRange range) {
    const int64_t value = lenientdecimal(text);
    return value >= range.low && value <= range.high ? static_cast<int32_t>(value) : defaultvalue;
}

int32_t readnumber(SettingsAccess& settings, std::string_view name, int32_t defaultvalue, NumberRange range) {
    return rangednumber(settings.getsetting(std::string(name), settingtext(defaultvalue)), defaultvalue, range);
}

double readreal(SettingsAccess& settings, std::string_view name, double defaultvalue, RealRange range) {
    const double value = settingreal(settings.getsetting(std::string(name), settingtext(defaultvalue)));
    return value >= range.low && value <= range.high ? value : defaultvalue;
}

}  // namespace velmora
