#pragma once
// Hexadecimal text helpers shared by listings, dialogs and instruction texts.

#include <cstdint>
#include <string>

namespace velmora {

// Upper-case hexadecimal digits of `value`, zero-padded to `digits`.
std::string hexdigits(uint32_t value, int digits);
inline std::string hex2(uint32_t v) { return hexdigits(v, 2); }
inline std::string hex3(uint32_t v) { return hexdigits(v, 3); }
inline std::string hex4(uint32_t v) { return hexdigits(v, 4); }
inline std::string hex6(uint32_t v) { return hexdigits(v, 6); }
inline std::string dollarhex(uint32_t v, int digits) { return "$" + hexdigits(v, digits); }
inline std::string cprefixhex(uint32_t v, int digits) { return "0x" + hexdigits(v, digits); }

}  // namespace velmora
