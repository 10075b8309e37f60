// Instruction words: the decode table against the literal chain walk and the two-word
// instructions, and one row of data/words.txt each for the chain's order and the texts; the
// words the peripheral tests build, against avr-as 2.x output for
//   ldi r16,0x5A / sbi 0x1C,2 / cbi 0x1C,2 / sbis 0x10,2 / sbic 0x1C,1 / out 0x1E,r16 /
//   in r17,0x10 / lds r20,0x78 / sts 0x69,r21 / inc r24 / sei
// as avr-objdump -d listed them.

#include <gtest/gtest.h>

#include <map>

#include "core/decode.h"
#include "core/instructiontext.h"
#include "core/machine.h"
#include "core/programcase.h"
#include "support/ioencode.h"

namespace velmora::test {
namespace {

// The table against the literal chain walk; only CALL, JMP, LDS and STS take two words.
TEST(DecodeTable, EveryWordMatchesTheLiteralChainWalk) {
    const auto& table = decodetable();
    int mismatches = 0, twowords = 0;
    for (unsigned w = 0; w < 65536; ++w) {
        const Op expected = chainmatch(static_cast<uint16_t>(w));
        if (table[w] != expected && ++mismatches <= 10)
            ADD_FAILURE() << std::hex << "word " << w << ": table " << mnemonic(table[w]) << ", chain "
                          << mnemonic(expected);
        const bool twoword = expected == Op::Call || expected == Op::Jmp || expected == Op::Lds || expected == Op::Sts;
        EXPECT_EQ(istwoword(static_cast<uint16_t>(w)), twoword) << std::hex << w;
        twowords += twoword;
    }
    EXPECT_EQ(mismatches, 0);
    // CALL and JMP: 64 words each (6 address bits); LDS and STS: 32 registers each.
    EXPECT_EQ(twowords, 64 + 64 + 32 + 32);
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
    for (const TableRow& row : tablerows("words.txt", "words")) {
        const std::vector<std::string>& f = row.cells;
        ASSERT_EQ(f.size(), 5u) << row.where;
        SCOPED_TRACE(row.where + ": " + f[0] + " " + f[4]);
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

TEST(IoEncode, WordsAgreeWithTheAssembler) {
    EXPECT_EQ(ldi(16, 0x5A), 0xE50A);
    EXPECT_EQ(sbi(0x1C + 32, 2), 0x9AE2);
    EXPECT_EQ(cbi(0x1C + 32, 2), 0x98E2);
    EXPECT_EQ(sbis(0x10 + 32, 2), 0x9B82);
    EXPECT_EQ(sbic(0x1C + 32, 1), 0x99E1);
    EXPECT_EQ(outd(0x1E + 32, 16), 0xBB0E);
    EXPECT_EQ(ind(17, 0x10 + 32), 0xB310);
    EXPECT_EQ(lds(20), 0x9140);
    EXPECT_EQ(sts(21), 0x9350);
    EXPECT_EQ(inc(24), 0x9583);
    EXPECT_EQ(kSei, 0x9478);
}

}  // namespace
}  // namespace velmora::test
