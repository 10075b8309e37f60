// `x = y` for every pair of operand kinds: the exact code of the row, and a program that runs
// its assignments on the simulator to values worked out by hand.

#include "basicfixture.h"

namespace velmora::test {
namespace {

// The code lines of the last row of a program: those behind its comment line.
std::string lastrowcode(const BasicCompileResult& result) {
    const std::vector<std::string> lines = asmlines(result.asmtext);
    std::string code;
    size_t row = 0;
    for (size_t i = 0; i < lines.size(); ++i)
        if (lines[i].starts_with("; ") && lines[i].find(": ") != std::string::npos && isdigit(lines[i][2])) row = i;
    for (size_t i = row + 1; i < lines.size() && !lines[i].starts_with(";"); ++i) {
        if (!code.empty()) code += "|";
        code += lines[i].substr(lines[i].starts_with("\t") ? 1 : 0);
    }
    return code;
}

// a R31, b R30, w R28:R29, l 0x60..0x63, f R27 bit 0, g R27 bit 1.
const char* const kDeclared =
    "Dim a As Byte\r\nDim b As Byte\r\nDim w As Word\r\nDim l As Long\r\nDim f As Bit\r\nDim g As Bit\r\n";
// t 0x60, v 0x64, i R31, a R30; R14, X and Y are taken by the element code.
const char* const kElements = "Dim t(4) As Byte\r\nDim v(2) As Word\r\nDim i As Byte\r\nDim a As Byte\r\n";

TEST(BasicAssignment, EachOperandPairGivesItsCode) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {kDeclared, "a = b", "MOV R31,R30"},
        {kDeclared, "a = 5", "LDI R31,0x05"},
        {kDeclared, "w = 300", "LDI R28,0x2C|LDI R29,0x01"},
        {kDeclared, "l = 0", "STS 0x60,R15|STS 0x61,R15|STS 0x62,R15|STS 0x63,R15"},
        {kDeclared, "l = 200", "LDI R16,0xC8|STS 0x60,R16|STS 0x61,R15|STS 0x62,R15|STS 0x63,R15"},
        {kDeclared, "l = 513", "LDI R16,0x01|STS 0x60,R16|LDI R16,0x02|STS 0x61,R16|STS 0x62,R15|STS 0x63,R15"},
        {kDeclared, "l = 70000",
         "LDI R16,0x70|STS 0x60,R16|LDI R16,0x11|STS 0x61,R16|LDI R16,0x01|STS 0x62,R16|LDI R16,0x00|STS 0x63,R16"},
        {kDeclared, "l = a", "MOV R16,R31|STS 0x60,R16|STS 0x61,R15|STS 0x62,R15|STS 0x63,R15"},
        {kDeclared, "a = l", "LDS R16,0x60|MOV R31,R16"},
        {kDeclared, "w = l", "LDS R16,0x60|MOV R28,R16|LDS R16,0x61|MOV R29,R16"},
        {kDeclared, "PORTB = a", "MOV R16,R31|OUT 0x18,R16"},
        {kDeclared, "a = PINB", "IN R16,0x16|MOV R31,R16"},
        {kDeclared, "PORTB = 0", "OUT 0x18,R15"},
        {kDeclared, "f = 1", "SBR R27,1"},
        {kDeclared, "R5.2 = True", "SET|BLD R5,2"},
        {kDeclared, "f = g", "BST R27,1|BLD R27,0"},
        {kDeclared, "PORTB.3 = 1", "SBI 0x18,3"},
        {kDeclared, "PORTB.3 = False", "CBI 0x18,3"},
        {kDeclared, "f = PINB.2", "IN R16,0x16|BST R16,2|BLD R27,0"},
        {kDeclared, "PORTB.1 = f", "BST R27,0|IN R16,0x18|BLD R16,1|OUT 0x18,R16"},
        {kDeclared, "w.HB = a", "MOV R29,R31"},
        {"Dim f As Bit\r\n", "f = 1", "SBR R31,1"},
        {"Dim f As Bit\r\n", "f = 0", "CBR R31,1"},
        {kElements, "a = t(i)", "LDI XL,0x60|LDI XH,0x00|LDS R14,0x1F|ADD XL,R14|ADC XH,R15|LD R16,X|MOV R30,R16"},
        {kElements, "v(i) = 513",
         "LDI R16,0x01|LDI YL,0x64|LDI YH,0x00|LDS R14,0x1F|ADD YL,R14|ADC YH,R15|ADD YL,R14|ADC YH,R15|"
         "ST Y+,R16|LDI R16,0x02|ST Y,R16"},
    };
    for (const auto& [declared, row, expected] : cases) {
        SCOPED_TRACE(row);
        const BasicCompileResult result = compilebasic(std::string(declared) + row);
        ASSERT_TRUE(result.ok) << result.error;
        EXPECT_EQ(lastrowcode(result), expected);
    }
}

// The address of a declared variable, from its equate line.
int equaddress(const std::string& asmtext, const std::string& name) {
    const std::string key = ".EQU    " + name + " = 0x";
    const size_t at = asmtext.find(key);
    EXPECT_NE(at, std::string::npos) << name;
    return at == std::string::npos ? 0 : std::stoi(asmtext.substr(at + key.size()), nullptr, 16);
}

TEST(BasicAssignment, AssignedValuesReachMemoryOnTheSimulator) {
    const std::string source =
        "Dim a As Byte\r\nDim w As Word\r\nDim l As Long\r\nDim t(4) As Byte\r\nDim v(3) As Word\r\n"
        "Dim i As Byte\r\nDim f As Bit\r\n"
        "a = 200\r\nw = 513\r\nl = 70000\r\ni = 2\r\nt(i) = a\r\nv(i) = w\r\nl.HW = w\r\nf = 1\r\n"
        "PORTB = a\r\nt(0) = i\r\nEnd\r\n";
    const std::string text = compilebasic(source).asmtext;
    const BasicRun run(source, "ATmega32");
    EXPECT_EQ(run.at(equaddress(text, "a")), 200);
    EXPECT_EQ(run.value(equaddress(text, "w"), 2), 513u);
    EXPECT_EQ(run.value(equaddress(text, "l"), 4), 0x02011170u);  // 70000 = 0x11170, high word 513
    EXPECT_EQ(run.at(equaddress(text, "t") + 2), 200);
    EXPECT_EQ(run.at(equaddress(text, "t")), 2);
    EXPECT_EQ(run.value(equaddress(text, "v") + 4, 2), 513u);
    EXPECT_EQ(run.at(0x38), 200);  // PORTB
    const size_t bitline = text.find("The address of 'f' is 0x");
    ASSERT_NE(bitline, std::string::npos);
    const int fbyte = std::stoi(text.substr(bitline + 24), nullptr, 16);
    EXPECT_EQ(run.at(fbyte) & 1, 1);
}

}  // namespace
}  // namespace velmora::test

namespace velmora::test {
namespace {

// The value of a declared Byte, Word or Long after a run, by the first letter of its name.
uint32_t after(const std::string& source, const std::string& name) {
    const std::string text = compilebasic(source).asmtext;
    const BasicRun run(source, "ATmega32");
    return run.value(equaddress(text, name), name[0] == 'w' ? 2 : 1);
}

TEST(BasicMemoryAccess, PointerAndLookUpOnTheSimulator) {
    const std::string d = "Dim t(4) As Byte\r\nDim p As Word\r\nDim c As Byte\r\nDim w As Word\r\nDim i As Byte\r\n"
                          "p = 0x61\r\nc = 99\r\n";
    std::string hundred = "0";
    for (int v = 1; v < 101; ++v) hundred += ", " + std::to_string(v);
    const std::tuple<std::string, const char*, uint32_t> cases[] = {
        {"Pointer(p) = 77\r\nc = Pointer(p)", "c", 77},
        {"t(1) = 0x34\r\nt(2) = 0x12\r\nw = Pointer(p)", "w", 0x1234},
        {"w = 0x4321\r\nPointer(p) = w\r\nc = t(2)", "c", 0x43},
        {"i = 2\r\nc = LookUp(10, 20, 30), i", "c", 30},
        {"i = 3\r\nc = LookUp(10, 20, 30), i", "c", 0},   // the pad of an odd table
        {"i = 4\r\nc = LookUp(10, 20, 30), i", "c", 99},  // out of range: unchanged
        {"i = 1\r\nw = LookUp(\"AB\", 3), i", "w", 'B'},
        {"i = 100\r\nc = LookUp(" + hundred + "), i", "c", 100},
        {"c = LookUp(" + hundred + "), 101", "c", 0},   // 101 values and the pad
        {"c = LookUp(" + hundred + "), 102", "c", 99},
    };
    for (const auto& [rows, name, expected] : cases) {
        SCOPED_TRACE(rows.substr(0, 40));
        EXPECT_EQ(after(d + rows + "\r\nEnd", name), expected);
    }
}

TEST(BasicMemoryAccess, EnableAndDisableSetTheBits) {
    const BasicRun run("Enable INT0\r\nEnable\r\nDisable INT1\r\nEnable INT1\r\nDisable INT1\r\nEnd", "ATmega32");
    EXPECT_EQ(run.at(0x5B) & 0xC0, 0x40);  // GICR: INT0 on, INT1 off
    EXPECT_TRUE(run.at(0x5F) & 0x80);       // SREG I
    EXPECT_EQ(compilebasic("Enable TIMER9").error, "Error in line 1: Unrecognized interrupt name.");
    EXPECT_EQ(compilebasic("Dim p As Word\r\nDim f As Bit\r\nPointer(p) = f").error,
              "Error in line 3: Only Byte, Word or Long variable or Byte constant can be assigned to Pointer function.");
    EXPECT_EQ(compilebasic("Dim p As Long\r\nDim c As Byte\r\nc = Pointer(p)").error,
              "Error in line 3: The argument of Pointer function must be Byte or Word variable.");
    EXPECT_EQ(compilebasic("Dim c As Byte\r\nc = LookUp(1, 2)").error, "Error in line 2: LOOKUP index variable not found.");
}

}  // namespace
}  // namespace velmora::test
