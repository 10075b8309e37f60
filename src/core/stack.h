#pragma once
// The two stack models: a stack in SRAM addressed by SP, or the three-level
// hardware stack of parts without SRAM.

#include <cstdint>

#include "core/machine.h"

namespace velmora {

int stackpointer(const Machine& m);
void stackpushbyte(Machine& m, uint8_t value);
uint8_t stackpullbyte(Machine& m);
void spdecrement(Machine& m);
void spincrement(Machine& m);

void hwstackpush(Machine& m, int32_t value);
int32_t hwstackpop(Machine& m);

// A return address (or interrupt return) on whichever stack the model has.
void pushreturnaddress(Machine& m, int32_t address);
int32_t pullreturnaddress(Machine& m);

inline void pushbyte(Machine& m, uint8_t value) {
    if (m.sramsize > 0) {
        stackpushbyte(m, value);
        spdecrement(m);
    } else {
        hwstackpush(m, value);
    }
}

inline uint8_t popbyte(Machine& m) {
    if (m.sramsize > 0) {
        spincrement(m);
        return stackpullbyte(m);
    }
    return static_cast<uint8_t>(hwstackpop(m));
}

}  // namespace velmora
