#pragma once
// Edge detection on the INT0 and INT1 pins, the first thing of every step. The pin and the
// sense control bits come from the model's "intconf: " kinds; the flag is the one the
// interrupt table's INT0 and INT1 entries name. A held low level is not detected.

#include <cstdint>

#include "core/machine.h"

namespace velmora {

// Where one external interrupt of a kind looks.
struct ExternalInterruptPin {
    int portcode;
    uint8_t mask;
    bool eicra;  // sense bits in EICRA, else in MCUCR
    int shift;   // position of the two sense bits
};

// The pin of INT0 or INT1 for a kind, or null when the kind has no external interrupt.
const ExternalInterruptPin* int0pin(int kind);
const ExternalInterruptPin* int1pin(int kind);

// Resolves the two lines from the model's kinds, roles and interrupt table; a reset does it,
// and so must whoever changes those afterwards. The remembered levels stay.
void planexternalinterrupts(Machine& m);

void externalinterrupts(Machine& m);

}  // namespace velmora
