// The one table of value names: every name once, the families complete, the defaults as
// the windows expect them.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <set>

#include "shell/settingnames.h"
#include "support/datafile.h"

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

}  // namespace
}  // namespace velmora::test
