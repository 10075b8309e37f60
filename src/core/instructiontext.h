#pragma once
// Assembler text of one instruction word as the decoding chain reads it. Shared by
// the simulator's last/next instruction displays and the disassembler.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/decode.h"

namespace velmora {

using BitNameTable = std::vector<std::array<std::string, 9>>;

// "R0".."R25", then "XL","XH","YL","YH","ZL","ZH".
std::string registername(int r);

// Text of the word `op` (with `op2` behind it); "UNRECOGNIZED" for undecoded words.
// I/O register and bit names come from `bitnames`, falling back to "$" and the I/O address.
std::string formatinstruction(uint16_t op, uint16_t op2, const BitNameTable& bitnames);

// The same with a decided id, for callers that follow a different chain.
std::string formatinstruction(Op id, uint16_t op, uint16_t op2, const BitNameTable& bitnames);

// Signed displacement of a conditional branch (bits 9..3) and of RJMP/RCALL (bits 11..0).
int branchoffset(uint16_t op);
int relativeoffset(uint16_t op);
// Word address of CALL/JMP before reduction to the program size.
uint32_t absoluteaddress(uint16_t op, uint16_t op2);

}  // namespace velmora
