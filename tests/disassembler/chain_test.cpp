// The disassembler's chain, written out in its own alphabetical order with the aliases
// in their places, walked literally for every word: the line that wins must be one the
// executor's chain has too (no alias ever wins), and its mnemonic must be the one our
// text shows. This is what lets the disassembler share the core's decoding and texts.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "disassembler/disasminstruction.h"
#include "support/datafile.h"
#include "unnamedbitnames.h"

namespace velmora::test {
namespace {

struct Line {
    std::string mnemonic;
    uint16_t mask = 0, value = 0;
    std::string regs;    // "same", "differ" or any
    bool alias = false;  // a second name for words an earlier line already takes
};

// data/alphabetical_chain.txt, in the disassembler chain's order.
const std::vector<Line>& alphabeticalchain() {
    static const std::vector<Line> chain = [] {
        std::vector<Line> lines;
        for (const DataRow& row : datarows("alphabetical_chain.txt")) {
            std::istringstream words(row.text);
            Line line;
            std::string mask, value, flag;
            words >> line.mnemonic >> mask >> value;
            line.mask = static_cast<uint16_t>(std::stoi(mask, nullptr, 16));
            line.value = static_cast<uint16_t>(std::stoi(value, nullptr, 16));
            while (words >> flag) {
                if (flag == "alias")
                    line.alias = true;
                else
                    line.regs = flag;
            }
            lines.push_back(line);
        }
        return lines;
    }();
    return chain;
}

const Line* firstmatch(uint16_t w) {
    const bool same = ((w >> 4) & 31) == ((w & 15) | ((w >> 5) & 16));
    for (const Line& line : alphabeticalchain()) {
        if ((w & line.mask) != line.value) continue;
        if ((line.regs == "same" && !same) || (line.regs == "differ" && same)) continue;
        return &line;
    }
    return nullptr;
}

TEST(DisassemblerChain, ReachesTheExecutorsLineForEveryWord) {
    const BitNameTable names = unnamedbitnames();
    Disassembler disassembler(names);
    int recognised = 0;
    for (unsigned w = 0; w < 65536; ++w) {
        const uint16_t word = static_cast<uint16_t>(w);
        const Line* line = firstmatch(word);
        const std::string text = disassembler.disasminstruction(word, 0);
        if (line == nullptr) {
            EXPECT_EQ(text, "UNRECOGNIZED") << std::hex << w;
            continue;
        }
        ++recognised;
        EXPECT_FALSE(line->alias) << std::hex << w << " reaches the alias " << line->mnemonic;
        EXPECT_EQ(text.substr(0, text.find(' ')), line->mnemonic) << std::hex << w;
    }
    // Left out: the 1,554 words avr-objdump leaves undecoded too, and the 145 it reads as
    // XCH/LAS/LAC/LAT, DES and SPM Z+ (see objdump_agreement_test.cpp).
    EXPECT_EQ(recognised, 65536 - 1554 - 145);
}

TEST(DisassemblerChain, AliasesReadAsTheirBaseInstruction) {
    const BitNameTable names = unnamedbitnames();
    Disassembler d(names);
    const struct {
        uint16_t word;
        const char* text;
    } cases[] = {
        {0x0000, "NOP"},           {0x0001, "UNRECOGNIZED"}, {0xFFFF, "UNRECOGNIZED"},
        {0x0C55, "LSL R5"},        {0x2455, "CLR R5"},       {0x1C11, "ROL R1"},
        {0x2011, "TST R1"},        {0x9488, "BCLR 0"},       {0x9478, "BSET 7"},
        {0xEF0F, "LDI R16,$FF"},   {0x7F0E, "ANDI R16,$FE"}, {0x6001, "ORI R16,$01"},
        {0xF000, "BRCS 0"},        {0xF400, "BRCC 0"},       {0x8018, "LD R1,Y"},
        {0x8010, "LD R1,Z"},       {0x9A7B, "SBI $00F,3"},   {0xB7CF, "IN YL,$03F"},
    };
    for (const auto& c : cases) EXPECT_EQ(d.disasminstruction(c.word, 0), c.text) << std::hex << c.word;
}

TEST(DisassemblerChain, RegisterAndBitNamesComeFromTheTable) {
    BitNameTable names = unnamedbitnames();
    names[0x18 + 32][8] = "PORTB";
    names[0x0B + 32][8] = "UCSRA";
    names[0x0B + 32][5] = "UDRE";
    Disassembler d(names);
    EXPECT_EQ(d.disasminstruction(0x9AC3, 0), "SBI PORTB,3");
    EXPECT_EQ(d.disasminstruction(0x9B5D, 0), "SBIS UCSRA,UDRE");
    EXPECT_EQ(d.disasminstruction(0xBB08, 0), "OUT PORTB,R16");
    names[0x18 + 32][8] = "PB";  // read at each call, not copied
    EXPECT_EQ(d.disasminstruction(0xBB08, 0), "OUT PB,R16");
}

TEST(SecondWord, SetForTwoWordInstructionsAndClearedByTheNextCall) {
    const BitNameTable names = unnamedbitnames();
    Disassembler d(names);
    EXPECT_FALSE(d.secondword());
    const struct {
        uint16_t word, next;
        const char* text;
        bool two;
    } cases[] = {
        {0x940C, 0x1234, "JMP $1234", true},       {0x940F, 0x0010, "CALL $010010", true},
        {0x95FD, 0xFFFF, "JMP $3FFFFF", true},     {0x9100, 0x0100, "LDS R16,$0100", true},
        {0x93F0, 0x00FF, "STS $00FF,ZH", true},    {0x9001, 0x9000, "LD R0,Z+", false},
        {0x9000, 0x0000, "LDS R0,$0000", true},    {0xCFFF, 0x940C, "RJMP -1", false},
        {0xFFFF, 0x940C, "UNRECOGNIZED", false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(d.disasminstruction(c.word, c.next), c.text) << std::hex << c.word;
        EXPECT_EQ(d.secondword(), c.two) << std::hex << c.word;
    }
}

}  // namespace
}  // namespace velmora::test
