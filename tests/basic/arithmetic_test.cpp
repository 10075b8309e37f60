// One-operator rows on the simulator, with results worked out by hand (unsigned, wrapping),
// and the code of the forms whose lines are fixed, line by line.

#include "basicfixture.h"

namespace velmora::test {
namespace {

// The value of `name` after running the program, `bytes` wide, read from its equate.
uint32_t runvalue(const std::string& source, const std::string& name, int bytes) {
    const BasicCompileResult compiled = compilebasic(source);
    EXPECT_TRUE(compiled.ok) << compiled.error;
    const std::string key = ".EQU    " + name + " = 0x";
    const size_t at = compiled.asmtext.find(key);
    EXPECT_NE(at, std::string::npos) << name;
    if (at == std::string::npos) return 0;
    const BasicRun run(source, "ATmega32");
    return run.value(std::stoi(compiled.asmtext.substr(at + key.size()), nullptr, 16), bytes);
}

struct Case {
    const char* rows;
    const char* result;  // a Byte c, a Word v or a Long m
    uint32_t expected;
};

TEST(BasicArithmetic, ResultsOnTheSimulator) {
    const std::string declared =
        "Dim a As Byte\r\nDim b As Byte\r\nDim c As Byte\r\nDim w As Word\r\nDim v As Word\r\nDim l As Long\r\n"
        "Dim m As Long\r\nDim f As Bit\r\nDim g As Bit\r\nDim h As Bit\r\n"
        "a = 200\r\nb = 60\r\nw = 1000\r\nl = 70000\r\nf = 1\r\ng = 0\r\n";
    const Case cases[] = {
        {"c = a + b", "c", 4},          {"c = a - b", "c", 140},       {"c = b - a", "c", 116},
        {"c = a + 1", "c", 201},        {"c = a - 1", "c", 199},       {"c = a * 3", "c", 88},
        {"c = a / 7", "c", 28},         {"c = a Mod 7", "c", 4},       {"c = a / 0", "c", 255},
        {"v = w * 60", "v", 60000},     {"v = w / 7", "v", 142},       {"v = w Mod 7", "v", 6},
        {"w = 255\r\nv = w + 1", "v", 256}, {"v = w - 1", "v", 999},   {"v = w + a", "v", 1200},
        {"c = w * 3", "c", 3000 & 0xFF}, {"c = w + a", "c", 1200 & 0xFF},
        {"m = l + 70000", "m", 140000}, {"m = l - 70001", "m", 0xFFFFFFFF}, {"m = l + a", "m", 70200},
        {"c = a And b", "c", 200 & 60}, {"c = a Or b", "c", 200 | 60}, {"c = a Xor b", "c", 200 ^ 60},
        {"c = a Nand b", "c", 0xFF & ~(200 & 60)}, {"v = w Xor 255", "v", 1000 ^ 255},
        {"m = l Nor 0", "m", ~70000u},  {"c = Not a", "c", 55},        {"v = Not w", "v", 64535},
        {"h = f Or g\r\nIf h = 1 Then c = 1", "c", 1}, {"h = f And g\r\nc = 1\r\nIf h = 0 Then c = 2", "c", 2},
        {"h = Not f\r\nc = 1\r\nIf h = 0 Then c = 2", "c", 2},
        {"c = Sqr(w)", "c", 31},        {"v = Sqr(65535)", "v", 255},  {"c = Sqr(a)", "c", 14},
    };
    for (const Case& k : cases) {
        SCOPED_TRACE(k.rows);
        EXPECT_EQ(runvalue(declared + k.rows + "\r\nEnd", k.result, k.result[0] == 'c' ? 1 : k.result[0] == 'v' ? 2 : 4),
                  k.expected);
    }
}

// The code lines of the last row.
std::string lastrow(const std::string& source) {
    const BasicCompileResult result = compilebasic(source);
    EXPECT_TRUE(result.ok) << result.error;
    const std::vector<std::string> lines = asmlines(result.asmtext);
    size_t row = 0;
    for (size_t i = 0; i < lines.size(); ++i)
        if (lines[i].starts_with("; ") && isdigit(lines[i][2])) row = i;
    std::string code;
    for (size_t i = row + 1; i < lines.size() && !lines[i].starts_with(";"); ++i)
        code += (code.empty() ? "" : "|") + lines[i].substr(lines[i].starts_with("\t") ? 1 : 0);
    return code;
}

TEST(BasicArithmetic, RegisterVariablesAddInPlace) {
    // x R31, a R30, b R29; Words y R27:R28, p R25:R26 below them.
    const std::string d = "Dim x As Byte\r\nDim a As Byte\r\nDim b As Byte\r\nDim y As Word\r\nDim p As Word\r\n";
    const std::pair<const char*, const char*> cases[] = {
        {"x = x + b", "ADD R31,R29"},
        {"x = a + x", "ADD R31,R30"},
        {"x = a + b", "MOV R31,R30|ADD R31,R29"},
        {"x = a - x", "MOV R31,R30|SUB R31,R31"},
        {"y = y - p", "SUB R27,R25|SBC R28,R26"},
        {"x = a + 1", "MOV R16,R30|INC R16|MOV R31,R16"},
        {"y = y + 1", "MOV R16,R27|MOV R17,R28|INC R16|BRNE L0001|INC R17|L0001:|MOV R27,R16|MOV R28,R17"},
    };
    for (const auto& [row, expected] : cases) EXPECT_EQ(lastrow(d + row), expected) << row;
}

TEST(BasicArithmetic, RoutinesAreWrittenOnceAndOnlyWhenAsked) {
    const std::string d = "Dim a As Byte\r\nDim b As Byte\r\n";
    const std::string none = compilebasic(d + "a = a + b").asmtext;
    EXPECT_EQ(none.find("; Multiplication Routine"), std::string::npos);
    const std::string twice = compilebasic(d + "a = a * b\r\nb = b * 3\r\na = a Mod b").asmtext;
    EXPECT_EQ(twice.find("; Multiplication Routine"), twice.rfind("; Multiplication Routine"));
    EXPECT_NE(twice.find("; Division Routine"), std::string::npos);
    EXPECT_LT(twice.find("; Multiplication Routine"), twice.find("; Division Routine"));
    EXPECT_LT(twice.find("; End of program"), twice.find("; Multiplication Routine"));
}

TEST(BasicArithmetic, MisusesStopWithTheirMessages) {
    const std::string d = "Dim a As Byte\r\nDim f As Bit\r\nDim w As Word\r\n";
    const std::pair<const char*, const char*> cases[] = {
        {"a = f + 1", "Error in line 4: Bit variables can not be used for arithmetic operations."},
        {"z = a + 1", "Error in line 4: The result of arithmetic operation must be a valid variable."},
        {"f = a And f", "Error in line 4: The arguments must also be Bit variables."},
        {"a = f Or f", "Error in line 4: Bit variable can not be used as argument if the result is Byte variable."},
        {"z = a Or a", "Error in line 4: The result of operation must be a variable."},
        {"f = Not a", "Error in line 4: The argument must also be a Bit variable."},
        {"w = Not f", "Error in line 4: Bit variable can not be used as argument if the result is Word variable."},
        {"f = Sqr(a)", "Error in line 4: The result must be Byte or Word variable."},
        {"a = Sqr(f)", "Error in line 4: Invalid argument."},
        {"a = a + 256", "Error in line 4: Argument '256' is not a valid Byte type constant."},
    };
    for (const auto& [row, expected] : cases) EXPECT_EQ(compilebasic(d + row).error, expected) << row;
}

}  // namespace
}  // namespace velmora::test

namespace velmora::test {
namespace {

TEST(BasicExpressions, PrecedenceBracketsAndWidthOnTheSimulator) {
    const std::string d = "Dim a As Byte\r\nDim b As Byte\r\nDim c As Byte\r\nDim w As Word\r\nDim v As Word\r\n"
                          "Dim m As Long\r\nDim t(4) As Byte\r\nDim i As Byte\r\n"
                          "a = 10\r\nb = 3\r\nw = 1000\r\ni = 2\r\nt(i) = 7\r\n";
    const Case cases[] = {
        {"v = a + b * 4 - 2", "v", 20},           {"v = (a + b) * 4", "v", 52},
        {"v = a * (b + 2) - (w / 100 - 1)", "v", 41}, {"v = w * 100 / 7", "v", (100000 & 0xFFFF) / 7},
        {"c = w / b / 2 + 1", "c", 167},          {"v = a Mod b * 5", "v", 5},
        {"m = w + w + 70000", "m", 72000},        {"v = t(i) * 3 + a", "v", 31},
        {"w = (w + a) * 2", "w", 2020},           {"c = (a) + 0", "c", 10},
    };
    for (const Case& k : cases) {
        SCOPED_TRACE(k.rows);
        EXPECT_EQ(runvalue(d + k.rows + "\r\nEnd", k.result, k.result[0] == 'c' ? 1 : k.result[0] == 'm' ? 4 : 2),
                  k.expected);
    }
}

TEST(BasicExpressions, MalformedExpressionsStop) {
    const std::string d = "Dim a As Byte\r\nDim f As Bit\r\n";
    const std::pair<const char*, const char*> cases[] = {
        {"a = (a + 1", "Error in line 3: Bad expression: improper use of brackets."},
        {"a = a + 1)", "Error in line 3: Bad expression: improper use of brackets."},
        {"a = a + ( ) + 1", "Error in line 3: Bad expression: improper use of brackets."},
        {"a = a + a + a + a + a + a + a + a + a + a", "Error in line 3: Too many arguments."},
        {"z = a + a + a", "Error in line 3: The result of arithmetic operation must be a valid variable."},
        {"f = a + a + a", "Error in line 3: The result of arithmetic operation must be a valid variable."},
        {"a = a + + a", "Error in line 3: Bad expression."},
    };
    for (const auto& [row, expected] : cases) EXPECT_EQ(compilebasic(d + row).error, expected) << row;
}

}  // namespace
}  // namespace velmora::test

namespace velmora::test {
namespace {

TEST(BasicShifts, ShiftsOnTheSimulator) {
    const std::string d = "Dim a As Byte\r\nDim c As Byte\r\nDim n As Byte\r\nDim w As Word\r\nDim v As Word\r\n"
                          "Dim l As Long\r\nDim m As Long\r\na = 0x81\r\nw = 0x1234\r\nl = 0x12345678\r\nn = 4\r\n";
    const Case cases[] = {
        {"v = ShiftLeft(w, 4)", "v", 0x2340},       {"v = ShiftRight(w, n)", "v", 0x0123},
        {"c = ShiftLeft(a, 1)", "c", 0x02},         {"v = ShiftLeft(a, 1)", "v", 0x0102},
        {"v = ShiftLeft(w, 0)", "v", 0x1234},       {"m = ShiftLeft(l, 8)", "m", 0x34567800},
        {"m = ShiftRight(l, n)", "m", 0x01234567},  {"m = ShiftRight(l, 0)", "m", 0x12345678},
    };
    for (const Case& k : cases) {
        SCOPED_TRACE(k.rows);
        EXPECT_EQ(runvalue(d + k.rows + "\r\nEnd", k.result, k.result[0] == 'c' ? 1 : k.result[0] == 'm' ? 4 : 2),
                  k.expected);
    }
    EXPECT_EQ(compilebasic(d + "m = ShiftLeft(w, 1)").error, "Error in line 12: Argument and result must be of the same data type.");
}

}  // namespace
}  // namespace velmora::test
