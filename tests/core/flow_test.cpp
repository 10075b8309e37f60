// Calls on a three-byte PC, and where a run stops (the jumps, branches, calls and skips of
// the usual machine are rows of data/instructions.txt).

#include <gtest/gtest.h>

#include "core/encode.h"
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

}  // namespace
}  // namespace velmora::test
