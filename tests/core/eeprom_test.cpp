// The data EEPROM: the four-cycle read, the master write enable's four cycles, the timed
// write that the program cannot disturb, and the kinds that have no EEPROM logic.

#include <gtest/gtest.h>

#include "core/encode.h"
#include "core/eeprom.h"
#include "core/minichip.h"

namespace velmora::test {
namespace {

// EERE 0, EEWE 1, EEMWE 2.
constexpr int kEereBit = 0, kEeweBit = 1, kEemweBit = 2;

MiniChip eechip(int kind = 2, int size = 1024) {
    ChipKinds kinds;
    kinds.eeconf = kind;
    return MiniChip(kinds, size);
}

// LDI address and data into EEAR and EEDR, then the master bit and `gap` NOPs, then EEWE.
std::vector<uint16_t> writeprogram(int address, int data, int gap = 0) {
    std::vector<uint16_t> p = {ldi(16, address & 0xFF), outd(MiniChip::kEearl, 16), ldi(16, address >> 8),
                               outd(MiniChip::kEearh, 16), ldi(16, data), outd(MiniChip::kEedr, 16),
                               sbi(MiniChip::kEecr, kEemweBit)};
    for (int i = 0; i < gap; ++i) p.push_back(kNop);
    p.push_back(sbi(MiniChip::kEecr, kEeweBit));
    p.resize(p.size() + 4000, kNop);
    return p;
}
constexpr int kSetupSteps = 7;

void runwhilewriting(MiniChip& chip, int limit = 5000) {
    for (int i = 0; i < limit && chip.m.eeprom.writing; ++i) chip.step();
}

TEST(Eeprom, EveryKindReadsAndWritesAlike) {
    for (int kind = 2; kind <= 6; ++kind) {
        MiniChip chip = eechip(kind);
        chip.m.eepromwritetime = 50;
        chip.load(writeprogram(0x123, 0xA7));
        chip.step(kSetupSteps + 1);
        EXPECT_TRUE(chip.m.eeprom.writing) << kind;
        runwhilewriting(chip);
        EXPECT_EQ(chip.m.eeprommem[0x123], 0xA7) << kind;
        EXPECT_EQ(chip.cell(MiniChip::kEecr) & kEewe, 0) << kind;
    }
}

TEST(Eeprom, KindsWithoutEepromLogic) {
    for (int kind : {0, 1, 7}) {
        MiniChip chip = eechip(kind);
        chip.m.eepromwritetime = 50;
        chip.load(writeprogram(5, 0x11));
        chip.step(kSetupSteps + 300);
        EXPECT_EQ(chip.m.eeprommem[5], 0xFF) << kind;
        EXPECT_EQ(chip.cell(MiniChip::kEecr), kEemwe | kEewe) << kind;  // plain bits
    }
}

TEST(Eeprom, ReadStallsFourCyclesAndFillsEedr) {
    MiniChip chip = eechip();
    chip.m.eeprommem[0x2AB] = 0x5C;
    chip.cell(MiniChip::kEearl) = 0xAB;
    chip.cell(MiniChip::kEearh) = 0x02;
    chip.load({sbi(MiniChip::kEecr, kEereBit), ind(16, MiniChip::kEedr)});
    chip.step();
    EXPECT_EQ(instructioncycles(chip.m), 2u + 4u);
    EXPECT_EQ(chip.cell(MiniChip::kEecr) & kEere, 0);
    chip.step();
    EXPECT_EQ(chip.reg(16), 0x5C);
}

TEST(Eeprom, ReadBeyondTheEepromTakesTheCyclesOnly) {
    MiniChip chip = eechip(2, 512);
    chip.cell(MiniChip::kEedr) = 0x33;
    chip.cell(MiniChip::kEearh) = 0x03;  // 0x300 is beyond 512 bytes
    chip.load({sbi(MiniChip::kEecr, kEereBit)});
    chip.step();
    EXPECT_EQ(instructioncycles(chip.m), 6u);
    EXPECT_EQ(chip.cell(MiniChip::kEedr), 0x33);
}

TEST(Eeprom, EearhCountsOnlyAbove256Bytes) {
    for (int size : {256, 128, 512}) {
        MiniChip chip = eechip(2, size);
        chip.cell(MiniChip::kEearl) = 0x10;
        chip.cell(MiniChip::kEearh) = 0x01;
        EXPECT_EQ(eepromaddress(chip.m), size > 256 ? 0x110 : 0x10) << size;
    }
}

TEST(Eeprom, MasterEnableLivesFourCycles) {
    // NOPs between SBI EEMWE and SBI EEWE.
    struct Case {
        int gap;
        bool writes;
    } cases[] = {{0, true}, {1, true}, {2, false}, {3, false}};
    for (const Case& c : cases) {
        MiniChip chip = eechip();
        chip.m.eepromwritetime = 50;
        chip.load(writeprogram(7, 0x42, c.gap));
        chip.step(kSetupSteps + c.gap + 1);
        EXPECT_EQ(chip.m.eeprom.writing, c.writes) << c.gap;
        runwhilewriting(chip);
        EXPECT_EQ(chip.m.eeprommem[7], c.writes ? 0x42 : 0xFF) << c.gap;
        if (!c.writes) {
            // The write enable bit stays set, nothing else happens.
            EXPECT_EQ(chip.cell(MiniChip::kEecr), kEewe) << c.gap;
        }
    }
}

TEST(Eeprom, MasterBitIsClearedByItselfAndHeldUntilThen) {
    MiniChip chip = eechip();
    chip.load({sbi(MiniChip::kEecr, kEemweBit), cbi(MiniChip::kEecr, kEemweBit), kNop, kNop});
    chip.step(2);
    EXPECT_TRUE(chip.cell(MiniChip::kEecr) & kEemwe);  // the program cannot clear it early
    chip.step();
    EXPECT_TRUE(chip.cell(MiniChip::kEecr) & kEemwe);  // three cycles after the SBI
    chip.step();
    EXPECT_FALSE(chip.cell(MiniChip::kEecr) & kEemwe);
}

TEST(Eeprom, AnInterruptBetweenTheTwoBitsCostsTheWrite) {
    // The entry's four cycles count against the master bit, as on the chip.
    for (bool interrupted : {false, true}) {
        MiniChip chip = eechip();
        chip.m.eepromwritetime = 50;
        std::vector<uint16_t> program(0x30, kNop);
        program[MiniChip::kInt0Vector] = kReti;
        const std::vector<uint16_t> write = writeprogram(4, 0x21);
        program.insert(program.end(), write.begin(), write.end());
        chip.load(program);
        chip.m.pc = 0x30;
        chip.setsreg(kFlagI);
        chip.cell(MiniChip::kGicr) = 0x40;
        chip.step(kSetupSteps);  // up to SBI EEMWE
        if (interrupted) chip.cell(MiniChip::kGifr) = 0x40;
        chip.step(interrupted ? 3 : 1);  // entry and RETI first, then SBI EEWE
        EXPECT_EQ(chip.m.eeprom.writing, !interrupted);
        EXPECT_TRUE(chip.cell(MiniChip::kEecr) & kEewe);
        runwhilewriting(chip);
        EXPECT_EQ(chip.m.eeprommem[4], interrupted ? 0xFF : 0x21) << interrupted;
    }
}

TEST(Eeprom, WriteEnableWithoutMasterWritesNothing) {
    MiniChip chip = eechip();
    chip.load({sbi(MiniChip::kEecr, kEeweBit), kNop, kNop});
    chip.step(3);
    EXPECT_FALSE(chip.m.eeprom.writing);
    EXPECT_EQ(chip.cell(MiniChip::kEecr), kEewe);
    EXPECT_EQ(chip.m.eeprommem[0], 0xFF);
}

TEST(Eeprom, WriteStartsWithTwoCyclesAndLastsTheWriteTime) {
    MiniChip chip = eechip();
    chip.m.eepromwritetime = 50;  // 200 cycles at 4 MHz
    chip.load(writeprogram(3, 0x99));
    chip.step(kSetupSteps);
    chip.step();  // SBI EEWE
    EXPECT_EQ(instructioncycles(chip.m), 2u + 2u);
    const uint64_t start = chip.m.totalcycles;
    while (chip.m.eeprom.writing && chip.cyclesfrom(start) < 1000) {
        EXPECT_TRUE(chip.cell(MiniChip::kEecr) & kEewe);
        EXPECT_EQ(chip.m.eeprommem[3], 0xFF);
        chip.step();
    }
    EXPECT_EQ(chip.cyclesfrom(start), 200u);
    EXPECT_EQ(chip.m.eeprommem[3], 0x99);
}

TEST(Eeprom, TheProgramCannotDisturbAWrite) {
    MiniChip chip = eechip();
    chip.m.eepromwritetime = 50;
    std::vector<uint16_t> p = writeprogram(0x201, 0x77);
    // After EEWE: change EEDR, EEAR, EECR's mode and read bits, and try to clear EEWE.
    const size_t at = kSetupSteps + 1;
    const uint16_t meddling[] = {ldi(16, 0x11), outd(MiniChip::kEedr, 16), outd(MiniChip::kEearl, 16),
                                 outd(MiniChip::kEearh, 16), ldi(16, 0x31), outd(MiniChip::kEecr, 16)};
    for (size_t i = 0; i < std::size(meddling); ++i) p[at + i] = meddling[i];
    chip.cell(MiniChip::kEecr) = 0x20;  // mode bits at the start
    chip.load(p);
    chip.step(kSetupSteps + 1 + std::size(meddling));
    EXPECT_EQ(chip.cell(MiniChip::kEecr), 0x20 | kEewe);
    EXPECT_EQ(chip.cell(MiniChip::kEearl), 0x01);
    EXPECT_EQ(chip.cell(MiniChip::kEearh), 0x02);
    EXPECT_EQ(chip.cell(MiniChip::kEedr), 0x11);
    runwhilewriting(chip);
    EXPECT_EQ(chip.m.eeprommem[0x201], 0x77);
    EXPECT_EQ(chip.m.eeprommem[0x111], 0xFF);
}

TEST(Eeprom, AWriteBeyondTheEepromWritesNothingButTakesItsTime) {
    MiniChip chip = eechip(2, 512);
    chip.m.eepromwritetime = 50;
    chip.load(writeprogram(0x300, 0x12));
    chip.step(kSetupSteps + 1);
    const uint64_t start = chip.m.totalcycles;
    runwhilewriting(chip);
    EXPECT_EQ(chip.cyclesfrom(start), 200u);
    for (uint8_t byte : chip.m.eeprommem) ASSERT_EQ(byte, 0xFF);
    EXPECT_EQ(chip.cell(MiniChip::kEecr) & kEewe, 0);
}

TEST(Eeprom, NoReadDuringAWrite) {
    MiniChip chip = eechip();
    chip.m.eepromwritetime = 50;
    std::vector<uint16_t> p = writeprogram(1, 0x66);
    p[kSetupSteps + 1] = sbi(MiniChip::kEecr, kEereBit);
    chip.load(p);
    chip.step(kSetupSteps + 2);
    EXPECT_EQ(instructioncycles(chip.m), 2u);
    EXPECT_EQ(chip.cell(MiniChip::kEecr) & kEere, 0);
}

TEST(Eeprom, ReadyInterruptWaitsForTheWrite) {
    MiniChip chip = eechip();
    chip.m.eepromwritetime = 50;
    // The program lies past the vectors; RETI at the ready vector.
    std::vector<uint16_t> program(0x30, kNop);
    program[MiniChip::kErdyVector] = kReti;
    const std::vector<uint16_t> write = writeprogram(9, 0x01);
    program.insert(program.end(), write.begin(), write.end());
    chip.load(program);
    chip.m.pc = 0x30;
    chip.step(kSetupSteps + 1);
    ASSERT_TRUE(chip.m.eeprom.writing);
    chip.cell(MiniChip::kEecr) |= 0x08;  // EERIE
    chip.setsreg(kFlagI);
    runwhilewriting(chip);
    EXPECT_GE(chip.m.pc, 0x30);
    chip.step();
    EXPECT_EQ(chip.m.pc, MiniChip::kErdyVector);
}

TEST(Eeprom, AResetAbandonsAWrite) {
    MiniChip chip = eechip();
    chip.load(writeprogram(2, 0x55));
    chip.step(kSetupSteps + 1);
    ASSERT_TRUE(chip.m.eeprom.writing);
    clean(chip.m);
    EXPECT_FALSE(chip.m.eeprom.writing);
    chip.step(20);
    EXPECT_EQ(chip.m.eeprommem[2], 0xFF);
}

}  // namespace
}  // namespace velmora::test
