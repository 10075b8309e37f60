// The text form of the settings file: what is read, what marks a file as damaged; lenient
// reading of numbers kept as text, and the form in which they are written.
//
// The one table of value names: every name once, the families complete, the defaults as
// the windows expect them.
//
// Every numeric setting read at its bounds and outside them, through the reader the program
// uses. The settings file is a person's to edit: a value its use cannot bear gives the default.
// Ranges are those the Options prompts allow, or what the use needs where no prompt asks.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "core/machine.h"
#include "core/memorysettings.h"
#include "core/peripheraltimes.h"
#include "shell/assemblerwindow.h"
#include "shell/gdblink.h"
#include "shell/messagepolicy.h"
#include "shell/settingnames.h"
#include "shell/settingsfile.h"
#include "shell/settingvalues.h"
#include "shell/shelloptions.h"
#include "shell/sourcewindowsettings.h"
#include "shellfixture.h"
#include "support/datafile.h"
#include "support/sectiontable.h"

namespace velmora::test {
namespace {

TEST(SettingsFile, ReadsTextsNumbersCommentsAndForeignLineEnds) {
    const SettingsText parsed = parsesettingstext(
        "# comment\n"
        "\n"
        "s\tLast Path\t/home/u/avr\r\n"
        "n\tSimulation Duration 0\t-5\n"
        "s\tAlternative SFR Model\t\n"
        "s\tx\\ty\tA\\\\B\\x01\\n");
    EXPECT_FALSE(parsed.damaged);
    ASSERT_EQ(parsed.values.size(), 4u);
    EXPECT_EQ(parsed.values[0].value, "/home/u/avr");
    EXPECT_TRUE(parsed.values[1].isnumber);
    EXPECT_EQ(parsed.values[1].value, "-5");
    EXPECT_EQ(parsed.values[2].value, "");
    EXPECT_EQ(parsed.values[3].name, "x\ty");
    EXPECT_EQ(parsed.values[3].value, "A\\B\x01\n");
}

TEST(SettingsFile, ALaterLineReplacesTheValueButNotThePlace) {
    const SettingsText parsed = parsesettingstext("s\tA\t1\ns\tB\t2\ns\ta\t3\n");
    ASSERT_EQ(parsed.values.size(), 2u);
    EXPECT_EQ(parsed.values[0].name, "A");
    EXPECT_EQ(parsed.values[0].value, "3");
}

TEST(SettingsFile, LinesThatAreNotValuesMarkTheFileDamaged) {
    for (const TableRow& row : tablerows("settingsfile.txt", "damaged")) {
        const SettingsText parsed = parsesettingstext("s\tGood\t1\n" + row[0] + "\n");
        EXPECT_TRUE(parsed.damaged) << row.where;
        ASSERT_EQ(parsed.values.size(), 1u) << row.where;
        EXPECT_EQ(parsed.values[0].name, "Good") << row.where;
    }
}

TEST(SettingsFile, EveryByteSurvivesFormatAndParse) {
    std::string all;
    for (int c = 0; c < 256; ++c) all += static_cast<char>(c);
    const std::vector<StoredSetting> values = {{all, all, false}, {"n", "-2147483648", true}, {"", "", false}};
    const SettingsText parsed = parsesettingstext(formatsettingstext(values));
    EXPECT_FALSE(parsed.damaged);
    ASSERT_EQ(parsed.values.size(), 3u);
    for (size_t i = 0; i < values.size(); ++i) {
        EXPECT_EQ(parsed.values[i].name, values[i].name);
        EXPECT_EQ(parsed.values[i].value, values[i].value);
        EXPECT_EQ(parsed.values[i].isnumber, values[i].isnumber);
    }
}

TEST(SettingsFile, ManyLinesAreReadInOnePass) {
    std::string text;
    for (int i = 0; i < 200000; ++i) text += "s\tName " + std::to_string(i % 1000) + "\t" + std::to_string(i) + "\n";
    const SettingsText parsed = parsesettingstext(text);
    ASSERT_EQ(parsed.values.size(), 1000u);
    EXPECT_EQ(parsed.values[999].value, "199999");
}

TEST(SettingValues, RealsReadLikeIntegersWithFractionsAndExponents) {
    for (const TableRow& row : tablerows("settingsfile.txt", "reals"))
        EXPECT_DOUBLE_EQ(settingreal(row[0]), std::stod(row[1])) << row.where;
}

TEST(SettingValues, NumbersAreWrittenTrimmedAndReadBackExactly) {
    EXPECT_EQ(settingtext(int32_t{-7}), "-7");
    EXPECT_EQ(settingtext(9.0), "9");
    EXPECT_EQ(settingtext(0.1), "0.1");
    for (double value : {0.0, 1234.5678, -3.25, 1e-7, 123456789.125})
        EXPECT_EQ(settingreal(settingtext(value)), value) << value;
    for (int32_t value : {0, 1, -1, 2147483647, -2147483647 - 1})
        EXPECT_EQ(settinginteger(settingtext(value)), value) << value;
}

using namespace settingnames;

std::string lower(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

TEST(SettingNames, NoNameIsCoinedTwice) {
    std::set<std::string> seen;
    for (const SettingInfo& s : settingtable()) {
        EXPECT_TRUE(seen.insert(lower(s.name)).second) << s.name;
        EXPECT_EQ(s.name.find('#'), std::string::npos) << s.name << " has an unfilled pattern";
    }
}

TEST(SettingNames, PatternsFillTheirPlaceholder) {
    EXPECT_EQ(settingname(kWindowLeft, 17), "Window17 Left");
    EXPECT_EQ(settingname(kOnTop, 4), "On Top 4");
    EXPECT_EQ(settingname(kSimulationDuration, -2), "Simulation Duration -2");
    EXPECT_EQ(settingname(kEditorTabSize, kBasicEditor), "C Tab Size");
    EXPECT_EQ(settingname(kSevenSegmentPort, "3h"), "7-Segment 3h Port");
    EXPECT_EQ(settingname(kSevenSegmentAbcInv, 2), "7-Segment 2abc Inv");
    EXPECT_EQ(settingname(kGlcdLinePort, "R/W"), "GLCD R/W Line Port");
    EXPECT_EQ(settingname(kStepperCoilBit, "D"), "Stepper Coil D Bit");
}

// Defaults that the table computes, and values whose default is computed where they are
// read: one row of data/settingdefaults.txt each. Plain constants are left to the table itself.
TEST(SettingNames, DefaultsOfEveryGroup) {
    for (const DataRow& row : datarows("settingdefaults.txt")) {
        const size_t eq = row.text.find(" =");
        const std::string name = row.text.substr(0, eq);
        const SettingInfo* info = findsetting(name);
        ASSERT_NE(info, nullptr) << name;
        ASSERT_EQ(info->defaultvalue.has_value(), eq != std::string::npos) << name;
        if (eq == std::string::npos) continue;
        EXPECT_EQ(*info->defaultvalue, row.text.substr(std::min(eq + 3, row.text.size()))) << name;
    }
}

TEST(SettingNames, LookupIgnoresCaseAndRefusesUnknownNames) {
    ASSERT_NE(findsetting("uart transmit/receive time"), nullptr);
    EXPECT_EQ(findsetting("uart transmit/receive time")->name, "UART Transmit/Receive Time");
    // There is no window 2, and a string colour belongs to the BASIC editor only.
    for (const char* name : {"Window2 Left", "On Top 1", "LED8 Port", "A String Color"})
        EXPECT_EQ(findsetting(name), nullptr) << name;
}

TEST(SettingNames, FamilySizes) {
    auto count = [](std::string_view prefix, std::string_view suffix) {
        return std::ranges::count_if(settingtable(), [&](const SettingInfo& s) {
            return s.name.starts_with(prefix) && s.name.ends_with(suffix);
        });
    };
    for (const TableRow& row : tablerows("settingsfile.txt", "families"))
        EXPECT_EQ(count(row[0], row[1]), row.number(2)) << row.where;
    EXPECT_EQ(findsetting("Window11 Height"), nullptr);
}

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
template <int Window, int32_t WindowPlace::*Field>
int64_t place(SettingsAccess& s) { return readwindowplace(s, Window).*Field; }
template <const char* Editor, int EditorSettings::*Field>
int64_t editor(SettingsAccess& s) { return readeditorsettings(s, Editor).*Field; }
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
    {"Window1 Left", 0, 491505, 3000, place<1, &WindowPlace::left>},
    {"Window1 Top", 0, 491505, 2000, place<1, &WindowPlace::top>},
    {"Window20 Left", 0, 491505, 4000, place<20, &WindowPlace::left>},
    {"Window46 Top", 0, 491505, 3000, place<46, &WindowPlace::top>},
    {"C Font Size", 1, 144, 10, editor<kBasicEditor, &EditorSettings::fontsize>},
    {"A Font Size", 1, 144, 10, editor<kAssemblerEditor, &EditorSettings::fontsize>},
    {"C Tab Size", 1, 64, 3, editor<kBasicEditor, &EditorSettings::tabsize>},
    {"A Tab Size", 1, 64, 8, editor<kAssemblerEditor, &EditorSettings::tabsize>},
    {"A Scroll Wheel Step", 1, 1000, 10, editor<kAssemblerEditor, &EditorSettings::wheelstep>},
    {"C Undo Levels Number", 0, 10000, 20, editor<kBasicEditor, &EditorSettings::undolevels>},
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
    for (const TableRow& c : tablerows("settingsfile.txt", "kept")) {
        MemorySettings settings;
        settings.putsetting(c[0], c[1]);
        (void)readshelloptions(settings, "/");
        (void)messageseconds(settings);
        validatepositions(settings);
        EXPECT_EQ(settings.getsetting(c[0], ""), c[2]) << c.where;
    }
}

// The Assembler window's divider and saved size, read when the window opens.
TEST(SettingRanges, AssemblerDividerAndSizeFallBackWhenOutOfRange) {
    for (const TableRow& c : tablerows("settingsfile.txt", "divider")) {
        Shell shell;
        shell.settings.putsetting("Save Positions", "ON");
        shell.settings.putsetting("Window17 Height", "6000");
        shell.settings.putsetting(c[0], c[1]);
        AssemblerWindow window{shell.model, shell.input, shell.clock};
        const AsmWindowGeometry g = window.geometry();
        EXPECT_EQ(g.divider, c.number(2)) << c.where;
        EXPECT_EQ(g.size.has_value(), c.flag(3)) << c.where;
    }
}

}  // namespace
}  // namespace velmora::test
