// The instruction words the peripheral tests build, against avr-as 2.x output for
//   ldi r16,0x5A / sbi 0x1C,2 / cbi 0x1C,2 / sbis 0x10,2 / sbic 0x1C,1 / out 0x1E,r16 /
//   in r17,0x10 / lds r20,0x78 / sts 0x69,r21 / inc r24 / sei
// as avr-objdump -d listed them.

#include <gtest/gtest.h>

#include "support/ioencode.h"

namespace velmora::test {
namespace {

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
