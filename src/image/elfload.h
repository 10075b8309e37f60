#pragma once
// Loading a program that avr-gcc built as an ELF file: program memory, the EEPROM data its
// EEMEM variables carry, and the names of its functions and objects.

#include <string>
#include <vector>

#include "core/events.h"
#include "core/machine.h"
#include "image/elfreader.h"

namespace velmora {

inline constexpr char kElfErrorHeading[] = "Input program file in ELF format contains errors.";

// Writes the file's loadable bytes into program memory (raising `programbytes`) and into
// EEPROM, and its symbols into `symbols` when given. Nothing is cleared first. On an error
// the message says why and nothing was written.
bool elfload(Machine& m, const std::string& filename, Messenger& messenger, std::vector<ElfSymbol>* symbols = nullptr);

// What Load Program reads: an ELF file by its first bytes, an Intel HEX file otherwise.
bool programload(Machine& m, const std::string& filename, Messenger& messenger,
                 std::vector<ElfSymbol>* symbols = nullptr);

}  // namespace velmora
