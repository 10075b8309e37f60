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
#include "core/programcase.h"
#include "support/ioencode.h"
#include "support/sectiontable.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

struct End {
    uint64_t cycles, instructions;
    int32_t pc, lastpc;
    Machine::StopReason reason;
    int hwstackdepth;
    std::vector<uint8_t> data;
    std::vector<std::string> messages;
    bool operator==(const End&) const = default;
};

// Runs a row of data/quietruns.txt at a rate: Step By Step a step at a time, or Ultimate again after each drop
// to Step By Step (a fault's message drops the rate).
End runrow(const TableRow& row, bool fast) {
    const int flashsize = static_cast<int>(row.number(3));
    Sim sim(flashsize, static_cast<int>(row.number(4)), 0);
    std::vector<uint16_t> program = hexwords(row[2]);
    program.resize(static_cast<size_t>(flashsize / 2), kNop);
    sim.load(program);
    sim.m.infiniteloopstop = row.flag(6);
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
    for (const TableRow& row : tablerows("quietruns.txt", "runs")) {
        SCOPED_TRACE(row.where + ": " + row[0]);
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
        EXPECT_EQ(static_cast<long>(stepped.messages.size()) - 1, row.number(5));
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
        // SP to the top of SRAM, the interrupt enabled, five INCs, SEI at 0x0A, an INC and
        // SLEEP; the handler at 0x10.
        std::vector<uint16_t> program = padded(
            {ldi(16, 0x5F), out(0x3D, 16), ldi(16, 0x08), out(0x3E, 16), out(kEnableIo, 16), inc(17), inc(17), inc(17),
             inc(17), inc(17), kSei, inc(17), kSleep, kNop, kNop, kNop, inc(18), out(kEnableIo, 1), kReti},
            0x20);
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
    for (const TableRow& row : tablerows("quietruns.txt", "breakpoints")) {
        SCOPED_TRACE(row.where);
        const bool seifirst = row[0] == "first";
        std::vector<int32_t> words, stoppcs;
        for (uint16_t word : hexwords(row[1] == "-" ? "" : row[1])) words.push_back(word);
        for (uint16_t word : hexwords(row[2] == "-" ? "" : row[2])) stoppcs.push_back(word);
        QuietMachine stepped(seifirst);
        setbreakpoints(stepped.m, words);
        stepped.run.menuspeed(kRateStep);
        stepped.run.menustart();
        std::vector<State> expected;
        for (int i = 0; i < 100 && stepped.m.simulationrunning; ++i) {
            stepped.run.menustep();
            if (stepped.m.simulationrunning && atbreakpoint(stepped.m)) expected.push_back(state(stepped));
        }
        ASSERT_FALSE(stepped.m.simulationrunning);

        QuietMachine fast(seifirst);
        setbreakpoints(fast.m, words);
        fast.run.menuspeed(kRateUltimate);
        fast.run.menustart();
        std::vector<State> stops;
        while (fast.m.simulationrunning && stops.size() < 10) {
            EXPECT_EQ(fast.run.simulationrate(), kRateStep);
            stops.push_back(state(fast));
            fast.run.menuspeed(kRateUltimate);
        }
        EXPECT_EQ(stops, expected);
        ASSERT_EQ(stops.size(), stoppcs.size());
        for (size_t i = 0; i < stops.size(); ++i) EXPECT_EQ(stops[i].pc, stoppcs[i]) << "stop " << i;
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
