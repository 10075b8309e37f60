// The label scan on single words: which words name a target, and how names are reused.

#include <gtest/gtest.h>

#include <string>

#include "disassembler/disasmlabels.h"

namespace velmora::test {
namespace {

TEST(LabelScan, OnlyBranchesJumpsAndCallsInsideTheProgramTakeLabels) {
    DisasmLabels labels(8);
    const struct {
        int index;
        uint16_t word, next;
        const char* before;
        const char* after;
    } cases[] = {
        {0, 0xE0FF, 0, "LDI R31,$FF", "LDI R31,$FF"},  // no target
        {0, 0x940E, 0x0005, "CALL $0005", "CALL L1"},
        {1, 0x940C, 0x0005, "JMP $0005", "JMP L1"},    // known target: same name
        {2, 0xF7EC, 0, "BRGE -3", "BRGE L2"},          // 2 + 1 - 3 = word 0
        {3, 0xDFFF, 0, "RCALL -1", "RCALL L3"},        // to itself
        {4, 0xC003, 0, "RJMP 3", "RJMP 3"},            // word 8: one past the end
        {7, 0xF3BB, 0, "BRVS -9", "BRVS -9"},          // word -1: before the start
        {7, 0xF3C3, 0, "BRVS -8", "BRVS L2"},
        {0, 0x940D, 0x0005, "JMP $010005", "JMP $010005"},  // bits above 16 set: far outside
    };
    for (const auto& c : cases) {
        std::string text = c.before;
        disasmlabelscan(labels, c.index, c.word, c.next, text);
        EXPECT_EQ(text, c.after) << c.before;
    }
    EXPECT_EQ(labels.labelcount, 3);
    EXPECT_EQ(labels.at(5), "L1");
    EXPECT_EQ(labels.at(0), "L2");
    EXPECT_EQ(labels.at(3), "L3");
    EXPECT_EQ(labels.at(-1), "");
    EXPECT_EQ(labels.at(8), "");
}

}  // namespace
}  // namespace velmora::test
