#include "core/numbers.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <limits>
#include <string>

#include "core/textcase.h"

namespace velmora {

namespace {

// A radix notation: the text starts with `prefix`, ends with `suffix`, and the digits between
// are read in `base`. The table order is the order in which notations are tried: the first
// whose frame fits decides, even when its digits then fail.
struct Notation {
    std::string_view prefix;
    std::string_view suffix;
    int base;
};

constexpr std::array<Notation, 11> kNotations{{
    {"H'", "'", 16},
    {"0X", "", 16},
    {"$", "", 16},
    {"", "H", 16},
    {"B'", "'", 2},
    {"%", "", 2},
    {"0B", "", 2},
    {"", "B", 2},
    {"D'", "'", 10},
    {".", "", 10},
    {"", "", 10},
}};

// How many digits each base may have, and the largest decimal value.
struct Limits {
    int hexdigits;
    int bindigits;
    int decdigits;
    uint64_t decmax;
};

constexpr Limits kLimits16{4, 16, 5, 65535};
constexpr Limits kLimits32{8, 32, 10, 4294967295u};

bool fits(std::string_view upper, const Notation& n) {
    return upper.size() >= n.prefix.size() + n.suffix.size() && upper.starts_with(n.prefix) &&
           upper.ends_with(n.suffix);
}

int digitvalue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return 99;
}

// Reads the digits of one notation, or returns -1.
int64_t readdigits(std::string_view digits, int base, const Limits& limits) {
    if (digits.empty()) return -1;
    // Leading zeros do not count against the digit limit; one digit always stays.
    const size_t firstsignificant = std::min(digits.find_first_not_of('0'), digits.size() - 1);
    digits.remove_prefix(firstsignificant);
    const int maxdigits = base == 16 ? limits.hexdigits : base == 2 ? limits.bindigits : limits.decdigits;
    if (static_cast<int>(digits.size()) > maxdigits) return -1;
    uint64_t value = 0;
    for (char c : digits) {
        const int d = digitvalue(c);
        if (d >= base) return -1;
        value = value * static_cast<uint64_t>(base) + static_cast<uint64_t>(d);
    }
    if (base == 10 && value > limits.decmax) return -1;
    return static_cast<int64_t>(value);
}

int64_t readnotations(std::string_view upper, const Limits& limits) {
    for (const Notation& n : kNotations) {
        if (!fits(upper, n)) continue;
        return readdigits(upper.substr(n.prefix.size(), upper.size() - n.prefix.size() - n.suffix.size()),
                          n.base, limits);
    }
    return -1;
}

// 'c', A'c' and "c": exactly one character between the quotes; -2 when no form fits.
int readcharacter(std::string_view text, std::string_view upper) {
    auto quoted = [&](std::string_view prefix, char quote) {
        return upper.size() >= prefix.size() + 1 && upper.starts_with(prefix) && upper.back() == quote;
    };
    size_t start = 0;
    if (quoted("'", '\''))
        start = 1;
    else if (quoted("A'", '\''))
        start = 2;
    else if (quoted("\"", '"'))
        start = 1;
    else
        return -2;
    if (text.size() != start + 2) return kNotANumber16;
    return static_cast<unsigned char>(text[start]);
}

bool oneof(std::string_view upper, std::initializer_list<std::string_view> texts) {
    return std::find(texts.begin(), texts.end(), upper) != texts.end();
}

}  // namespace

int parsenumber16(std::string_view text) {
    const std::string upper = uppercase(text);
    if (oneof(upper, {"", ".", "B", "H", "$", "%", "0B", "0X", "B''", "D''", "H''", "A''", "''", "\"\""}))
        return kNotANumber16;
    const int character = readcharacter(text, upper);
    if (character != -2) return character;
    const int64_t value = readnotations(upper, kLimits16);
    return value < 0 ? kNotANumber16 : static_cast<int>(value);
}

double parsenumber32(std::string_view text) {
    const int small = parsenumber16(text);
    if (small < kNotANumber16) return small;
    const std::string upper = uppercase(text);
    if (oneof(upper, {"", "$", "%", "0B", "0X", "B", "H", "B''", "D''", "H''"})) return kNotANumber32;
    const int64_t value = readnotations(upper, kLimits32);
    return value < 0 ? kNotANumber32 : static_cast<double>(value);
}

int hexfield(std::string_view text, int digits) {
    if (static_cast<int>(text.size()) != digits) return -1;
    int value = 0;
    for (char c : text) {
        const int d = digitvalue(c);
        if (d > 15) return -1;
        value = value * 16 + d;
    }
    return value;
}

int64_t lenientdecimal(std::string_view text) {
    size_t i = text.find_first_not_of(" \t");
    if (i == std::string_view::npos) return 0;
    bool negative = false;
    if (text[i] == '+' || text[i] == '-') negative = text[i++] == '-';
    constexpr int64_t kMax = std::numeric_limits<int64_t>::max();
    int64_t value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        const int d = text[i] - '0';
        value = value > (kMax - d) / 10 ? kMax : value * 10 + d;
    }
    return negative ? -value : value;
}

}  // namespace velmora
