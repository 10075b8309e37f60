// Number notations of the assembler, the compiler and the dialogs, and the two field readers
// of the model and image files.

#include <gtest/gtest.h>

#include <string>

#include "core/numbers.h"

namespace velmora {
namespace {

constexpr int kBad = kNotANumber16;

struct Case16 {
    const char* text;
    int value;
};

// Every notation, leading zeros that do not count against the digit limit, the boundaries,
// and texts the first fitting notation decides even when its digits fail.
TEST(ParseNumber16, EveryNotationAndItsLimits) {
    const Case16 cases[] = {
        // characters: the byte as written, case kept
        {"'a'", 97}, {"'A'", 65}, {"' '", 32}, {"'''", 39}, {"A'z'", 122}, {"a'z'", 122},
        {"\"q\"", 113}, {"'H'", 72},
        // hexadecimal, in any case
        {"H'ff'", 255}, {"h'1F'", 31}, {"0xff", 255}, {"0X1234", 0x1234}, {"$FFFF", 65535},
        {"$ff", 255}, {"0ffH", 255}, {"1bh", 27}, {"BH", 11}, {"0BH", 11},
        // binary
        {"B'101'", 5}, {"%1111111111111111", 65535}, {"0b101", 5}, {"101B", 5}, {"1b", 1},
        // decimal
        {"D'99'", 99}, {".99", 99}, {"99", 99}, {"0", 0}, {"65535", 65535},
        // leading zeros
        {"$0000FFFF", 65535}, {"0x00001", 1}, {"%00000000000000001", 1}, {"0000065535", 65535},
        {"$0000", 0},         {"D'00000'", 0}, {".000", 0},
        // boundaries
        {"65536", kBad},  {"99999", kBad},  {"100000", kBad}, {"$10000", kBad}, {"0x1FFFF", kBad},
        {"10000H", kBad}, {"%10000000000000000", kBad},        {"1111111111111111B", 65535},
        // the first fitting notation decides
        {"'ab'", kBad},   // a character form with two characters
        {"A'bc'", kBad}, {"\"ab\"", kBad},
        {"$1H", kBad},    // "$" wins over the trailing H
        {"0B1B", kBad},   // "0b" wins over the trailing B
        {"0x1H", kBad},
        {"H'12", kBad},   // no closing quote: falls through to decimal, which fails
        {"12A", kBad},    // decimal digits must read back unchanged
        {"1.5", kBad}, {".9.9", kBad}, {"%102", kBad}, {"B'2'", kBad}, {"$G", kBad}, {"-5", kBad},
        {"+5", kBad},  {" 5", kBad},   {"5 ", kBad},   {"1E3", kBad},  {"D'1A'", kBad},
    };
    for (const auto& c : cases) EXPECT_EQ(parsenumber16(c.text), c.value) << c.text;
    for (const char* text : {"", ".", "B", "H", "$", "%", "0B", "0X", "B''", "D''", "H''", "A''", "''",
                             "\"\"", "b", "h", "0x", "0b", "b''", "a''"})
        EXPECT_EQ(parsenumber16(text), kBad) << '"' << text << '"';
}

struct Case32 {
    const char* text;
    double value;
};

TEST(ParseNumber32, WideNotationsAndBoundaries) {
    const Case32 cases[] = {
        // small numbers come from the sixteen-bit reader
        {"'a'", 97}, {"$FF", 255}, {"65535", 65535}, {"A'z'", 122},
        {"65536", 65536},
        {"4294967295", 4294967295.0},
        {"4294967296", -1},
        {"99999999999", -1},
        {"0004294967295", 4294967295.0},
        {"$FFFFFFFF", 4294967295.0},
        {"$100000000", -1},
        {"0x12345678", 0x12345678},
        {"H'10000'", 65536},
        {"1FFFFh", 0x1FFFF},
        {"%11111111111111111111111111111111", 4294967295.0},
        {"%111111111111111111111111111111111", -1},
        {"B'10000000000000000'", 65536},
        {"0b10000000000000000", 65536},
        {"10000000000000000b", 65536},
        {"D'70000'", 70000},
        {".70000", 70000},
        {"1000000", 1000000},
    };
    for (const auto& c : cases) EXPECT_EQ(parsenumber32(c.text), c.value) << c.text;
}

TEST(ParseNumber32, FailuresGiveMinusOne) {
    for (const char* text : {"", "$", "%", "0B", "0X", "B", "H", "B''", "D''", "H''", ".", "'ab'", "A'bc'",
                             "12A", "-1", "1.5", "$1H", "label"})
        EXPECT_EQ(parsenumber32(text), kNotANumber32) << '"' << text << '"';
}

TEST(HexField, ExactlyTheGivenNumberOfUpperCaseDigits) {
    struct {
        const char* text;
        int digits;
        int value;
    } cases[] = {
        {"3F", 2, 0x3F}, {"00", 2, 0},       {"FF", 2, 255},  {"3f", 2, -1},     {"3", 2, -1},
        {"03F", 2, -1},  {" 3F", 2, -1},     {"G0", 2, -1},   {"001C", 4, 0x1C}, {"FFFF", 4, 65535},
        {"1C", 4, -1},   {"0001C", 4, -1},   {"00x1", 4, -1}, {"", 2, -1},
    };
    for (const auto& c : cases) EXPECT_EQ(hexfield(c.text, c.digits), c.value) << c.text;
}

TEST(LenientDecimal, StopsAtTheFirstUnfitCharacter) {
    struct {
        const char* text;
        int64_t value;
    } cases[] = {
        {"32768", 32768}, {" 2048", 2048}, {"\t64", 64}, {"1024 bytes", 1024}, {"12.5", 12},
        {"-5", -5},       {"+7", 7},       {"", 0},      {"abc", 0},           {"x", 0},
        {"-", 0},         {"0x10", 0},
        {"99999999999999999999999", INT64_MAX},
        {"-99999999999999999999999", -INT64_MAX},
    };
    for (const auto& c : cases) EXPECT_EQ(lenientdecimal(c.text), c.value) << c.text;
}

}  // namespace
}  // namespace velmora
