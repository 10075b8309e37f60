#pragma once
// Brings one BASIC source line to the form the compiler reads: single blanks, keywords in
// their spelling, other names in lower case, blanks around operators and behind commas.
// Strings and comments stay as typed; the text behind "ASM:" only has its blanks folded,
// since it is assembler, not BASIC.

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velmora {

class KeywordSpelling {
public:
    explicit KeywordSpelling(const std::vector<std::string>& words);
    // The list's spelling of `word`, or null when it is no keyword.
    const std::string* find(std::string_view word) const;

private:
    std::unordered_map<std::string, std::string> byupper_;
};

std::string cleanbasicline(std::string_view row, const KeywordSpelling& keywords);

}  // namespace velmora
