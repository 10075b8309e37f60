// Relative jumps that cannot reach become absolute on parts above 4096 flash words.

#include "basic/relaxjumps.h"
#include "basicfixture.h"

namespace velmora::test {
namespace {

TEST(BasicRelaxJumps, ReachCountsWrapAroundTheEndOfFlash) {
    const std::tuple<int, int, int, bool> cases[] = {
        {100, 100 + 2047, 16384, true},  {100, 100 + 2048, 16384, false}, {3000, 3000 - 2048, 16384, true},
        {3000, 3000 - 2049, 16384, false}, {10, 8192 - 2048 + 10, 8192, true}, {10, 8192 - 2049 + 10, 8192, false},
        {8000, 8000 - 6145, 8192, true}, {8000, 8000 - 6144, 8192, false},
    };
    for (const auto& [from, to, flash, reaches] : cases)
        EXPECT_EQ(jumpreaches(from, to, flash), reaches) << from << " -> " << to << " in " << flash;
}

// A Goto over `words` NOPs, from the start to a label behind them.
std::string gotoover(int words) {
    std::string source = "Goto far\r\n";
    for (int i = 0; i < words; ++i) source += "ASM: NOP\r\n";
    return source + "far: Halt\r\n";
}

struct Case {
    const char* model;
    int nops;
    const char* jump;
};

TEST(BasicRelaxJumps, AFarGotoBecomesJmpOnlyWhereNothingElseReaches) {
    const Case cases[] = {
        {"ATmega32", 2047, "\tRJMP L0001"},  // 16384 words: 2047 ahead still reaches
        {"ATmega32", 2048, "\tJMP L0001"},
        {"ATmega8", 3000, "\tRJMP L0001"},   // 4096 words: never changed
        {"ATmega16", 3000, "\tJMP L0001"},   // 8192 words, no wrap that reaches
        {"ATmega16", 6200, "\tRJMP L0001"},  // reaches backwards across the end
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.model) + " " + std::to_string(c.nops));
        const BasicCompileResult result = compilebasic(gotoover(c.nops), c.model);
        ASSERT_TRUE(result.ok) << result.error;
        const std::vector<std::string> lines = asmlines(result.asmtext);
        ASSERT_NE(std::find(lines.begin(), lines.end(), c.jump), lines.end());
        const AsmContext assembled = assemblegenerated(result.asmtext, c.model);
        EXPECT_EQ(assembled.asmerrors, 0);
    }
}

TEST(BasicRelaxJumps, AWidenedJumpPushesTheNextOneOutOfReach) {
    // The first Goto reaches its label 2047 words ahead until the second, which lies between
    // them, grows.
    std::string source = "Goto far\r\nGoto far2\r\n";
    for (int i = 0; i < 2046; ++i) source += "ASM: NOP\r\n";
    source += "far: Halt\r\n";
    for (int i = 0; i < 10; ++i) source += "ASM: NOP\r\n";
    source += "far2: Halt\r\n";
    const BasicCompileResult result = compilebasic(source);
    ASSERT_TRUE(result.ok) << result.error;
    const std::vector<std::string> lines = asmlines(result.asmtext);
    EXPECT_NE(std::find(lines.begin(), lines.end(), "\tJMP L0001"), lines.end());
    EXPECT_NE(std::find(lines.begin(), lines.end(), "\tJMP L0002"), lines.end());
    EXPECT_EQ(assemblegenerated(result.asmtext, "ATmega32").asmerrors, 0);
}

}  // namespace
}  // namespace velmora::test
