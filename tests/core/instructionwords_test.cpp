// Instruction words: the decode table against the literal chain walk, the two-word
// instructions, and one row of data/words.txt each for the chain's order and the texts.

#include <gtest/gtest.h>

#include <map>

#include "core/decode.h"
#include "core/instructiontext.h"
#include "core/machine.h"
#include "core/programcase.h"

namespace velmora::test {
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

TEST(Words, ChainOrderAndTextOfEveryRow) {
    const std::map<std::string, Op> ids = {
#define VELMORA_ID(id, text) {#id, Op::id},
        VELMORA_INSTRUCTIONS(VELMORA_ID)
#undef VELMORA_ID
    };
    BitNameTable names(96);
    for (int a = 0; a < 96; ++a) names[a] = defaultbitnames(a);
    names[0x18 + 32][8] = "PORTB";
    names[0x3F + 32][8] = "SREG";
    names[0x0C + 32][8] = "UDR";
    names[0x0B + 32][8] = "UCSRA";
    names[0x0B + 32][5] = "UDRE";
    for (const DataRow& row : datarows("words.txt")) {
        const std::vector<std::string> f = columns(row.text);
        ASSERT_EQ(f.size(), 5u) << "line " << row.line;
        SCOPED_TRACE("line " + std::to_string(row.line) + ": " + f[0] + " " + f[4]);
        const auto word = static_cast<uint16_t>(std::stoi(f[0], nullptr, 16));
        const auto word2 = static_cast<uint16_t>(f[1] == "-" ? 0 : std::stoi(f[1], nullptr, 16));
        if (f[2] != "-") {
            ASSERT_TRUE(ids.count(f[2])) << "no id " << f[2];
            EXPECT_EQ(static_cast<int>(chainmatch(word)), static_cast<int>(ids.at(f[2])))
                << mnemonic(chainmatch(word));
        }
        if (f[3] != "-") { EXPECT_EQ(formatinstruction(word, word2, names), f[3]); }
    }
}

TEST(Words, UnnamedHighAddressesShowFourDigits) {
    EXPECT_EQ(defaultbitnames(5000)[8], "$1388");
    EXPECT_EQ(defaultbitnames(0x5F)[8], "$03F");
    EXPECT_EQ(defaultbitnames(0x60)[8], "$060");
    EXPECT_EQ(defaultbitnames(0x60)[3], "3");
}

}  // namespace
}  // namespace velmora::test
