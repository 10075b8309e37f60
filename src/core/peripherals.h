#pragma once
// The on-chip peripherals as one set: the phase functions a run control calls every step,
// and the per-start resets they need.

#include "core/machine.h"
#include "core/runcontrol.h"

namespace velmora {

// Phase functions of every on-chip peripheral, for RunControl::phases.
PeripheralPhases standardphases();

// True while a peripheral has work that goes on without any change from outside.
bool peripheralsbusy(const Machine& m);

// Registers the peripherals' resets in m.cleanhooks (once per machine) and resets their
// state; call after a model is loaded.
void installperipherals(Machine& m);

}  // namespace velmora
