#pragma once
// The instruction set as data: for each mnemonic its base word, the bit layout that places
// the operands, how many operands it takes and the range each operand must lie in. The
// sizing of pass 1, the encoder of pass 2 and the tests all read this one table.

#include <cstdint>
#include <span>
#include <string_view>

namespace velmora {

// Operand ranges. Rel7 and Rel12 apply to the branch offset, not to the value as written.
enum class AsmCheck : uint8_t {
    None, Reg, RegHigh, RegMul, Pair4, Pair16, Bit, Six, Byte, Word, Addr22, Rel7, Rel12,
};

struct AsmRange {
    int32_t low, high;
};

AsmRange asmcheckrange(AsmCheck check);

// How the operand values A and B enter the word(s).
enum class AsmLayout : uint8_t {
    Fixed,            // base
    RegReg,           // base | (B&16)<<5 | A<<4 | B&15
    RegSelf,          // RegReg with B = A (LSL, ROL, TST, CLR)
    Reg,              // base | A<<4
    RegHighOnly,      // base | (A-16)<<4 (SER)
    RegImmediate,     // base | (B>>4)<<8 | (A-16)<<4 | B&15
    RegImmediateNot,  // RegImmediate with 255-B (CBR)
    RegBit,           // base | A<<4 | B
    StatusBit,        // base | A<<4 (BCLR, BSET)
    RegHighPair,      // base | (A-16)<<4 | (B-16)
    PairPair,         // base | A<<4 | B (MOVW)
    PairImmediate,    // base | (B>>4)<<6 | A<<4 | B&15 (ADIW, SBIW)
    In,               // base | (B>>4)<<9 | A<<4 | B&15
    Out,              // base | (A>>4)<<9 | B<<4 | A&15
    IoBit,            // base | A<<3 | B
    LoadDirect,       // base | A<<4, then B (LDS)
    StoreDirect,      // base | B<<4, then A (STS)
    Absolute,         // base | (A>>17)<<4 | bit 16 of A, then A&FFFF (JMP, CALL)
    Relative12,       // base | k (RJMP, RCALL)
    Relative7,        // base | k<<3 (conditional branches)
    StatusRelative7,  // base | k<<3 | A (BRBS, BRBC)
    Load,             // pointer code B selects the word, | A<<4 (LD)
    Store,            // pointer code A selects the word, | B<<4 (ST)
    ProgramLoad,      // base alone, or with Z / Z+ and a register (LPM, ELPM)
    LoadDisplaced,    // Y or Z named by the second operand, displacement B, register A (LDD)
    StoreDisplaced,   // Y or Z named by the first operand, displacement A, register B (STD)
};

struct AsmInstruction {
    std::string_view mnemonic;
    uint16_t base;
    AsmLayout layout;
    uint8_t argcounts;  // bit n set: n arguments are accepted
    AsmCheck check1, check2;
};

// All 114 mnemonics.
std::span<const AsmInstruction> asminstructiontable();

// The entry of an upper-case mnemonic, or nullptr.
const AsmInstruction* asmfindinstruction(std::string_view mnemonic);

// Program words the instruction takes: 2 for CALL, JMP, LDS and STS, else 1.
int asmwordcount(const AsmInstruction& instruction);

inline bool asmacceptsargcount(const AsmInstruction& instruction, int count) {
    return count >= 0 && count < 8 && ((instruction.argcounts >> count) & 1) != 0;
}

}  // namespace velmora
