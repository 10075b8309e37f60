#pragma once
// The generic interrupt mechanism over the model's interrupt table.

#include "core/machine.h"

namespace velmora {

// Entry number (1-based, table order) of the interrupt to take now, or 0.
int pendinginterrupt(const Machine& m);

// Enters entry `number`: I cleared, pc pushed, jump to the vector, latch cleared, 4 cycles.
void enterinterrupt(Machine& m, int number);

}  // namespace velmora
