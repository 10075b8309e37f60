// Operand values: every number notation as the assembler reads it, the one-operator rule,
// "$", the byte prefixes and the rounding division (cases in data/tables.txt).

#include <gtest/gtest.h>

#include "asmfixture.h"
#include "assembler/asmexpression.h"

namespace velmora::test {
namespace {

int32_t expected(const TableRow& row, int32_t invalid) {
    return row[1] == "invalid" ? invalid : static_cast<int32_t>(row.number(1));
}

// Predefined symbols of the small model, the location at word 300 and three source names.
AsmContext context() {
    AsmContext ctx = assemble(" .EQU TEN = 10\n .EQU NEG = -3\n .EQU BIG = 100000\n");
    EXPECT_EQ(ctx.asmerrors, 0);
    ctx.asmlocation = 300;
    return ctx;
}

TEST(AsmNumbers, EveryNotationThroughDw) {
    for (const TableRow& row : tablerows("tables.txt", "Numbers through .DW"))
        EXPECT_EQ(dwvalue(row[0]), expected(row, -1)) << row.where;
    EXPECT_EQ(assembleline("LDI R16,0b2").line().errortext, "Invalid argument of the instruction.");
}

TEST(AsmNumbers, ALoneDollarIsTheLocationNotANumber) {
    // The number reader refuses "$"; the evaluator reads it as the location counter.
    EXPECT_EQ(parsenumber16("$"), kNotANumber16);
    const AsmContext ctx = assemble(" NOP\n NOP\n .DW $\n .DW $,$\n");
    EXPECT_EQ(ctx.asmerrors, 0);
    EXPECT_EQ(opcodewords(ctx.lines[2].opcode), std::vector<uint16_t>{2});
    EXPECT_EQ(opcodewords(ctx.lines[3].opcode), (std::vector<uint16_t>{3, 3}));
}

TEST(AsmExpressions, OperatorsDivisionWideNumbersAndPrefixes) {
    const AsmContext ctx = context();
    for (const TableRow& row : tablerows("tables.txt", "Expressions"))
        EXPECT_EQ(asmevalexpr(ctx, row[0]), expected(row, kAsmInvalid)) << row.where;
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

}  // namespace
}  // namespace velmora::test
