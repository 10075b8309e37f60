#pragma once
// Letter case in the ASCII sense that names, mnemonics and setting names use: independent
// of the C locale, which the windowing toolkit sets from the user's language.

#include <string>
#include <string_view>

namespace velmora {

std::string uppercase(std::string_view text);
std::string lowercase(std::string_view text);
bool sameignoringcase(std::string_view a, std::string_view b);

}  // namespace velmora
