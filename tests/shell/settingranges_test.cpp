// Every numeric setting read at its bounds and outside them, through the reader the program
// uses. The settings file is a person's to edit: a value its use cannot bear gives the default.
// Ranges are those the Options prompts allow, or what the use needs where no prompt asks.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "core/machine.h"
#include "core/memorysettings.h"
#include "core/peripheraltimes.h"
#include "shell/assemblerwindow.h"
#include "shell/gdblink.h"
#include "shell/messagepolicy.h"
#include "shell/settingnames.h"
#include "shell/shelloptions.h"
#include "shell/sourcewindowsettings.h"
#include "shellfixture.h"

namespace velmora::test {
namespace {

using Reader = int64_t (*)(SettingsAccess&);

struct SecondsDisplay : MessageDisplay {
    int seconds = -1;
    void modalbox(const std::string&, const std::string&, MessageKind) override {}
    void confirmation(const std::vector<std::string>&, int shown) override { seconds = shown; }
};

int64_t messageseconds(SettingsAccess& settings) {
    SecondsDisplay display;
    MessagePolicy(settings, display).show("Done.", MessageKind::Information);
    return display.seconds;
}
int64_t rate(SettingsAccess& s) { return readshelloptions(s, "/").rate; }
int64_t ultimatetimer(SettingsAccess& s) { return readshelloptions(s, "/").ultimatetimer; }
int64_t unprogrammedbit(SettingsAccess& s) { return readshelloptions(s, "/").unprogrammedbit; }
template <float Machine::*Time>
int64_t peripheraltime(SettingsAccess& s) {
    Machine m;
    readperipheraltimes(m, s);
    return static_cast<int64_t>(m.*Time);
}
template <int Window>
int64_t left(SettingsAccess& s) { return readwindowplace(s, Window).left; }
template <int Window>
int64_t top(SettingsAccess& s) { return readwindowplace(s, Window).top; }
int64_t basicfontsize(SettingsAccess& s) { return readeditorsettings(s, "C").fontsize; }
int64_t asmfontsize(SettingsAccess& s) { return readeditorsettings(s, "A").fontsize; }
int64_t basictabsize(SettingsAccess& s) { return readeditorsettings(s, "C").tabsize; }
int64_t asmtabsize(SettingsAccess& s) { return readeditorsettings(s, "A").tabsize; }
int64_t asmwheelstep(SettingsAccess& s) { return readeditorsettings(s, "A").wheelstep; }
int64_t basicundolevels(SettingsAccess& s) { return readeditorsettings(s, "C").undolevels; }
int64_t keywordblue(SettingsAccess& s) { return readeditorsettings(s, "C").keyword.blue; }

struct NumericSetting {
    const char* name;
    int64_t low, high, defaultvalue;
    Reader read;
    // What the reader gives for a value at `low` and `high` when it does not hand back the
    // number itself (a colour's blue part); -1 means the number itself.
    int64_t atlow = -1, athigh = -1;
};

const NumericSetting kSettings[] = {
    {"Message Duration", 1, 3600, 4, messageseconds},
    {"Simulation Rate", 1, 6, 4, rate},
    {"Ultimate Timer", 1, 2000, 500, ultimatetimer},
    {"GDB Port", 1, 65535, 1234, [](SettingsAccess& s) -> int64_t { return gdbport(s); }},
    {"Unprogrammed Bit Value", 0, 1, 1, unprogrammedbit},
    {"EEPROM Write Time", 50, 20000, 3400, peripheraltime<&Machine::eepromwritetime>},
    {"A/D Conversion Time", 10, 1000, 25, peripheraltime<&Machine::adconversiontime>},
    {"UART Transmit/Receive Time", 50, 100000, 1000, peripheraltime<&Machine::uarttime>},
    // Twips; 491505 is 32767 pixels.
    {"Window1 Left", 0, 491505, 3000, left<1>},
    {"Window1 Top", 0, 491505, 2000, top<1>},
    {"Window20 Left", 0, 491505, 4000, left<20>},
    {"Window46 Top", 0, 491505, 3000, top<46>},
    {"C Font Size", 1, 144, 10, basicfontsize},
    {"A Font Size", 1, 144, 10, asmfontsize},
    {"C Tab Size", 1, 64, 3, basictabsize},
    {"A Tab Size", 1, 64, 8, asmtabsize},
    {"A Scroll Wheel Step", 1, 1000, 10, asmwheelstep},
    {"C Undo Levels Number", 0, 10000, 20, basicundolevels},
    // Red + 256 green + 65536 blue: the default keyword colour is blue 150.
    {"C Keyword Color", 0, 0xFFFFFF, 150, keywordblue, 0, 255},
};

struct Row {
    std::string stored;
    int64_t expected;
};

// At both bounds, just outside them, at the limits of 32 bits and beyond, and no number at all.
std::vector<Row> rowsof(const NumericSetting& s) {
    const int64_t low = s.atlow < 0 ? s.low : s.atlow;
    const int64_t high = s.athigh < 0 ? s.high : s.athigh;
    return {
        {std::to_string(s.low), low},
        {std::to_string(s.high), high},
        {" " + std::to_string(s.high) + "x", high},  // read leniently, as a person might write it
        {std::to_string(s.low - 1), s.defaultvalue},
        {std::to_string(s.high + 1), s.defaultvalue},
        {"2147483647", s.defaultvalue},
        {"-2147483648", s.defaultvalue},
        {"99999999999999999999", s.defaultvalue},
        {"-99999999999999999999", s.defaultvalue},
        {"abc", s.low == 0 ? low : s.defaultvalue},  // no digits read as 0
    };
}

TEST(SettingRanges, EveryNumericSettingAtAndBeyondItsBounds) {
    for (const NumericSetting& setting : kSettings)
        for (const Row& row : rowsof(setting)) {
            MemorySettings settings;
            settings.putsetting(setting.name, row.stored);
            EXPECT_EQ(setting.read(settings), row.expected) << setting.name << " = \"" << row.stored << '"';
        }
}

TEST(SettingRanges, AMissingValueGivesAndStoresTheDefault) {
    for (const NumericSetting& setting : kSettings) {
        MemorySettings settings;
        EXPECT_EQ(setting.read(settings), setting.defaultvalue) << setting.name;
        EXPECT_NE(settings.getsetting(setting.name, "absent"), "absent") << setting.name;
    }
}

TEST(SettingRanges, AnUnusableValueStaysInTheStoreAndOnlyPositionsAreRepaired) {
    const struct {
        const char* name;
        const char* stored;
        const char* after;
    } cases[] = {
        {"Message Duration", "2147483647", "2147483647"},
        {"Ultimate Timer", "0", "0"},
        {"Window1 Left", "-100", "3000"},
        {"Window1 Top", "491506", "2000"},
        {"Window12 Left", "491505", "491505"},
    };
    for (const auto& c : cases) {
        MemorySettings settings;
        settings.putsetting(c.name, c.stored);
        (void)readshelloptions(settings, "/");
        (void)messageseconds(settings);
        validatepositions(settings);
        EXPECT_EQ(settings.getsetting(c.name, ""), c.after) << c.name << " = " << c.stored;
    }
}

// The Assembler window's divider and saved size, read when the window opens.
TEST(SettingRanges, AssemblerDividerAndSizeFallBackWhenOutOfRange) {
    const struct {
        const char* name;
        const char* stored;
        int divider;
        bool sized;
    } cases[] = {
        {"Window17 Position", "10", 10, false},        {"Window17 Position", "90", 90, false},
        {"Window17 Position", "9", 70, false},         {"Window17 Position", "91", 70, false},
        {"Window17 Position", "2147483647", 70, false}, {"Window17 Width", "491505", 70, true},
        {"Window17 Width", "491506", 70, false},       {"Window17 Width", "0", 70, false},
        {"Window17 Width", "-15", 70, false},
    };
    for (const auto& c : cases) {
        Shell shell;
        shell.settings.putsetting("Save Positions", "ON");
        shell.settings.putsetting("Window17 Height", "6000");
        shell.settings.putsetting(c.name, c.stored);
        AssemblerWindow window{shell.model, shell.input, shell.clock};
        const AsmWindowGeometry g = window.geometry();
        EXPECT_EQ(g.divider, c.divider) << c.name << " = " << c.stored;
        EXPECT_EQ(g.size.has_value(), c.sized) << c.name << " = " << c.stored;
    }
}

}  // namespace
}  // namespace velmora::test
