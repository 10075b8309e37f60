// Listings of a small program in the three layouts, worked out by hand, and the label
// rules: numbering by first reference, targets outside the program, labels on second words.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "core/machine.h"
#include "core/testmachine.h"
#include "disassembler/disasmlisting.h"

namespace velmora::test {
namespace {

using Rows = std::vector<std::string>;

const Rows kAddressHeader = {"-----------------------------------", "AVR DISASSEMBLER LISTING",
                             "Address Opcode  Instruction", "-----------------------------------"};
const Rows kLabelHeader = {";-----------------------------------", ";AVR DISASSEMBLER LISTING",
                           ";Label  Instruction", ";-----------------------------------"};

// The header and the rows, each ended by CR LF.
std::string listing(const Rows& header, const Rows& rows) {
    std::string text;
    for (const Rows* part : {&header, &rows})
        for (const std::string& row : *part) text += row + "\r\n";
    return text;
}

Machine loaded(const std::vector<uint16_t>& words) {
    Machine m;
    configurebaremachine(m);  // names SREG, SPH, SPL
    loadwords(m, words);
    m.programbytes = static_cast<int>(words.size()) * 2;
    return m;
}

// Word  0 BREQ -3 (before the program)   1 CALL 9          3 RJMP -1 (itself)
//       4 LDS R16,$0100                   6 unknown         7 RCALL to word 5 (LDS's second word)
//       8 OUT SREG,R16   9 RET   10 BRNE +20 (past the end)   11 RJMP to 0   12 JMP $FFFF (past the end)
const std::vector<uint16_t> kProgram = {0xF3E9, 0x940E, 0x0009, 0xCFFF, 0x9100, 0x0100, 0xFFFF,
                                        0xDFFD, 0xBF0F, 0x9508, 0xF4A1, 0xCFF4, 0x940C};

TEST(Listing, NormalLayout) {
    const Rows rows = {
        "000000  F3E9    L4:\tBREQ -3",   "000001  940E    \tCALL L1",      "000002  0009",
        "000003  CFFF    L2:\tRJMP L2",   "000004  9100    \tLDS R16,$0100", "000005  0100",
        "000006  FFFF    \tUNRECOGNIZED", "000007  DFFD    \tRCALL L3",     "000008  BF0F    \tOUT SREG,R16",
        "000009  9508    L1:\tRET",       "00000A  F4A1    \tBRNE 20",      "00000B  CFF4    \tRJMP L4",
        "00000C  940C    \tJMP $FFFF",
    };
    EXPECT_EQ(disasmfile(loaded(kProgram), ListingLayout::Normal), listing(kAddressHeader, rows));
}

TEST(Listing, WithoutOpcodesLayout) {
    const Rows rows = {
        "L4:\tBREQ -3", "\tCALL L1",     "L2:\tRJMP L2", "\tLDS R16,$0100", "\t.DW $FFFF ;UNRECOGNIZED",
        "\tRCALL L3",   "\tOUT SREG,R16", "L1:\tRET",    "\tBRNE 20",       "\tRJMP L4",
        "\tJMP $FFFF",
    };
    EXPECT_EQ(disasmfile(loaded(kProgram), ListingLayout::WithoutOpcodes), listing(kLabelHeader, rows));
}

TEST(Listing, PlainLayoutHasNoLabelsAndNoTab) {
    const Rows rows = {
        "000000  F3E9    BREQ -3",      "000001  940E    CALL $0009", "000002  0009",
        "000003  CFFF    RJMP -1",      "000004  9100    LDS R16,$0100", "000005  0100",
        "000006  FFFF    UNRECOGNIZED", "000007  DFFD    RCALL -3",   "000008  BF0F    OUT SREG,R16",
        "000009  9508    RET",          "00000A  F4A1    BRNE 20",    "00000B  CFF4    RJMP -12",
        "00000C  940C    JMP $FFFF",
    };
    EXPECT_EQ(disasmfile(loaded(kProgram), ListingLayout::Plain), listing(kAddressHeader, rows));
}

TEST(Listing, PlainFlagOverridesTheSettingButUnknownWordsFollowIt) {
    const Machine m = loaded({0xCFFF, 0xFFFF});
    EXPECT_EQ(disasmlisting(m, true, true),
              listing(kAddressHeader, {"000000  CFFF    RJMP -1", "000001  FFFF    .DW $FFFF ;UNRECOGNIZED"}));
    EXPECT_EQ(disasmlisting(m, false, true), disasmfile(m, ListingLayout::WithoutOpcodes));
    EXPECT_EQ(disasmlisting(m, false, false), disasmfile(m, ListingLayout::Normal));
}

TEST(Listing, RjmpToItselfAtWordTenIsLabelOne) {
    std::vector<uint16_t> words(10, 0x0000);
    words.push_back(0xCFFF);
    const Machine m = loaded(words);
    const std::string normal = disasmfile(m, ListingLayout::Normal);
    EXPECT_NE(normal.find("\r\n00000A  CFFF    L1:\tRJMP L1\r\n"), std::string::npos) << normal;
    EXPECT_NE(disasmfile(m, ListingLayout::WithoutOpcodes).find("\r\nL1:\tRJMP L1\r\n"), std::string::npos);
}

TEST(Listing, LabelsAreNumberedByFirstReferenceNotByAddress) {
    // Word 0 refers to word 4 first, then word 1 to word 3 and word 2 to word 4 again.
    const Machine m = loaded({0xC003, 0xF009, 0xF409, 0x0000, 0x0000});
    EXPECT_EQ(disasmfile(m, ListingLayout::WithoutOpcodes),
              listing(kLabelHeader, {"\tRJMP L1", "\tBREQ L2", "\tBRNE L1", "L2:\tNOP", "L1:\tNOP"}));
}

TEST(Listing, TargetsJustInsideAndJustOutside) {
    // RJMP +1 at word 0 reaches the last word; at word 1 one past it; BREQ -4 at word 2 reaches -1.
    const Machine m = loaded({0xC001, 0xC001, 0xF3E1});
    EXPECT_EQ(disasmfile(m, ListingLayout::WithoutOpcodes),
              listing(kLabelHeader, {"\tRJMP L1", "\tRJMP 1", "L1:\tBREQ -4"}));
}

TEST(Listing, CallsBeyondSixteenBitsAndInsideTheProgram) {
    const Machine m = loaded({0x940F, 0x0000, 0x940E, 0x0002, 0x9508});
    EXPECT_EQ(disasmfile(m, ListingLayout::Normal),
              listing(kAddressHeader, {"000000  940F    \tCALL $010000", "000001  0000", "000002  940E    L1:\tCALL L1",
                                       "000003  0002", "000004  9508    \tRET"}));
}

TEST(Listing, TwoWordInstructionAtTheEndTakesItsOperandFromMemory) {
    Machine m = loaded({0x0000, 0x9100, 0x1234});
    m.programbytes = 4;  // the operand lies behind the loaded program and gets no row
    EXPECT_EQ(disasmfile(m, ListingLayout::Plain),
              listing(kAddressHeader, {"000000  0000    NOP", "000001  9100    LDS R16,$1234"}));
}

TEST(Listing, EmptyOddAndOversizedPrograms) {
    Machine m = loaded({});
    EXPECT_EQ(disasmfile(m, ListingLayout::Normal), listing(kAddressHeader, {}));
    EXPECT_EQ(disasmfile(m, ListingLayout::WithoutOpcodes), listing(kLabelHeader, {}));

    m = loaded({0x9508, 0x0000});
    m.programbytes = 3;  // half a word makes no row
    EXPECT_EQ(disasmfile(m, ListingLayout::Plain), listing(kAddressHeader, {"000000  9508    RET"}));

    m = loaded({0xCFFF});
    m.programbytes = 1 << 30;  // more than program memory holds: the listing stops at its end
    const std::string plain = disasmfile(m, ListingLayout::Plain);
    EXPECT_NE(plain.find("003FFF  FFFF    UNRECOGNIZED\r\n"), std::string::npos);
    EXPECT_EQ(plain.find("004000"), std::string::npos);
}

TEST(Listing, ProgressReportsBothPassesPerWordButSkipsSecondWords) {
    const Machine m = loaded({0x0000, 0x940C, 0x0000, 0x0000});
    std::vector<std::pair<int, int>> calls;
    disasmlisting(m, false, false, [&](int pass, int index) { calls.emplace_back(pass, index); });
    const std::vector<std::pair<int, int>> expected = {{1, 0}, {1, 1}, {1, 3}, {2, 0}, {2, 1}, {2, 3}};
    EXPECT_EQ(calls, expected);
    EXPECT_EQ(progresspasstext(2), "Performing pass 2.");
    EXPECT_EQ(progresslinetext(0), "Line 1");
}

}  // namespace
}  // namespace velmora::test
