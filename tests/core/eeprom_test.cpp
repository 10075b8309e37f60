// The data EEPROM: the four-cycle read, the master write enable's four cycles, the timed
// write that the program cannot disturb, and the kinds that have no EEPROM logic.

#include <gtest/gtest.h>

#include "core/encode.h"
#include "core/eeprom.h"
#include "core/minichip.h"
#include "support/sectiontable.h"

namespace velmora::test {
namespace {

// EERE 0, EEWE 1, EEMWE 2.
constexpr int kEereBit = 0, kEeweBit = 1, kEemweBit = 2;

// Writes take 50 us: 200 cycles at 4 MHz.
MiniChip eechip(int kind = 2, int size = 1024) {
    ChipKinds kinds;
    kinds.eeconf = kind;
    MiniChip chip(kinds, size);
    chip.m.eepromwritetime = 50;
    return chip;
}

// LDI address and data into EEAR and EEDR, then the master bit and `gap` NOPs (no master bit
// for a negative gap), then EEWE.
std::vector<uint16_t> writeprogram(int address, int data, int gap = 0) {
    std::vector<uint16_t> p = {ldi(16, address & 0xFF), outd(MiniChip::kEearl, 16), ldi(16, address >> 8),
                               outd(MiniChip::kEearh, 16), ldi(16, data), outd(MiniChip::kEedr, 16)};
    if (gap >= 0) p.push_back(sbi(MiniChip::kEecr, kEemweBit));
    for (int i = 0; i < gap; ++i) p.push_back(kNop);
    p.push_back(sbi(MiniChip::kEecr, kEeweBit));
    p.resize(p.size() + 4000, kNop);
    return p;
}
constexpr int kSetupSteps = 7;

// The program from word $30 on, the PC there, RETI at the INT0 and ready vectors.
void loadbehindthevectors(MiniChip& chip, const std::vector<uint16_t>& words) {
    std::vector<uint16_t> program(0x30, kNop);
    program[MiniChip::kInt0Vector] = program[MiniChip::kErdyVector] = kReti;
    program.insert(program.end(), words.begin(), words.end());
    chip.load(program);
    chip.m.pc = 0x30;
}

void runwhilewriting(MiniChip& chip, int limit = 5000) {
    for (int i = 0; i < limit && chip.m.eeprom.writing; ++i) chip.step();
}

// The write program up to its EEWE, then the write to its end and 300 steps more.
TEST(Eeprom, WritesByKindMasterBitAndAddress) {
    for (const TableRow& row : tablerows("eeprom.txt", "writes")) {
        SCOPED_TRACE(row.where + ": " + row[0]);
        const int address = static_cast<int>(row.number(3)), gap = static_cast<int>(row.number(4));
        const long byte = row.number(6);
        MiniChip chip = eechip(static_cast<int>(row.number(1)), static_cast<int>(row.number(2)));
        chip.load(writeprogram(address, 0xA7, gap));
        chip.step(kSetupSteps + gap + 1);  // up to EEWE
        ASSERT_EQ(chip.m.eeprom.writing, row.flag(5));
        const uint64_t start = chip.m.totalcycles;
        if (row.flag(5)) { EXPECT_EQ(instructioncycles(chip.m), 2u + 2u); }
        while (chip.m.eeprom.writing && chip.cyclesfrom(start) < 1000) {
            EXPECT_TRUE(chip.cell(MiniChip::kEecr) & kEewe);
            if (byte >= 0) { EXPECT_EQ(chip.m.eeprommem[address], 0xFF); }
            chip.step();
        }
        EXPECT_EQ(chip.cyclesfrom(start), row.flag(5) ? 200u : 0u);
        chip.step(300);
        if (byte >= 0) { EXPECT_EQ(chip.m.eeprommem[address], byte); }
        if (byte < 0) {
            for (uint8_t b : chip.m.eeprommem) ASSERT_EQ(b, 0xFF);
        }
        EXPECT_EQ(chip.cell(MiniChip::kEecr), row.number(7));
    }
}

TEST(Eeprom, ReadsByAddressAndSize) {
    for (const TableRow& row : tablerows("eeprom.txt", "reads")) {
        SCOPED_TRACE(row.where);
        const long size = row.number(0), address = row.number(3);
        MiniChip chip = eechip(2, static_cast<int>(size));
        for (size_t a = 0; a < chip.m.eeprommem.size(); ++a) chip.m.eeprommem[a] = static_cast<uint8_t>(a ^ 0xA5);
        chip.cell(MiniChip::kEedr) = 0x33;
        chip.cell(MiniChip::kEearh) = static_cast<uint8_t>(row.number(1));
        chip.cell(MiniChip::kEearl) = static_cast<uint8_t>(row.number(2));
        chip.load({sbi(MiniChip::kEecr, kEereBit), ind(16, MiniChip::kEedr)});
        chip.step();
        EXPECT_EQ(instructioncycles(chip.m), 2u + 4u);
        EXPECT_EQ(chip.cell(MiniChip::kEecr) & kEere, 0);
        chip.step();
        EXPECT_EQ(chip.reg(16), address < size ? (address ^ 0xA5) & 0xFF : 0x33);
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
        loadbehindthevectors(chip, writeprogram(4, 0x21));
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

TEST(Eeprom, TheProgramCannotDisturbAWrite) {
    MiniChip chip = eechip();
    std::vector<uint16_t> p = writeprogram(0x201, 0x77);
    // After EEWE: try a read, change EEDR, EEAR, EECR's mode and read bits, and try to clear EEWE.
    const size_t at = kSetupSteps + 1;
    const uint16_t meddling[] = {sbi(MiniChip::kEecr, kEereBit), ldi(16, 0x11), outd(MiniChip::kEedr, 16),
                                 outd(MiniChip::kEearl, 16),     outd(MiniChip::kEearh, 16), ldi(16, 0x31),
                                 outd(MiniChip::kEecr, 16)};
    for (size_t i = 0; i < std::size(meddling); ++i) p[at + i] = meddling[i];
    chip.cell(MiniChip::kEecr) = 0x20;  // mode bits at the start
    chip.load(p);
    chip.step(kSetupSteps + 2);
    EXPECT_EQ(instructioncycles(chip.m), 2u) << "no read during a write";
    EXPECT_EQ(chip.cell(MiniChip::kEecr) & kEere, 0);
    chip.step(std::size(meddling) - 1);
    EXPECT_EQ(chip.cell(MiniChip::kEecr), 0x20 | kEewe);
    EXPECT_EQ(chip.cell(MiniChip::kEearl), 0x01);
    EXPECT_EQ(chip.cell(MiniChip::kEearh), 0x02);
    EXPECT_EQ(chip.cell(MiniChip::kEedr), 0x11);
    runwhilewriting(chip);
    EXPECT_EQ(chip.m.eeprommem[0x201], 0x77);
    EXPECT_EQ(chip.m.eeprommem[0x111], 0xFF);
}

TEST(Eeprom, ReadyInterruptWaitsForTheWrite) {
    MiniChip chip = eechip();
    loadbehindthevectors(chip, writeprogram(9, 0x01));
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
