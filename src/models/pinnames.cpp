#include "models/pinnames.h"

#include <algorithm>
#include <cctype>
#include <vector>

namespace velmora {

namespace {

// "PREFIX" followed by a decimal number from `low` to `high`, with no leading zeros.
bool numbered(const std::string& token, const std::string& prefix, int low, int high) {
    if (token.size() <= prefix.size() || token.compare(0, prefix.size(), prefix) != 0) return false;
    const std::string digits = token.substr(prefix.size());
    if (digits.size() > 2 || !std::all_of(digits.begin(), digits.end(), [](char c) { return std::isdigit(static_cast<unsigned char>(c)); }))
        return false;
    if (digits.size() == 2 && digits[0] == '0') return false;
    const int value = std::stoi(digits);
    return value >= low && value <= high;
}

bool oneof(const std::string& token, std::initializer_list<const char*> names) {
    return std::any_of(names.begin(), names.end(), [&](const char* n) { return token == n; });
}

}  // namespace

bool ingroup(PinFunctionGroup group, const std::string& token) {
    switch (group) {
    case PinFunctionGroup::Pcint: return numbered(token, "PCINT", 0, 35);
    case PinFunctionGroup::Adc: return numbered(token, "ADC", 0, 15);
    case PinFunctionGroup::Ain: return numbered(token, "AIN", 0, 5);
    case PinFunctionGroup::ExternalSram:
        return numbered(token, "AD", 0, 7) || numbered(token, "A", 8, 15) || oneof(token, {"ALE", "\\RD", "\\WR"});
    case PinFunctionGroup::Interrupt: return numbered(token, "INT", 0, 7);
    case PinFunctionGroup::Usart: return oneof(token, {"RXD", "TXD", "RXD0", "TXD0", "RXD1", "TXD1"});
    case PinFunctionGroup::Spi: return oneof(token, {"MOSI", "MISO", "SCK", "\\SS"});
    }
    return false;
}

std::string pindisplayname(const std::string& caption, bool secondhalf, const PinFilters& filters) {
    std::string text;
    for (char c : caption) {
        if (c == '(' || c == ')') continue;
        text += c == ' ' ? '/' : c;
    }
    // Split on "/" and keep the tokens that no ticked group claims.
    std::vector<std::string> kept;
    size_t start = 0;
    while (start <= text.size()) {
        const size_t end = std::min(text.find('/', start), text.size());
        const std::string token = text.substr(start, end - start);
        bool removed = false;
        for (int g = 0; g < kPinFunctionGroups && !removed; ++g)
            removed = filters[g] && ingroup(static_cast<PinFunctionGroup>(g), token);
        if (!removed) kept.push_back(token);
        start = end + 1;
    }
    std::string name;
    for (size_t i = 0; i < kept.size(); ++i) name += (i ? "/" : "") + kept[i];
    return secondhalf ? "_" + name : name + "_";
}

}  // namespace velmora
