// The main window's display fields on real model files.
//
// Editing registers, bits, SRAM, the PC and the statistics while a started simulation pauses.

#include <gtest/gtest.h>

#include "shell/mainwindowfields.h"
#include "shell/pausedediting.h"
#include "shellfixture.h"
#include "support/sectiontable.h"

namespace velmora::test {
namespace {

int tableindex(const Machine& m, const std::string& name) {
    for (size_t i = 0; i < m.namedregisters.size(); ++i)
        if (m.namedregisters[i].name == name) return static_cast<int>(i);
    return -1;
}

// SRAM rows from the model's first SRAM cell, four digits from $1000, N/A past the SRAM's end.
TEST(MainWindowFields, SramRowsOfEachModel) {
    Shell shell;
    for (const TableRow& r : tablerows("shelltables.txt", "sramrows")) {
        shell.select(r[0]);
        const SramRow row = gprprint(shell.m(), static_cast<int>(r.number(1)))[static_cast<size_t>(r.number(2))];
        EXPECT_EQ(row.address, r[3]) << r.where;
        EXPECT_EQ(sramscrollmax(shell.m()), r.number(4)) << r.where;
        if (r[3] == "N/A") {
            EXPECT_EQ(row.value, "N/A") << r.where;
            EXPECT_EQ(row.dataaddress, -1) << r.where;
        }
    }
    EXPECT_EQ(clampscroll(shell.m(), {500, 500}).sram, 32);
    shell.select("ATmega32");
    shell.m().datamem[0x60] = 0xA5;
    EXPECT_EQ(shell.model.fields().sram[0].value, "A5");
    EXPECT_EQ(shell.model.fields().sram[0].address, "$060");
}

TEST(MainWindowFields, RegisterRowsWithLampsAndMaskedBits) {
    Shell shell;
    shell.select("ATmega32");
    Machine& m = shell.m();
    const int gicr = tableindex(m, "GICR");  // write mask E3: bits 4, 3 and 2 do not exist
    ASSERT_GE(gicr, 0);
    m.datamem[m.namedregisters[gicr].address] = 0x81;
    const auto rows = sfrprint(m, gicr);
    EXPECT_EQ(rows[0].text, m.namedregisters[gicr].text);
    EXPECT_EQ(rows[0].text, "$05B   GICR");
    EXPECT_EQ(rows[0].value, "81");
    const std::array<Lamp, 8> expected = {Lamp::One,    Lamp::Zero,   Lamp::Zero, Lamp::Masked,
                                          Lamp::Masked, Lamp::Masked, Lamp::Zero, Lamp::One};
    EXPECT_EQ(rows[0].lamps, expected) << "bit 7 first, as the heading reads";
    EXPECT_TRUE(rows[0].editable);
}

TEST(MainWindowFields, RowsBeyondTheRegisterTableAreEmpty) {
    Shell shell;
    shell.select("ATmega32");
    const int count = static_cast<int>(shell.m().namedregisters.size());
    EXPECT_EQ(registerscrollmax(shell.m()), count - 16);
    const auto rows = sfrprint(shell.m(), count - 10);
    EXPECT_FALSE(rows[9].text.empty());
    EXPECT_TRUE(rows[10].text.empty());
    EXPECT_EQ(rows[10].tableindex, -1);
    EXPECT_FALSE(rows[10].editable);
}

TEST(MainWindowFields, HardwareStackRowsShowThreeDigitsAndNoLamps) {
    Shell shell;
    shell.select("ATtiny12");
    Machine& m = shell.m();
    const int count = static_cast<int>(m.namedregisters.size());
    ASSERT_EQ(m.namedregisters[count - 3].text, "Stack Level 0");
    m.hwstack[0] = 0x1A5;
    const auto rows = sfrprint(m, count - 16);
    EXPECT_EQ(rows[13].text, "Stack Level 0");
    EXPECT_EQ(rows[13].value, "1A5");
    EXPECT_FALSE(rows[13].editable);
    EXPECT_EQ(rows[13].lamps[0], Lamp::None);
    // Without SRAM every SRAM row says so.
    for (const SramRow& row : shell.model.fields().sram) EXPECT_EQ(row.address, "N/A");
}

TEST(MainWindowFields, ProgramCounterAndItsLamps) {
    Shell shell;
    shell.select("ATmega32");
    shell.m().pc = 0x2A5;
    RunFields f = shell.model.fields();
    EXPECT_EQ(f.qpc, "0002A5");
    EXPECT_EQ(f.pclampcount, 14) << "16K words";
    EXPECT_TRUE(f.pclamps[0]);
    EXPECT_FALSE(f.pclamps[1]);
    EXPECT_TRUE(f.pclamps[9]);
    EXPECT_EQ(highestpctext(shell.m()), "003FFF");
    shell.select("ATmega128");
    EXPECT_EQ(shell.model.fields().pclampcount, 16) << "at most sixteen lamps";
    EXPECT_EQ(highestpctext(shell.m()), "00FFFF");
    shell.select("ATtiny13");
    EXPECT_EQ(shell.model.fields().pclampcount, 9);
}

TEST(MainWindowFields, StatisticsAndRealTime) {
    Shell shell;
    shell.select("ATmega32");
    setinstructioncounter(shell.m(), 33);
    setclockcyclecounter(shell.m(), 43);
    const RunFields f = shell.model.fields();
    EXPECT_EQ(f.qbrojinst, "33");
    EXPECT_EQ(f.qcount, "43");
    EXPECT_EQ(f.qrealtime, "10.75 \xC2\xB5s");
}

TEST(MainWindowFields, InstructionTextsEmptyAfterAResetUntilStart) {
    Shell shell;
    shell.select("ATmega32");
    shell.loadhello();
    EXPECT_EQ(shell.model.fields().qinstnext, "");
    EXPECT_EQ(shell.model.fields().qinst, "");
    shell.startpaused();
    EXPECT_EQ(shell.model.fields().qinstnext, "LDI R17,$5F");
    shell.model.command("menustep");
    EXPECT_EQ(shell.model.fields().qinst, "LDI R17,$5F");
    EXPECT_EQ(shell.model.fields().qinstnext, "OUT SPL,R17");
}

TEST(MainWindowFields, ClockAndProgramFields) {
    Shell shell;
    shell.select("ATmega32");
    shell.model.options().clockfrequency = ".5";
    EXPECT_EQ(shell.model.qclockfreq(), "0.5 MHz");
    EXPECT_EQ(shell.model.qprocessor(), "ATmega32");
    EXPECT_EQ(shell.model.title(), "Velmora - ATmega32");
    shell.loadhello();
    EXPECT_EQ(shell.model.qprogram(), hellohex());
}

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
    Machine m;
    m.flashwords = 0x4000;
    const auto widened = [](auto value) { return value ? std::optional<long>(*value) : std::nullopt; };
    for (const TableRow& r : tablerows("shelltables.txt", "pausedanswers")) {
        const std::optional<long> taken =
            r[0] == "byte" ? widened(bytefromanswer(r[1])) : widened(pcfromanswer(r[1], m));
        EXPECT_EQ(taken, r[2] == "refused" ? std::nullopt : std::optional<long>(r.number(2))) << r.where;
    }
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
