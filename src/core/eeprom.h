#pragma once
// The data EEPROM: reads that stall the processor four cycles, the master write enable that
// lives for four cycles, and writes that take a settable time.

#include "core/machine.h"

namespace velmora {

// EECR bits (EEMPE and EEPE on the newer parts sit where EEMWE and EEWE are).
inline constexpr uint8_t kEere = 0x01, kEewe = 0x02, kEemwe = 0x04, kEepm = 0x30;

// EEAR as the chip uses it: EEARL, plus EEARH from 256 bytes of EEPROM up.
int eepromaddress(const Machine& m);

void eepromstep(Machine& m);
// True while a read or write is asked for or under way, or the master bit is armed.
bool eeprombusy(const Machine& m);

}  // namespace velmora
