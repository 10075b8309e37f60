#pragma once
// The Intel HEX reader: records of text into a byte memory, with the numbered errors that
// the load messages report. Program memory and the I2C EEPROM device both read through it.

#include <cstdint>
#include <iosfwd>
#include <span>
#include <string>

namespace velmora {

// Error codes, as the messages number them. 8 and 9 are kept for their texts only: odd
// counts and addresses load as they are.
enum HexError : int {
    kHexOk = 0,
    kHexNoColon = 1,
    kHexTooShort = 2,
    kHexChecksum = 3,
    kHexRecordType = 4,
    kHexType04 = 5,
    kHexCount = 6,
    kHexAddress = 7,
    kHexOddCount = 8,
    kHexOddAddress = 9,
    kHexLength = 10,
    kHexDataByte = 11,
    kHexOutOfRange = 12,
    kHexType02 = 13,
};

struct HexReadResult {
    int error = kHexOk;
    int64_t line = 0;  // the line of the error, counting every line of the file from 1
    bool ok() const { return error == kHexOk; }
};

// Reads records until an end record, the end of the input or the first error. Data bytes
// land in `memory` at (linear base * 65536) + (segment * 16) + record address; an address at
// or beyond memory.size() is error 12. `highest` is raised to the highest address written
// plus one. Nothing is cleared: bytes stored before an error stay.
HexReadResult readintelhex(std::istream& in, std::span<uint8_t> memory, int& highest);

// The text after "Line number N" for an error code: ": Address out of range." and so on.
std::string hexerrortail(int code);

}  // namespace velmora
