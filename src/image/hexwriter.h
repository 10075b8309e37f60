#pragma once
// The Intel HEX writer of "Save Memory".

#include <cstdint>
#include <span>
#include <string>

namespace velmora {

// One record: ":", count, four-digit address, type, data, checksum, CR LF.
std::string hexrecord(int type, uint16_t address, std::span<const uint8_t> data);

// The image from byte 0 to its end: 16-byte data records with a shorter last one, an
// extended linear address record before every record that starts a 64 KiB block (so also
// before the first), and the end record.
std::string writeintelhex(std::span<const uint8_t> image);

}  // namespace velmora
