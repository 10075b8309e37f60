#pragma once
// Figures shown to the user about simulated and wall time.

#include <cstdint>
#include <string>

namespace velmora {

// Cycles as microseconds at `mhz`: "1.00 µs" for 4 cycles at 4 MHz.
std::string timetext(uint64_t cycles, float mhz);
// The number inside timetext, as the settings store keeps it ("1.00" -> 1).
double timevalue(uint64_t cycles, float mhz);
// Shortest decimal form of a clock frequency: 4 -> "4", 7.3728 -> "7.3728".
std::string frequencytext(float mhz);
// The clock frequency display: digits as stored, "0" before a leading point, ".0" if no point, " MHz".
std::string getclockfrequency(const std::string& stored);
// Wall seconds as "S.HH"; the start may lie before midnight.
std::string elapsedtext(double start, double now);

}  // namespace velmora
