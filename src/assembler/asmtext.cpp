#include "assembler/asmtext.h"

#include <algorithm>
#include <cctype>

namespace velmora {

std::string asmtrim(std::string_view text) {
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    const size_t last = text.find_last_not_of(' ');
    return std::string(text.substr(first, last - first + 1));
}

std::string asmstripline(std::string_view text) {
    std::string line(text.substr(0, text.find(';')));
    std::replace(line.begin(), line.end(), '\t', ' ');
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

std::string asmsqueezeline(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (char c : text)
        if (c != ' ' || line.empty() || line.back() != ' ') line.push_back(c);
    return line;
}

std::string asmcleanline(std::string_view text) {
    return uppercase(asmtrim(asmsqueezeline(asmstripline(text))));
}

std::string asmreplacefirst(std::string_view text, std::string_view lowerneedle, std::string_view replacement) {
    std::string line(text);
    const size_t at = lowercase(text).find(lowerneedle);
    if (at != std::string::npos) line.replace(at, lowerneedle.size(), replacement);
    return line;
}

}  // namespace velmora
