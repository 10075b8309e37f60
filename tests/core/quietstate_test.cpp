// A quiet run keeps the program counter, the cycle count and SREG apart from the machine and
// works the SRAM stack itself. Every other way to them (SREG through the data space, a stack
// pointer leaving SRAM, the hardware stack, a stop inside the run) must leave the machine as
// single steps leave it.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/ioencode.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

constexpr int kSregIo = 0x3F, kSplIo = 0x3D, kSphIo = 0x3E;

uint16_t push(int r) { return r1(0x920F, r); }
uint16_t pop(int r) { return r1(0x900F, r); }
uint16_t ldx(int d) { return r1(0x900C, d); }
uint16_t stx(int r) { return r1(0x920C, r); }
uint16_t bld(int d, int bit) { return static_cast<uint16_t>(r1(0xF800, d) | bit); }
constexpr uint16_t kSec = 0x9408;

struct Row {
    const char* name;
    int flashsize, sramsize;
    std::vector<uint16_t> program;
    int faults;  // stack messages, worked out by hand
    bool infiniteloopstop = false;
};

const Row kRows[] = {
    // SREG written by OUT, ST and STS and read by IN, LD and LDS between flag instructions
    // and branches that test it.
    {"SREG through the data space", 4096, 256,
     {ldi(16, 0x03), out(kSregIo, 16), in(17, kSregIo), branch(true, 0, 1), inc(20), ldi(26, 0x5F), ldi(27, 0),
      ldx(18), ldi(16, 0x40), stx(16), bld(21, 3), lds(19), 0x005F, kSec, ldi(22, 0x14), sts(22), 0x005F,
      branch(true, 4, 1), inc(23), in(24, kSregIo), inc(25), kSleep},
     0},
    // Nested calls (RCALL, ICALL), pushes and pops with the stack at the top of SRAM.
    {"calls and pushes in SRAM", 4096, 256,
     {ldi(16, 0x5F), out(kSplIo, 16), ldi(16, 0x01), out(kSphIo, 16), ldi(30, 0x11), ldi(31, 0), rcall(3),
      inc(20), kSleep, kNop, push(20), rcall(2), pop(21), kRet, inc(20), kIcall, kRet, kRet},
     0},
    // SP one above the bottom of SRAM: the second and third pushes leave SRAM with their
    // messages, and so does the first pop; the other two come back into SRAM.
    {"the stack pointer leaving SRAM", 4096, 256,
     {ldi(16, 0x61), out(kSplIo, 16), ldi(16, 0), out(kSphIo, 16), ldi(16, 7), inc(20), inc(20), inc(20), inc(20),
      push(16), push(16), push(16), pop(17), pop(18), pop(19), kSleep},
     3},
    // No SRAM: three nested calls and their returns on the three-level hardware stack, then a
    // fourth level that overflows it.
    {"the hardware stack", 256, 0,
     {rcall(2), rcall(7), kSleep, rcall(1), kRet, rcall(1), kRet, inc(20), kRet, rcall(1), kSleep, rcall(1), kSleep,
      rcall(1), kSleep, kSleep},
     1},
    {"running off the end of program memory", 256, 0, {inc(20), inc(20)}, 0},
    {"a jump to itself", 4096, 256, {inc(20), rjmp(-1)}, 0, true},
};

struct End {
    uint64_t cycles, instructions;
    int32_t pc, lastpc;
    Machine::StopReason reason;
    int hwstackdepth;
    std::vector<uint8_t> data;
    std::vector<std::string> messages;
    bool operator==(const End&) const = default;
};

// Runs the row at a rate: Step By Step a step at a time, or Ultimate again after each drop
// to Step By Step (a fault's message drops the rate).
End runrow(const Row& row, bool fast) {
    Sim sim(row.flashsize, row.sramsize, 0);
    std::vector<uint16_t> program = row.program;
    program.resize(row.flashsize / 2, kNop);
    sim.load(program);
    sim.m.infiniteloopstop = row.infiniteloopstop;
    sim.run.phases.busy = [](const Machine&) { return false; };
    sim.run.menuspeed(fast ? kRateUltimate : kRateStep);
    sim.run.menustart();
    for (int i = 0; i < 1000 && sim.m.simulationrunning; ++i) {
        if (fast)
            sim.run.menuspeed(kRateUltimate);
        else
            sim.run.menustep();
    }
    EXPECT_FALSE(sim.m.simulationrunning);
    return {sim.m.totalcycles, sim.m.totalinstructions, sim.m.pc,           sim.m.lastpc,
            sim.m.stopreason,  sim.m.hwstackdepth,      sim.m.datamem,      sim.messenger.messages};
}

TEST(QuietState, FastRunsEndWhereSingleStepsEnd) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        const End stepped = runrow(row, false), fast = runrow(row, true);
        EXPECT_EQ(fast.cycles, stepped.cycles);
        EXPECT_EQ(fast.instructions, stepped.instructions);
        EXPECT_EQ(fast.pc, stepped.pc);
        EXPECT_EQ(fast.lastpc, stepped.lastpc);
        EXPECT_EQ(fast.reason, stepped.reason);
        EXPECT_EQ(fast.hwstackdepth, stepped.hwstackdepth);
        EXPECT_EQ(fast.messages, stepped.messages);
        EXPECT_TRUE(fast.data == stepped.data) << "data space differs";
        EXPECT_NE(stepped.reason, Machine::StopReason::None);
        // Each run ends with its summary; the rest are the stack's messages.
        EXPECT_EQ(static_cast<int>(stepped.messages.size()) - 1, row.faults);
    }
}

}  // namespace
}  // namespace velmora::test
