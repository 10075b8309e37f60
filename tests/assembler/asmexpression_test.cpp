// Operand values: every number notation as the assembler reads it, the one-operator rule,
// "$", the byte prefixes and the rounding division.

#include <gtest/gtest.h>

#include "asmfixture.h"
#include "assembler/asmexpression.h"

namespace velmora::test {
namespace {

struct Case {
    const char* text;
    int32_t value;
};

// Predefined symbols of the small model, the location at word 300 and two source names.
AsmContext context() {
    AsmContext ctx = assemble(" .EQU TEN = 10\n .EQU NEG = -3\n .EQU BIG = 100000\n");
    EXPECT_EQ(ctx.asmerrors, 0);
    ctx.asmlocation = 300;
    return ctx;
}

TEST(AsmNumbers, EveryNotationThroughDw) {
    const Case cases[] = {
        {"$1F", 0x1F},     {"$ffff", 0xFFFF},   {"0x1f", 0x1F},     {"0XABCD", 0xABCD}, {"1FH", 0x1F},
        {"0ffffh", 0xFFFF}, {"H'1f'", 0x1F},    {"%101", 5},        {"0b101", 5},       {"101B", 5},
        {"B'101'", 5},     {"D'99'", 99},       {".99", 99},        {"99", 99},         {"65535", 65535},
        {"'A'", 65},       {"A'a'", 97},        {"\"z\"", 122},     {"007", 7},         {"$0001", 1},
    };
    for (const Case& c : cases) EXPECT_EQ(dwvalue(c.text), c.value) << c.text;
}

TEST(AsmNumbers, UnreadableNotationsAreInvalidArguments) {
    for (const char* text : {"0b2", "0x", "12A", "1.5", "A'ab'", "$10000", "65536", "%2", "H'G'", "B''", "%", "0B"})
        EXPECT_EQ(dwvalue(text), -1) << text;
    // The first fitting notation decides: 0b2 is binary and fails, never decimal or hex.
    const OneLine one = assembleline("LDI R16,0b2");
    EXPECT_EQ(one.line().errortext, "Invalid argument of the instruction.");
}

TEST(AsmNumbers, ALoneDollarIsTheLocationNotANumber) {
    // The number reader refuses "$"; the evaluator reads it as the location counter.
    EXPECT_EQ(parsenumber16("$"), kNotANumber16);
    const AsmContext ctx = assemble(" NOP\n NOP\n .DW $\n .DW $,$\n");
    EXPECT_EQ(ctx.asmerrors, 0);
    EXPECT_EQ(opcodewords(ctx.lines[2].opcode), std::vector<uint16_t>{2});
    EXPECT_EQ(opcodewords(ctx.lines[3].opcode), (std::vector<uint16_t>{3, 3}));
}

TEST(AsmNumbers, CharacterLiteralsKeepTheirCase) {
    EXPECT_EQ(ldivalue("'A'"), 65);
    EXPECT_EQ(ldivalue("A'a'"), 97);
    EXPECT_EQ(ldivalue("' '"), 32);
}

TEST(AsmNumbers, ThirtyTwoBitNumbersReachWhereOnlyTheWideReaderReads) {
    const AsmContext ctx = context();
    EXPECT_EQ(asmevalexpr(ctx, "$3FFFFF"), 0x3FFFFF);
    EXPECT_EQ(asmevalexpr(ctx, "999999999"), 999999999);
    EXPECT_EQ(asmevalexpr(ctx, "%1111111111111111111111"), 0x3FFFFF);
    EXPECT_EQ(asmevalexpr(ctx, "1000000000"), kAsmInvalid);
    EXPECT_EQ(asmevalexpr(ctx, "$FFFFFFFF"), kAsmInvalid);
    // A symbol holding 100000 or more cannot be used: the wide reader reads no symbols.
    EXPECT_EQ(asmevalexpr(ctx, "BIG"), kAsmInvalid);
    EXPECT_EQ(asmevalexpr(ctx, "BIG+1"), kAsmInvalid);
}

TEST(AsmExpressions, OneOperatorPerTerm) {
    const AsmContext ctx = context();
    const Case cases[] = {
        {"TEN", 10},        {"ten", 10},        {"R31", 31},        {"ZH", 31},
        {"2+3", 5},         {"TEN-4", 6},       {"TEN*$10", 160},   {"TEN / 4", 2},
        {"-5", -5},         {"-TEN", -10},      {"NEG*2", -6},      {"NEG+NEG", -6},
        {"TEN + 1", 11},    {"'A'+1", 66},      {"UDR*2", 24},      {"RAMEND", 0x45F},
        {"$", 300},         {"$+2", 302},       {"$-300", 0},       {"$*2", 600},
        {"300*300", 90000},       {"400*300", kAsmInvalid},  // a term of 100000 or more is no value
        {"1+2+3", kAsmInvalid},    // B+C is neither symbol nor number
        {"2*3+1", kAsmInvalid},    // "+" splits first: "2*3" is no operand
        {"TEN/0", kAsmInvalid},
        {"+5", kAsmInvalid},       {"5-", kAsmInvalid},  {"(1)", kAsmInvalid},
        {"UNKNOWN", kAsmInvalid},  {"2+UNKNOWN", kAsmInvalid},
        {"2+$", kAsmInvalid},      // "$" stands only on the left
        {"", kAsmInvalid},
    };
    for (const Case& c : cases) EXPECT_EQ(asmevalexpr(ctx, c.text), c.value) << c.text;
}

TEST(AsmExpressions, DivisionRoundsHalvesToEven) {
    const AsmContext ctx = context();
    const Case cases[] = {
        {"7/2", 4}, {"5/2", 2}, {"9/2", 4}, {"11/2", 6}, {"1/2", 0}, {"3/2", 2}, {"10/3", 3}, {"11/3", 4},
        {"-7/2", kAsmInvalid} /* "0-7/2": the minus splits */, {"NEG/2", -2}, {"0/5", 0},
    };
    for (const Case& c : cases) EXPECT_EQ(asmevalexpr(ctx, c.text), c.value) << c.text;
}

TEST(AsmExpressions, TheLocationAboveWhatTheNumberReaderTakes) {
    AsmContext ctx = context();
    ctx.asmlocation = 65535;
    EXPECT_EQ(asmevalexpr(ctx, "$"), 65535);
    ctx.asmlocation = 65536;
    EXPECT_EQ(asmevalexpr(ctx, "$"), kAsmInvalid);
}

TEST(AsmExpressions, TermSentinel) {
    const AsmContext ctx = context();
    EXPECT_EQ(asmevalterm(ctx, "TEN*2"), 20);
    EXPECT_EQ(asmevalterm(ctx, "nonsense"), kNotANumber16);
    EXPECT_EQ(asmevalterm(ctx, "$10000"), kNotANumber16);
}

TEST(AsmExpressions, Prefixes) {
    const AsmContext ctx = context();
    const Case cases[] = {
        {"low $1234", 0x34},     {"high $1234", 0x12},      {"upper $123456", 0x12},
        {"LOW $1234", 0x34},     {"High $1234", 0x12},      {"UPPER $123456", 0x12},
        {"high $123456", 0x34},  {"low $123456", 0x56},     {"low RAMEND", 0x5F},
        {"high RAMEND", 0x04},   {"low TEN*2", 20},         {"low $", 44},
        // the sign follows the dividend, so a negative value stays negative
        {"low -1", -1},          {"high -1", -1},           {"low NEG", -3},
        {"high -256", -1},       {"high -257", -2},
        // no blank, no prefix
        {"lowTEN", kAsmInvalid}, {"low", kAsmInvalid},      {"low UNKNOWN", kAsmInvalid},
    };
    for (const Case& c : cases) EXPECT_EQ(asmevalexpr(ctx, c.text), c.value) << c.text;
}

TEST(AsmExpressions, PrefixesInInstructions) {
    EXPECT_EQ(ldivalue("low $1234"), 52);
    EXPECT_EQ(ldivalue("high $1234"), 18);
    EXPECT_EQ(ldivalue("upper $123456"), 18);
    EXPECT_EQ(ldivalue("LOW($1234)"), 52);
    EXPECT_EQ(ldivalue("HIGH(RAMEND)"), 4);
    EXPECT_EQ(ldivalue("low -1"), -1);
}

}  // namespace
}  // namespace velmora::test
