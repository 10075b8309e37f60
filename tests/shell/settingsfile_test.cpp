// The text form of the settings file: what is read, what marks a file as damaged.

#include <gtest/gtest.h>

#include "shell/settingsfile.h"

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
    const std::string bad[] = {
        "s Last Path /x",                 // blanks for tabs
        "t\tName\tvalue",                 // unknown kind
        "s\tName",                        // no value field
        "s\tName\tva\tlue",               // a raw tab in the value
        "n\tName\t12x",                   // not a number
        "n\tName\t4294967296",            // beyond 32 bits
        "n\tName\t",                      // an empty number
        "s\tName\tend\\",                 // a lone backslash
        "s\tName\t\\q",                   // an unknown escape
        "s\tName\t\\x4",                  // a short hexadecimal escape
        "s\tName\t\\xZZ",
        "s\tName\tbell\a",                // a raw control character
        std::string("s\tName\tnul\0", 11),
    };
    for (const std::string& line : bad) {
        const SettingsText parsed = parsesettingstext(std::string("s\tGood\t1\n") + line + "\n");
        EXPECT_TRUE(parsed.damaged) << line;
        ASSERT_EQ(parsed.values.size(), 1u) << line;
        EXPECT_EQ(parsed.values[0].name, "Good");
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

}  // namespace
}  // namespace velmora::test
