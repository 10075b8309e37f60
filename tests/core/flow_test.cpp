// Jumps, branches, calls, skips and their cycles; pc wrap; stops.

#include <gtest/gtest.h>

#include "core/encode.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

struct FlowCase {
    const char* name;
    std::vector<uint16_t> program;
    uint8_t sregin;
    int r16;
    int expectpc;
    uint32_t expectcycles;
};
void PrintTo(const FlowCase& c, std::ostream* os) { *os << c.name; }

class Flow : public ::testing::TestWithParam<FlowCase> {};

TEST_P(Flow, PcAndCycles) {
    const FlowCase& c = GetParam();
    Sim sim;
    sim.stacktop();
    sim.load(c.program);
    sim.setsreg(c.sregin);
    sim.reg(16) = static_cast<uint8_t>(c.r16);
    sim.reg(17) = 0x05;
    sim.step();
    EXPECT_EQ(sim.m.pc, c.expectpc);
    EXPECT_EQ(instructioncycles(sim.m), c.expectcycles);
}

const uint16_t kCpseR16R17 = rr(0x1000, 16, 17);
const uint16_t kSbrsR16Bit0 = static_cast<uint16_t>(0xFE00 | (16 << 4) | 0);
const uint16_t kSbrcR16Bit0 = static_cast<uint16_t>(0xFC00 | (16 << 4) | 0);

INSTANTIATE_TEST_SUITE_P(
    Jumps, Flow,
    ::testing::Values(
        FlowCase{"rjmp_forward", {rjmp(2)}, 0, 0, 3, 2}, FlowCase{"rjmp_back_wraps", {rjmp(-2)}, 0, 0, 16383, 2},
        FlowCase{"jmp", {kJmp, 0x0123}, 0, 0, 0x123, 3}, FlowCase{"ijmp", {kIjmp}, 0, 0, 0, 2},
        FlowCase{"breq_taken", {branch(true, 1, 5)}, 0x02, 0, 6, 2},
        FlowCase{"breq_not_taken", {branch(true, 1, 5)}, 0x00, 0, 1, 1},
        FlowCase{"brne_back_to_itself", {branch(false, 1, -1)}, 0x00, 0, 0, 2},
        FlowCase{"rcall", {rcall(4)}, 0, 0, 5, 3}, FlowCase{"call", {kCall, 0x0200}, 0, 0, 0x200, 4},
        FlowCase{"icall", {kIcall}, 0, 0, 0, 3}));

INSTANTIATE_TEST_SUITE_P(
    Skips, Flow,
    ::testing::Values(FlowCase{"cpse_not_equal", {kCpseR16R17, kNop}, 0, 4, 1, 1},
                      FlowCase{"cpse_over_one_word", {kCpseR16R17, kNop}, 0, 5, 2, 2},
                      FlowCase{"cpse_over_call", {kCpseR16R17, kCall, 0x0000}, 0, 5, 3, 3},
                      FlowCase{"cpse_over_lds", {kCpseR16R17, 0x9000, 0x0100}, 0, 5, 3, 3},
                      FlowCase{"sbrs_over_call", {kSbrsR16Bit0, kCall, 0x0000}, 0, 1, 3, 3},
                      FlowCase{"sbrs_not_taken", {kSbrsR16Bit0, kCall, 0x0000}, 0, 0, 1, 1},
                      FlowCase{"sbrc_taken", {kSbrcR16Bit0, kNop}, 0, 0, 2, 2}));

TEST(Flow, JmpAndCallTakeTheSecondWordAsTarget) {
    Sim sim;
    sim.stacktop();
    sim.load({kCall, 0x0010});
    sim.step();
    // Return address 2 pushed low byte first: low at the old SP, high below it.
    const int top = sim.m.dataspacesize - 1;
    EXPECT_EQ(sim.m.datamem[top], 0x02);
    EXPECT_EQ(sim.m.datamem[top - 1], 0x00);
    EXPECT_EQ(sim.m.datamem[kSplAddress] | (sim.m.datamem[kSphAddress] << 8), top - 2);
}

TEST(Flow, CallThenRetReturnsBehindTheCall) {
    Sim sim;
    sim.stacktop();
    std::vector<uint16_t> program(0x20, kNop);
    program[0] = kCall;
    program[1] = 0x0010;
    program[0x10] = kRet;
    sim.load(program);
    sim.step();
    sim.step();
    EXPECT_EQ(sim.m.pc, 2);
    EXPECT_EQ(instructioncycles(sim.m), 4u);
}

TEST(Flow, IcallJumpsToZ) {
    Sim sim;
    sim.stacktop();
    sim.load({kIcall});
    sim.reg(30) = 0x34;
    sim.reg(31) = 0x01;
    sim.step();
    EXPECT_EQ(sim.m.pc, 0x134);
}

TEST(ThreeBytePc, CallAndRetTakeFiveCyclesAndThreeBytes) {
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
}

TEST(ThreeBytePc, RcallTakesFourCycles) {
    Sim sim(262144, 4096, 4096);
    sim.stacktop();
    sim.load({rcall(3)});
    sim.step();
    EXPECT_EQ(instructioncycles(sim.m), 4u);
}

// Where a run stops, or wraps without stopping; the flash is 256 bytes (128 words) where the
// end of memory matters.
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
