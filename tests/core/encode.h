#pragma once
// Instruction word builders for tests, from the AVR instruction set's bit layouts.

#include <cstdint>
#include <vector>

namespace velmora::test {

// Two-register form: oooo ooRd dddd rrrr.
inline uint16_t rr(uint16_t base, int d, int r) {
    return static_cast<uint16_t>(base | ((r & 16) << 5) | ((d & 31) << 4) | (r & 15));
}
// Register-immediate form on R16..R31: oooo KKKK dddd KKKK.
inline uint16_t ri(uint16_t base, int d, int k) {
    return static_cast<uint16_t>(base | ((k & 0xF0) << 4) | (((d - 16) & 15) << 4) | (k & 15));
}
// One-register form: oooo oood dddd oooo.
inline uint16_t r1(uint16_t base, int d) { return static_cast<uint16_t>(base | ((d & 31) << 4)); }
// PUSH and POP.
inline uint16_t push(int r) { return r1(0x920F, r); }
inline uint16_t pop(int d) { return r1(0x900F, d); }
// ADIW/SBIW on pair 24, 26, 28, 30.
inline uint16_t wk(uint16_t base, int low, int k) {
    return static_cast<uint16_t>(base | ((k & 0x30) << 2) | (((low - 24) / 2) << 4) | (k & 15));
}
inline uint16_t rjmp(int k) { return static_cast<uint16_t>(0xC000 | (k & 0xFFF)); }
inline uint16_t rcall(int k) { return static_cast<uint16_t>(0xD000 | (k & 0xFFF)); }
// BRBS/BRBC: set = branch if the flag is set.
inline uint16_t branch(bool set, int bit, int k) {
    return static_cast<uint16_t>((set ? 0xF000 : 0xF400) | ((k & 0x7F) << 3) | (bit & 7));
}
// SBI/CBI/SBIC/SBIS: oooo oooo AAAA Abbb.
inline uint16_t iobit(uint16_t base, int ioaddress, int bit) {
    return static_cast<uint16_t>(base | ((ioaddress & 31) << 3) | (bit & 7));
}
inline uint16_t in(int d, int a) {
    return static_cast<uint16_t>(0xB000 | ((a & 0x30) << 5) | ((d & 31) << 4) | (a & 15));
}
inline uint16_t out(int a, int r) {
    return static_cast<uint16_t>(0xB800 | ((a & 0x30) << 5) | ((r & 31) << 4) | (a & 15));
}
// LDD/STD with displacement q on Y (y=true) or Z.
inline uint16_t ldd(int d, bool y, int q, bool store = false) {
    return static_cast<uint16_t>(0x8000 | (store ? 0x0200 : 0) | ((q & 0x20) << 8) | ((q & 0x18) << 7) | (q & 7) |
                                 (y ? 8 : 0) | ((d & 31) << 4));
}

// The words followed by NOPs up to `size` words.
inline std::vector<uint16_t> padded(std::vector<uint16_t> words, size_t size) {
    words.resize(size, 0x0000);
    return words;
}

inline constexpr uint16_t kNop = 0x0000, kSleep = 0x9588, kBreak = 0x9598, kRet = 0x9508, kReti = 0x9518,
                          kIjmp = 0x9409, kIcall = 0x9509, kSpm = 0x95E8, kLpm = 0x95C8, kElpm = 0x95D8,
                          kCall = 0x940E, kJmp = 0x940C;

}  // namespace velmora::test
