// Source handling: the preprocessor, labels, directives, the predefined symbols and the
// messages and error count of both passes. The sources and what each line gives are in
// data/sources.txt, the preprocessor's lines in data/tables.txt.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "asmfixture.h"
#include "assembler/asmpreprocess.h"

namespace velmora::test {
namespace {

TEST(AsmPreprocess, ForeignDirectivesFunctionsSetAndDef) {
    for (const TableRow& row : tablerows("tables.txt", "Preprocess"))
        EXPECT_EQ(asmpreprocess(row[0]), row[1]) << row.where;
}

TEST(AsmPasses, SourcesAndWhatEachLineGives) { checksources("sources.txt"); }

TEST(AsmPredefined, ModelDefinitionsRegistersAndRamend) {
    AsmModel model = smallmodel();
    model.extendedio = 160;
    model.definitiontext.push_back(".equ WIDE = $12345");
    model.definitiontext.push_back(".equ LOWER = 3   ; trailing");
    const AsmContext ctx = assemble("", model);
    EXPECT_TRUE(ctx.lines.empty());
    EXPECT_EQ(ctx.asmerrors, 0);
    EXPECT_EQ(symbol(ctx, "PORTB"), 0x18);
    EXPECT_EQ(symbol(ctx, "DDRB"), 0x17);
    EXPECT_EQ(symbol(ctx, "SPL"), 0x3D);
    EXPECT_EQ(symbol(ctx, "SREG_I"), 7);
    EXPECT_EQ(symbol(ctx, "lower"), 3);
    EXPECT_EQ(symbol(ctx, "NOTEQU"), -12345);  // not a .EQU line
    EXPECT_EQ(symbol(ctx, "BROKEN"), -12345);  // no "="
    EXPECT_EQ(symbol(ctx, "WIDE"), kNotANumber16);  // read by the 16-bit reader
    for (int r = 0; r < 32; ++r) EXPECT_EQ(symbol(ctx, "R" + std::to_string(r)), r);
    const char* halves[] = {"XL", "XH", "YL", "YH", "ZL", "ZH"};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(symbol(ctx, halves[i]), 26 + i);
    EXPECT_EQ(symbol(ctx, "RAMEND"), 1024 + 160 + 96 - 1);
    EXPECT_EQ(symbol(ctx, "X"), -12345);
    // The model's lines come first, in their order.
    EXPECT_EQ(ctx.symbols.front().name, "UDR");
    EXPECT_EQ(ctx.symbols.back().name, "RAMEND");
}

}  // namespace
}  // namespace velmora::test
