#pragma once
// What the BASIC editor colours: the keyword set (the language's words, the Define names and
// the selected model's register and bit names) and the split of a line into coloured pieces.

#include <string_view>
#include <vector>

#include "basic/basicmodel.h"
#include "shell/sourcewindowsyntax.h"

namespace velmora {

SourceKeywords basiceditorkeywords(const BasicModel& model);

// The coloured pieces of one line, left to right: keywords, double-quoted strings, the
// comment from an apostrophe outside a string on, and the assembler text of an "ASM:" row.
std::vector<SourceSpan> basicsyntaxspans(std::string_view line, const SourceKeywords& keywords);

}  // namespace velmora
