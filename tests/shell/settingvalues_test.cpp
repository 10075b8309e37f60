// Lenient reading of numbers kept as text, and the form in which they are written.

#include <gtest/gtest.h>

#include "shell/settingvalues.h"

namespace velmora::test {
namespace {

TEST(SettingValues, RealsReadLikeIntegersWithFractionsAndExponents) {
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"9", 9},     {" 10.5", 10.5}, {"-0.25s", -0.25}, {"+2.5", 2.5}, {"1e3", 1000}, {"1.5E-2x", 0.015},
        {"", 0},      {"abc", 0},      {"+-1", 0},        {"1e999", 0},  {"nan", 0},    {"inf", 0},
        {".5", 0.5},
    };
    for (const auto& c : cases) EXPECT_DOUBLE_EQ(settingreal(c.text), c.value) << '"' << c.text << '"';
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

}  // namespace
}  // namespace velmora::test
