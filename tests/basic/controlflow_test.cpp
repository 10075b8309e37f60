// Tests, loops and branches: the code of each comparison, every message, and programs that
// count their way through loops and branches on the simulator (counter R24:R25, marks in R20);
// relative jumps that cannot reach become absolute on parts above 4096 flash words.
//
// Proc, Function, Call and interrupt routines: every message from a short program, the code of
// calls and bodies, and what each interrupt routine saves, worked out by hand from the
// registers its body's instructions name.

#include "basic/relaxjumps.h"
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
    for (const TableRow& row : statementrows("Control flow: comparisons"))
        EXPECT_EQ(testcode(declarations("$comparisons"), row[0]), row[1]) << row.where;
}

TEST(BasicControlFlow, EachMisuseStopsWithItsMessage) { expectmessagerows("Control flow: messages"); }

TEST(BasicControlFlow, ProgramsRunTheirBranchesAndLoops) {
    for (const TableRow& row : statementrows("Control flow: programs")) {
        const BasicRun run(row[0], "ATmega32");
        if (row.number(1) >= 0) { EXPECT_EQ(run.value(24, 2), static_cast<uint32_t>(row.number(1))) << row.where; }
        if (row.number(2) >= 0) { EXPECT_EQ(run.at(20), row.number(2)) << row.where; }
    }
}

TEST(BasicRelaxJumps, ReachCountsWrapAroundTheEndOfFlash) {
    for (const TableRow& row : statementrows("Relax jumps: reach"))
        EXPECT_EQ(jumpreaches(row.number(0), row.number(1), row.number(2)), row.flag(3)) << row.where;
}

// A Goto over `words` NOPs, from the start to a label behind them.
std::string gotoover(int words) {
    std::string source = "Goto far\r\n";
    for (int i = 0; i < words; ++i) source += "ASM: NOP\r\n";
    return source + "far: Halt\r\n";
}

TEST(BasicRelaxJumps, AFarGotoBecomesJmpOnlyWhereNothingElseReaches) {
    for (const TableRow& row : statementrows("Relax jumps: far Goto")) {
        const BasicCompileResult result = compilebasic(gotoover(row.number(1)), row[0]);
        ASSERT_TRUE(result.ok) << row.where << ": " << result.error;
        const std::vector<std::string> lines = asmlines(result.asmtext);
        EXPECT_NE(std::find(lines.begin(), lines.end(), row[2]), lines.end()) << row.where;
        EXPECT_EQ(assemblegenerated(result.asmtext, row[0]).asmerrors, 0) << row.where;
    }
}

TEST(BasicRelaxJumps, AWidenedJumpPushesTheNextOneOutOfReach) {
    // The first Goto reaches its label 2047 words ahead until the second, which lies between
    // them, grows.
    std::string source = "Goto far\r\nGoto far2\r\n";
    for (int i = 0; i < 2046; ++i) source += "ASM: NOP\r\n";
    source += "far: Halt\r\n";
    for (int i = 0; i < 10; ++i) source += "ASM: NOP\r\n";
    source += "far2: Halt\r\n";
    const BasicCompileResult result = compilebasic(source);
    ASSERT_TRUE(result.ok) << result.error;
    const std::vector<std::string> lines = asmlines(result.asmtext);
    EXPECT_NE(std::find(lines.begin(), lines.end(), "\tJMP L0001"), lines.end());
    EXPECT_NE(std::find(lines.begin(), lines.end(), "\tJMP L0002"), lines.end());
    EXPECT_EQ(assemblegenerated(result.asmtext, "ATmega32").asmerrors, 0);
}

TEST(BasicProcedures, EachProgramStopsWithItsMessage) { expectmessagerows("Procedures: messages"); }

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
    for (const TableRow& row : statementrows("Procedures: calls"))
        EXPECT_EQ(rowcode(result, row[0]), withregisters(result, row[1])) << row.where;
    EXPECT_NE(rowcode(result, "arr(x) = g").find("LDS R14,0x" + equdigits(result, "p_r_o_c_1_1")), std::string::npos)
        << "the index is the argument";
    EXPECT_EQ(assemblegenerated(result.asmtext, "ATmega32").asmerrors, 0);
}

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
    for (const char* model : {"ATmega32", "ATtiny12"}) {
        const bool sram = std::string(model) == "ATmega32";
        for (const TableRow& row : statementrows("Interrupt routines: saved")) {
            SCOPED_TRACE(std::string(model) + ": " + row.where);
            const BasicCompileResult result = compilebasic(saveprogram(row[0]), model);
            ASSERT_TRUE(result.ok) << result.error;
            EXPECT_EQ(savedregisters(result, sram), row[1]);
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

TEST(BasicInterruptRoutines, EnableAndDisableByName) { expectcoderows("Interrupt routines: code"); }

}  // namespace
}  // namespace velmora::test
