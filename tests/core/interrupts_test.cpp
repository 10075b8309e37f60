// INT0 and INT1: the pin and sense bits of every "intconf: " kind, the four sense values,
// and what a reset keeps.
//
// The generic interrupt mechanism: priority, polarity, entry and the step after RETI.

#include <gtest/gtest.h>

#include <sstream>

#include "core/encode.h"
#include "core/extinterrupts.h"
#include "core/interrupts.h"
#include "core/memory.h"
#include "core/minichip.h"
#include "support/ioencode.h"
#include "support/sectiontable.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

constexpr uint8_t kIntf0 = 0x40, kIntf1 = 0x80;

// A row of [external kinds]: the interrupt's pin and sense bits on a chip of its kind.
struct KindCase {
    bool int1;
    int kind, portcode;
    uint8_t pin;
    int control;  // register holding the sense bits
    int shift;
};

KindCase kindcase(const TableRow& row) {
    return {row[0] == "INT1", static_cast<int>(row.number(1)), kPortCodeA + (row[2][0] - 'A'),
            static_cast<uint8_t>(row.number(3)), row[4] == "EICRA" ? MiniChip::kEicra : MiniChip::kMcucr,
            static_cast<int>(row.number(5))};
}

MiniChip chipfor(const KindCase& c) {
    ChipKinds kinds;
    kinds.int0 = c.int1 ? 0 : c.kind;
    kinds.int1 = c.int1 ? c.kind : 0;
    return MiniChip(kinds);
}

// One step with the input changed before it as a click in the view does it: the latch,
// then the pins worked out again.
void stepwithinput(MiniChip& chip, int portcode, uint8_t value) {
    putinput(chip.m, portcode, value);
    portstep(chip.m);
    chip.step();
}

TEST(ExternalInterrupts, EachKindWatchesItsPinWithItsSenseBits) {
    for (const TableRow& row : tablerows("interrupts.txt", "external kinds")) {
        SCOPED_TRACE(row.where);
        const KindCase c = kindcase(row);
        const uint8_t flag = c.int1 ? kIntf1 : kIntf0;
        {
            MiniChip chip = chipfor(c);
            chip.cell(c.control) = static_cast<uint8_t>(1 << c.shift);  // any change
            chip.step();
            stepwithinput(chip, c.portcode, c.pin);
            EXPECT_EQ(chip.cell(MiniChip::kGifr), flag);
        }
        {
            // Every other pin of the three ports may change: no flag.
            MiniChip chip = chipfor(c);
            chip.cell(c.control) = static_cast<uint8_t>(1 << c.shift);
            chip.step();
            for (int port : {kPortA, kPortB, kPortD})
                stepwithinput(chip, port, port == c.portcode ? static_cast<uint8_t>(~c.pin) : 0xFF);
            EXPECT_EQ(chip.cell(MiniChip::kGifr), 0);
        }
        {
            // Sense bits in the other control register mean nothing to this kind.
            MiniChip chip = chipfor(c);
            const int other = c.control == MiniChip::kMcucr ? MiniChip::kEicra : MiniChip::kMcucr;
            chip.cell(other) = 0xFF;
            chip.cell(c.control) = static_cast<uint8_t>(~(3 << c.shift));
            chip.step();
            stepwithinput(chip, c.portcode, c.pin);
            stepwithinput(chip, c.portcode, 0);
            EXPECT_EQ(chip.cell(MiniChip::kGifr), 0);
        }
    }
}

TEST(ExternalInterrupts, KindsWithoutExternalInterrupts) {
    for (int kind : {0, 1, 8, 9, -1}) {
        EXPECT_EQ(int0pin(kind), nullptr) << kind;
        ChipKinds kinds;
        kinds.int0 = kind;
        kinds.int1 = kind == 8 ? 6 : kind;  // 6 is an INT0-only kind
        MiniChip chip(kinds);
        chip.cell(MiniChip::kMcucr) = 0x05;
        chip.cell(MiniChip::kEicra) = 0x05;
        chip.step();
        for (int port : {kPortA, kPortB, kPortD}) stepwithinput(chip, port, 0xFF);
        EXPECT_EQ(chip.cell(MiniChip::kGifr), 0) << kind;
    }
    EXPECT_EQ(int1pin(6), nullptr);
    EXPECT_NE(int1pin(5), nullptr);
}

TEST(ExternalInterrupts, SenseValues) {
    for (const TableRow& row : tablerows("interrupts.txt", "sense")) {
        MiniChip chip;
        chip.cell(MiniChip::kMcucr) = static_cast<uint8_t>(row.number(0) << 2);
        const uint8_t from = row.number(1) ? 0x08 : 0;
        stepwithinput(chip, kPortD, from);
        stepwithinput(chip, kPortD, from);
        chip.cell(MiniChip::kGifr) = 0;
        stepwithinput(chip, kPortD, row.number(2) ? 0x08 : 0);
        EXPECT_EQ(chip.cell(MiniChip::kGifr), row.flag(3) ? kIntf1 : 0) << row.where;
    }
}

TEST(ExternalInterrupts, AHeldLowLevelSetsNoFlag) {
    MiniChip chip;
    chip.cell(MiniChip::kMcucr) = 0x02;  // falling edge
    stepwithinput(chip, kPortD, 0x04);
    stepwithinput(chip, kPortD, 0);
    EXPECT_EQ(chip.cell(MiniChip::kGifr), kIntf0);
    chip.cell(MiniChip::kGifr) = 0;
    chip.step(5);
    EXPECT_EQ(chip.cell(MiniChip::kGifr), 0);
}

TEST(ExternalInterrupts, TheEdgeEntersTheInterruptInTheSameStep) {
    MiniChip chip;
    chip.load({kNop, kNop, kReti, kNop, kNop, kNop});
    chip.m.pc = 3;
    chip.setsreg(kFlagI);
    chip.cell(MiniChip::kGicr) = 0x40;
    chip.cell(MiniChip::kMcucr) = 0x03;  // rising edge
    chip.step();
    EXPECT_EQ(chip.m.pc, 4);
    stepwithinput(chip, kPortD, 0x04);
    EXPECT_EQ(chip.m.pc, MiniChip::kInt0Vector);
    EXPECT_EQ(instructioncycles(chip.m), 4u);
    EXPECT_EQ(chip.cell(MiniChip::kGifr), 0);  // entry cleared the latch
}

TEST(ExternalInterrupts, DetectionSeesThePinsAsTheLastPortPhaseLeftThem) {
    MiniChip chip;
    chip.cell(MiniChip::kMcucr) = 0x03;
    chip.step();
    setinput(chip.m, kPortD, 0x04);  // no port phase until the end of the next step
    chip.step();
    EXPECT_EQ(chip.cell(MiniChip::kGifr), 0);
    chip.step();
    EXPECT_EQ(chip.cell(MiniChip::kGifr), kIntf0);
}

TEST(ExternalInterrupts, TheProgramSeesItsOwnOutputAsAnEdge) {
    MiniChip chip;
    // PD2 made an output and driven high by the program.
    chip.load({ldi(16, 0x04), outd(MiniChip::kDdrd, 16), outd(MiniChip::kPortd, 16), kNop});
    chip.cell(MiniChip::kMcucr) = 0x03;
    chip.step(3);
    EXPECT_EQ(chip.cell(MiniChip::kGifr), 0);  // the level changed at the end of the step
    chip.step();
    EXPECT_EQ(chip.cell(MiniChip::kGifr), kIntf0);
}

TEST(ExternalInterrupts, AResetKeepsThePreviousLevel) {
    MiniChip chip;
    stepwithinput(chip, kPortD, 0x04);  // the last run left PD2 high
    clean(chip.m);                      // and the new start has it low
    chip.cell(MiniChip::kMcucr) = 0x02;
    chip.step();
    EXPECT_EQ(chip.cell(MiniChip::kGifr), kIntf0);
}

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

TEST(Interrupts, PriorityPolarityAndTheInstructionAfterReti) {
    using M = InterruptMachine;
    for (const TableRow& row : tablerows("interrupts.txt", "priority")) {
        SCOPED_TRACE(row.where + ": " + row[0]);
        InterruptMachine sim;
        sim.setsreg(static_cast<uint8_t>(row.number(1)));
        sim.m.datamem[M::kEnable] = static_cast<uint8_t>(row.number(2));
        sim.m.datamem[M::kFlags] = static_cast<uint8_t>(row.number(3));
        sim.m.datamem[M::kStatus] = static_cast<uint8_t>(row.number(4));
        sim.m.pc = static_cast<int>(row.number(5));
        std::istringstream pcs(row[6]);
        for (std::string pc; pcs >> pc;) {
            sim.step();
            EXPECT_EQ(sim.m.pc, std::stoi(pc, nullptr, 0)) << "after pc " << pc;
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
