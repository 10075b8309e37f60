#pragma once
// Loading an Intel HEX file into program memory, and the unprogrammed value that fills
// program memory and EEPROM.

#include <cstdint>
#include <span>
#include <string>

#include "core/events.h"
#include "core/machine.h"

namespace velmora {

inline constexpr char kHexErrorHeading[] = "Input program file in Intel Hex Format contains errors.";
inline constexpr char kCannotOpenText[] = "The file can not be opened.";

// "Input program file ... contains errors." and, on the second line, "Line number N" with the
// tail of the error code.
std::string hexloaderror(int code, int64_t line);

// Reads `filename` into `progmem` (at most `flashsize` bytes) and raises `programbytes`.
// Nothing is cleared first. On an error the message names the line and the fault, and the
// result is false; bytes read before the error stay, so callers refill memory.
bool hexload(Machine& m, const std::string& filename, Messenger& messenger);

// Program memory as far as a program may reach: the first `flashsize` bytes of `progmem`.
std::span<uint8_t> loadableflash(Machine& m);

// The unprogrammed byte of the setting "Unprogrammed Bit Value": 0 for "0", else 255.
uint8_t unprogrammedvalue(SettingsAccess& settings);

// Fills program memory and EEPROM with the machine's unprogrammed byte.
void fillunprogrammed(Machine& m);

}  // namespace velmora
