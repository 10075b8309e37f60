// Both stack models and their three faults.

#include <gtest/gtest.h>

#include "core/encode.h"
#include "core/stack.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

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

}  // namespace
}  // namespace velmora::test
