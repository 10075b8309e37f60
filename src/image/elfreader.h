#pragma once
// Programs as avr-gcc and avr-ld write them: 32-bit little-endian ELF files for the AVR.
// The loadable segments give program memory (at their load addresses below 0x800000) and
// the EEPROM image (at 0x810000 on); the symbol table gives names for addresses.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velmora {

// Where avr-ld places the data space and the EEPROM in its one address space.
inline constexpr uint32_t kElfDataOffset = 0x800000;
inline constexpr uint32_t kElfEepromOffset = 0x810000;

struct ElfSymbol {
    enum class Kind : uint8_t { Function, Object };
    std::string name;
    uint32_t address = 0;  // as in the file: a byte address in flash, 0x800000 on for data
    uint32_t size = 0;
    Kind kind = Kind::Function;
    bool operator==(const ElfSymbol&) const = default;
};

struct ElfProgram {
    std::vector<uint8_t> flash;   // from address 0 to the last byte a segment loads
    std::vector<uint8_t> eeprom;  // from EEPROM address 0 likewise; empty without EEPROM data
    std::vector<bool> flashloaded, eepromloaded;  // which bytes a segment gave
    std::vector<ElfSymbol> symbols;  // functions and objects with a name, in file order
};

struct ElfReadResult {
    std::optional<ElfProgram> program;
    std::string error;  // a sentence: why the file is not a program, when `program` is empty
};

// Reads a whole file's bytes. Any fault of the file gives its message, never more.
ElfReadResult readelf(std::span<const uint8_t> file);

// Whether the bytes start as an ELF file does, whatever follows.
bool lookslikeelf(std::span<const uint8_t> file);

}  // namespace velmora
