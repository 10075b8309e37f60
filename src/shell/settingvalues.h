#pragma once
// How settings texts become numbers and numbers become texts. Every value is kept as
// text, so a reader must accept whatever a user or an older version left there.

#include <cstdint>
#include <string>
#include <string_view>

#include "core/events.h"

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

// The values a numeric setting may take, both ends included.
struct NumberRange {
    int32_t low = 0;
    int32_t high = 0;
};
struct RealRange {
    double low = 0;
    double high = 0;
};

// Every number a program reads from the settings comes through here: the text is a person's
// to edit, so a value outside what its use can bear counts as the default. A missing value
// is created with the default; an unusable one stays in the store untouched.
int32_t rangednumber(std::string_view text, int32_t defaultvalue, NumberRange range);
int32_t readnumber(SettingsAccess& settings, std::string_view name, int32_t defaultvalue, NumberRange range);
double readreal(SettingsAccess& settings, std::string_view name, double defaultvalue, RealRange range);

}  // namespace velmora
