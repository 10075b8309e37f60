// Editing registers, bits, SRAM, the PC and the statistics while a started simulation pauses.

#include <gtest/gtest.h>

#include "shell/pausedediting.h"
#include "shellfixture.h"

namespace velmora::test {
namespace {

// A row of the visible register list that shows `name`, after scrolling it to the top.
int showregister(Shell& shell, const std::string& name) {
    const auto& table = shell.m().namedregisters;
    for (size_t i = 0; i < table.size(); ++i)
        if (table[i].name == name) {
            shell.model.scroll.registers = static_cast<int>(i);
            return static_cast<int>(i) - clampscroll(shell.m(), shell.model.scroll).registers;
        }
    ADD_FAILURE() << "no register " << name;
    return 0;
}

class PausedEditingTest : public ::testing::Test {
protected:
    void SetUp() override {
        shell.select("ATmega32");
        shell.loadhello();
        shell.startpaused();
    }
    Shell shell;
};

TEST(PausedEditingAnswers, BytesAndProgramCounter) {
    EXPECT_EQ(bytefromanswer("a"), 0x0A) << "one digit gets a leading zero";
    EXPECT_EQ(bytefromanswer("fe"), 0xFE) << "upper-cased";
    EXPECT_FALSE(bytefromanswer(""));
    EXPECT_FALSE(bytefromanswer("100"));
    EXPECT_FALSE(bytefromanswer("g1"));
    Machine m;
    m.flashwords = 0x4000;
    EXPECT_EQ(pcfromanswer("12", m), 0x12) << "padded to six digits";
    EXPECT_EQ(pcfromanswer("003fff", m), 0x3FFF);
    EXPECT_FALSE(pcfromanswer("4000", m)) << "beyond the highest PC";
    EXPECT_FALSE(pcfromanswer("0000001", m));
    EXPECT_FALSE(pcfromanswer("xyz", m));
    EXPECT_FALSE(pcfromanswer("", m));
}

TEST_F(PausedEditingTest, RegisterValueIsPromptedAndMasked) {
    const int row = showregister(shell, "GICR");  // write mask E3
    shell.input.answers = {"ff"};
    shell.model.clickregistername(row);
    ASSERT_EQ(shell.input.prompts.size(), 1u);
    EXPECT_EQ(shell.input.prompts[0], "Enter new value [00-FF] for special function register\n$05B   GICR.");
    EXPECT_EQ(shell.m().datamem[registeraddress(shell.m(), "GICR")], 0xE3);
    shell.input.answers = {"zz"};
    shell.model.clickregistername(row);
    EXPECT_EQ(shell.m().datamem[registeraddress(shell.m(), "GICR")], 0xE3) << "an invalid answer changes nothing";
}

TEST_F(PausedEditingTest, BitLampFlipsOnlyBitsTheRegisterHas) {
    const int row = showregister(shell, "GICR");
    const int a = registeraddress(shell.m(), "GICR");
    shell.model.clickbitlamp(row, 7);
    EXPECT_EQ(shell.m().datamem[a], 0x80);
    shell.model.clickbitlamp(row, 3);  // masked
    EXPECT_EQ(shell.m().datamem[a], 0x80);
    shell.model.clickbitlamp(row, 7);
    EXPECT_EQ(shell.m().datamem[a], 0x00);
}

TEST_F(PausedEditingTest, SramCellIsStoredUnmasked) {
    shell.model.scroll.sram = 5;
    shell.input.answers = {"7"};
    shell.model.clicksramname(2);
    EXPECT_EQ(shell.input.prompts.back(), "Enter new value [00-FF] for general purpose register $067.");
    EXPECT_EQ(shell.m().datamem[0x67], 0x07);
}

TEST_F(PausedEditingTest, ProgramCounterWithItsRangeAndDefault) {
    shell.m().pc = 0x0A;
    shell.input.answers = {"e"};
    shell.model.clickpcname();
    EXPECT_EQ(shell.input.prompts.back(), "Enter new value [000000-003FFF] for PC register.");
    EXPECT_EQ(shell.input.defaults.back(), "00000A");
    EXPECT_EQ(shell.m().pc, 0x0E);
    EXPECT_EQ(shell.model.fields().qinstnext, "LDI R18,$0A") << "byte 0x1C: the next instruction follows the PC";
    shell.input.answers = {"4000"};
    shell.model.clickpcname();
    EXPECT_EQ(shell.m().pc, 0x0E);
}

TEST_F(PausedEditingTest, StatisticsReset) {
    shell.model.command("menustep");
    shell.model.command("menustep");
    EXPECT_EQ(instructioncounter(shell.m()), 2u);
    shell.model.clickstatistic();
    EXPECT_EQ(instructioncounter(shell.m()), 0u);
    EXPECT_EQ(clockcyclecounter(shell.m()), 0u);
    EXPECT_EQ(shell.m().totalinstructions, 2u) << "only clean resets the totals";
}

TEST(PausedEditingGuard, ClicksDoNothingUnlessStartedAtStepByStep) {
    Shell shell;
    shell.select("ATmega32");
    shell.loadhello();
    shell.model.clickpcname();  // stopped
    EXPECT_TRUE(shell.input.prompts.empty());
    // Running at rate 3: the click comes in between two steps.
    shell.model.command("menuspeed3");
    int clicks = 0;
    shell.clock.onyield = [&] {
        if (++clicks == 3) {
            shell.model.clickregistername(0);
            shell.model.clickbitlamp(0, 0);
            shell.model.clicksramname(0);
            shell.model.clickstatistic();
            shell.m().stoprequest = true;
        }
    };
    shell.m().datamem[0x60] = 0;
    shell.model.command("menustart");
    EXPECT_TRUE(shell.input.prompts.empty());
    EXPECT_GT(instructioncounter(shell.m()), 0u) << "statistics untouched";
    EXPECT_FALSE(shell.m().simulationrunning);
}

}  // namespace
}  // namespace velmora::test
