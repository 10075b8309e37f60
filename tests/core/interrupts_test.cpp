// The generic interrupt mechanism: priority, polarity, entry and the step after RETI.

#include <gtest/gtest.h>

#include "core/encode.h"
#include "core/interrupts.h"
#include "core/memory.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

// Enable bits in $3B (GICR-like), flags in $3A (GIFR-like), a polarity-0 "ERDY" on $3C bit 1.
struct InterruptMachine : Sim {
    static constexpr int kEnable = 0x3B + 32, kFlags = 0x3A + 32, kStatus = 0x1C + 32;
    InterruptMachine(int sram = 2048) : Sim(4096, sram, 64) {
        m.interrupttable = {{"INT0", 0x10, "", kEnable, 0x40, kFlags, 0x40, 1},
                            {"INT1", 0x20, "", kEnable, 0x80, kFlags, 0x80, 1},
                            {"ERDY", 0x30, "", kEnable, 0x08, kStatus, 0x02, 0}};
        for (int a : {kEnable, kFlags, kStatus}) m.datamask[a] = 0xFF;
        marksideeffects(m);
        std::vector<uint16_t> program(0x40, kNop);
        program[0x10] = kReti;
        program[0x20] = kReti;
        program[0x30] = kReti;
        load(program);
        if (sram > 0) stacktop();
    }
};

TEST(Interrupts, NothingWithIClear) {
    InterruptMachine sim;
    sim.m.datamem[InterruptMachine::kEnable] = 0xC0;
    sim.m.datamem[InterruptMachine::kFlags] = 0xC0;
    EXPECT_EQ(pendinginterrupt(sim.m), 0);
}

TEST(Interrupts, EarlierEntryWinsAndEntryTakesFourCycles) {
    InterruptMachine sim;
    sim.setsreg(kFlagI);
    sim.m.datamem[InterruptMachine::kEnable] = 0xC0;
    sim.m.datamem[InterruptMachine::kFlags] = 0xC0;
    sim.m.pc = 5;
    sim.step();
    EXPECT_EQ(sim.m.pc, 0x10);
    EXPECT_EQ(instructioncycles(sim.m), 4u);
    EXPECT_EQ(sim.m.totalinstructions, 0u);
    EXPECT_EQ(sim.m.datamem[InterruptMachine::kFlags], 0x80);  // INT0's latch cleared
    EXPECT_EQ(sim.sreg() & kFlagI, 0);
    EXPECT_EQ(instructiontext(sim.m), "INTERRUPT!");
    // Return address 5 on the stack, low byte first.
    EXPECT_EQ(sim.m.datamem[sim.m.dataspacesize - 1], 5);
}

TEST(Interrupts, RetiLetsExactlyOneInstructionRunBeforeTheNextEntry) {
    InterruptMachine sim;
    sim.setsreg(kFlagI);
    sim.m.datamem[InterruptMachine::kEnable] = 0xC0;
    sim.m.datamem[InterruptMachine::kFlags] = 0xC0;
    sim.m.pc = 5;
    sim.step();  // enter INT0
    sim.step();  // RETI back to 5, I set
    EXPECT_EQ(sim.m.pc, 5);
    EXPECT_TRUE(sim.m.afterreti);
    sim.step();  // one instruction at 5 despite INT1 pending
    EXPECT_EQ(sim.m.pc, 6);
    sim.step();  // now INT1
    EXPECT_EQ(sim.m.pc, 0x20);
}

TEST(Interrupts, DisabledEntryIsSkipped) {
    InterruptMachine sim;
    sim.setsreg(kFlagI);
    sim.m.datamem[InterruptMachine::kEnable] = 0x80;
    sim.m.datamem[InterruptMachine::kFlags] = 0xC0;
    EXPECT_EQ(pendinginterrupt(sim.m), 2);
}

TEST(Interrupts, ReadyInterruptFiresWhileItsBitIsClearAndIsNotCleared) {
    InterruptMachine sim;
    sim.setsreg(kFlagI);
    sim.m.datamem[InterruptMachine::kEnable] = 0x08;
    sim.m.datamem[InterruptMachine::kStatus] = 0x00;
    sim.m.pc = 1;
    sim.step();
    EXPECT_EQ(sim.m.pc, 0x30);
    sim.step();  // RETI
    sim.step();  // one instruction
    EXPECT_EQ(sim.m.pc, 2);
    sim.step();  // and again
    EXPECT_EQ(sim.m.pc, 0x30);
    sim.m.datamem[InterruptMachine::kStatus] = 0x02;
    sim.step();
    sim.step();
    sim.step();
    EXPECT_EQ(sim.m.pc, 4);
}

TEST(Interrupts, SeiAllowsEntryInTheVeryNextStep) {
    InterruptMachine sim;
    sim.m.progmem[2] = 0x78;  // sei at word 1
    sim.m.progmem[3] = 0x94;
    sim.m.datamem[InterruptMachine::kEnable] = 0x40;
    sim.m.datamem[InterruptMachine::kFlags] = 0x40;
    sim.m.pc = 1;
    sim.step();
    EXPECT_EQ(sim.m.pc, 2);
    sim.step();
    EXPECT_EQ(sim.m.pc, 0x10);
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
