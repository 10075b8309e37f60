#pragma once
// The names of package pins as the Microcontroller View shows them: alternative functions
// the user chose to hide are cut out by whole token, and a mark shows the package side.

#include <array>
#include <string>

namespace velmora {

// The seven groups of alternative functions that can be hidden.
enum class PinFunctionGroup { Pcint, Adc, Ain, ExternalSram, Interrupt, Usart, Spi };
inline constexpr int kPinFunctionGroups = 7;
using PinFilters = std::array<bool, kPinFunctionGroups>;  // indexed by PinFunctionGroup

// True when `token` (without slashes) belongs to the group.
bool ingroup(PinFunctionGroup group, const std::string& token);

// Blanks become "/", parentheses go, every token of a ticked group is cut out, and the pin
// gets "_" behind its name on the left half of the package, before it on the right half.
std::string pindisplayname(const std::string& caption, bool secondhalf, const PinFilters& filters);

}  // namespace velmora
