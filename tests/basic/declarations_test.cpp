// Where variables land: registers the generated code leaves free (highest first), then SRAM,
// read back from the comment and equate lines a declaration writes.

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

// ASM rows that name every register from R14 up, so only R0..R13 stay free.
std::string namingr14up() {
    std::string rows;
    for (int r = 14; r < 32; ++r) rows += "ASM: CLR R" + std::to_string(r) + "\r\n";
    return rows;
}

struct Case {
    const char* model;
    std::string source;
    const char* expected;
};

TEST(BasicDeclarations, VariablesLandWhereTheAllocationRulePutsThem) {
    const Case cases[] = {
        {"ATmega32", "Dim a As Byte\r\nDim b As Byte",
         "The address of 'a' is 0x1F|.EQU    a = 0x1F|The address of 'b' is 0x1E|.EQU    b = 0x1E"},
        {"ATmega32", "Dim w As Word", "The address of 'w' is 0x1E|.EQU    w = 0x1E"},
        {"ATmega32", "Dim a As Byte\r\nDim w As Word",  // the highest free pair is R29:R30
         "The address of 'a' is 0x1F|.EQU    a = 0x1F|The address of 'w' is 0x1D|.EQU    w = 0x1D"},
        {"ATmega32", "Dim l As Long", "The address of 'l' is 0x60|.EQU    l = 0x60"},
        {"ATmega32", "Dim a(10) As Byte\r\nDim w(3) As Word\r\nDim b As Byte",
         "The address of 'a' is 0x60|.EQU    a = 0x60|The address of 'w' is 0x6A|.EQU    w = 0x6A|"
         "The address of 'b' is 0x1F|.EQU    b = 0x1F"},
        {"ATmega32", namingr14up() + "Dim a As Byte\r\nDim b As Byte\r\nDim w As Word",
         "The address of 'a' is 0xD|.EQU    a = 0xD|The address of 'b' is 0xC|.EQU    b = 0xC|"
         "The address of 'w' is 0xA|.EQU    w = 0xA"},
        {"ATmega32", "Dim x As Word @ 0x100\r\nReserve 0x60\r\nDim l As Long",
         "The address of 'x' is 0x100|.EQU    x = 0x100|Reserved SRAM location: 0x60|"
         "The address of 'l' is 0x61|.EQU    l = 0x61"},
        {"ATmega32", "Symbol led = PORTB.0\r\nSymbol p = PB\r\nConst c = 0x10",
         "The address of 'led' is 0x38,0|The address of 'p' is 0x38|.EQU p = 0x38|The value of 'c' is 16"},
        {"ATmega128", "Dim a(4000) As Byte\r\nDim l As Long",  // SRAM begins behind extended I/O
         "The address of 'a' is 0x100|.EQU    a = 0x100|The address of 'l' is 0x10A0|.EQU    l = 0x10A0"},
        {"ATtiny12", "Dim a As Byte\r\nDim w As Word", "The address of 'a' is 0x1F|.EQU    a = 0x1F|"
                                                        "The address of 'w' is 0x1D|.EQU    w = 0x1D"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.source);
        const BasicCompileResult result = compilebasic(c.source, c.model);
        ASSERT_TRUE(result.ok) << result.error;
        EXPECT_EQ(declarationlines(result), c.expected);
        EXPECT_EQ(assemblegenerated(result.asmtext, c.model).asmerrors, 0);
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

}  // namespace
}  // namespace velmora::test
