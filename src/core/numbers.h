#pragma once
// The one reader of number notations, shared by the assembler, the BASIC compiler, the
// dialogs and the model loader. Unreadable text gives a sentinel, never an error.

#include <cstdint>
#include <string_view>

namespace velmora {

// "Not a number" markers of the two notation readers.
inline constexpr int kNotANumber16 = 100000;
inline constexpr double kNotANumber32 = -1;

// A number or character literal from 0 to 65535 ($ff, 0xff, ffH, H'ff', %101, 0b101, 101B,
// B'101', D'99', .99, 99, 'c', A'c', "c"), or kNotANumber16.
int parsenumber16(std::string_view text);

// A number of up to 32 bits in the same notations (no character forms), or kNotANumber32.
double parsenumber32(std::string_view text);

// Exactly `digits` upper-case hexadecimal digits, or -1: the digit reader of the image and
// model files, where a lower-case digit is no digit.
int hexfield(std::string_view text, int digits);

// Lenient decimal conversion: leading blanks, an optional sign and the digits up to the first
// character that does not fit; 0 when there are none. Saturates instead of overflowing.
int64_t lenientdecimal(std::string_view text);

}  // namespace velmora
