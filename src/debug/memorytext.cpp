#include "debug/memorytext.h"

namespace velmora {

std::string binarydigits(uint32_t value, int bits) {
    std::string text(static_cast<size_t>(bits), '0');
    for (int i = 0; i < bits; ++i)
        if (value & (1u << (bits - 1 - i))) text[static_cast<size_t>(i)] = '1';
    return text;
}

std::optional<uint32_t> paddedhex(std::string_view text, int width) {
    if (text.size() > static_cast<size_t>(width)) return std::nullopt;
    uint32_t value = 0;
    for (char c : text) {
        int digit = -1;
        if (c >= '0' && c <= '9') digit = c - '0';
        else if (c >= 'A' && c <= 'F') digit = c - 'A' + 10;
        else if (c >= 'a' && c <= 'f') digit = c - 'a' + 10;
        if (digit < 0) return std::nullopt;
        value = value * 16 + static_cast<uint32_t>(digit);
    }
    return value;  // the leading zeros of the padding add nothing
}

}  // namespace velmora
