#include "assembler/asmoperandprep.h"

#include <array>
#include <optional>

#include "assembler/asmtext.h"

namespace velmora {

namespace {

struct Rewrite {
    std::string_view text;
    int value;
};

constexpr std::array<Rewrite, 14> kWordPairs{{
    {"R25:R24", 0}, {"R24", 0},
    {"R27:R26", 1}, {"XH:XL", 1}, {"R26", 1}, {"XL", 1},
    {"R29:R28", 2}, {"YH:YL", 2}, {"R28", 2}, {"YL", 2},
    {"R31:R30", 3}, {"ZH:ZL", 3}, {"R30", 3}, {"ZL", 3},
}};

constexpr std::array<Rewrite, 9> kPointers{{
    {"X", 1}, {"X+", 2}, {"-X", 3},
    {"Y", 4}, {"Y+", 5}, {"-Y", 6},
    {"Z", 7}, {"Z+", 8}, {"-Z", 9},
}};

template <size_t N>
std::optional<int> findrewrite(const std::array<Rewrite, N>& table, std::string_view key) {
    for (const Rewrite& r : table)
        if (r.text == key) return r.value;
    return std::nullopt;
}

// "R1:R0" .. "R31:R30", "R0" .. "R30" (even registers) and XL, YL, ZL: the pair number.
std::optional<int> registerpair(std::string_view key) {
    if (key == "XL") return 13;
    if (key == "YL") return 14;
    if (key == "ZL") return 15;
    for (int low = 0; low < 32; low += 2) {
        const std::string lowname = "R" + std::to_string(low);
        if (key == lowname || key == "R" + std::to_string(low + 1) + ":" + lowname) return low / 2;
    }
    return std::nullopt;
}

}  // namespace

std::string asmoperandprep(std::string_view text, std::string_view mnemonic) {
    std::string key = uppercase(text);
    std::erase(key, ' ');

    std::optional<int> value;
    if (mnemonic == "ADIW" || mnemonic == "SBIW") {
        value = findrewrite(kWordPairs, key);
    } else if (mnemonic == "MOVW") {
        value = registerpair(key);
    } else if (mnemonic == "LD" || mnemonic == "ST" || mnemonic == "LPM" || mnemonic == "ELPM") {
        value = findrewrite(kPointers, key);
    } else if (mnemonic == "LDD" || mnemonic == "STD") {
        if (key.size() >= 3 && (key.starts_with("Y+") || key.starts_with("Z+"))) return key.substr(2);
    }
    return value ? std::to_string(*value) : std::string(text);
}

}  // namespace velmora
