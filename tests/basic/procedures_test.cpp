// Proc, Function, Call and interrupt routines: every message from a short program, the code of
// calls and bodies, and what each interrupt routine saves, worked out by hand from the
// registers its body's instructions name.

#include "basicfixture.h"

namespace velmora::test {
namespace {

struct MessageCase {
    std::string source;
    std::string expected;
};

TEST(BasicProcedures, EachProgramStopsWithItsMessage) {
    const std::string six = "Proc a(a As Byte, b As Byte, c As Byte, d As Byte, e As Byte, f As Byte)";
    const MessageCase cases[] = {
        // Headers, found by the declaration scan wherever they stand.
        {"Proc a", "Error in line 1: Incorrect procedure declaration."},
        {"Proc a(x As Byte", "Error in line 1: Incorrect procedure declaration."},
        {"Proc 1a(x As Byte)", "Error in line 1: Incorrect procedure name."},
        {"End\r\nProc a()\r\nEnd Proc\r\nProc a()", "Error in line 4: Procedure name already used."},
        {six, "Error in line 1: Too many arguments of the procedure (5 max)."},
        {"Proc a(1x As Byte)", "Error in line 1: Incorrect argument name '1x'."},
        {"Proc a(x Byte)", "Error in line 1: Incorrect argument declaration 'x Byte'."},
        {"Proc a(x As Bit, y)", "Error in line 1: Incorrect argument declaration 'y'."},
        {"Function f", "Error in line 1: Incorrect function declaration."},
        {"Function f(x As Byte)", "Error in line 1: Incorrect function declaration 'f(x As Byte)'."},
        {"Function 1f(x As Byte) As Word", "Error in line 1: Incorrect function name."},
        {"Function f() As Bit\r\nFunction f() As Word", "Error in line 2: Function name already used."},
        {"Function f(a As Byte, b As Byte, c As Byte, d As Byte, e As Byte, f As Byte) As Word",
         "Error in line 1: Too many arguments of the function (5 max)."},
        // Bodies.
        {"Proc a()\r\nEnd Proc", "Error in line 1: Procedures must be placed after END statement in program."},
        {"Function f() As Byte", "Error in line 1: Functions must be placed after END statement in program."},
        {"End\r\nProc a()\r\nProc b()", "Error in line 3: End Proc is missing."},
        {"End\r\nFunction f() As Byte\r\nProc b()", "Error in line 3: End Function is missing."},
        {"Exit", "Error in line 1: Exit without Proc or Function declaration."},
        {"End Proc", "Error in line 1: End Proc without Proc declaration."},
        {"End\r\nProc a()\r\nEnd Function", "Error in line 3: End Function without Function declaration."},
        // Calls.
        {"Call a", "Error in line 1: Incorrect procedure or function call."},
        {"Call nothing(1)", "Error in line 1: Incorrect procedure or function name."},
        {"Call a(1, 2, 3)\r\nEnd\r\nProc a(x As Byte, y As Word)\r\nEnd Proc", "Error in line 1: Too many arguments (2 max)."},
        {"Dim x As Word\r\nx = f(1) + 1\r\nEnd\r\nFunction f(a As Byte) As Word\r\nEnd Function",
         "Error in line 2: Incorrect procedure or function call."},
        {"Dim b As Bit\r\nCall a(b)\r\nEnd\r\nProc a(x As Word)\r\nEnd Proc",
         "Error in line 2: Bit variable can not be assigned to Word variable."},
        // Interrupt routines.
        {"On Interrupt INT0\r\nResume", "Error in line 1: Interrupt routine must be placed after END statement in program."},
        {"End\r\nOn Interrupt INT0\r\nOn Interrupt INT1", "Error in line 3: This statement can not be used in interrupt routine."},
        {"End\r\nOn Interrupt INT0\r\nReturn", "Error in line 3: This statement can not be used in interrupt routine."},
        {"End\r\nOn Interrupt", "Error in line 2: Interrupt name missing."},
        {"End\r\nOn Interrupt TIMER9_OVF", "Error in line 2: Unrecognized interrupt name."},
        {"Resume", "Error in line 1: This statement can not be used outside interrupt routine."},
        {"End\r\nOn Interrupt INT0\r\nDisable", "Error in line 4: Resume is missing."},
        {"Enable TIMER9_OVF", "Error in line 1: Unrecognized interrupt name."},
    };
    for (const MessageCase& c : cases) {
        SCOPED_TRACE(c.source);
        const BasicCompileResult result = compilebasic(c.source);
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.error, c.expected);
    }
}

// The digits of the address the listing's ".EQU name = 0x.." gives a variable.
std::string equdigits(const BasicCompileResult& result, const std::string& name) {
    const std::string equ = ".EQU    " + name + " = 0x";
    const size_t at = result.asmtext.find(equ);
    return at == std::string::npos ? "" : result.asmtext.substr(at + equ.size(), result.asmtext.find('\r', at) - at - equ.size());
}

// "{name}" in `code` stands for the register of that variable and "{name+1}" for the one
// above: the test does not depend on where the allocator put them.
std::string withregisters(const BasicCompileResult& result, std::string code) {
    for (size_t open; (open = code.find('{')) != std::string::npos;) {
        const size_t close = code.find('}', open);
        std::string name = code.substr(open + 1, close - open - 1);
        const bool high = name.ends_with("+1");
        if (high) name.resize(name.size() - 2);
        const std::string digits = equdigits(result, name);
        if (digits.empty()) return "no .EQU for " + name;
        code.replace(open, close - open + 1, "R" + std::to_string(std::stoi(digits, nullptr, 16) + (high ? 1 : 0)));
    }
    return code;
}

TEST(BasicProcedures, CallsAssignEachArgumentThenCall) {
    const std::string program =
        "Dim arr(4) As Byte\r\nDim g As Byte\r\n"
        "Call a(1, 300)\r\nCall a(7)\r\ng = f(3)\r\nCall f(4)\r\nEnd\r\n"
        "Proc a(x As Byte, y As Word)\r\nx.0 = 1\r\narr(x) = g\r\nIf y.15 = 1 Then Exit\r\nEnd Proc\r\n"
        "Function f(x As Byte) As Word\r\nf = x\r\nEnd Function";
    const BasicCompileResult result = compilebasic(program);
    ASSERT_TRUE(result.ok) << result.error;
    const std::pair<const char*, const char*> rows[] = {
        // Arguments in order; one left out is not assigned; then the call.
        {"Call a(1, 300)", "LDI {p_r_o_c_1_1},0x01|LDI {p_r_o_c_1_2},0x2C|LDI {p_r_o_c_1_2+1},0x01|RCALL L0001"},
        {"Call a(7)", "LDI {p_r_o_c_1_1},0x07|RCALL L0001"},
        // The call first, then the result variable, named after the function, is assigned.
        {"g = f(3)", "LDI {f_u_n_c_1_1},0x03|RCALL L0002|MOV R16,{f}|MOV {g},R16"},
        {"Call f(4)", "LDI {f_u_n_c_1_1},0x04|RCALL L0002"},
        {"Proc a(x As Byte, y As Word)", "L0001:"},
        // In a body an argument's name stands for its variable, with a bit or as an index.
        {"x.0 = 1", "SBR {p_r_o_c_1_1},1"},
        {"If y.15 = 1 Then Exit", "SBRS {p_r_o_c_1_2+1},7|RJMP L0004|RET|L0004:"},  // L0003 is End's
        {"End Proc", "RET"},
        {"Function f(x As Byte) As Word", "L0002:"},
        {"f = x", "MOV R16,{f_u_n_c_1_1}|MOV {f},R16|MOV {f+1},R15"},
        {"End Function", "RET"},
    };
    for (const auto& [row, code] : rows) EXPECT_EQ(rowcode(result, row), withregisters(result, code)) << row;
    EXPECT_NE(rowcode(result, "arr(x) = g").find("LDS R14,0x" + equdigits(result, "p_r_o_c_1_1")), std::string::npos)
        << "the index is the argument";
    EXPECT_EQ(assemblegenerated(result.asmtext, "ATmega32").asmerrors, 0);
}

struct SaveCase {
    const char* body;        // the interrupt routine's rows
    const char* saved;       // registers pushed (or copied) beyond R16 and SREG, ascending
};

// Main code multiplies, so R17 to R22 are used by the program; a routine saves only what its
// own instructions (and the routines it asks for) name.
std::string saveprogram(const std::string& body) {
    return "Dim a As Byte\r\nDim b As Byte\r\nDim w As Word\r\na = a * b\r\nEnable\r\nEnd\r\n"
           "On Interrupt INT0\r\n" + body + "\r\nResume\r\nsub: Return";
}

// The registers the routine's entry saves, read from its lines after the label.
std::string savedregisters(const BasicCompileResult& result, bool sram) {
    const std::vector<std::string> lines = asmlines(result.asmtext);
    std::string saved;
    bool entry = false;
    for (const std::string& line : lines) {
        if (line == "; 7: On Interrupt INT0") {
            entry = true;
            continue;
        }
        if (!entry) continue;
        if (line.starts_with(";")) break;
        const std::string prefix = sram ? "\tPUSH R" : "\tMOV r";
        if (!line.starts_with(prefix)) continue;
        const std::string number = line.substr(prefix.size(), line.find_first_not_of("0123456789", prefix.size()) - prefix.size());
        if (number == "16") continue;
        saved += (saved.empty() ? "" : " ") + number;
    }
    return saved;
}

TEST(BasicInterruptRoutines, SaveTheRegistersTheirBodiesName) {
    const SaveCase cases[] = {
        // LDI R16 / STS: only R16, which every entry saves anyway.
        {"a = 1", ""},
        {"Disable", ""},
        // Adding 1 is INC on R16:R17; adding a Word takes R18:R19 for the second operand.
        {"w = w + 1", "17"},
        {"w = w + w", "17 18 19"},
        // Byte multiplication: R16..R19 for the operands, and the routine's R20..R22.
        {"a = a * b", "17 18 19 20 21 22"},
        // A Gosub's target is not followed.
        {"Gosub sub", ""},
        // Assembler rows count by name, halves and pointer forms included.
        {"ASM: LD R0,Z+", "0 30 31"},
        {"ASM: MOV XL,YH", "26 29"},
        {"ASM: ST -X,R5", "5 26 27"},
    };
    for (const char* model : {"ATmega32", "ATtiny12"}) {
        const bool sram = std::string(model) == "ATmega32";
        for (const SaveCase& c : cases) {
            SCOPED_TRACE(std::string(model) + ": " + c.body);
            const BasicCompileResult result = compilebasic(saveprogram(c.body), model);
            ASSERT_TRUE(result.ok) << result.error;
            EXPECT_EQ(savedregisters(result, sram), c.saved);
            EXPECT_EQ(assemblegenerated(result.asmtext, model).asmerrors, 0);
        }
    }
}

// Every entry and the common exit agree: what any routine names is saved by all of them.
TEST(BasicInterruptRoutines, EntriesAndTheExitShareOneSet) {
    const BasicCompileResult result = compilebasic(
        "Dim w As Word\r\nEnd\r\nOn Interrupt INT1\r\nw = w + w\r\nResume\r\nOn Interrupt INT0\r\nResume");
    ASSERT_TRUE(result.ok) << result.error;
    const std::string text = result.asmtext;
    const std::string push = "PUSH R16\r\n\tIN R16,SREG\r\n\tPUSH R16\r\n\tPUSH R17\r\n\tPUSH R18\r\n\tPUSH R19\r\n";
    // Labels: L0001 the start, then one per used vector in table order, then the exit.
    EXPECT_NE(text.find("L0002:\r\n\t" + push), std::string::npos);  // INT0
    EXPECT_NE(text.find("L0003:\r\n\t" + push), std::string::npos);  // INT1
    EXPECT_NE(text.find("L0004:\r\n\tPOP R19\r\n\tPOP R18\r\n\tPOP R17\r\n\tPOP R16\r\n\tOUT SREG,R16\r\n\tPOP R16\r\n\tRETI"),
              std::string::npos);
    EXPECT_NE(text.find(".ORG    0x000002\r\n\tRJMP L0002\r\n.ORG    0x000004\r\n\tRJMP L0003"), std::string::npos);
}

TEST(BasicInterruptRoutines, EnableAndDisableByName) {
    const std::pair<const char*, const char*> rows[] = {
        // Names are read in any letter case (the cleaner lowers those that are no bit name).
        {"Enable usart_rxc", "SBI 0xA,7"},  // UCSRB lies in the low I/O space
        {"Disable usart_rxc", "CBI 0xA,7"},
        {"Enable INT0", "SET|IN R16,0x3B|BLD R16,6|OUT 0x3B,R16"},  // GICR does not
        {"Enable", "SEI"},
        {"Disable", "CLI"},
    };
    std::string program;
    for (const auto& [row, code] : rows) program += std::string(row) + "\r\n";
    const BasicCompileResult result = compilebasic(program);
    ASSERT_TRUE(result.ok) << result.error;
    for (const auto& [row, code] : rows) EXPECT_EQ(rowcode(result, row), code) << row;
}

}  // namespace
}  // namespace velmora::test
