#pragma once
// What the assembler editors colour: the keyword list (mnemonics, directives, register
// names and the selected model's names) and the split of a line into coloured pieces.

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace velmora {

// Upper-case words the editors colour as keywords.
using AsmKeywords = std::unordered_set<std::string>;

// The mnemonics in alphabetical order, then .ORG, .EQU, .DB, .DW and .END.
std::vector<std::string> asmkeywordlist();

// The list above plus, from the model's definition lines, each ".EQU name = value" name (a
// port "PORTx" also giving its pin names "Px0" to "Px7"), R0 to R31 and XL to ZH.
AsmKeywords asmeditorkeywords(const std::vector<std::string>& definitionlines);

enum class AsmSpanKind { Keyword, Label, Comment };

struct AsmSpan {
    size_t start = 0;
    size_t length = 0;
    AsmSpanKind kind = AsmSpanKind::Keyword;
};

// The coloured pieces of one line, left to right: a label standing in the first column, the
// keywords, and the comment from the first ";".
std::vector<AsmSpan> asmsyntaxspans(std::string_view line, const AsmKeywords& keywords);

}  // namespace velmora
