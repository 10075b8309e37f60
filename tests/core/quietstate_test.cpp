// A quiet run keeps the program counter, the cycle count and SREG apart from the machine and
// works the SRAM stack itself. Every other way to them (SREG through the data space, a stack
// pointer leaving SRAM, the hardware stack, a stop inside the run) must leave the machine as
// single steps leave it.
//
// The fast rates run a quiet machine without the per-step looks. Whatever ends the quiet
// (interrupts enabled, BREAK, SLEEP, a peripheral register written) must act at the very
// instruction where it does in single steps.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/memory.h"
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

constexpr int kEnableIo = 0x3B, kStatusIo = 0x1C;

// A ready-type interrupt (pending while its status bit is clear) enabled before interrupts
// are, or (`seifirst`) after them; its handler counts in r18 and disables itself.
struct QuietMachine : Sim {
    explicit QuietMachine(bool seifirst = false) : Sim(4096, 2048, 64) {
        m.interrupttable = {{"ERDY", 0x10, "", kEnableIo + 32, 0x08, kStatusIo + 32, 0x02, 0}};
        for (int a : {kEnableIo + 32, kStatusIo + 32}) m.datamask[a] = 0xFF;
        marksideeffects(m);
        std::vector<uint16_t> program(0x20, kNop);
        // SP to the top of SRAM, then the interrupt enabled.
        const std::vector<uint16_t> start = {ri(0xE000, 16, 0x5F), out(0x3D, 16), ri(0xE000, 16, 0x08), out(0x3E, 16),
                                             out(kEnableIo, 16)};
        std::copy(start.begin(), start.end(), program.begin());
        for (int i = 5; i < 0x0A; ++i) program[i] = inc(17);
        program[0x0A] = kSei;
        program[0x0B] = inc(17);
        program[0x0C] = kSleep;
        program[0x10] = inc(18);
        program[0x11] = out(kEnableIo, 1);
        program[0x12] = kReti;
        if (seifirst) std::swap(program[4], program[0x0A]);
        load(program);
        // No peripherals here: the phases may rest, so the fast rates run quiet.
        run.phases.busy = [](const Machine&) { return false; };
    }
};

struct State {
    uint64_t cycles, instructions;
    int32_t pc;
    uint8_t r17, r18;
    bool operator==(const State&) const = default;
};

State state(const Sim& sim) {
    return {sim.m.totalcycles, sim.m.totalinstructions, sim.m.pc, sim.m.datamem[17], sim.m.datamem[18]};
}

TEST(QuietRun, BreakStopsAtItsOwnInstruction) {
    QuietMachine sim;
    sim.m.progmem[2 * 6] = kBreak & 0xFF;
    sim.m.progmem[2 * 6 + 1] = kBreak >> 8;
    sim.run.menuspeed(kRateUltimate);
    sim.run.menustart();
    EXPECT_EQ(sim.run.simulationrate(), kRateStep);
    EXPECT_EQ(sim.m.pc, 7);
    EXPECT_EQ(sim.m.totalinstructions, 7u);
    EXPECT_EQ(sim.m.datamem[17], 1);
}

// Interrupts enabled in a quiet run with one pending (SEI last), or on with nothing pending
// until the OUT that enables one (SEI first): the fast run takes it where single steps do.
// Breakpoint words end a fast run after the step that reaches one, as single steps would
// find it: the instruction there has not run. Word 0 is never reached again; 0x10 is reached
// by the interrupt's entry, which counts no instruction; the run resumes past a breakpoint.
TEST(QuietRun, FastRunsStopAndEndWhereSingleStepsDo) {
    const struct {
        bool seifirst;
        std::vector<int32_t> words;
        std::vector<int32_t> stops;  // pc at each stop, resuming at Ultimate after each
    } rows[] = {
        {false, {}, {}},          {true, {}, {}},          {false, {7}, {7}}, {false, {0x11, 3}, {3, 0x11}},
        {false, {0x10}, {0x10}}, {false, {0}, {}}, {false, {0x0C, 6, 8}, {6, 8, 0x0C}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE((row.seifirst ? "SEI first, " : "SEI last, ") + testing::PrintToString(row.words));
        QuietMachine stepped(row.seifirst);
        setbreakpoints(stepped.m, row.words);
        stepped.run.menuspeed(kRateStep);
        stepped.run.menustart();
        std::vector<State> expected;
        for (int i = 0; i < 100 && stepped.m.simulationrunning; ++i) {
            stepped.run.menustep();
            if (stepped.m.simulationrunning && atbreakpoint(stepped.m)) expected.push_back(state(stepped));
        }
        ASSERT_FALSE(stepped.m.simulationrunning);

        QuietMachine fast(row.seifirst);
        setbreakpoints(fast.m, row.words);
        fast.run.menuspeed(kRateUltimate);
        fast.run.menustart();
        std::vector<State> stops;
        while (fast.m.simulationrunning && stops.size() < 10) {
            EXPECT_EQ(fast.run.simulationrate(), kRateStep);
            stops.push_back(state(fast));
            fast.run.menuspeed(kRateUltimate);
        }
        EXPECT_EQ(stops, expected);
        ASSERT_EQ(stops.size(), row.stops.size());
        for (size_t i = 0; i < stops.size(); ++i) EXPECT_EQ(stops[i].pc, row.stops[i]) << "stop " << i;
        EXPECT_EQ(fast.m.stopreason, Machine::StopReason::Sleep);
        EXPECT_EQ(state(fast), state(stepped));
        EXPECT_EQ(fast.m.datamem[18], 1) << "the interrupt ran once";
        EXPECT_EQ(fast.m.datamem[17], 6);
    }
}

TEST(QuietRun, PeripheralsRestAfterTheirLastChangeAndWakeOnAWrite) {
    QuietMachine sim;
    sim.run.phases.portstep = [](Machine&) {};
    sim.run.phases.busy = [](const Machine&) { return false; };
    sim.m.simulationrunning = true;
    wakeperipherals(sim.m);
    sim.step();
    EXPECT_EQ(sim.m.peripheralwake, kPeripheralWakeSteps - 1);
    sim.step(kPeripheralWakeSteps);  // writing SP wakes nothing
    EXPECT_EQ(sim.m.peripheralwake, 0);
    sim.m.roles.adcsra = 0x06 + 32;
    marksideeffects(sim.m);
    datamemwrite(sim.m, 0x06 + 32, 0x80);
    EXPECT_EQ(sim.m.peripheralwake, kPeripheralWakeSteps);
    EXPECT_TRUE(sim.m.attention);
}

TEST(QuietRun, AttentionWithNobodyListeningIsDropped) {
    // The desktop program has no terminal yet: a raised attention must not keep every later
    // step out of the quiet run.
    QuietMachine sim;
    sim.m.simulationrunning = true;
    sim.m.attention = true;
    sim.step();
    EXPECT_FALSE(sim.m.attention);
}

}  // namespace
}  // namespace velmora::test
