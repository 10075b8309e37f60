#pragma once
// "Get parameters from the BASIC program": the LCD wiring and type that the Define lines of a
// BASIC source give (LCD_DREG, LCD_DBIT, LCD_RSREG, LCD_RSBIT, LCD_EREG, LCD_EBIT, LCD_RWREG,
// LCD_RWBIT, LCD_BITS, LCD_LINES, LCD_CHARS).

#include <optional>
#include <string>
#include <string_view>

#include "devices/lcdconfig.h"

namespace velmora {

// The wiring replaced from the source's Define lines (defaults where a line is missing or its
// value is not a number); rows and characters only when they form one of the seven types.
LcdConfig lcdconfigfrombasic(std::string_view source, LcdConfig current);

// The same from a file; nothing when it cannot be read.
std::optional<LcdConfig> lcdconfigfrombasicfile(const std::string& path, LcdConfig current);

// The BASIC source beside a program: the same path with the extension "bas", when that file
// exists; "" otherwise.
std::string lcdbasicbeside(const std::string& programpath);

}  // namespace velmora
