#pragma once
// A row cut at single blanks. Commas stay on the token before them, so an argument list
// reads as "a," "b," "c".

#include <string>
#include <vector>

namespace velmora {

inline constexpr int kMaxTokens = 300;

class Tokens {
public:
    explicit Tokens(const std::string& row);
    // Token i from 1; empty beyond the last.
    const std::string& operator[](int i) const;
    int count() const { return static_cast<int>(items_.size()); }
    bool toolong() const { return toolong_; }
    // Tokens from i on, joined again by single blanks.
    std::string from(int i) const;

private:
    std::vector<std::string> items_;
    bool toolong_ = false;
};

// Takes the first argument off a list: a quoted text up to its closing quote, or the text
// up to the first comma; the list keeps the rest, trimmed.
std::string nextargument(std::string& list);

std::string trimblanks(const std::string& text);

}  // namespace velmora
