// The one table of value names: every name once, the families complete, the defaults as
// the windows expect them.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>

#include "core/memorysettings.h"
#include "shell/settingnames.h"

namespace velmora::test {
namespace {

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

// Defaults that the table computes: window places, families filled from patterns, colours
// as red + 256 green + 65536 blue, ports by code (PORTB is 6, PORTC 7). Plain constants are
// left to the table itself.
TEST(SettingNames, DefaultsOfEveryGroup) {
    const std::pair<const char*, const char*> cases[] = {
        {"External Module 5", "OFF"},      {"Simulation Duration -2", "0"},    {"Alternative SFR List2", ""},
        {"Window1 Left", "3000"},          {"Window1 Top", "2000"},            {"Window53 Left", "4000"},
        {"Window13 Top", "3000"},          {"Window17 Position", "70"},        {"On Top 46", "0"},
        {"C Background Color", "16777215"}, {"C Keyword Color", "9830400"},    {"A Comment Color", "4210688"},
        {"C Comment Color", "38400"},      {"A Line Numbers Background Color", "14483455"},
        {"C Line Numbers Text Color", "25680"}, {"A Tab Size", "8"},           {"C Undo Levels Number", "20"},
        {"LCD Data Lines Port", "6"},      {"LCD R/W Line Port", "0"},         {"GLCD R/W Line Port", "7"},
        {"GLCD R/W Line Bit", "4"},        {"LED7 Bit", "7"},                  {"RED3 Bit", "7"},
        {"KOL2 Bit", "2"},                 {"Stepper Coil C Bit", "2"},        {"Oscilloscope Input Color", "16744703"},
        {"Oscilloscope Channel 4 Pull-up", "0"}, {"Signal Generator 3 Duty Cycle", "0"}, {"7-Segment 4h Pin", "7"},
        {"7-Segment 1a Port", "6"},        {"7-Segment 2 Port", "0"},          {"7-Segment LED Color", "16761024"},
    };
    for (const auto& [name, value] : cases) {
        const SettingInfo* info = findsetting(name);
        ASSERT_NE(info, nullptr) << name;
        ASSERT_TRUE(info->defaultvalue.has_value()) << name;
        EXPECT_EQ(*info->defaultvalue, value) << name;
    }
}

TEST(SettingNames, ComputedDefaultsHaveNone) {
    for (const char* name : {"Last Path", "Microcontroller Model", "Window9 Height", "Window11 Width"}) {
        const SettingInfo* info = findsetting(name);
        ASSERT_NE(info, nullptr) << name;
        EXPECT_FALSE(info->defaultvalue.has_value()) << name;
    }
}

TEST(SettingNames, LookupIgnoresCaseAndRefusesUnknownNames) {
    ASSERT_NE(findsetting("uart transmit/receive time"), nullptr);
    EXPECT_EQ(findsetting("uart transmit/receive time")->name, "UART Transmit/Receive Time");
    EXPECT_EQ(findsetting("Window2 Left"), nullptr);  // no window 2
    EXPECT_EQ(findsetting("On Top 1"), nullptr);
    EXPECT_EQ(findsetting("LED8 Port"), nullptr);
    EXPECT_EQ(findsetting("A String Color"), nullptr);  // BASIC editor only
}

TEST(SettingNames, FamilySizes) {
    auto count = [](std::string_view prefix, std::string_view suffix = "") {
        return std::ranges::count_if(settingtable(), [&](const SettingInfo& s) {
            return s.name.starts_with(prefix) && s.name.ends_with(suffix);
        });
    };
    EXPECT_EQ(count("On Top "), 18);
    EXPECT_EQ(count("Auto Start "), 29);
    EXPECT_EQ(count("Window", " Left"), 39);
    EXPECT_EQ(count("Window", " Width"), 9);  // 11 keeps its width alone
    EXPECT_EQ(count("Window", " Height"), 8);
    EXPECT_EQ(findsetting("Window11 Height"), nullptr);
    EXPECT_EQ(count("C "), 20);
    EXPECT_EQ(count("A "), 14);
    EXPECT_EQ(count("LED"), 24);
    EXPECT_EQ(count("7-Segment "), 4 * (4 + 16) + 1);
    EXPECT_EQ(count("Remove "), 7);
}

TEST(SettingNames, ANegativeWindowPlaceFallsBackToTheDefault) {
    MemorySettings settings;
    settings.putsetting("Window1 Left", "-100");
    settings.putsetting("Window1 Top", "250");
    const WindowPlace main = readwindowplace(settings, 1);
    EXPECT_EQ(main.left, 3000);
    EXPECT_EQ(main.top, 250);
    const WindowPlace lcd = readwindowplace(settings, 20);
    EXPECT_EQ(lcd.left, 4000);
    EXPECT_EQ(lcd.top, 3000);
    EXPECT_EQ(settings.getsetting("Window20 Left", "none"), "4000") << "the first read stores the default";
}

}  // namespace
}  // namespace velmora::test
