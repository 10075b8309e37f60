#pragma once
// A machine sized like an ATmega32 without loading a model file: for the benchmark,
// the CLI's raw-word runs and tests that need no peripherals.

#include <cstdint>
#include <vector>

#include "core/machine.h"

namespace velmora {

// 32 KiB flash, 2 KiB SRAM, 1 KiB EEPROM; SREG and SP registered with full write masks.
void configurebaremachine(Machine& m, int flashsize = 32768, int sramsize = 2048, int eepromsize = 1024);

// Copies words to program memory from word address 0.
void loadwords(Machine& m, const std::vector<uint16_t>& words);

}  // namespace velmora
