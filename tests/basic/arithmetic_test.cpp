// One-operator rows and `x = y` for every pair of operand kinds, on the simulator with results
// worked out by hand (unsigned, wrapping), and the code of the forms whose lines are fixed,
// line by line (rows in data/statements.txt).
//
// The runtime routines against host arithmetic over many random operands, and how the
// library is written into a program: once each, in table order, behind the program.

#include <random>

#include "basic/emit.h"
#include "basic/routines.h"
#include "basic/symbols.h"
#include "basicfixture.h"

namespace velmora::test {
namespace {

TEST(BasicArithmetic, ResultsOnTheSimulator) { expectvaluerows("Arithmetic: values"); }

TEST(BasicArithmetic, RegisterVariablesAddInPlace) { expectcoderows("Arithmetic: code"); }

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

TEST(BasicArithmetic, MisusesStopWithTheirMessages) { expectmessagerows("Arithmetic: messages"); }

TEST(BasicExpressions, PrecedenceBracketsAndWidthOnTheSimulator) { expectvaluerows("Expressions: values"); }

TEST(BasicExpressions, MalformedExpressionsStop) { expectmessagerows("Expressions: messages"); }

TEST(BasicShifts, ShiftsOnTheSimulator) {
    expectvaluerows("Shifts: values");
    EXPECT_EQ(compilebasic(declarations("$shifts") + "m = ShiftLeft(w, 1)").error,
              "Error in line 12: Argument and result must be of the same data type.");
}

TEST(BasicAssignment, EachOperandPairGivesItsCode) { expectcoderows("Assignment: code"); }

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

TEST(BasicMemoryAccess, PointerAndLookUpOnTheSimulator) { expectvaluerows("Memory access: values"); }

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

// Runs `row` over operands placed straight into a and b before each start; the result r.
// The program sets nothing else, so registers and SRAM keep what the test put there.
template <typename Expected>
void checkroutine(const std::string& declarations, const std::string& row, int bytes, uint32_t amask, uint32_t bmask,
                  Expected expected) {
    const std::string source = declarations + row + "\r\nEnd";
    const std::string text = compilebasic(source).asmtext;
    const int a = equaddress(text, "a"), b = equaddress(text, "b"), r = equaddress(text, "r");
    BasicRun program(source, "ATmega32", BasicRun::NotStarted{});
    const Machine fresh = program.m;
    std::mt19937 random(12345);
    for (int i = 0; i < 1000; ++i) {
        const uint32_t x = random() & amask, y = (i < 20 ? static_cast<uint32_t>(i) : random()) & bmask;
        program.m = fresh;
        program.set(a, bytes, x);
        program.set(b, bytes, y);
        program.start();
        ASSERT_EQ(program.value(r, bytes), expected(x, y)) << row << " with " << x << ", " << y;
    }
}

const char* const kWords = "Dim a As Word\r\nDim b As Word\r\nDim r As Word\r\n";
const char* const kLongs = "Dim a As Long\r\nDim b As Long\r\nDim r As Long\r\n";

TEST(BasicRoutines, ArithmeticMatchesTheHost) {
    checkroutine(kWords, "r = a * b", 2, 0xFFFF, 0xFFFF, [](uint32_t x, uint32_t y) { return (x * y) & 0xFFFF; });
    checkroutine(kWords, "r = a / b", 2, 0xFFFF, 0xFFFF, [](uint32_t x, uint32_t y) { return y ? x / y : 0xFFFFu; });
    checkroutine(kWords, "r = a Mod b", 2, 0xFFFF, 0xFFFF, [](uint32_t x, uint32_t y) { return y ? x % y : x; });
    checkroutine(kWords, "r = Sqr(a)", 2, 0xFFFF, 0, [](uint32_t x, uint32_t) {
        uint32_t root = 0;
        while ((root + 1) * (root + 1) <= x) ++root;
        return root;
    });
    checkroutine(kLongs, "r = a * b", 4, 0xFFFFFFFF, 0xFFFFFFFF,
                 [](uint32_t x, uint32_t y) { return static_cast<uint32_t>(uint64_t{x} * y); });
    checkroutine(kLongs, "r = a / b", 4, 0xFFFFFFFF, 0xFFFF, [](uint32_t x, uint32_t y) { return y ? x / y : 0xFFFFFFFFu; });
    checkroutine(kLongs, "r = a Mod b", 4, 0xFFFFFFFF, 0xFFFFF, [](uint32_t x, uint32_t y) { return y ? x % y : x; });
}

TEST(BasicRoutines, DecimalOutputMatchesTheHost) {
    for (const auto& [declarations, bytes, mask] :
         {std::tuple{"Dim a As Word\r\n", 2, 0xFFFFu}, std::tuple{"Dim a As Long\r\n", 4, 0xFFFFFFFFu}}) {
        const std::string source = std::string(declarations) + "Hseropen\r\nHserout #a, Lf\r\nEnd";
        const std::string text = compilebasic(source).asmtext;
        const int a = equaddress(text, "a");
        BasicRun program(source, "ATmega32", BasicRun::NotStarted{}, 10000000);
        const Machine fresh = program.m;
        std::mt19937 random(777);
        for (int i = 0; i < 300; ++i) {
            const uint32_t x = (i < 12 ? static_cast<uint32_t>(i * 10 % 101) : random() >> (random() % 32)) & mask;
            program.m = fresh;
            program.sent.clear();
            program.set(a, bytes, x);
            program.start();
            ASSERT_EQ(program.sent, std::to_string(x) + "\n") << x;
        }
    }
}

TEST(BasicRoutines, WrittenOnceInTableOrderBehindTheProgram) {
    const std::string text =
        compilebasic("Dim a As Word\r\nDim l As Long\r\nHseropen\r\nHserout #l, #a\r\na = a * a\r\na = Sqr(a)\r\n"
                     "l = l / l\r\na = ShiftLeft(a, 1)\r\na = a / a")
            .asmtext;
    const char* const order[] = {"; Multiplication Routine", "; Division Routine", "; Square Root Routine",
                                 "; ShiftLeft Routine", "; Hardware Serial Communication Routines",
                                 "; Hserout Decimal Routine", "; Decimal Conversion Routine - Long",
                                 "; Long Division Routine", "; Decimal Conversion Routine - Word", "; End of listing"};
    size_t previous = text.find("; End of program");
    for (const char* comment : order) {
        const size_t at = text.find(comment);
        ASSERT_NE(at, std::string::npos) << comment;
        EXPECT_GT(at, previous) << comment;
        EXPECT_EQ(at, text.rfind(comment)) << comment << " written twice";
        previous = at;
    }
    EXPECT_EQ(text.find("; Long Multiplication Routine"), std::string::npos);
    EXPECT_EQ(text.find("; ShiftRight Routine"), std::string::npos);
}

// A routine asked for inside an interrupt routine lands in the interrupt text too, so the
// registers it touches are saved there; one asked for outside does not.
TEST(BasicRoutines, InterruptSideRequestsReachTheInterruptText) {
    CompileContext ctx;
    ctx.model = &basicmodel("ATmega32");
    loadsystemsymbols(ctx);
    ctx.ininterrupt = true;
    requestroutine(ctx, kRoutineDivide);
    requestroutine(ctx, kRoutineWaitUsByte);
    ctx.ininterrupt = false;
    requestroutine(ctx, kRoutineMultiply);
    emitroutines(ctx);
    const struct {
        const char* instruction;
        bool saved;
    } rows[] = {{"SUB R21,R21", true}, {"SBC R21,R19", true}, {"SBC R17,R20", true}, {"ADC R21,R17", false},
                {"LDI R22,0x10", false}};
    for (const auto& row : rows)
        EXPECT_EQ(ctx.interrupttext.find(row.instruction) != std::string::npos, row.saved) << row.instruction;
    EXPECT_FALSE(ctx.ininterrupt);
}

TEST(BasicRoutines, GivenTextsAreExact) { expectroutinerows("Routines: texts"); }

}  // namespace
}  // namespace velmora::test
