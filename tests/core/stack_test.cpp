// Both stack models and their three faults.

#include <gtest/gtest.h>

#include "core/encode.h"
#include "core/stack.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

uint16_t push(int r) { return static_cast<uint16_t>(0x920F | ((r & 31) << 4)); }
uint16_t pop(int d) { return static_cast<uint16_t>(0x900F | ((d & 31) << 4)); }

TEST(SramStack, PushWithSpZeroDropsTheByteAndFaults) {
    Sim sim;
    sim.m.simulationrunning = true;
    sim.run.menuspeed(4);
    sim.load({push(5)});
    sim.reg(5) = 0x77;
    sim.step();
    EXPECT_EQ(stackpointer(sim.m), 65535);
    EXPECT_EQ(sim.reg(0), 0);
    ASSERT_EQ(sim.messenger.messages.size(), 1u);
    EXPECT_EQ(sim.messenger.messages[0], "Stack Pointer out of SRAM space!");
    EXPECT_EQ(sim.run.simulationrate(), 1);
}

TEST(SramStack, PopAboveRamendFaults) {
    Sim sim;
    sim.stacktop();
    sim.load({pop(5)});
    sim.step();
    EXPECT_EQ(sim.reg(5), 0);
    ASSERT_EQ(sim.messenger.messages.size(), 1u);
    EXPECT_EQ(sim.messenger.messages[0], "Stack Pointer out of SRAM space!");
}

TEST(SramStack, EightBitStackPointerWrapsAt256) {
    Sim sim(2048, 128, 0);
    sim.load({push(5)});
    sim.m.datamem[kSplAddress] = 0;
    sim.step();
    EXPECT_EQ(sim.m.datamem[kSplAddress], 0xFF);
    EXPECT_EQ(sim.m.datamem[kSphAddress], 0x00);
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
