#include <gtest/gtest.h>

#include "core/decode.h"

namespace velmora {
namespace {

TEST(DecodeTable, EveryWordMatchesTheLiteralChainWalk) {
    const auto& table = decodetable();
    int mismatches = 0;
    for (unsigned w = 0; w < 65536; ++w) {
        const Op expected = chainmatch(static_cast<uint16_t>(w));
        if (table[w] != expected && ++mismatches <= 10)
            ADD_FAILURE() << std::hex << "word " << w << ": table " << mnemonic(table[w]) << ", chain "
                          << mnemonic(expected);
    }
    EXPECT_EQ(mismatches, 0);
}

// Words whose line in the chain is decided by order: aliases and shared encodings.
struct Case {
    uint16_t word;
    Op expected;
    const char* why;
};

class ChainOrder : public ::testing::TestWithParam<Case> {};

TEST_P(ChainOrder, FirstMatchWins) {
    EXPECT_EQ(chainmatch(GetParam().word), GetParam().expected) << GetParam().why;
}

INSTANTIATE_TEST_SUITE_P(
    Aliases, ChainOrder,
    ::testing::Values(Case{0x9488, Op::Bclr, "CLC is BCLR 0"}, Case{0x94F8, Op::Bclr, "CLI is BCLR 7"},
                      Case{0x9408, Op::Bset, "SEC is BSET 0"}, Case{0xEF0F, Op::Ldi, "SER R16 is LDI R16,$FF"},
                      Case{0x7F0E, Op::Andi, "CBR reads as ANDI"}, Case{0x6001, Op::Ori, "SBR reads as ORI"},
                      Case{0x0C55, Op::Lsl, "ADD R5,R5 is LSL"}, Case{0x0C56, Op::Add, "ADD R5,R6"},
                      Case{0x1C11, Op::Rol, "ADC R1,R1 is ROL"}, Case{0x2011, Op::Tst, "AND R1,R1 is TST"},
                      Case{0x2455, Op::Clr, "EOR R5,R5 is CLR"}, Case{0x2456, Op::Eor, "EOR R5,R6"},
                      Case{0xF000, Op::BranchSet, "BRLO shares BRCS"}, Case{0xF400, Op::BranchClear, "BRSH"},
                      Case{0x9598, Op::Break, "BREAK"}, Case{0x8008, Op::LdY, "LDD R0,Y+0 is LD R0,Y"},
                      Case{0x8000, Op::LdZ, "LDD R0,Z+0 is LD R0,Z"}, Case{0x8009, Op::LddY, "LDD R0,Y+1"},
                      Case{0x8208, Op::StY, "STD Y+0 is ST Y"}, Case{0xA208, Op::StdY, "STD Y+32"},
                      Case{0x0000, Op::Nop, "NOP"}, Case{0x0001, Op::Unrecognized, "reserved word"},
                      Case{0xFFFF, Op::Unrecognized, "erased flash"}, Case{0x9403, Op::Inc, "INC R0"},
                      Case{0x940E, Op::Call, "CALL"}, Case{0x940F, Op::Call, "CALL, k bit 16"},
                      Case{0x940C, Op::Jmp, "JMP"}, Case{0x9000, Op::Lds, "LDS"}, Case{0x9200, Op::Sts, "STS"},
                      Case{0x9004, Op::LpmZ, "LPM R0,Z"}, Case{0x95C8, Op::Lpm, "LPM"},
                      Case{0x95D8, Op::Elpm, "ELPM"}, Case{0x9409, Op::Ijmp, "IJMP"},
                      Case{0x9419, Op::Eijmp, "EIJMP"}, Case{0x0308, Op::Fmul, "FMUL R16,R16"},
                      Case{0x0300, Op::Mulsu, "MULSU R16,R16"}, Case{0x0380, Op::Fmuls, "FMULS"},
                      Case{0x0388, Op::Fmulsu, "FMULSU"}, Case{0x9404, Op::Unrecognized, "9404 is reserved"},
                      Case{0x95F8, Op::Unrecognized, "95F8 (ESPM form) is not in the chain"},
                      Case{0xF808, Op::Unrecognized, "BLD with bit 3 set"}));

TEST(TwoWord, OnlyCallJmpLdsSts) {
    int count = 0;
    for (unsigned w = 0; w < 65536; ++w) {
        const Op id = chainmatch(static_cast<uint16_t>(w));
        const bool expected = id == Op::Call || id == Op::Jmp || id == Op::Lds || id == Op::Sts;
        EXPECT_EQ(istwoword(static_cast<uint16_t>(w)), expected) << std::hex << w;
        count += expected;
    }
    // CALL and JMP: 64 words each (6 address bits); LDS and STS: 32 registers each.
    EXPECT_EQ(count, 64 + 64 + 32 + 32);
}

}  // namespace
}  // namespace velmora
