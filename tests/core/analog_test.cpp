// The ADC: conversion timing, the sample taken at the start, the data registers per kind,
// the ADCL/ADCH lock and the reference input of kind 5.
//
// The analog comparator: the output rule, the interrupt modes, the bandgap, the minus input
// through the ADC multiplexer per kind, the input selection and hysteresis of kind 6.

#include <gtest/gtest.h>

#include "core/adc.h"
#include "core/comparator.h"
#include "core/encode.h"
#include "core/minichip.h"
#include "support/sectiontable.h"

namespace velmora::test {
namespace {

// A chip with a converter of the kind, enabled.
MiniChip adcchip(int kind = 3) {
    ChipKinds kinds;
    kinds.adcconf = kind;
    MiniChip chip(kinds);
    chip.cell(MiniChip::kAdcsra) = kAden;
    return chip;
}

// Starts a conversion and runs NOPs until ADSC falls; returns the steps taken.
int convert(MiniChip& chip, int limit = 190) {
    chip.load(padded({sbi(MiniChip::kAdcsra, 6)}, static_cast<size_t>(limit) + 10));
    chip.m.pc = 0;
    int steps = 0;
    do {
        chip.step();
        ++steps;
    } while ((chip.cell(MiniChip::kAdcsra) & kAdsc) && steps < limit);
    return steps;
}

// A start with the converter off clears at once; the kinds without a converter keep plain bits.
TEST(Adc, StartsThatConvertNothing) {
    struct Case {
        int kind;
        uint8_t adcsra, after;
    } cases[] = {{3, 0, 0}, {0, kAden, kAden | kAdsc}, {1, kAden, kAden | kAdsc}, {9, kAden, kAden | kAdsc}};
    for (const Case& c : cases) {
        MiniChip chip = adcchip(c.kind);
        chip.cell(MiniChip::kAdcsra) = c.adcsra;
        chip.load({sbi(MiniChip::kAdcsra, 6)});
        chip.cell(MiniChip::kAdch) = 0x55;
        setanaloginput(chip.m, 0, 0);
        chip.step();
        EXPECT_EQ(chip.cell(MiniChip::kAdcsra), c.after) << "kind " << c.kind;
        chip.step(150);
        EXPECT_EQ(chip.cell(MiniChip::kAdcsra), c.after) << "kind " << c.kind;
        EXPECT_EQ(chip.cell(MiniChip::kAdch), 0x55) << "kind " << c.kind;
    }
}
TEST(Adc, ConversionTimeAndClockSetTheLength) {
    for (const TableRow& row : tablerows("analog.txt", "conversion time")) {
        SCOPED_TRACE(row.where);
        MiniChip chip = adcchip();
        chip.m.adconversiontime = static_cast<float>(row.number(0));
        chip.m.clockfrequency = std::stof(row[1]);
        const uint64_t start = chip.m.totalcycles;
        EXPECT_EQ(convert(chip, 600), row.number(2));
        EXPECT_EQ(chip.cyclesfrom(start), static_cast<uint64_t>(row.number(3)));
        EXPECT_TRUE(chip.cell(MiniChip::kAdcsra) & kAdif);
        EXPECT_EQ(chip.m.adc.timer, 0.0f);
    }
}

TEST(Adc, ResultByKindAdjustChannelAndReference) {
    for (const TableRow& row : tablerows("analog.txt", "result")) {
        SCOPED_TRACE(row.where);
        ChipKinds kinds;
        kinds.adcconf = static_cast<int>(row.number(0));
        kinds.compconf = {2, static_cast<int>(row.number(1)), 8, 9};
        MiniChip chip(kinds);
        chip.cell(MiniChip::kAdcsra) = kAden;
        chip.cell(MiniChip::kAdmux) = static_cast<uint8_t>(row.number(2));
        chip.cell(MiniChip::kAdcsrb) = static_cast<uint8_t>(row.number(3));
        for (int ch : {0, 1, 9}) setanalogmode(chip.m, ch, true);
        setanaloginput(chip.m, 0, static_cast<int>(row.number(4)));
        setanaloginput(chip.m, 1, 100);
        setanaloginput(chip.m, 9, 900);
        convert(chip);
        EXPECT_EQ(chip.cell(MiniChip::kAdch) * 256 + chip.cell(MiniChip::kAdcl), row.number(5));
        EXPECT_TRUE(chip.cell(MiniChip::kAdcsra) & kAdif);
    }
}

TEST(Adc, TheSampleIsTakenAtTheFirstStep) {
    MiniChip chip = adcchip();
    for (int ch : {0, 1}) setanalogmode(chip.m, ch, true);
    setanaloginput(chip.m, 0, 300);
    setanaloginput(chip.m, 1, 800);
    // SBI ADSC, then change the channel and the input during the conversion.
    chip.load(padded({sbi(MiniChip::kAdcsra, 6), sbi(MiniChip::kAdmux, 0)}, 200));
    chip.step(3);
    setanaloginput(chip.m, 0, 5);
    while (chip.cell(MiniChip::kAdcsra) & kAdsc) chip.step();
    EXPECT_EQ(chip.cell(MiniChip::kAdch) * 256 + chip.cell(MiniChip::kAdcl), 300);
}

TEST(Adc, AReadOfAdclLocksTheResultUntilAdch) {
    MiniChip chip = adcchip();
    setanalogmode(chip.m, 0, true);
    setanaloginput(chip.m, 0, 0x123);
    convert(chip);
    ASSERT_EQ(chip.cell(MiniChip::kAdcl), 0x23);
    // IN ADCL without IN ADCH, then a second conversion of another value (LDI: start, and
    // clear the old flag).
    chip.load(padded({ind(16, MiniChip::kAdcl), ldi(17, kAden | kAdsc | kAdif), outd(MiniChip::kAdcsra, 17)}, 200));
    chip.m.pc = 0;
    setanaloginput(chip.m, 0, 0x3FF);
    chip.step(3);
    ASSERT_EQ(chip.cell(MiniChip::kAdcsra) & kAdif, 0);
    while (chip.cell(MiniChip::kAdcsra) & kAdsc) chip.step();
    EXPECT_TRUE(chip.cell(MiniChip::kAdcsra) & kAdif);
    EXPECT_EQ(chip.cell(MiniChip::kAdch), 0x01);
    EXPECT_EQ(chip.cell(MiniChip::kAdcl), 0x23);
    // Reading ADCH unlocks: the next result lands.
    chip.load({ind(16, MiniChip::kAdch), sbi(MiniChip::kAdcsra, 6)});
    chip.m.pc = 0;
    chip.step(2);
    while (chip.cell(MiniChip::kAdcsra) & kAdsc) chip.step();
    EXPECT_EQ(chip.cell(MiniChip::kAdch), 0x03);
    EXPECT_EQ(chip.cell(MiniChip::kAdcl), 0xFF);
}

TEST(Adc, StartAgainForTheNextConversion) {
    MiniChip chip = adcchip();
    const int first = convert(chip);
    chip.step(20);
    EXPECT_EQ(chip.cell(MiniChip::kAdcsra) & kAdsc, 0);  // no free running
    EXPECT_EQ(convert(chip), first);
}

TEST(Adc, DisablingStopsTheConversion) {
    MiniChip chip = adcchip();
    std::vector<uint16_t> program = padded({sbi(MiniChip::kAdcsra, 6)}, 200);
    program[10] = cbi(MiniChip::kAdcsra, 7);
    chip.load(program);
    chip.step(11);
    EXPECT_EQ(chip.cell(MiniChip::kAdcsra), 0);
    EXPECT_EQ(chip.m.adc.timer, 0.0f);
    chip.step(150);
    EXPECT_EQ(chip.cell(MiniChip::kAdcsra) & kAdif, 0);
}

TEST(Adc, TheFlagEntersTheAdcInterrupt) {
    MiniChip chip = adcchip();
    chip.cell(MiniChip::kAdcsra) = kAden | 0x08;  // ADIE
    chip.setsreg(kFlagI);
    const int steps = convert(chip);
    EXPECT_EQ(steps, 99);
    chip.step();
    EXPECT_EQ(chip.m.pc, MiniChip::kAdcVector);
    EXPECT_EQ(chip.cell(MiniChip::kAdcsra) & kAdif, 0);
}

// compconf of the chip: bandgap kind 3, plus on channel 8, minus on 9, third on 10.
constexpr int kPlus = 8, kMinus = 9, kThird = 10;

MiniChip compchip(int kind) {
    ChipKinds kinds;
    kinds.compconf = {kind, 3, kPlus, kMinus, kThird};
    MiniChip chip(kinds);
    for (int ch = 0; ch < kAdcChannelCount; ++ch) setanalogmode(chip.m, ch, true);
    return chip;
}

void inputs(MiniChip& chip, int plus, int minus) {
    setanaloginput(chip.m, kPlus, plus);
    setanaloginput(chip.m, kMinus, minus);
}

// ACSR after one step from the row's ACSR with its two inputs, on every kind of the row.
void acsrafteronestep(const TableRow& row, int kind, uint8_t acsrb, size_t first) {
    MiniChip chip = compchip(kind);
    chip.cell(MiniChip::kAcsrb) = acsrb;
    chip.cell(MiniChip::kAcsr) = static_cast<uint8_t>(row.number(first + 2));
    inputs(chip, static_cast<int>(row.number(first)), static_cast<int>(row.number(first + 1)));
    chip.step();
    EXPECT_EQ(chip.cell(MiniChip::kAcsr), row.number(first + 3)) << row.where << ", kind " << kind;
}

TEST(Comparator, OutputFollowsTheInputsAndEqualKeepsIt) {
    for (const TableRow& row : tablerows("analog.txt", "output"))
        for (int kind = 2; kind <= 6; ++kind) acsrafteronestep(row, kind, 0, 0);
}

TEST(Comparator, AcsrAfterOneStep) {
    for (const TableRow& row : tablerows("analog.txt", "acsr"))
        acsrafteronestep(row, static_cast<int>(row.number(0)), static_cast<uint8_t>(row.number(1)), 2);
}

TEST(Comparator, MinusThroughTheAdcMultiplexer) {
    for (const TableRow& row : tablerows("analog.txt", "minus")) {
        SCOPED_TRACE(row.where);
        MiniChip chip = compchip(static_cast<int>(row.number(0)));
        for (int ch = 0; ch < kAdcChannelCount; ++ch) setanaloginput(chip.m, ch, 10 * ch + 1);
        for (const NamedRegister& r : chip.m.namedregisters)
            if (r.name == row[1]) chip.cell(r.address) |= static_cast<uint8_t>(row.number(2));
        chip.cell(MiniChip::kAdcsra) = row.flag(3) ? kAden : 0;
        chip.cell(MiniChip::kAdmux) = static_cast<uint8_t>(row.number(4));
        EXPECT_EQ(comparatorinputs(chip.m).minus, 10 * row.number(5) + 1);
        EXPECT_EQ(comparatorinputs(chip.m).plus, 10 * kPlus + 1);
    }
}

TEST(Comparator, KindSixSelectsItsInputs) {
    // ACSRB bits 2-0 against the channels: plus, minus, third.
    const int plus[8] = {kPlus, kPlus, kMinus, kMinus, kThird, kThird, kThird, kThird};
    const int minus[8] = {kMinus, kThird, kPlus, kThird, kPlus, kMinus, kMinus, kMinus};
    for (uint8_t select = 0; select < 8; ++select) {
        MiniChip chip = compchip(6);
        for (int ch = 0; ch < kAdcChannelCount; ++ch) setanaloginput(chip.m, ch, 10 * ch + 1);
        chip.cell(MiniChip::kAcsrb) = select;
        const ComparatorInputs in = comparatorinputs(chip.m);
        EXPECT_EQ(in.plus, 10 * plus[select] + 1) << int(select);
        EXPECT_EQ(in.minus, 10 * minus[select] + 1) << int(select);
        chip.cell(MiniChip::kAcsr) = kAcbg;
        EXPECT_EQ(comparatorinputs(chip.m).plus, referencevalue(3)) << int(select);
    }
}

TEST(Comparator, DigitalPinsDriveItWithTheRails) {
    ChipKinds kinds;
    kinds.compconf = {2, 3, kPlus, kMinus};
    MiniChip chip(kinds);
    setinput(chip.m, kPortB, 0x04);  // AIN0 high, AIN1 low
    chip.step(2);
    EXPECT_TRUE(chip.cell(MiniChip::kAcsr) & kAco);
}

TEST(Comparator, TheFlagEntersTheInterrupt) {
    MiniChip chip = compchip(2);
    chip.cell(MiniChip::kAcsr) = 0x08;  // ACIE, mode 0
    chip.setsreg(kFlagI);
    chip.load(std::vector<uint16_t>(0x40, kNop));
    chip.m.pc = 0x30;
    inputs(chip, 800, 100);
    chip.step();
    EXPECT_TRUE(chip.cell(MiniChip::kAcsr) & kAci);
    chip.step();
    EXPECT_EQ(chip.m.pc, MiniChip::kCompVector);
    EXPECT_FALSE(chip.cell(MiniChip::kAcsr) & kAci);
}

TEST(Comparator, KindsWithoutAComparator) {
    for (const std::vector<int>& conf : {std::vector<int>{0, 3, 8, 9}, {1, 3, 8, 9}, {7, 3, 8, 9}, {}}) {
        ChipKinds kinds;
        kinds.compconf = conf;
        MiniChip chip(kinds);
        inputs(chip, 900, 100);
        chip.step(2);
        EXPECT_EQ(chip.cell(MiniChip::kAcsr), 0);
    }
}

TEST(Comparator, AMissingThirdInputComparesZero) {
    ChipKinds kinds;
    kinds.compconf = {6, 3, kPlus, kMinus};
    MiniChip chip(kinds);
    setanalogmode(chip.m, 0, true);
    setanaloginput(chip.m, 0, 600);
    chip.cell(MiniChip::kAcsrb) = 4;  // plus from the third input
    EXPECT_EQ(comparatorinputs(chip.m).plus, 0);
}

}  // namespace
}  // namespace velmora::test
