#pragma once
// What the assembler editors colour: the keyword list (mnemonics, directives, register
// names and the selected model's names) and the split of a line into coloured pieces.

#include <string>
#include <string_view>
#include <vector>

#include "shell/sourcewindowsyntax.h"

namespace velmora {

using AsmKeywords = SourceKeywords;
using AsmSpanKind = SourceSpanKind;
using AsmSpan = SourceSpan;

// The mnemonics in alphabetical order, then .ORG, .EQU, .DB, .DW and .END.
std::vector<std::string> asmkeywordlist();

// The list above plus, from the model's definition lines, each ".EQU name = value" name (a
// port "PORTx" also giving its pin names "Px0" to "Px7"), R0 to R31 and XL to ZH.
AsmKeywords asmeditorkeywords(const std::vector<std::string>& definitionlines);

// The coloured pieces of one line, left to right: a label standing in the first column, the
// keywords, and the comment from the first ";".
std::vector<AsmSpan> asmsyntaxspans(std::string_view line, const AsmKeywords& keywords);

}  // namespace velmora
