#include "assembler/asminstructions.h"

#include <array>

namespace velmora {

namespace {

using enum AsmLayout;
using C = AsmCheck;

constexpr uint8_t kNone = 1, kOne = 2, kTwo = 4, kNoneOrTwo = kNone | kTwo;

constexpr std::array<AsmInstruction, 114> kInstructions{{
    // Two registers
    {"ADC", 0x1C00, RegReg, kTwo, C::Reg, C::Reg},
    {"ADD", 0x0C00, RegReg, kTwo, C::Reg, C::Reg},
    {"AND", 0x2000, RegReg, kTwo, C::Reg, C::Reg},
    {"CP", 0x1400, RegReg, kTwo, C::Reg, C::Reg},
    {"CPC", 0x0400, RegReg, kTwo, C::Reg, C::Reg},
    {"CPSE", 0x1000, RegReg, kTwo, C::Reg, C::Reg},
    {"EOR", 0x2400, RegReg, kTwo, C::Reg, C::Reg},
    {"MOV", 0x2C00, RegReg, kTwo, C::Reg, C::Reg},
    {"MUL", 0x9C00, RegReg, kTwo, C::Reg, C::Reg},
    {"OR", 0x2800, RegReg, kTwo, C::Reg, C::Reg},
    {"SBC", 0x0800, RegReg, kTwo, C::Reg, C::Reg},
    {"SUB", 0x1800, RegReg, kTwo, C::Reg, C::Reg},
    // One register used twice
    {"ROL", 0x1C00, RegSelf, kOne, C::Reg, C::None},
    {"LSL", 0x0C00, RegSelf, kOne, C::Reg, C::None},
    {"TST", 0x2000, RegSelf, kOne, C::Reg, C::None},
    {"CLR", 0x2400, RegSelf, kOne, C::Reg, C::None},
    // One register
    {"ASR", 0x9405, Reg, kOne, C::Reg, C::None},
    {"COM", 0x9400, Reg, kOne, C::Reg, C::None},
    {"DEC", 0x940A, Reg, kOne, C::Reg, C::None},
    {"INC", 0x9403, Reg, kOne, C::Reg, C::None},
    {"LSR", 0x9406, Reg, kOne, C::Reg, C::None},
    {"NEG", 0x9401, Reg, kOne, C::Reg, C::None},
    {"POP", 0x900F, Reg, kOne, C::Reg, C::None},
    {"PUSH", 0x920F, Reg, kOne, C::Reg, C::None},
    {"ROR", 0x9407, Reg, kOne, C::Reg, C::None},
    {"SWAP", 0x9402, Reg, kOne, C::Reg, C::None},
    {"SER", 0xEF0F, RegHighOnly, kOne, C::RegHigh, C::None},
    // Register and immediate
    {"ANDI", 0x7000, RegImmediate, kTwo, C::RegHigh, C::Byte},
    {"CPI", 0x3000, RegImmediate, kTwo, C::RegHigh, C::Byte},
    {"LDI", 0xE000, RegImmediate, kTwo, C::RegHigh, C::Byte},
    {"ORI", 0x6000, RegImmediate, kTwo, C::RegHigh, C::Byte},
    {"SBR", 0x6000, RegImmediate, kTwo, C::RegHigh, C::Byte},
    {"SBCI", 0x4000, RegImmediate, kTwo, C::RegHigh, C::Byte},
    {"SUBI", 0x5000, RegImmediate, kTwo, C::RegHigh, C::Byte},
    {"CBR", 0x7000, RegImmediateNot, kTwo, C::RegHigh, C::Byte},
    // Register bits and status bits
    {"BLD", 0xF800, RegBit, kTwo, C::Reg, C::Bit},
    {"BST", 0xFA00, RegBit, kTwo, C::Reg, C::Bit},
    {"SBRC", 0xFC00, RegBit, kTwo, C::Reg, C::Bit},
    {"SBRS", 0xFE00, RegBit, kTwo, C::Reg, C::Bit},
    {"BCLR", 0x9488, StatusBit, kOne, C::Bit, C::None},
    {"BSET", 0x9408, StatusBit, kOne, C::Bit, C::None},
    // Multiplications and word moves
    {"MULS", 0x0200, RegHighPair, kTwo, C::RegHigh, C::RegHigh},
    {"MULSU", 0x0300, RegHighPair, kTwo, C::RegMul, C::RegMul},
    {"FMUL", 0x0308, RegHighPair, kTwo, C::RegMul, C::RegMul},
    {"FMULS", 0x0380, RegHighPair, kTwo, C::RegMul, C::RegMul},
    {"FMULSU", 0x0388, RegHighPair, kTwo, C::RegMul, C::RegMul},
    {"MOVW", 0x0100, PairPair, kTwo, C::Pair16, C::Pair16},
    {"ADIW", 0x9600, PairImmediate, kTwo, C::Pair4, C::Six},
    {"SBIW", 0x9700, PairImmediate, kTwo, C::Pair4, C::Six},
    // I/O space
    {"IN", 0xB000, In, kTwo, C::Reg, C::Six},
    {"OUT", 0xB800, Out, kTwo, C::Six, C::Reg},
    {"CBI", 0x9800, IoBit, kTwo, C::Reg, C::Bit},
    {"SBIC", 0x9900, IoBit, kTwo, C::Reg, C::Bit},
    {"SBI", 0x9A00, IoBit, kTwo, C::Reg, C::Bit},
    {"SBIS", 0x9B00, IoBit, kTwo, C::Reg, C::Bit},
    // Two-word instructions
    {"LDS", 0x9000, LoadDirect, kTwo, C::Reg, C::Word},
    {"STS", 0x9200, StoreDirect, kTwo, C::Word, C::Reg},
    {"JMP", 0x940C, Absolute, kOne, C::Addr22, C::None},
    {"CALL", 0x940E, Absolute, kOne, C::Addr22, C::None},
    // Relative jumps and branches
    {"RJMP", 0xC000, Relative12, kOne, C::Rel12, C::None},
    {"RCALL", 0xD000, Relative12, kOne, C::Rel12, C::None},
    {"BRCS", 0xF000, Relative7, kOne, C::Rel7, C::None},
    {"BRLO", 0xF000, Relative7, kOne, C::Rel7, C::None},
    {"BREQ", 0xF001, Relative7, kOne, C::Rel7, C::None},
    {"BRMI", 0xF002, Relative7, kOne, C::Rel7, C::None},
    {"BRVS", 0xF003, Relative7, kOne, C::Rel7, C::None},
    {"BRLT", 0xF004, Relative7, kOne, C::Rel7, C::None},
    {"BRHS", 0xF005, Relative7, kOne, C::Rel7, C::None},
    {"BRTS", 0xF006, Relative7, kOne, C::Rel7, C::None},
    {"BRIE", 0xF007, Relative7, kOne, C::Rel7, C::None},
    {"BRCC", 0xF400, Relative7, kOne, C::Rel7, C::None},
    {"BRSH", 0xF400, Relative7, kOne, C::Rel7, C::None},
    {"BRNE", 0xF401, Relative7, kOne, C::Rel7, C::None},
    {"BRPL", 0xF402, Relative7, kOne, C::Rel7, C::None},
    {"BRVC", 0xF403, Relative7, kOne, C::Rel7, C::None},
    {"BRGE", 0xF404, Relative7, kOne, C::Rel7, C::None},
    {"BRHC", 0xF405, Relative7, kOne, C::Rel7, C::None},
    {"BRTC", 0xF406, Relative7, kOne, C::Rel7, C::None},
    {"BRID", 0xF407, Relative7, kOne, C::Rel7, C::None},
    {"BRBS", 0xF000, StatusRelative7, kTwo, C::Bit, C::Rel7},
    {"BRBC", 0xF400, StatusRelative7, kTwo, C::Bit, C::Rel7},
    // No operands
    {"BREAK", 0x9598, Fixed, kNone, C::None, C::None},
    {"CLC", 0x9488, Fixed, kNone, C::None, C::None},
    {"CLH", 0x94D8, Fixed, kNone, C::None, C::None},
    {"CLI", 0x94F8, Fixed, kNone, C::None, C::None},
    {"CLN", 0x94A8, Fixed, kNone, C::None, C::None},
    {"CLS", 0x94C8, Fixed, kNone, C::None, C::None},
    {"CLT", 0x94E8, Fixed, kNone, C::None, C::None},
    {"CLV", 0x94B8, Fixed, kNone, C::None, C::None},
    {"CLZ", 0x9498, Fixed, kNone, C::None, C::None},
    {"EICALL", 0x9519, Fixed, kNone, C::None, C::None},
    {"EIJMP", 0x9419, Fixed, kNone, C::None, C::None},
    {"ICALL", 0x9509, Fixed, kNone, C::None, C::None},
    {"IJMP", 0x9409, Fixed, kNone, C::None, C::None},
    {"NOP", 0x0000, Fixed, kNone, C::None, C::None},
    {"RET", 0x9508, Fixed, kNone, C::None, C::None},
    {"RETI", 0x9518, Fixed, kNone, C::None, C::None},
    {"SEC", 0x9408, Fixed, kNone, C::None, C::None},
    {"SEH", 0x9458, Fixed, kNone, C::None, C::None},
    {"SEI", 0x9478, Fixed, kNone, C::None, C::None},
    {"SEN", 0x9428, Fixed, kNone, C::None, C::None},
    {"SES", 0x9448, Fixed, kNone, C::None, C::None},
    {"SET", 0x9468, Fixed, kNone, C::None, C::None},
    {"SEV", 0x9438, Fixed, kNone, C::None, C::None},
    {"SEZ", 0x9418, Fixed, kNone, C::None, C::None},
    {"SLEEP", 0x9588, Fixed, kNone, C::None, C::None},
    {"SPM", 0x95E8, Fixed, kNone, C::None, C::None},
    {"WDR", 0x95A8, Fixed, kNone, C::None, C::None},
    // Pointers: the base of LD, ST, LDD and STD is completed by the pointer; LPM and ELPM
    // keep their no-operand word here.
    {"LD", 0x0000, Load, kTwo, C::Reg, C::None},
    {"ST", 0x0000, Store, kTwo, C::None, C::Reg},
    {"LPM", 0x95C8, ProgramLoad, kNoneOrTwo, C::Reg, C::None},
    {"ELPM", 0x95D8, ProgramLoad, kNoneOrTwo, C::Reg, C::None},
    {"LDD", 0x8000, LoadDisplaced, kTwo, C::Reg, C::Six},
    {"STD", 0x8200, StoreDisplaced, kTwo, C::Six, C::Reg},
}};

}  // namespace

AsmRange asmcheckrange(AsmCheck check) {
    switch (check) {
        case AsmCheck::Reg: return {0, 31};
        case AsmCheck::RegHigh: return {16, 31};
        case AsmCheck::RegMul: return {16, 23};
        case AsmCheck::Pair4: return {0, 3};
        case AsmCheck::Pair16: return {0, 15};
        case AsmCheck::Bit: return {0, 7};
        case AsmCheck::Six: return {0, 63};
        case AsmCheck::Byte: return {0, 255};
        case AsmCheck::Word: return {0, 65535};
        case AsmCheck::Addr22: return {0, 4194303};
        case AsmCheck::Rel7: return {-64, 63};
        case AsmCheck::Rel12: return {-2048, 2047};
        case AsmCheck::None: break;
    }
    return {INT32_MIN, INT32_MAX};
}

std::span<const AsmInstruction> asminstructiontable() { return kInstructions; }

const AsmInstruction* asmfindinstruction(std::string_view mnemonic) {
    for (const AsmInstruction& instruction : kInstructions)
        if (instruction.mnemonic == mnemonic) return &instruction;
    return nullptr;
}

int asmwordcount(const AsmInstruction& instruction) {
    switch (instruction.layout) {
        case AsmLayout::LoadDirect:
        case AsmLayout::StoreDirect:
        case AsmLayout::Absolute: return 2;
        default: return 1;
    }
}

}  // namespace velmora
