// Tests, loops and branches: the code of each comparison, every message, and programs that
// count their way through loops and branches on the simulator (counter R24:R25, marks in R20).

#include "basicfixture.h"

namespace velmora::test {
namespace {

// The code of a one-line If on its first row, up to the jump to its false target.
std::string testcode(const std::string& declarations, const std::string& test) {
    const BasicCompileResult result = compilebasic(declarations + "If " + test + " Then\r\nEndif");
    EXPECT_TRUE(result.ok) << result.error;
    std::string code;
    bool inrow = false;
    for (const std::string& line : asmlines(result.asmtext)) {
        if (line.starts_with("; ") && line.find(": If ") != std::string::npos) inrow = true;
        else if (inrow && line.starts_with("\tRJMP ")) break;
        else if (inrow) code += (code.empty() ? "" : "|") + line.substr(1);
    }
    return code;
}

TEST(BasicControlFlow, ComparisonsSkipTheJumpWhenTheyHold) {
    // a R31, b R30, w R28:R29, v R26:R27, l 0x60, f R25 bit 0, g R25 bit 1
    const std::string d = "Dim a As Byte\r\nDim b As Byte\r\nDim w As Word\r\nDim v As Word\r\nDim l As Long\r\n"
                          "Dim f As Bit\r\nDim g As Bit\r\n";
    const std::pair<const char*, const char*> cases[] = {
        {"a = b", "MOV R16,R31|MOV R17,R30|CPSE R16,R17"},
        {"a <> 5", "MOV R16,R31|LDI R17,0x05|CP R16,R17|IN R18,SREG|SBRC R18,SREG_Z"},
        {"a >= b", "MOV R16,R31|MOV R17,R30|CP R16,R17|IN R18,SREG|SBRC R18,SREG_C"},
        {"a < b", "MOV R16,R31|MOV R17,R30|CP R16,R17|IN R18,SREG|SBRS R18,SREG_C"},
        {"a <= b", "MOV R16,R31|MOV R17,R30|CP R17,R16|IN R18,SREG|SBRC R18,SREG_C"},
        {"a > b", "MOV R16,R31|MOV R17,R30|CP R17,R16|IN R18,SREG|SBRS R18,SREG_C"},
        {"w = v", "MOV R16,R28|MOV R17,R29|MOV R18,R26|MOV R19,R27|CP R16,R18|CPC R17,R19|IN R20,SREG|SBRS R20,SREG_Z"},
        {"w > a", "MOV R16,R28|MOV R17,R29|MOV R18,R31|MOV R19,R15|CP R18,R16|CPC R19,R17|IN R20,SREG|SBRS R20,SREG_C"},
        {"l <= 300",
         "LDS R16,0x60|LDS R17,0x61|LDS R18,0x62|LDS R19,0x63|LDI R20,0x2C|LDI R21,0x01|LDI R22,0x00|LDI R23,0x00|"
         "CP R20,R16|CPC R21,R17|CPC R22,R18|CPC R23,R19|IN R24,SREG|SBRC R24,SREG_C"},
        {"f = 1", "SBRS R25,0"},
        {"f <> 1", "SBRC R25,0"},
        {"0 = f", "SBRC R25,0"},
        {"f = g", "CLR R17|SBRC R25,0|INC R17|SBRC R25,1|DEC R17|SBRC R17,0"},
        {"f <> g", "CLR R17|SBRC R25,0|INC R17|SBRC R25,1|DEC R17|SBRS R17,0"},
    };
    for (const auto& [test, expected] : cases) EXPECT_EQ(testcode(d, test), expected) << test;
}

TEST(BasicControlFlow, EachMisuseStopsWithItsMessage) {
    const std::string d = "Dim a As Byte\r\nDim f As Bit\r\nDim w As Word\r\nDim l As Long\r\n";
    const std::pair<std::string, std::string> cases[] = {
        {"If a Then", "Error in line 5: Argument must be a Bit variable."},
        {"While a == 1", "Error in line 5: Invalid test expression."},
        {"If a = 1 = 2 Then", "Error in line 5: Invalid test expression."},
        {"If 1 = 2 Then", "Error in line 5: There has to be at least one variable in the test expression."},
        {"If f > 0 Then", "Error in line 5: Operand not allowed for Bit variables."},
        {"If f = 2 Then", "Error in line 5: Argument '2' is not a valid Bit type constant."},
        {"Wend", "Error in line 5: Wend without While."},
        {"Else", "Error in line 5: Else without If."},
        {"If f Then\r\nElse\r\nElse", "Error in line 7: Duplicate Else."},
        {"Endif", "Error in line 5: Endif without If."},
        {"Case 1", "Error in line 5: Case without Select Case."},
        {"Case Else", "Error in line 5: Case Else without Select Case."},
        {"EndSelect", "Error in line 5: EndSelect without Select Case."},
        {"Select Case a\r\nCase Else", "Error in line 6: Else without If."},  // no Case before it
        {"Select Case a\r\nCase 1\r\nCase Else\r\nCase 2", "Error in line 8: Duplicate Else."},
        {"For f = 1 To 2", "Error in line 5: The running variable in For statement must be Byte, Word or Long data type."},
        {"For a = 1 To 256", "Error in line 5: Incorrect To argument in For statement."},
        {"For a = w To 2", "Error in line 5: Incorrect From argument in For statement."},
        {"For w = l To 2", "Error in line 5: Incorrect From argument in For statement."},
        {"For a = 1 To 2 Step w", "Error in line 5: Incorrect Step argument in For statement."},
        {"Next a", "Error in line 5: Next without For."},
        {"For a = 1 To 2\r\nNext w", "Error in line 6: Incorrect argument."},
        {"While f", "Error in line 6: Wend is missing."},
        {"For a = 1 To 2\r\nIf f Then", "Error in line 7: Next is missing."},
        {"If f Then", "Error in line 6: Endif is missing."},
        {"If a = 1 Then For a = 1 To 2", "Error in line 5: Invalid statement in IF THEN line."},
    };
    for (const auto& [rows, expected] : cases) EXPECT_EQ(compilebasic(d + rows).error, expected) << rows;
}

// Counts body runs in R24:R25 and leaves a mark in R20; ASM rows name the registers so that
// no variable is placed there. Long code works in R20..R24 too: -1 leaves a figure unchecked.
const char* const kCounter = "ASM: CLR R20\r\nASM: CLR R24\r\nASM: CLR R25\r\n";
const char* const kCount = "ASM: ADIW R24,1\r\n";

struct Case {
    std::string source;
    int count, mark;
};

TEST(BasicControlFlow, ProgramsRunTheirBranchesAndLoops) {
    const std::string c = kCounter, n = kCount;
    const Case cases[] = {
        {"Dim i As Byte\r\n" + c + "For i = 0 To 255\r\n" + n + "Next i\r\nEnd", 256, 0},
        {"Dim i As Byte\r\n" + c + "For i = 5 To 1\r\n" + n + "Next i\r\nEnd", 0, 0},
        {"Dim i As Byte\r\n" + c + "For i = 10 To 0 Step -2\r\n" + n + "Next i\r\nEnd", 6, 0},
        {"Dim i As Byte\r\nDim s As Byte\r\n" + c + "s = 3\r\nFor i = 1 To 10 Step s\r\n" + n + "Next i\r\nEnd", 4, 0},
        {"Dim w As Word\r\n" + c + "For w = 0 To 1000 Step 100\r\n" + n + "Next w\r\nEnd", 11, 0},
        {"Dim w As Word\r\n" + c + "For w = 65530 To 65535\r\n" + n + "Next w\r\nEnd", 6, 0},
        {"Dim w As Word\r\n" + c + "For w = 300 To 250 Step -25\r\n" + n + "Next w\r\nEnd", 3, 0},
        {"Dim l As Long\r\n" + c + "For l = 69998 To 70002\r\n" + n + "Next l\r\nEnd", 5, -1},
        {"Dim a As Byte @ 0x100\r\n" + c + "a = 0\r\nWhile a < 10\r\n" + n +
             "ASM: LDS R16,0x100\r\nASM: INC R16\r\nASM: STS 0x100,R16\r\nWend\r\nEnd", 10, 0},
        {"Dim f As Bit\r\n" + c + "f = 1\r\nWhile f\r\n" + n + "f = 0\r\nWend\r\nWhile Not f\r\n" + n +
             "f = 1\r\nWend\r\nEnd", 2, 0},
        {"Dim a As Byte\r\nDim b As Byte\r\n" + c + "a = 3\r\nb = 7\r\nWhile a = 1 Or b = 7 Or a = 2\r\n" + n +
             "b = 0\r\nWend\r\nEnd", 1, 0},
        {"Dim w As Word\r\n" + c + "w = 1000\r\nIf w > 999 And w < 1001 Then\r\nASM: LDI R20,1\r\nElse\r\n"
                                   "ASM: LDI R20,2\r\nEndif\r\nEnd", 0, 1},
        {"Dim l As Long\r\n" + c + "l = 70000\r\nIf l <> 70000 Then Goto no Else Goto yes\r\nEnd\r\n"
                                   "no: ASM: LDI R20,1\r\nEnd\r\nyes: ASM: LDI R20,2\r\nEnd", -1, 2},
        {"Dim x As Byte\r\n" + c + "x = 4\r\nSelect Case x\r\nCase 1, 2\r\nASM: LDI R20,1\r\nCase < 5\r\n"
                                   "ASM: LDI R20,2\r\nCase Else\r\nASM: LDI R20,3\r\nEndSelect\r\nEnd", 0, 2},
        {"Dim x As Byte\r\n" + c + "x = 9\r\nSelect Case x\r\nCase 1, 2\r\nASM: LDI R20,1\r\nCase < 5\r\n"
                                   "ASM: LDI R20,2\r\nCase Else\r\nASM: LDI R20,3\r\nEndSelect\r\nEnd", 0, 3},
        {"Dim f As Bit\r\n" + c + "f = 0\r\nIf f = 0 Then Goto zero\r\nEnd\r\nzero: ASM: LDI R20,5\r\nEnd", 0, 5},
    };
    for (const Case& k : cases) {
        SCOPED_TRACE(k.source);
        const BasicRun run(k.source, "ATmega32");
        if (k.count >= 0) {
            EXPECT_EQ(run.value(24, 2), static_cast<uint32_t>(k.count));
        }
        if (k.mark >= 0) {
            EXPECT_EQ(run.at(20), k.mark);
        }
    }
}

}  // namespace
}  // namespace velmora::test
