#pragma once
// Text of one program word for every display of an instruction (Disassembler window,
// Breakpoints Manager, Last and Next Instruction).
//
// The disassembler's chain is alphabetical and lists the aliases (CLC, SEC, SER, BRLO,
// BRSH, LSL, CLR, ...) beside their base instructions. Each alias either stands behind
// the line that shares its words or is the very line the executor's chain has, so for
// every word both chains reach the same line: the decoding and the operand texts are
// the core's, and this layer adds the second-word flag that memory walkers need.

#include <cstdint>
#include <string>

#include "core/instructiontext.h"

namespace velmora {

class Disassembler {
public:
    // I/O register and bit names are read from `bitnames` at each call.
    explicit Disassembler(const BitNameTable& bitnames) : bitnames_(&bitnames) {}

    // Text of `word` with `nextword` behind it; "UNRECOGNIZED" for a word no test accepts.
    // Clears `secondword` first and sets it when the word is CALL, JMP, LDS or STS.
    std::string disasminstruction(uint16_t word, uint16_t nextword);

    // Whether the last decoded word takes the next one as its operand.
    bool secondword() const { return secondword_; }

private:
    const BitNameTable* bitnames_;
    bool secondword_ = false;
};

}  // namespace velmora
