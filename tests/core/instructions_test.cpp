// Arithmetic, logic, bits, jumps, calls, skips, loads and stores: one row of
// data/instructions.txt each, on the bare machine with SP at the top of SRAM; calls on a
// three-byte PC, and where a run stops.
//
// Both stack models and their three faults.
//
// Loads, stores and program memory reads through the pointer registers, and the side
// effects of the two data paths.

#include <gtest/gtest.h>

#include "core/encode.h"
#include "core/memory.h"
#include "core/programcase.h"
#include "core/stack.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

TEST(ThreeBytePc, CallAndRetTakeFiveCyclesAndThreeBytesRcallFour) {
    Sim sim(262144, 4096, 4096);  // 128 Ki words
    ASSERT_TRUE(sim.m.threebytepc);
    sim.stacktop();
    std::vector<uint16_t> program(0x20, kNop);
    program[0] = 0x940F;  // call with target bit 16 set
    program[1] = 0x0010;
    sim.load(program);
    sim.m.progmem[0x10010 * 2] = kRet & 0xFF;
    sim.m.progmem[0x10010 * 2 + 1] = kRet >> 8;
    const int top = sim.m.dataspacesize - 1;
    sim.step();
    EXPECT_EQ(sim.m.pc, 0x10010);
    EXPECT_EQ(instructioncycles(sim.m), 5u);
    EXPECT_EQ(sim.m.datamem[kSplAddress] | (sim.m.datamem[kSphAddress] << 8), top - 3);
    sim.step();
    EXPECT_EQ(sim.m.pc, 2);
    EXPECT_EQ(instructioncycles(sim.m), 5u);
    sim.load({rcall(3)});
    sim.m.pc = 0;
    sim.step();
    EXPECT_EQ(instructioncycles(sim.m), 4u) << "rcall";
}

TEST(Stops, SleepUnrecognizedSpmAndTheEndOfMemory) {
    using Reason = Machine::StopReason;
    const struct {
        const char* name;
        int flash, pc;
        std::vector<uint16_t> words;  // from word `pc` on
        bool infiniteloopstop;
        int steps, expectpc;
        bool stop;
        Reason reason;
        uint32_t cycles;  // 0: not checked
        const char* text;
    } cases[] = {
        {"sleep stops after one cycle", 32768, 0, {kSleep}, false, 1, 1, true, Reason::Sleep, 1, ""},
        {"an unrecognized word stops without moving the PC", 32768, 0, {0x0001}, false, 1, 0, true, Reason::Unrecognized, 1,
         "UNRECOGNIZED"},
        {"spm never leaves its address", 32768, 0, {kNop, kSpm}, false, 5, 1, false, Reason::None, 0, "SPM"},
        {"the last word wraps and stops", 256, 127, {kNop}, false, 1, 0, true, Reason::EndOfMemory, 1, ""},
        {"a relative jump past the end wraps silently", 256, 126, {rjmp(5)}, false, 1, 4, false, Reason::None, 2, ""},
        {"rjmp to itself without the option", 32768, 0, {kNop, rjmp(-1)}, false, 3, 1, false, Reason::None, 2, ""},
        {"rjmp to itself with the option", 32768, 0, {kNop, rjmp(-1)}, true, 3, 1, true, Reason::InfiniteLoop, 2, ""},
        {"a branch to itself is no infinite loop", 32768, 0, {branch(false, 1, -1)}, true, 3, 0, false, Reason::None,
         2, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Sim sim(c.flash, 128, 0);
        sim.m.infiniteloopstop = c.infiniteloopstop;
        std::vector<uint16_t> words(static_cast<size_t>(c.pc), kNop);
        words.insert(words.end(), c.words.begin(), c.words.end());
        sim.load(words);
        sim.m.pc = c.pc;
        sim.step(c.steps);
        EXPECT_EQ(sim.m.pc, c.expectpc);
        EXPECT_EQ(sim.m.stoprequest, c.stop);
        if (c.reason != Reason::None) { EXPECT_EQ(sim.m.stopreason, c.reason); }
        if (c.cycles) { EXPECT_EQ(instructioncycles(sim.m), c.cycles); }
        if (*c.text) { EXPECT_EQ(instructiontext(sim.m), c.text); }
    }
}

TEST(Stops, BreakIsOneCycleAndDropsToStepByStep) {
    Sim sim;
    sim.run.menuspeed(4);
    sim.m.simulationrunning = true;
    sim.load({kBreak});
    sim.step();
    EXPECT_EQ(instructioncycles(sim.m), 1u);
    EXPECT_EQ(sim.run.simulationrate(), 1);
    EXPECT_FALSE(sim.m.stoprequest);
}

TEST(Instructions, EveryRowOfTheTable) {
    for (const DataRow& row : datarows("instructions.txt")) {
        const ProgramCase c = programrow(row);
        Sim sim;
        sim.stacktop();
        runprogram(sim, c);
        EXPECT_TRUE(sim.messenger.messages.empty()) << c.name;
    }
}

uint16_t push(int r) { return static_cast<uint16_t>(0x920F | ((r & 31) << 4)); }
uint16_t pop(int d) { return static_cast<uint16_t>(0x900F | ((d & 31) << 4)); }

// One PUSH or POP at the edges of the SRAM stack: the stack pointer after it, and the fault.
TEST(SramStack, EdgesOfTheStack) {
    const struct {
        const char* name;
        int sram;
        uint16_t word;
        int sp;             // before; -1: the top of SRAM
        int spafter, reg0;  // SP afterwards (-1: not checked) and R0 (PUSH) or R5 (POP)
        bool fault;
    } rows[] = {
        {"push with SP zero drops the byte", 1024, push(5), 0, 65535, 0, true},
        {"pop above RAMEND", 1024, pop(5), -1, -1, 0, true},
        {"an eight-bit stack pointer wraps at 256", 128, push(5), 0, 0x00FF, -1, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Sim sim(2048, row.sram, 0);
        sim.m.simulationrunning = true;
        sim.run.menuspeed(4);
        if (row.sp < 0) sim.stacktop();
        else sim.m.datamem[kSplAddress] = sim.m.datamem[kSphAddress] = static_cast<uint8_t>(row.sp);
        sim.load({row.word});
        sim.reg(5) = row.word == pop(5) ? 0x00 : 0x77;
        sim.step();
        if (row.spafter >= 0) { EXPECT_EQ(stackpointer(sim.m), row.spafter); }
        if (row.reg0 >= 0) { EXPECT_EQ(sim.reg(row.word == pop(5) ? 5 : 0), row.reg0); }
        ASSERT_EQ(sim.messenger.messages.size(), row.fault ? 1u : 0u);
        if (row.fault) {
            EXPECT_EQ(sim.messenger.messages[0], "Stack Pointer out of SRAM space!");
            EXPECT_EQ(sim.run.simulationrate(), 1);
        }
    }
}

struct HardwareStack : Sim {
    HardwareStack() : Sim(1024, 0, 64) { m.simulationrunning = true; }
};

TEST(HardwareStackModel, ThreeNestedCallsFitAndTheFourthOverflowsOnce) {
    HardwareStack sim;
    sim.run.menuspeed(4);
    sim.load({rcall(0), rcall(0), rcall(0), rcall(0), rcall(0), rcall(0)});
    sim.step(3);
    EXPECT_EQ(sim.m.hwstackdepth, 3);
    EXPECT_TRUE(sim.messenger.messages.empty());
    EXPECT_EQ(sim.m.hwstack[0], 3);
    EXPECT_EQ(sim.m.hwstack[2], 1);
    sim.step();
    ASSERT_EQ(sim.messenger.messages.size(), 1u);
    EXPECT_EQ(sim.messenger.messages[0], "Hardware Stack Overflow!");
    EXPECT_EQ(sim.m.hwstackdepth, kHwStackFaulted);
    EXPECT_EQ(sim.run.simulationrate(), 1);
    sim.step(2);
    EXPECT_EQ(sim.messenger.messages.size(), 1u);
    clean(sim.m);
    EXPECT_EQ(sim.m.hwstackdepth, 0);
}

TEST(HardwareStackModel, RetOnEmptyStackReturnsStaleLevelZero) {
    HardwareStack sim;
    std::vector<uint16_t> program(0x40, kNop);
    program[0] = kRet;
    sim.load(program);
    sim.m.hwstack[0] = 0x21;
    sim.step();
    EXPECT_EQ(sim.m.pc, 0x21);
    ASSERT_EQ(sim.messenger.messages.size(), 1u);
    EXPECT_EQ(sim.messenger.messages[0], "Hardware Stack Underflow!");
    EXPECT_EQ(sim.m.hwstackdepth, kHwStackFaulted);
}

TEST(HardwareStackModel, PushAndPopUseTheHardwareStack) {
    HardwareStack sim;
    sim.load({push(5), pop(6)});
    sim.reg(5) = 0x3C;
    sim.step(2);
    EXPECT_EQ(sim.reg(6), 0x3C);
    EXPECT_EQ(sim.m.hwstackdepth, 0);
}

// st X,r5 / X+ / -X: the low nibble selects the mode.
uint16_t stx(int r, int mode) { return static_cast<uint16_t>(0x9200 | ((r & 31) << 4) | mode); }
constexpr int XL = 26, XH = 27, ZL = 30, ZH = 31;

TEST(DataPaths, EightBitPointerWrapsInTheLowRegister) {
    Sim sim(2048, 128, 0);  // 224-byte data space
    ASSERT_TRUE(sim.m.eightbitpointers);
    runprogram(sim, {"st X+ at $FF", {stx(5, 13)}, {{XL, 0xFF}, {XH, 0x12}}, 1, {{XL, 0x00}, {XH, 0x12}}});
}

// A machine with PORTB/PINB and one interrupt whose flags live in a polarity-1 register.
struct PortMachine : Sim {
    static constexpr int kPortB = 0x18 + 32, kPinB = 0x16 + 32, kFlags = 0x1A + 32;
    PortMachine() {
        m.roles.port[1] = kPortB;
        m.roles.pin[1] = kPinB;
        m.roles.portexists[1] = true;
        m.datamask[kPortB] = 0xFF;
        m.datamask[kPinB] = 0x00;
        m.datamask[kFlags] = 0xFF;
        m.interrupttable.push_back({"INT0", 2, "", 0, 1, kFlags, 0x40, 1});
        m.interrupttable.push_back({"INT1", 4, "", 0, 1, kFlags, 0x80, 1});
        marksideeffects(m);
    }
};

TEST(DataPaths, SideEffectsOfPinAndFlagRegisters) {
    using P = PortMachine;
    const ProgramCase cases[] = {
        {"ones written to PIN toggle the port", {ri(0xE000, 16, 0xFF), out(0x16, 16)}, {{P::kPortB, 0x0F}}, 2,
         {{P::kPortB, 0xF0}, {P::kPinB, 0x00}}},
        {"a one clears its flag, a zero keeps it", {ri(0xE000, 16, 0x40), out(0x1A, 16)}, {{P::kFlags, 0xC0}}, 2,
         {{P::kFlags, 0x80}}},
        {"sbi on a flag register clears every set flag", {iobit(0x9A00, 0x1A, 0)}, {{P::kFlags, 0xC0}}, 1,
         {{P::kFlags, 0x01}}, 1, 2},
    };
    for (const ProgramCase& c : cases) {
        PortMachine sim;
        runprogram(sim, c);
    }
}

TEST(ProgramMemory, LpmFormsAndLimits) {
    Sim sim(1024, 256, 0);
    sim.load({kLpm, static_cast<uint16_t>(0x9005 | (7 << 4)), kElpm});
    sim.m.progmem[0x100] = 0xAB;
    sim.m.progmem[0x101] = 0xCD;
    sim.reg(ZL) = 0x00;
    sim.reg(ZH) = 0x01;
    sim.step();
    EXPECT_EQ(sim.reg(0), 0xAB);
    EXPECT_EQ(instructioncycles(sim.m), 3u);
    sim.step();  // lpm r7,Z+
    EXPECT_EQ(sim.reg(7), 0xAB);
    EXPECT_EQ(sim.reg(ZL), 0x01);
    sim.reg(ZL) = 0x00;
    sim.reg(ZH) = 0x04;  // Z = flashsize: past the end
    sim.reg(0) = 0x5C;
    sim.step();
    EXPECT_EQ(sim.reg(0), 0x5C);
}

}  // namespace
}  // namespace velmora::test
