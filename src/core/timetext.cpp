#include "core/timetext.h"

#include <cmath>
#include <cstdio>

namespace velmora {

namespace {
int64_t hundredths(uint64_t cycles, float mhz) {
    if (mhz <= 0) return 0;
    const double v = static_cast<double>(cycles) * 100.0 / static_cast<double>(mhz);
    // Large counts are truncated; below that halves go to the even neighbour.
    return cycles >= 10000000ULL ? static_cast<int64_t>(std::floor(v)) : static_cast<int64_t>(std::nearbyint(v));
}
}  // namespace

std::string timetext(uint64_t cycles, float mhz) {
    std::string digits = std::to_string(hundredths(cycles, mhz));
    if (digits.size() < 3) digits.insert(0, 3 - digits.size(), '0');
    digits.insert(digits.size() - 2, ".");
    return digits + " \xC2\xB5s";
}

double timevalue(uint64_t cycles, float mhz) { return static_cast<double>(hundredths(cycles, mhz)) / 100.0; }

std::string frequencytext(float mhz) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.7g", static_cast<double>(mhz));
    return buffer;
}

std::string getclockfrequency(const std::string& stored) {
    std::string text = stored;
    if (!text.empty() && text[0] == '.') text.insert(0, "0");
    if (text.find('.') == std::string::npos) text += ".0";
    return text + " MHz";
}

std::string elapsedtext(double start, double now) {
    double elapsed = now - start;
    if (elapsed < 0) elapsed += 86400.0;
    const int64_t total = static_cast<int64_t>(std::floor(elapsed * 100.0));
    const int64_t seconds = total / 100, hund = total % 100;
    return std::to_string(seconds) + "." + (hund < 10 ? "0" : "") + std::to_string(hund);
}

}  // namespace velmora
