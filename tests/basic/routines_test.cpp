// The runtime routines against host arithmetic over many random operands, and how the
// library is written into a program: once each, in table order, behind the program.

#include <random>

#include "basic/emit.h"
#include "basic/routines.h"
#include "basic/symbols.h"
#include "basicfixture.h"

namespace velmora::test {
namespace {

// Runs `row` over operands placed straight into a and b before each start; the result r.
// The program sets nothing else, so registers and SRAM keep what the test put there.
template <typename Expected>
void checkroutine(const std::string& declarations, const std::string& row, int bytes, uint32_t amask, uint32_t bmask,
                  Expected expected) {
    const std::string source = declarations + row + "\r\nEnd";
    const std::string text = compilebasic(source).asmtext;
    const auto address = [&](const std::string& name) {
        const std::string key = ".EQU    " + name + " = 0x";
        return std::stoi(text.substr(text.find(key) + key.size()), nullptr, 16);
    };
    const int a = address("a"), b = address("b"), r = address("r");
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
        const std::string key = ".EQU    a = 0x";
        const int a = std::stoi(text.substr(text.find(key) + key.size()), nullptr, 16);
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

TEST(BasicRoutines, GivenTextsAreExact) {
    const std::string text = compilebasic("Dim a As Word\r\na = a * a").asmtext;
    const std::string multiply =
        "; Multiplication Routine\r\nM001:\tCLR R21\r\n\tCLR R20\r\n\tLDI R22,0x10\r\n\tLSR R19\r\n\tROR R18\r\n"
        "M002:\tBRCC M003\r\n\tADD R20,R16\r\n\tADC R21,R17\r\nM003:\tROR R21\r\n\tROR R20\r\n\tROR R19\r\n\tROR R18\r\n"
        "\tDEC R22\r\n\tBRNE M002\r\n\tRET\r\n";
    EXPECT_NE(text.find(multiply), std::string::npos);
}

}  // namespace
}  // namespace velmora::test
