// Instruction texts: operand forms and names, checked against the texts the instruction
// set manual uses (register names XL..ZH, "$" immediates, decimal displacements).

#include <gtest/gtest.h>

#include "core/encode.h"
#include "core/instructiontext.h"
#include "core/machine.h"

namespace velmora::test {
namespace {

struct TextCase {
    uint16_t word, word2;
    const char* text;
};

class Text : public ::testing::TestWithParam<TextCase> {};

TEST_P(Text, Format) {
    BitNameTable names(96);
    for (int a = 0; a < 96; ++a) names[a] = defaultbitnames(a);
    names[0x18 + 32][8] = "PORTB";
    names[0x3F + 32][8] = "SREG";
    names[0x0C + 32][8] = "UDR";
    names[0x0B + 32][8] = "UCSRA";
    names[0x0B + 32][5] = "UDRE";
    EXPECT_EQ(formatinstruction(GetParam().word, GetParam().word2, names), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, Text,
    ::testing::Values(
        TextCase{0x0C56, 0, "ADD R5,R6"}, TextCase{0x0C55, 0, "LSL R5"}, TextCase{0x2455, 0, "CLR R5"},
        TextCase{0x2011, 0, "TST R1"}, TextCase{0x1C11, 0, "ROL R1"}, TextCase{0x9488, 0, "BCLR 0"},
        TextCase{0x94F8, 0, "BCLR 7"}, TextCase{0x9408, 0, "BSET 0"}, TextCase{0xEF0F, 0, "LDI R16,$FF"},
        TextCase{0xE6E0, 0, "LDI ZL,$60"}, TextCase{0x2FBA, 0, "MOV XH,XL"}, TextCase{0x2DBA, 0, "MOV XH,R10"},
        TextCase{0x9601, 0, "ADIW R25:R24,1"}, TextCase{0x97FF, 0, "SBIW ZH:ZL,63"},
        TextCase{0x0101, 0, "MOVW R1:R0,R3:R2"}, TextCase{0x0211, 0, "MULS R17,R17"},
        TextCase{0x0309, 0, "FMUL R16,R17"}, TextCase{0xF7F9, 0, "BRNE -1"}, TextCase{0xF009, 0, "BREQ 1"},
        TextCase{0xF000, 0, "BRCS 0"}, TextCase{0xF400, 0, "BRCC 0"}, TextCase{0xF3FF, 0, "BRIE -1"},
        TextCase{0xCFFF, 0, "RJMP -1"}, TextCase{0xD7FF, 0, "RCALL 2047"}, TextCase{0xD800, 0, "RCALL -2048"},
        TextCase{0x940C, 0x1234, "JMP $1234"}, TextCase{0x940F, 0x0010, "CALL $010010"},
        TextCase{0x9A38, 0, "SBI $007,0"}, TextCase{0x9AC3, 0, "SBI PORTB,3"},
        TextCase{0x995D, 0, "SBIC UCSRA,UDRE"}, TextCase{0xB60F, 0, "IN R0,SREG"},
        TextCase{0xB9CC, 0, "OUT UDR,YL"}, TextCase{0x900C, 0, "LD R0,X"}, TextCase{0x901D, 0, "LD R1,X+"},
        TextCase{0x902E, 0, "LD R2,-X"}, TextCase{0x8038, 0, "LD R3,Y"}, TextCase{0xA04D, 0, "LDD R4,Y+37"},
        TextCase{0x8050, 0, "LD R5,Z"}, TextCase{0x8261, 0, "STD Z+1,R6"}, TextCase{0x937D, 0, "ST X+,R23"},
        TextCase{0x8388, 0, "ST Y,R24"}, TextCase{0x9190, 0x0100, "LDS R25,$0100"},
        TextCase{0x93A0, 0xFFFF, "STS $FFFF,XL"}, TextCase{0x95C8, 0, "LPM"}, TextCase{0x91E4, 0, "LPM ZL,Z"},
        TextCase{0x91F5, 0, "LPM ZH,Z+"}, TextCase{0x95D8, 0, "ELPM"}, TextCase{0x9006, 0, "ELPM R0,Z"},
        TextCase{0x9598, 0, "BREAK"}, TextCase{0x9588, 0, "SLEEP"}, TextCase{0x95A8, 0, "WDR"},
        TextCase{0x9509, 0, "ICALL"}, TextCase{0x9419, 0, "EIJMP"}, TextCase{0xFB03, 0, "BST R16,3"},
        TextCase{0xFE07, 0, "SBRS R0,7"}, TextCase{0x0000, 0, "NOP"}, TextCase{0xFFFF, 0, "UNRECOGNIZED"},
        TextCase{0x920F, 0, "PUSH R0"}, TextCase{0x91FF, 0, "POP ZH"}, TextCase{0x7F0E, 0, "ANDI R16,$FE"}));

TEST(Text, UnnamedHighAddressesShowFourDigits) {
    EXPECT_EQ(defaultbitnames(5000)[8], "$1388");
    EXPECT_EQ(defaultbitnames(0x5F)[8], "$03F");
    EXPECT_EQ(defaultbitnames(0x60)[8], "$060");
    EXPECT_EQ(defaultbitnames(0x60)[3], "3");
}

}  // namespace
}  // namespace velmora::test
