#pragma once
// Rewrites pointer and register-pair operands into the small numbers that the encoder
// expects: "X+" becomes 2 for LD, "R27:R26" becomes 1 for ADIW, "Y+5" becomes 5 for LDD.

#include <string>
#include <string_view>

namespace velmora {

// The operand text for `mnemonic` (upper case); text without a rule comes back as written.
std::string asmoperandprep(std::string_view text, std::string_view mnemonic);

}  // namespace velmora
