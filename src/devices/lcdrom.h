#pragma once
// The character generator of the LCD module: the published A00 ROM glyphs, read from the
// product data file "lcd/hd44780-a00.txt", and the rule that codes 0..15 show the user
// characters of CGRAM.

#include <array>
#include <cstdint>
#include <string>

namespace velmora {

// Eight rows of five dots, top row first; bit 4 of a row is its leftmost dot.
using LcdGlyph = std::array<uint8_t, 8>;

struct LcdCharRom {
    std::array<LcdGlyph, 256> glyphs{};  // blank where the ROM has no glyph
};

// Reads the ROM file: lines "XX: r0 r1 r2 r3 r4 r5 r6 r7" in hexadecimal, '#' starts a
// comment. Codes 0..15 belong to CGRAM and are refused. Returns false with a reason.
bool readlcdrom(const std::string& text, LcdCharRom& rom, std::string& error);
// The file under the data directory; false with a reason when missing or malformed.
bool loadlcdrom(const std::string& datadirectory, LcdCharRom& rom, std::string& error);

// Code 255 is the block that the blinking cursor shows.
inline constexpr int kLcdBlockCode = 255;

}  // namespace velmora
