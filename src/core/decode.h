#pragma once
// The decoding chain: an ordered list of field tests, the first match wins.
// `chainmatch` walks the chain literally; `decodetable` is the same answer for
// every 16-bit word, computed once, which the interpreter uses per step.

#include <array>
#include <cstdint>

namespace velmora {

// One entry per reachable line of the chain, in chain order.
#define VELMORA_INSTRUCTIONS(X) \
    X(Unrecognized, "UNRECOGNIZED") \
    X(Adc, "ADC") X(Add, "ADD") X(Adiw, "ADIW") X(And, "AND") X(Andi, "ANDI") X(Asr, "ASR") \
    X(Bclr, "BCLR") X(Bld, "BLD") X(BranchClear, "BRBC") X(BranchSet, "BRBS") X(Break, "BREAK") \
    X(Bset, "BSET") X(Bst, "BST") X(Call, "CALL") X(Cbi, "CBI") X(Clr, "CLR") X(Com, "COM") \
    X(Cp, "CP") X(Cpc, "CPC") X(Cpi, "CPI") X(Cpse, "CPSE") X(Dec, "DEC") X(Eicall, "EICALL") \
    X(Eijmp, "EIJMP") X(Elpm, "ELPM") X(ElpmZ, "ELPM") X(ElpmZPlus, "ELPM") X(Eor, "EOR") \
    X(Fmul, "FMUL") X(Fmuls, "FMULS") X(Fmulsu, "FMULSU") X(Icall, "ICALL") X(Ijmp, "IJMP") \
    X(In, "IN") X(Inc, "INC") X(Jmp, "JMP") X(LdX, "LD") X(LdXPlus, "LD") X(LdMinusX, "LD") \
    X(LdY, "LD") X(LdYPlus, "LD") X(LdMinusY, "LD") X(LddY, "LDD") X(LdZ, "LD") X(LdZPlus, "LD") \
    X(LdMinusZ, "LD") X(LddZ, "LDD") X(Ldi, "LDI") X(Lds, "LDS") X(Lpm, "LPM") X(LpmZ, "LPM") \
    X(LpmZPlus, "LPM") X(Lsl, "LSL") X(Lsr, "LSR") X(Mov, "MOV") X(Movw, "MOVW") X(Mul, "MUL") \
    X(Muls, "MULS") X(Mulsu, "MULSU") X(Neg, "NEG") X(Nop, "NOP") X(Or, "OR") X(Ori, "ORI") \
    X(Out, "OUT") X(Pop, "POP") X(Push, "PUSH") X(Rcall, "RCALL") X(Ret, "RET") X(Reti, "RETI") \
    X(Rjmp, "RJMP") X(Rol, "ROL") X(Ror, "ROR") X(Sbc, "SBC") X(Sbci, "SBCI") X(Sbi, "SBI") \
    X(Sbic, "SBIC") X(Sbis, "SBIS") X(Sbiw, "SBIW") X(Sbrc, "SBRC") X(Sbrs, "SBRS") X(Sleep, "SLEEP") \
    X(Spm, "SPM") X(StX, "ST") X(StXPlus, "ST") X(StMinusX, "ST") X(StY, "ST") X(StYPlus, "ST") \
    X(StMinusY, "ST") X(StdY, "STD") X(StZ, "ST") X(StZPlus, "ST") X(StMinusZ, "ST") X(StdZ, "STD") \
    X(Sts, "STS") X(Sub, "SUB") X(Subi, "SUBI") X(Swap, "SWAP") X(Tst, "TST") X(Wdr, "WDR")

enum class Op : uint8_t {
#define VELMORA_ENUM(id, text) id,
    VELMORA_INSTRUCTIONS(VELMORA_ENUM)
#undef VELMORA_ENUM
    Count
};

// Base mnemonic of an instruction id (branches are named by their flag bit elsewhere).
const char* mnemonic(Op id);

// The literal chain walk, top to bottom.
Op chainmatch(uint16_t op);

// The chain's answer for every word, built once at program start.
const std::array<Op, 65536>& decodetable();

namespace detail {
// A copy of it at a fixed place, filled during static initialisation: the per-step look-up
// then needs neither a guard nor a register for its address.
extern const std::array<Op, 65536> g_decodetable;
}

inline Op decode(uint16_t op) { return detail::g_decodetable[op]; }

// CALL, JMP, LDS and STS by their own tests: the words that carry a second word.
bool istwoword(uint16_t op);

// Mnemonic of a conditional branch by its set/clear sense and SREG bit number.
const char* branchmnemonic(bool set, int bit);

}  // namespace velmora
