#include "core/hextext.h"

namespace velmora {

std::string hexdigits(uint32_t value, int digits) {
    static const char kDigits[] = "0123456789ABCDEF";
    std::string text;
    do {
        text.insert(text.begin(), kDigits[value & 15]);
        value >>= 4;
    } while (value != 0);
    if (static_cast<int>(text.size()) < digits) text.insert(0, digits - text.size(), '0');
    return text;
}

}  // namespace velmora
