#pragma once
// The analog comparator: two analog inputs chosen by the model's "compconf: " values and the
// control bits, an output bit and an edge-selected interrupt flag.

#include "core/machine.h"

namespace velmora {

// ACSR bits.
inline constexpr uint8_t kAcd = 0x80, kAcbg = 0x40, kAco = 0x20, kAci = 0x10, kAcme = 0x04, kAcis = 0x03;
// ACSRB bits of kind 6: hysteresis on, wide hysteresis, input selection.
inline constexpr uint8_t kHsel = 0x80, kHlev = 0x40, kAcmInputs = 0x07;

// The two values compared in this step, as `analoginput` values.
struct ComparatorInputs {
    int plus = 0;
    int minus = 0;
};
ComparatorInputs comparatorinputs(const Machine& m);

// Resolves the comparator's registers from the model's kind and roles; a reset does it, and
// so must whoever changes those afterwards.
void plancomparator(Machine& m);

void comparatorstep(Machine& m);

}  // namespace velmora
