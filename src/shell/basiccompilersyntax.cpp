#include "shell/basiccompilersyntax.h"

#include <cctype>

#include "basic/basiccompile.h"
#include "core/textcase.h"

namespace velmora {

namespace {

bool wordchar(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

// Where the comment of a line begins: its first apostrophe outside a string; the length when none.
size_t commentstart(std::string_view line) {
    bool instring = false;
    for (size_t i = 0; i < line.size(); ++i) {
        if (line[i] == '"') instring = !instring;
        if (line[i] == '\'' && !instring) return i;
    }
    return line.size();
}

void keywordsandstrings(std::string_view line, size_t from, size_t end, const SourceKeywords& keywords,
                        std::vector<SourceSpan>& spans) {
    size_t at = from;
    while (at < end) {
        if (line[at] == '"') {
            const size_t close = line.find('"', at + 1);
            const size_t stop = close == std::string_view::npos || close >= end ? end : close + 1;
            spans.push_back({at, stop - at, SourceSpanKind::String});
            at = stop;
        } else if (wordchar(line[at])) {
            const size_t start = at;
            while (at < end && wordchar(line[at])) ++at;
            if (keywords.count(uppercase(line.substr(start, at - start))))
                spans.push_back({start, at - start, SourceSpanKind::Keyword});
        } else {
            ++at;
        }
    }
}

}  // namespace

SourceKeywords basiceditorkeywords(const BasicModel& model) { return keywordset(basickeywordsfor(model)); }

std::vector<SourceSpan> basicsyntaxspans(std::string_view line, const SourceKeywords& keywords) {
    std::vector<SourceSpan> spans;
    const size_t comment = commentstart(line);
    const size_t first = line.find_first_not_of(" \t");
    // "ASM:" needs its blank behind it to be an assembler row; the rest of it is assembler.
    if (first != std::string_view::npos && first + 5 <= comment && uppercase(line.substr(first, 5)) == "ASM: ") {
        spans.push_back({first, 4, SourceSpanKind::Keyword});
        spans.push_back({first + 4, comment - first - 4, SourceSpanKind::Asm});
    } else {
        keywordsandstrings(line, 0, comment, keywords, spans);
    }
    if (comment < line.size()) spans.push_back({comment, line.size() - comment, SourceSpanKind::Comment});
    return spans;
}

}  // namespace velmora
