// The Options menu: switches, the "Change ..." prompts, the unprogrammed value and the
// order of the register list.
//
// One decision for every message: modal box or the Confirmation window.

#include <gtest/gtest.h>

#include "core/memorysettings.h"
#include "shell/messagepolicy.h"
#include "shell/optioncommands.h"
#include "shellfixture.h"
#include "support/sectiontable.h"

namespace velmora::test {
namespace {

class OptionsTest : public ::testing::Test {
protected:
    void SetUp() override {
        shell.select("ATmega32");
        shell.model.options() = readshelloptions(shell.settings, productdata());
    }
    Shell shell;
};

TEST_F(OptionsTest, ChangeCommandsKeepValuesInsideTheirRange) {
    for (const TableRow& row : tablerows("shelltables.txt", "optionranges")) {
        SCOPED_TRACE(row.where);
        const struct {
            std::string control, setting, prompt, low, high, range;
        } c{row[0], row[1], row[2], row[3], row[4], row[5]};
        const std::string before = shell.settings.getsetting(c.setting, "");
        shell.input.answers = {std::to_string(std::stoi(c.low) - 1)};
        shell.model.command(c.control);
        EXPECT_EQ(shell.input.prompts.back(), c.prompt);
        EXPECT_EQ(shell.input.defaults.back(), before) << "the present value is offered";
        EXPECT_EQ(shell.lastmessage(), c.range);
        EXPECT_EQ(shell.settings.getsetting(c.setting, ""), before);
        shell.input.answers = {std::to_string(std::stoi(c.high) + 1)};
        shell.model.command(c.control);
        EXPECT_EQ(shell.lastmessage(), c.range);
        shell.input.answers = {c.high};
        shell.model.command(c.control);
        EXPECT_EQ(shell.settings.getsetting(c.setting, ""), c.high);
        if (c.control == "menuuarttime") {
            EXPECT_EQ(shell.m().uarttime, std::stof(c.high));
        }
        shell.input.answers = {c.low};
        shell.model.command(c.control);
        EXPECT_EQ(shell.settings.getsetting(c.setting, ""), c.low);
        const size_t messages = shell.messenger.messages.size();
        shell.input.answers = {""};
        shell.model.command(c.control);
        EXPECT_EQ(shell.messenger.messages.size(), messages) << "an empty answer cancels";
        EXPECT_EQ(shell.settings.getsetting(c.setting, ""), c.low);
    }
}

TEST_F(OptionsTest, OnlyClockAndEepromTimeAreRefusedWhileRunning) {
    shell.loadhello();
    shell.startpaused();
    for (const char* control : {"menuclock", "menuwritetime"}) {
        shell.model.command(control);
        EXPECT_EQ(shell.lastmessage(), "Please stop the simulation first.") << control;
    }
    EXPECT_TRUE(shell.input.prompts.empty());
    // The other times take effect at once, in the running machine.
    shell.input.answers = {"200", "77", "40"};
    shell.model.command("menuuarttime");
    shell.model.command("menuconversiontime");
    shell.model.command("menuultimaterefresh");
    EXPECT_EQ(shell.input.prompts.size(), 3u);
    EXPECT_EQ(shell.m().uarttime, 200.0f);
    EXPECT_EQ(shell.m().adconversiontime, 77.0f);
    EXPECT_EQ(shell.model.options().ultimatetimer, 40);
}

TEST_F(OptionsTest, StoredPeripheralTimesReachTheMachineWithTheModel) {
    shell.settings.putsetting("UART Transmit/Receive Time", "150");
    shell.settings.putsetting("EEPROM Write Time", "99999");  // outside its range: the default
    shell.select("ATmega328P");
    EXPECT_EQ(shell.m().uarttime, 150.0f);
    EXPECT_EQ(shell.m().eepromwritetime, 3400.0f);
}

TEST_F(OptionsTest, ClockFrequencyStoredAsTypedAndShown) {
    int changes = 0;
    shell.model.identitychanged = [&] { ++changes; };
    shell.input.answers = {" 7.3728 "};
    shell.model.command("menuclock");
    EXPECT_EQ(shell.input.prompts.back(), "Enter new clock frequency [MHz].");
    EXPECT_EQ(shell.input.defaults.back(), "4");
    EXPECT_EQ(shell.settings.getsetting("Clock Frequency", ""), "7.3728");
    EXPECT_EQ(shell.model.qclockfreq(), "7.3728 MHz");
    EXPECT_FLOAT_EQ(shell.m().clockfrequency, 7.3728f);
    EXPECT_EQ(changes, 1);
    shell.input.answers = {".5"};
    shell.model.command("menuclock");
    EXPECT_EQ(shell.model.qclockfreq(), "0.5 MHz");
    for (const char* bad : {"", "0", "abc", "1.2.3", "-4", "4 MHz"}) {
        shell.input.answers = {bad};
        shell.model.command("menuclock");
        EXPECT_EQ(shell.settings.getsetting("Clock Frequency", ""), ".5") << bad;
    }
}

TEST(ClockText, ValidAndLenient) {
    const std::pair<const char*, bool> texts[] = {
        {"16", true}, {"0.032768", true}, {"8.", true}, {".", false}, {"0.0", false}};
    for (const auto& [text, valid] : texts) EXPECT_EQ(validclocktext(text), valid) << text;
    EXPECT_FLOAT_EQ(clockmhz("20"), 20.0f);
    EXPECT_FLOAT_EQ(clockmhz("junk"), 4.0f);
}

TEST_F(OptionsTest, UnprogrammedValueFlipsAndTakesEffectAtTheNextLoad) {
    shell.model.command("menuunprogrammed");
    EXPECT_EQ(shell.lastmessage(),
              "Unprogrammed FLASH/EEPROM bit value changed to 0.\nChanges will take effect after next program load.");
    EXPECT_EQ(shell.settings.getsetting("Unprogrammed Bit Value", ""), "0");
    EXPECT_EQ(shell.m().progmem[100], 0xFF) << "not at once";
    shell.loadhello();
    EXPECT_EQ(shell.m().progmem[100], 0x00);
    EXPECT_EQ(shell.m().eeprommem[0], 0x00);
    shell.model.command("menuunprogrammed");
    EXPECT_EQ(shell.settings.getsetting("Unprogrammed Bit Value", ""), "1");
}

TEST_F(OptionsTest, ListIoFirstReversesTheTableAndForgetsTheAlternativeChoice) {
    const std::string first = shell.m().namedregisters.front().name;
    const std::string last = shell.m().namedregisters.back().name;
    shell.settings.putsetting("Alternative SFR List1", "3,4");
    shell.model.command("menuiofirst");
    EXPECT_EQ(shell.m().namedregisters.front().name, last);
    EXPECT_EQ(shell.m().namedregisters.back().name, first);
    EXPECT_EQ(shell.settings.getsetting("List IO First", ""), "1");
    EXPECT_EQ(shell.settings.getsetting("Alternative SFR List1", "x"), "");
    EXPECT_TRUE(shell.model.menustates()["menuiofirst"].checked);
    shell.model.registry().setopen(windows::kAlternativeRegisters, true);
    shell.model.command("menuiofirst");
    EXPECT_EQ(shell.lastmessage(), "Please close Alternative Registers Viewer window first.");
    EXPECT_EQ(shell.m().namedregisters.front().name, last);
}

TEST(ReverseRegisters, HardwareStackLevelsStayLast) {
    Shell shell;
    shell.select("ATtiny12");
    const std::string first = shell.m().namedregisters.front().name;
    reverseregisters(shell.m());
    const auto& table = shell.m().namedregisters;
    EXPECT_EQ(table[table.size() - 3].text, "Stack Level 0");
    EXPECT_EQ(table[table.size() - 4].name, first);
}

TEST_F(OptionsTest, SwitchesWriteTheirOwnSpellingAndReachTheMachine) {
    shell.model.command("menuinfinite");
    EXPECT_EQ(shell.settings.getsetting("Infinite Loop Stop", ""), "ON");
    EXPECT_TRUE(shell.m().infiniteloopstop);
    shell.model.command("menupreserve");
    EXPECT_TRUE(shell.m().preserveinputstates);
    shell.model.command("menuslidermode");
    EXPECT_EQ(shell.settings.getsetting("Analog Slider Mode", ""), "0");
    shell.model.command("menuontop");
    EXPECT_EQ(shell.settings.getsetting("Save Always On Top", ""), "0");
    shell.model.command("menuconfirm");
    EXPECT_EQ(shell.settings.getsetting("Show Confirmations", ""), "ON");
}

struct RecordingDisplay : MessageDisplay {
    std::vector<std::string> modal, titles;
    std::vector<std::vector<std::string>> confirmations;
    std::vector<int> durations;
    void modalbox(const std::string& title, const std::string& text, MessageKind) override {
        titles.push_back(title);
        modal.push_back(text);
    }
    void confirmation(const std::vector<std::string>& lines, int seconds) override {
        confirmations.push_back(lines);
        durations.push_back(seconds);
    }
};

struct MessagePolicyTest : ::testing::Test {
    MemorySettings settings;
    RecordingDisplay display;
    MessagePolicy policy{settings, display};
};

TEST_F(MessagePolicyTest, ConfirmationWindowByDefaultForMessageDurationSeconds) {
    policy.show("Operation completed.\nTotal 42 (0.04K) program bytes loaded.", MessageKind::Information);
    ASSERT_EQ(display.confirmations.size(), 1u);
    EXPECT_TRUE(display.modal.empty());
    EXPECT_EQ(display.confirmations[0],
              (std::vector<std::string>{"Operation completed.", "Total 42 (0.04K) program bytes loaded."}));
    EXPECT_EQ(display.durations[0], 4);
    settings.putsetting("Message Duration", "9");
    policy.show("Please stop the simulation first.", MessageKind::Exclamation);
    EXPECT_EQ(display.durations[1], 9);
}

TEST_F(MessagePolicyTest, ShowConfirmationBoxesGivesAModalBoxTitledWithTheProgramName) {
    settings.putsetting("Show Confirmations", "ON");
    policy.show("Program memory saved.", MessageKind::Information);
    ASSERT_EQ(display.modal.size(), 1u);
    EXPECT_EQ(display.titles[0], "Velmora");
    EXPECT_TRUE(display.confirmations.empty());
}

TEST_F(MessagePolicyTest, FileErrorsAndStackFaultsAreAlwaysModal) {
    policy.show("Stack Pointer out of SRAM space!", MessageKind::Critical);
    EXPECT_EQ(display.modal.size(), 1u);
    EXPECT_TRUE(display.confirmations.empty());
}

TEST(MessagePolicy, TheConfirmationWindowShowsSevenLinesAtMost) {
    EXPECT_EQ(confirmationlines("1\n2\n3\n4\n5\n6\n7\n8\n9").size(), 7u);
    EXPECT_EQ(confirmationlines("1\n2\n3\n4\n5\n6\n7\n8\n9").back(), "7");
    EXPECT_EQ(confirmationlines("one").size(), 1u);
}

}  // namespace
}  // namespace velmora::test
