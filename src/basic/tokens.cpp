#include "basic/tokens.h"

namespace velmora {

Tokens::Tokens(const std::string& row) {
    if (row.empty()) return;
    size_t start = 0;
    while (true) {
        const size_t blank = row.find(' ', start);
        if (static_cast<int>(items_.size()) == kMaxTokens) {
            toolong_ = true;
            return;
        }
        items_.push_back(row.substr(start, blank == std::string::npos ? std::string::npos : blank - start));
        if (blank == std::string::npos) return;
        start = blank + 1;
    }
}

const std::string& Tokens::operator[](int i) const {
    static const std::string none;
    return i >= 1 && i <= count() ? items_[static_cast<size_t>(i - 1)] : none;
}

std::string Tokens::from(int i) const {
    std::string text;
    for (int k = i; k <= count(); ++k) {
        if (k > i) text += ' ';
        text += (*this)[k];
    }
    return text;
}

std::string trimblanks(const std::string& text) {
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string nextargument(std::string& list) {
    std::string argument;
    const size_t closing = list.starts_with("\"") ? list.find('"', 1) : std::string::npos;
    if (closing != std::string::npos) {
        argument = list.substr(0, closing + 1);
        list = trimblanks(list.substr(closing + 1));
        if (list.starts_with(",")) list = trimblanks(list.substr(1));
        return argument;
    }
    const size_t comma = list.find(',');
    if (comma == std::string::npos) {
        argument = list;
        list.clear();
        return argument;
    }
    argument = list.substr(0, comma);
    list = trimblanks(list.substr(comma + 1));
    return argument;
}

}  // namespace velmora
