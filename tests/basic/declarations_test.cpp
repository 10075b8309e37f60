// Where variables land: registers the generated code leaves free (highest first), then SRAM,
// read back from the comment and equate lines a declaration writes; the Define parameters:
// ranges by kind and defaults by the model's ports; and every message the frame, the
// declarations and the dispatcher give, each from a short program: the first error ends the
// compile with "Error in line N: ...".

#include "basic/defines.h"
#include "basicfixture.h"

namespace velmora::test {
namespace {

// The declaration lines of a compile, joined by "|".
std::string declarationlines(const BasicCompileResult& result) {
    std::string lines;
    for (const std::string& line : asmlines(result.asmtext)) {
        if (!line.starts_with(";       ") && !line.starts_with(".EQU")) continue;
        if (!lines.empty()) lines += "|";
        lines += line.substr(line.starts_with(";") ? 8 : 0);
    }
    return lines;
}

TEST(BasicDeclarations, VariablesLandWhereTheAllocationRulePutsThem) {
    for (const TableRow& row : statementrows("Declarations: places")) {
        const BasicCompileResult result = compilebasic(row[1], row[0]);
        ASSERT_TRUE(result.ok) << row.where << ": " << result.error;
        EXPECT_EQ(declarationlines(result), row[2]) << row.where;
        EXPECT_EQ(assemblegenerated(result.asmtext, row[0]).asmerrors, 0) << row.where;
    }
}

TEST(BasicDeclarations, BitsArePackedEightToALocation) {
    std::string source;
    for (int i = 0; i < 9; ++i) source += "Dim f" + std::to_string(i) + " As Bit\r\n";
    const std::string lines = declarationlines(compilebasic(source));
    EXPECT_NE(lines.find("'f0' is 0x1F,0"), std::string::npos) << lines;
    EXPECT_NE(lines.find("'f7' is 0x1F,7"), std::string::npos) << lines;
    EXPECT_NE(lines.find("'f8' is 0x1E,0"), std::string::npos) << lines;
    EXPECT_EQ(lines.find(".EQU"), std::string::npos) << "bits have no equates";
}

TEST(BasicDeclarations, MemoryUsageMarksCodeRegistersAndVariables) {
    const BasicCompileResult result = compilebasic("Dim a As Byte\r\nDim l As Long");
    ASSERT_TRUE(result.ok);
    const std::vector<int>& use = result.memoryusage;
    ASSERT_EQ(use.size(), 0x860u);
    EXPECT_EQ(use[15], kMemCodeRegister);
    EXPECT_EQ(use[16], kMemCodeRegister);
    EXPECT_EQ(use[31], kMemVariable);
    EXPECT_EQ(use[30], kMemAvailable);
    EXPECT_EQ(use[0x3F], kMemSpecial);  // SREG
    for (int a = 0x60; a < 0x64; ++a) EXPECT_EQ(use[static_cast<size_t>(a)], kMemVariable) << a;
    EXPECT_EQ(use[0x64], kMemAvailable);
}

TEST(BasicDefines, EachParameterChecksItsRange) { expectmessagerows("Defines: messages"); }

TEST(BasicDefines, DefaultsFollowTheModelsPorts) {
    CompileContext ctx;
    ctx.model = &basicmodel("ATmega32");
    definedefaults(ctx);
    const std::pair<const char*, int> cases[] = {
        {"LCD_DREG", 0x38}, {"GLCD_RSREG", 0x35}, {"LCD_EBIT", 2}, {"LCD_COMMANDUS", 5000},
        {"STEP_D_BIT", 3},  {"ADC_CLOCK", 3},     {"LCD_RWREG", 0}, {"SEROUT_DELAYUS", 1000},
    };
    for (const auto& [name, value] : cases) EXPECT_EQ(defineparameter(ctx, name), value) << name;
    ctx.model = &basicmodel("ATtiny13");  // no PORTC
    definedefaults(ctx);
    EXPECT_EQ(defineparameter(ctx, "GLCD_RSREG"), 0);
}

TEST(BasicDefines, ClockFrequencySetsTheClock) {
    EXPECT_EQ(compilebasic("Define CLOCK_FREQUENCY = 8").definedclock, 8);
    EXPECT_EQ(compilebasic("' no clock").definedclock, 0);
}

TEST(BasicMessages, EachProgramStopsWithItsMessage) { expectmessagerows("Messages"); }

TEST(BasicMessages, ErrorLineIsTheRowForTheCaret) {
    EXPECT_EQ(compilebasic("' one\r\n\r\nDim a(0) As Byte").errorline, 3);
    EXPECT_EQ(compilebasic("Dim a(100) As Byte", "ATtiny13").errorline, 0);  // the box names no row
}

TEST(BasicMessages, JumpsAndTheEndCompile) {
    const BasicCompileResult result =
        compilebasic("start: Gosub sub\r\nGoto start\r\nHalt\r\nBreak\r\nEnd\r\nsub: Return\r\nCount a, b, c");
    ASSERT_TRUE(result.ok) << result.error;
    const std::vector<std::string> lines = asmlines(result.asmtext);
    const auto has = [&](const std::string& line) { return std::find(lines.begin(), lines.end(), line) != lines.end(); };
    EXPECT_TRUE(has("; 1: start: Gosub sub"));
    EXPECT_TRUE(has("L0001:"));
    EXPECT_TRUE(has("\tRCALL L0002"));
    EXPECT_TRUE(has("\tRJMP L0001"));
    EXPECT_TRUE(has("L0003:\tRJMP L0003"));  // Halt
    EXPECT_TRUE(has("\tBREAK"));
    EXPECT_TRUE(has("L0004:\tRJMP L0004"));  // End
    EXPECT_TRUE(has("\tRET"));
    EXPECT_EQ(assemblegenerated(result.asmtext, "ATmega32").asmerrors, 0);
}

}  // namespace
}  // namespace velmora::test
