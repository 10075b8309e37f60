#pragma once
// The analog-to-digital converter: one conversion per start, of a settable time. The
// channel's input is sampled at the first step, the result lands when the time is up.

#include "core/machine.h"

namespace velmora {

// ADCSRA bits.
inline constexpr uint8_t kAden = 0x80, kAdsc = 0x40, kAdif = 0x10;
inline constexpr int kAdcTop = 1023;

// The bandgap reference as an ADC value for a comparator bandgap kind; 0 for unknown kinds.
int referencevalue(int bandgapkind);
// The bandgap kind of the model ("compconf: " second value), 0 when the key is missing.
int bandgapkind(const Machine& m);

void adcstep(Machine& m);
// True while a conversion runs.
bool adcbusy(const Machine& m);

}  // namespace velmora
