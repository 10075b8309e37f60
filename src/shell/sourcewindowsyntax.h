#pragma once
// What the source editors colour, common to both languages: the keyword set and the coloured
// pieces a line splits into. Each language has its own splitter (asmsyntax, basiccompilersyntax).

#include <string>
#include <unordered_set>
#include <vector>

namespace velmora {

// Upper-case words an editor colours as keywords; the text is matched in any letter case.
using SourceKeywords = std::unordered_set<std::string>;

// Keywords of a list, upper-cased.
SourceKeywords keywordset(const std::vector<std::string>& words);

enum class SourceSpanKind { Keyword, Label, Comment, String, Asm };

struct SourceSpan {
    size_t start = 0;
    size_t length = 0;
    SourceSpanKind kind = SourceSpanKind::Keyword;
};

}  // namespace velmora
