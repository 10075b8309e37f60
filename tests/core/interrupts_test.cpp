// The generic interrupt mechanism: priority, polarity, entry and the step after RETI.

#include <gtest/gtest.h>

#include "support/ioencode.h"
#include "core/interrupts.h"
#include "core/memory.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

// Enable bits in $3B (GICR-like), flags in $3A (GIFR-like), a polarity-0 "ERDY" on $3C bit 1;
// SEI at word 1, RETI at the vectors, NOPs elsewhere.
struct InterruptMachine : Sim {
    static constexpr int kEnable = 0x3B + 32, kFlags = 0x3A + 32, kStatus = 0x1C + 32;
    InterruptMachine(int sram = 2048) : Sim(4096, sram, 64) {
        m.interrupttable = {{"INT0", 0x10, "", kEnable, 0x40, kFlags, 0x40, 1},
                            {"INT1", 0x20, "", kEnable, 0x80, kFlags, 0x80, 1},
                            {"ERDY", 0x30, "", kEnable, 0x08, kStatus, 0x02, 0}};
        for (int a : {kEnable, kFlags, kStatus}) m.datamask[a] = 0xFF;
        marksideeffects(m);
        std::vector<uint16_t> program(0x40, kNop);
        program[1] = kSei;
        program[0x10] = kReti;
        program[0x20] = kReti;
        program[0x30] = kReti;
        load(program);
        if (sram > 0) stacktop();
    }
};

// The PC after each step from word `pc`, with SREG, the enables, the flags and the status set.
TEST(Interrupts, PriorityPolarityAndTheInstructionAfterReti) {
    using M = InterruptMachine;
    const struct {
        const char* name;
        uint8_t sreg, enable, flags, status;
        int pc;
        std::vector<int> pcs;
    } cases[] = {
        {"nothing with I clear", 0, 0xC0, 0xC0, 0x00, 5, {6, 7}},
        {"the earlier entry wins; RETI lets exactly one instruction run", kFlagI, 0xC0, 0xC0, 0x00, 5, {0x10, 5, 6, 0x20}},
        {"a disabled entry is skipped", kFlagI, 0x80, 0xC0, 0x00, 5, {0x20}},
        {"a ready interrupt fires while its bit is clear and stays", kFlagI, 0x08, 0x00, 0x00, 1, {0x30, 1, 2, 0x30}},
        {"and not while it is set", kFlagI, 0x08, 0x00, 0x02, 1, {2, 3}},
        {"SEI at word 1 lets a pending entry in at the very next step", 0, 0x40, 0x40, 0x00, 1, {2, 0x10}},
    };
    for (const auto& c : cases) {
        InterruptMachine sim;
        sim.setsreg(c.sreg);
        sim.m.datamem[M::kEnable] = c.enable;
        sim.m.datamem[M::kFlags] = c.flags;
        sim.m.datamem[M::kStatus] = c.status;
        sim.m.pc = c.pc;
        for (size_t i = 0; i < c.pcs.size(); ++i) {
            sim.step();
            EXPECT_EQ(sim.m.pc, c.pcs[i]) << c.name << ", step " << i + 1;
        }
    }
}

TEST(Interrupts, EarlierEntryWinsAndEntryTakesFourCycles) {
    InterruptMachine sim;
    sim.setsreg(kFlagI);
    sim.m.datamem[InterruptMachine::kEnable] = 0xC0;
    sim.m.datamem[InterruptMachine::kFlags] = 0xC0;
    sim.m.pc = 5;
    sim.step();
    EXPECT_EQ(sim.m.pc, 0x10);
    EXPECT_EQ(pendinginterrupt(sim.m), 0) << "INT1 waits for I";
    EXPECT_EQ(instructioncycles(sim.m), 4u);
    EXPECT_EQ(sim.m.totalinstructions, 0u);
    EXPECT_EQ(sim.m.datamem[InterruptMachine::kFlags], 0x80);  // INT0's latch cleared
    EXPECT_EQ(sim.sreg() & kFlagI, 0);
    EXPECT_EQ(instructiontext(sim.m), "INTERRUPT!");
    // Return address 5 on the stack, low byte first.
    EXPECT_EQ(sim.m.datamem[sim.m.dataspacesize - 1], 5);
}

TEST(Interrupts, HardwareStackTakesThreeNestedEntriesAndTheFourthOverflows) {
    InterruptMachine sim(0);
    sim.m.simulationrunning = true;
    for (int level = 0; level < 4; ++level) {
        sim.setsreg(kFlagI);
        sim.m.datamem[InterruptMachine::kEnable] = 0x40;
        sim.m.datamem[InterruptMachine::kFlags] = 0x40;
        sim.step();
    }
    EXPECT_EQ(sim.m.hwstackdepth, kHwStackFaulted);
    ASSERT_EQ(sim.messenger.messages.size(), 1u);
    EXPECT_EQ(sim.messenger.messages[0], "Hardware Stack Overflow!");
}

}  // namespace
}  // namespace velmora::test
