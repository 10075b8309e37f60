#pragma once
// Line cleaning and the small text helpers that every stage of the assembler shares.

#include <string>
#include <string_view>

#include "core/textcase.h"

namespace velmora {

std::string asmtrim(std::string_view text);

// Cuts at the first ";" (quotes give no protection), turns tabs into blanks and removes
// blanks at the right end.
std::string asmstripline(std::string_view text);

// Replaces every run of blanks with one blank.
std::string asmsqueezeline(std::string_view text);

// A source line reduced to its statement: stripped, squeezed, trimmed and upper-cased.
std::string asmcleanline(std::string_view text);

// Replaces the first occurrence of `lowerneedle` found in the lower-cased `text` with
// `replacement` (of the same length); `text` unchanged when there is none.
std::string asmreplacefirst(std::string_view text, std::string_view lowerneedle, std::string_view replacement);

}  // namespace velmora
