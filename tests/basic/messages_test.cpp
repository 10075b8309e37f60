// Every message the frame, the declarations and the dispatcher give, each from a short
// program: the first error ends the compile with "Error in line N: ...".

#include "basicfixture.h"

namespace velmora::test {
namespace {

struct Case {
    const char* model;
    std::string source;
    std::string expected;
};

std::string tokens(int count) {
    std::string row = "Dim";
    for (int i = 1; i < count; ++i) row += " x";
    return row;
}

TEST(BasicMessages, EachProgramStopsWithItsMessage) {
    const std::string limited =
        "This statement is not available in the current release of basic compiler\n"
        "due to limited instruction set featured in the selected microcontroller model.";
    const Case cases[] = {
        {"ATmega32", "Dim 1a As Byte", "Error in line 1: Incorrect variable name."},
        {"ATmega32", "Dim a As Byte\r\nDim A As Word", "Error in line 2: Incorrect variable name."},
        {"ATmega32", "Dim portb As Byte", "Error in line 1: Incorrect variable name."},
        {"ATmega32", "Dim a(0) As Byte", "Error in line 1: Incorrect array declaration."},
        {"ATmega32", "Dim a(n) As Byte", "Error in line 1: Incorrect array declaration."},
        {"ATmega32", "Dim a(3 As Byte", "Error in line 1: Incorrect array declaration."},
        {"ATmega32", "Dim a(3) As Bit", "Error in line 1: Arrays are not supported for Bit variables."},
        {"ATmega32", "Dim a(3) As Long", "Error in line 1: Arrays are not supported for Long variables."},
        {"ATtiny12", "Dim l As Long", "Error in line 1: Not enough SRAM memory available for this declaration."},
        {"ATmega32", "Symbol 9s = PORTB", "Error in line 1: Incorrect symbol name."},
        {"ATmega32", "Symbol s = 5", "Error in line 1: Incorrect argument."},
        {"ATmega32", "Dim l As Long\r\nSymbol s = l", "Error in line 2: Incorrect argument."},
        {"ATmega32", "Const 1c = 5", "Error in line 1: Incorrect constant name."},
        {"ATmega32", "Const c = 1\r\nConst c = 2", "Error in line 2: Duplicate constant name."},
        {"ATmega32", "Const c = -1", "Error in line 1: Argument '-1' is not a valid Long type constant."},
        {"ATmega32", "Reserve x", "Error in line 1: Argument 'x' is not a valid Word type constant."},
        {"ATmega32", "Reserve 0x60\r\nReserve 0x60",
         "Error in line 2: SRAM location already reserved by system or user program."},
        {"ATmega32", "Reserve 0x20", "Error in line 1: Specified SRAM location address does not exist."},
        {"ATmega32", "Dim x As Byte @ 0x5000", "Error in line 1: Specified SRAM location address does not exist."},
        {"ATmega32", tokens(300) + "\r\n" + tokens(301), "Error in line 2: Line too long."},
        {"ATmega32", ": Halt", "Error in line 1: Label name missing."},
        {"ATmega32", "1x: Halt", "Error in line 1: Incorrect line label name."},
        {"ATmega32", "a: Halt\r\nA: Halt", "Error in line 2: Line label name already used."},
        {"ATmega32", "Goto nowhere", "Error in line 1: Incorrect line label name."},
        {"ATmega32", "Return", "Error in line 1: Subroutines must be placed after END statement in program."},
        {"ATmega32", "Hello world", "Error in line 1: Syntax error."},
        {"ATmega32", "ASM:", "Error in line 1: Syntax error."},
        {"ATtiny12", "Serout PORTB.0, 9600, 1", "Error in line 1: " + limited},
        {"ATtiny12", "x = Pointer(y)", "Error in line 1: " + limited},
        {"ATmega32", "x = 1", "Error in line 1: Incorrect argument."},
        {"ATmega32", "Dim b As Byte\r\nb = 256", "Error in line 2: Argument '256' is not a valid Byte type constant."},
        {"ATmega32", "Dim b As Bit\r\nDim w As Word\r\nb = w", "Error in line 3: Word variable can not be assigned to Bit variable."},
        {"ATmega32", "Dim b As Bit\r\nDim l As Long\r\nl = b", "Error in line 3: Bit variable can not be assigned to Long variable."},
        {"ATtiny13", "Dim a(100) As Byte",
         "Not enough SRAM memory available for declared variables.\nTotal number of SRAM locations: 64\n"
         "Number of locations required by system: 0\nNumber of locations required by user program: 100"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.source.substr(0, 60));
        const BasicCompileResult result = compilebasic(c.source, c.model);
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.error, c.expected);
        EXPECT_TRUE(result.asmtext.empty());
    }
}

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
