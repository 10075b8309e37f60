#pragma once
// Pass 2's encoder: a line's mnemonic and operand values become program words.

#include <cstdint>
#include <string>
#include <string_view>

#include "assembler/asmcontext.h"

namespace velmora {

// Appends one program word in memory order, low byte first: 9598 becomes "9895".
void asmappendword(std::string& opcode, uint16_t word);

// Branch offsets of conditional branches (rel7) and of RJMP/RCALL (rel12). A target written
// as a symbol gives its distance from the word after the branch, wrapped around program
// memory when that brings it into range; any other operand is the offset itself.
int32_t asmrelshort(const AsmContext& ctx, std::string_view target, int32_t value);
int32_t asmrellong(const AsmContext& ctx, std::string_view target, int32_t value);

// Encodes the line from ctx.argvalue1/argvalue2 and its argument texts; stores the opcode,
// or flags the line with the error of each operand that fails its range.
void asmencodeline(AsmContext& ctx, AsmLine& line);

}  // namespace velmora
