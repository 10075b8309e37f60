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

}  // namespace velmora
