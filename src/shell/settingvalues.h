#pragma once
// How settings texts become numbers and numbers become texts. Every value is kept as
// text, so a reader must accept whatever a user or an older version left there.

#include <cstdint>
#include <string>
#include <string_view>

namespace velmora {

// Leading blanks, an optional sign and the digits that follow; anything after them is
// ignored and no digits read as 0. Values beyond 32 bits stop at the nearest limit.
int32_t settinginteger(std::string_view text);

// The same for real values ("Printer Font Size", the run durations): a decimal fraction and
// an exponent are read too.
double settingreal(std::string_view text);

// The trimmed decimal form in which numbers are written.
std::string settingtext(int32_t value);
std::string settingtext(double value);

}  // namespace velmora
