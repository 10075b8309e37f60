// Arithmetic, logic, bits, jumps, calls, skips, loads and stores: one row of
// data/instructions.txt each, on the bare machine with SP at the top of SRAM; calls on a
// three-byte PC, and where a run stops.
//
// Both stack models and their three faults.
//
// Loads, stores and program memory reads through the pointer registers, and the side
// effects of the two data paths.

#include <gtest/gtest.h>

#include <map>

#include "core/encode.h"
#include "core/memory.h"
#include "core/programcase.h"
#include "core/stack.h"
#include "support/sectiontable.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

TEST(ThreeBytePc, CallAndRetTakeFiveCyclesAndThreeBytesRcallFour) {
    Sim sim(262144, 4096, 4096);  // 128 Ki words
    ASSERT_TRUE(sim.m.threebytepc);
    sim.stacktop();
    sim.load(padded({0x940F, 0x0010}, 0x20));  // call with target bit 16 set
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
    const std::map<std::string, Reason> reasons = {{"sleep", Reason::Sleep},
                                                   {"unrecognized", Reason::Unrecognized},
                                                   {"end of memory", Reason::EndOfMemory},
                                                   {"infinite loop", Reason::InfiniteLoop}};
    for (const TableRow& row : tablerows("stops.txt", "stops")) {
        SCOPED_TRACE(row.where + ": " + row[0]);
        const int pc = static_cast<int>(row.number(4));
        Sim sim(static_cast<int>(row.number(3)), 128, 0);
        sim.m.infiniteloopstop = row.flag(5);
        std::vector<uint16_t> words(static_cast<size_t>(pc), kNop);
        const std::vector<uint16_t> program = hexwords(row[2]);
        words.insert(words.end(), program.begin(), program.end());
        sim.load(words);
        sim.m.pc = pc;
        sim.step(static_cast<int>(row.number(6)));
        EXPECT_EQ(sim.m.pc, row.number(7));
        EXPECT_EQ(sim.m.stoprequest, row.flag(8));
        if (row[9] != "-") { EXPECT_EQ(sim.m.stopreason, reasons.at(row[9])); }
        if (row.number(10)) { EXPECT_EQ(instructioncycles(sim.m), static_cast<uint64_t>(row.number(10))); }
        if (row[11] != "-") { EXPECT_EQ(instructiontext(sim.m), row[11]); }
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
    for (const TableRow& row : tablerows("instructions.txt", "instructions")) {
        const ProgramCase c = programrow(row);
        Sim sim;
        sim.stacktop();
        runprogram(sim, c);
        EXPECT_TRUE(sim.messenger.messages.empty()) << c.name;
    }
}

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
    sim.load(padded({kRet}, 0x40));
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
    for (const TableRow& row : tablerows("sideeffects.txt", "side effects")) {
        PortMachine sim;
        runprogram(sim, programrow(row));
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
