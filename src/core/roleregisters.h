#pragma once
// Registers the peripherals reach through the roles the model binds. A role the model does
// not define stays at address 0: it reads 0 and takes no writes, so it never claims R0.

#include <cstdint>

#include "core/machine.h"

namespace velmora {

inline bool bound(const Machine& m, int address) { return address > 0 && address < m.dataspacesize; }

inline uint8_t rolevalue(const Machine& m, int address) { return bound(m, address) ? m.datamem[address] : 0; }

inline void setrolevalue(Machine& m, int address, uint8_t value) {
    if (bound(m, address)) m.datamem[address] = value;
}

}  // namespace velmora
