#pragma once
// The two paths by which a program reaches the data space with side effects.
// Addresses without side effects take the inline fast path: a plain array access.

#include <cstdint>

#include "core/machine.h"

namespace velmora {

// Marks every address that needs the slow path, from the bound roles, kinds and interrupt table.
void marksideeffects(Machine& m);

uint8_t datamemreadslow(Machine& m, int address);
// Watches reads and writes of a data address for a debugger: the step that reaches it ends a
// run as BREAK does and leaves the address in `watchhit`. Registers R0-R31 cannot be watched
// (the instructions reach them directly); false for them and for addresses outside the data space.
bool setdatawatch(Machine& m, int address, bool reads, bool writes);
void datamemwriteslow(Machine& m, int address, uint8_t value, uint8_t bits);

inline bool hasusart(const Machine& m) { return m.kinds.uartconf >= 2; }
inline bool sharesucsrc(const Machine& m) { return m.kinds.uartconf == 3 || m.kinds.uartconf == 8; }

inline uint8_t datamemread(Machine& m, int address) {
    if (static_cast<unsigned>(address) < static_cast<unsigned>(m.dataspacesize) &&
        !(m.sideeffects[address] & kEffectReadPath))
        return m.datamem[address];
    return datamemreadslow(m, address);
}

inline void datamemwrite(Machine& m, int address, uint8_t value, uint8_t bits = 255) {
    if (static_cast<unsigned>(address) < static_cast<unsigned>(m.dataspacesize) &&
        !(m.sideeffects[address] & kEffectWritePath)) {
        m.datamem[address] = m.datamask[address] & value;
        return;
    }
    datamemwriteslow(m, address, value, bits);
}

}  // namespace velmora
