#pragma once
// Instruction words that reach registers by data address, for test programs on real and
// made-up chips: I/O instructions take the data address less 32.

#include <gtest/gtest.h>

#include <cstdint>

#include "core/encode.h"

namespace velmora::test {

// The bit instructions reach I/O addresses 0-31 only, IN and OUT 0-63.
inline int ioaddress(int data, int limit) {
    if (data < 32 || data - 32 > limit) ADD_FAILURE() << "data address " << data << " out of the instruction's reach";
    return data - 32;
}

inline uint16_t ldi(int d, int k) { return ri(0xE000, d, k); }
inline uint16_t sbi(int data, int bit) { return iobit(0x9A00, ioaddress(data, 31), bit); }
inline uint16_t cbi(int data, int bit) { return iobit(0x9800, ioaddress(data, 31), bit); }
inline uint16_t sbis(int data, int bit) { return iobit(0x9B00, ioaddress(data, 31), bit); }
inline uint16_t sbic(int data, int bit) { return iobit(0x9900, ioaddress(data, 31), bit); }
inline uint16_t outd(int data, int r) { return out(ioaddress(data, 63), r); }
inline uint16_t ind(int d, int data) { return in(d, ioaddress(data, 63)); }
// SBRS: skip if bit `bit` of register `r` is set.
inline uint16_t sbrs(int r, int bit) { return static_cast<uint16_t>(0xFE00 | ((r & 31) << 4) | (bit & 7)); }
// LDS and STS: the opcode word; the data address follows as the second word.
inline uint16_t lds(int d) { return static_cast<uint16_t>(0x9000 | ((d & 31) << 4)); }
inline uint16_t sts(int r) { return static_cast<uint16_t>(0x9200 | ((r & 31) << 4)); }
inline uint16_t inc(int d) { return r1(0x9403, d); }
inline constexpr uint16_t kSei = 0x9478;

}  // namespace velmora::test
