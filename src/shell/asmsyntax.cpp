#include "shell/asmsyntax.h"

#include <algorithm>
#include <cctype>

#include "assembler/asminstructions.h"
#include "assembler/asmtext.h"

namespace velmora {

namespace {

bool wordchar(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '.'; }
bool labelstart(char c) { return std::isalpha(static_cast<unsigned char>(c)) || c == '_'; }

// "NAME" of a cleaned ".EQU NAME = VALUE" line, or "".
std::string equname(const std::string& line) {
    const std::string clean = asmcleanline(line);
    if (!clean.starts_with(".EQU ")) return {};
    const std::string rest = clean.substr(5);
    return asmtrim(rest.substr(0, rest.find('=')));
}

}  // namespace

std::vector<std::string> asmkeywordlist() {
    std::vector<std::string> words;
    for (const AsmInstruction& instruction : asminstructiontable()) words.emplace_back(instruction.mnemonic);
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
    for (const char* directive : {".ORG", ".EQU", ".DB", ".DW", ".END"}) words.emplace_back(directive);
    return words;
}

AsmKeywords asmeditorkeywords(const std::vector<std::string>& definitionlines) {
    const std::vector<std::string> list = asmkeywordlist();
    AsmKeywords words(list.begin(), list.end());
    for (const std::string& line : definitionlines) {
        const std::string name = equname(line);
        if (name.empty()) continue;
        words.insert(name);
        if (name.size() == 5 && name.starts_with("PORT"))
            for (char bit = '0'; bit <= '7'; ++bit) words.insert(std::string("P") + name[4] + bit);
    }
    for (int r = 0; r < 32; ++r) words.insert("R" + std::to_string(r));
    for (const char* pointer : {"XL", "XH", "YL", "YH", "ZL", "ZH"}) words.insert(pointer);
    return words;
}

std::vector<AsmSpan> asmsyntaxspans(std::string_view line, const AsmKeywords& keywords) {
    std::vector<AsmSpan> spans;
    const size_t comment = std::min(line.find(';'), line.size());
    size_t at = 0;
    if (comment > 0 && labelstart(line[0])) {
        while (at < comment && line[at] != ' ' && line[at] != '\t') ++at;
        spans.push_back({0, at, AsmSpanKind::Label});
    }
    while (at < comment) {
        if (!wordchar(line[at])) {
            ++at;
            continue;
        }
        const size_t start = at;
        while (at < comment && wordchar(line[at])) ++at;
        if (keywords.count(uppercase(line.substr(start, at - start))))
            spans.push_back({start, at - start, AsmSpanKind::Keyword});
    }
    if (comment < line.size()) spans.push_back({comment, line.size() - comment, AsmSpanKind::Comment});
    return spans;
}

}  // namespace velmora
