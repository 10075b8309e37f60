#pragma once
// Small text pieces the memory windows share: binary digits of a value, and the reading of
// a typed hexadecimal answer.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

// `bits` binary digits of `value`, most significant first.
std::string binarydigits(uint32_t value, int bits);

// Reads `text` as hexadecimal after padding it on the left with zeros to `width` characters
// and upper-casing it. Nothing when a character is no hexadecimal digit or the value needs
// more than `width` digits.
std::optional<uint32_t> paddedhex(std::string_view text, int width);

}  // namespace velmora
