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

namespace velmora::test {
namespace {

// ADMUX bits of the kinds: left adjust (kinds 3, 4, 6, 7, 8), reference input (kind 5).
constexpr uint8_t kAdlar = 0x20, kReferenceInput = 0x40;
constexpr uint8_t kAdlarInAdcsrb = 0x10;

MiniChip adcchip(int kind) {
    ChipKinds kinds;
    kinds.adcconf = kind;
    return MiniChip(kinds);
}

// Starts a conversion and runs NOPs until ADSC falls; returns the steps taken.
int convert(MiniChip& chip, int limit = 190) {
    std::vector<uint16_t> program(static_cast<size_t>(limit) + 10, kNop);
    program[0] = sbi(MiniChip::kAdcsra, 6);
    chip.load(program);
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
    struct Case {
        float microseconds, mhz;
        int steps;  // one SBI of two cycles and NOPs
        uint64_t cycles;
    } cases[] = {{25, 4, 99, 100}, {10, 4, 39, 40}, {10, 1, 9, 10}, {1000, 0.5f, 499, 500}, {25, 8, 199, 200}};
    for (const Case& c : cases) {
        MiniChip chip = adcchip(3);
        chip.m.adconversiontime = c.microseconds;
        chip.m.clockfrequency = c.mhz;
        chip.cell(MiniChip::kAdcsra) = kAden;
        const uint64_t start = chip.m.totalcycles;
        EXPECT_EQ(convert(chip, 600), c.steps) << c.microseconds << " us at " << c.mhz << " MHz";
        EXPECT_EQ(chip.cyclesfrom(start), c.cycles) << c.microseconds << " us at " << c.mhz << " MHz";
        EXPECT_TRUE(chip.cell(MiniChip::kAdcsra) & kAdif);
        EXPECT_EQ(chip.m.adc.timer, 0.0f);
    }
}

// One conversion with 100 on channel 1, 900 on channel 9 and `input` on channel 0: ADCH:ADCL by
// the kind's adjust bit (ADMUX, ADCSRB for kind 2, none for kind 5), its channel bits (three for
// kind 5) and kind 5's reference input, whose value depends on the bandgap kind.
TEST(Adc, ResultByKindAdjustChannelAndReference) {
    struct Case {
        int kind, bandgap;
        uint8_t admux, adcsrb;
        int input, result;
    } cases[] = {
        {3, 3, 0, 0, 1023, 0x03FF},          {3, 3, kAdlar, 0, 1023, 0xFFC0},     {3, 3, kAdlar, 0, 514, 0x8080},
        {4, 3, kAdlar, 0, 1023, 0xFFC0},     {6, 3, kAdlar, 0, 1, 0x0040},        {7, 3, kAdlar, 0, 1023, 0xFFC0},
        {8, 3, kAdlar, 0, 1023, 0xFFC0},     {8, 3, 0, 0, 600, 0x0258},
        {2, 3, 0, kAdlarInAdcsrb, 1023, 0xFFC0},                                   {2, 3, kAdlar, 0, 1023, 0x03FF},
        {5, 3, kAdlar, kAdlarInAdcsrb, 1023, 0x03FF},
        {2, 3, 9, 0, 0, 900},                {3, 3, 9, 0, 0, 900},                {6, 3, 9, 0, 0, 900},
        {5, 3, 9, 0, 0, 100},                {3, 3, 0xD1, 0, 0, 100},             {5, 3, 0x21, 0, 0, 100},
        {5, 1, kReferenceInput, 0, 777, 0},  {5, 2, kReferenceInput, 0, 777, 225}, {5, 3, kReferenceInput, 0, 777, 251},
        {5, 4, kReferenceInput, 0, 777, 241}, {5, 5, kReferenceInput, 0, 777, 249}, {5, 0, kReferenceInput, 0, 777, 0},
        {5, 6, kReferenceInput, 0, 777, 0},
    };
    for (const Case& c : cases) {
        ChipKinds kinds;
        kinds.adcconf = c.kind;
        kinds.compconf = {2, c.bandgap, 8, 9};
        MiniChip chip(kinds);
        chip.cell(MiniChip::kAdcsra) = kAden;
        chip.cell(MiniChip::kAdmux) = c.admux;
        chip.cell(MiniChip::kAdcsrb) = c.adcsrb;
        for (int ch : {0, 1, 9}) setanalogmode(chip.m, ch, true);
        setanaloginput(chip.m, 0, c.input);
        setanaloginput(chip.m, 1, 100);
        setanaloginput(chip.m, 9, 900);
        convert(chip);
        EXPECT_EQ(chip.cell(MiniChip::kAdch) * 256 + chip.cell(MiniChip::kAdcl), c.result)
            << "kind " << c.kind << " bandgap " << c.bandgap << " admux " << int(c.admux) << " adcsrb "
            << int(c.adcsrb) << " input " << c.input;
        EXPECT_TRUE(chip.cell(MiniChip::kAdcsra) & kAdif);
    }
}

TEST(Adc, TheSampleIsTakenAtTheFirstStep) {
    MiniChip chip = adcchip(3);
    chip.cell(MiniChip::kAdcsra) = kAden;
    for (int ch : {0, 1}) setanalogmode(chip.m, ch, true);
    setanaloginput(chip.m, 0, 300);
    setanaloginput(chip.m, 1, 800);
    // SBI ADSC, then change the channel and the input during the conversion.
    std::vector<uint16_t> program(200, kNop);
    program[0] = sbi(MiniChip::kAdcsra, 6);
    program[1] = sbi(MiniChip::kAdmux, 0);
    chip.load(program);
    chip.step(3);
    setanaloginput(chip.m, 0, 5);
    while (chip.cell(MiniChip::kAdcsra) & kAdsc) chip.step();
    EXPECT_EQ(chip.cell(MiniChip::kAdch) * 256 + chip.cell(MiniChip::kAdcl), 300);
}

TEST(Adc, AReadOfAdclLocksTheResultUntilAdch) {
    MiniChip chip = adcchip(3);
    chip.cell(MiniChip::kAdcsra) = kAden;
    setanalogmode(chip.m, 0, true);
    setanaloginput(chip.m, 0, 0x123);
    convert(chip);
    ASSERT_EQ(chip.cell(MiniChip::kAdcl), 0x23);
    // IN ADCL without IN ADCH, then a second conversion of another value.
    std::vector<uint16_t> program(200, kNop);
    program[0] = ind(16, MiniChip::kAdcl);
    program[1] = ldi(17, kAden | kAdsc | kAdif);  // start, and clear the old flag
    program[2] = outd(MiniChip::kAdcsra, 17);
    chip.load(program);
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
    MiniChip chip = adcchip(3);
    chip.cell(MiniChip::kAdcsra) = kAden;
    const int first = convert(chip);
    chip.step(20);
    EXPECT_EQ(chip.cell(MiniChip::kAdcsra) & kAdsc, 0);  // no free running
    EXPECT_EQ(convert(chip), first);
}

TEST(Adc, DisablingStopsTheConversion) {
    MiniChip chip = adcchip(3);
    chip.cell(MiniChip::kAdcsra) = kAden;
    std::vector<uint16_t> program(200, kNop);
    program[0] = sbi(MiniChip::kAdcsra, 6);
    program[10] = cbi(MiniChip::kAdcsra, 7);
    chip.load(program);
    chip.step(11);
    EXPECT_EQ(chip.cell(MiniChip::kAdcsra), 0);
    EXPECT_EQ(chip.m.adc.timer, 0.0f);
    chip.step(150);
    EXPECT_EQ(chip.cell(MiniChip::kAdcsra) & kAdif, 0);
}

TEST(Adc, TheFlagEntersTheAdcInterrupt) {
    MiniChip chip = adcchip(3);
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

TEST(Comparator, OutputFollowsTheInputsAndEqualKeepsIt) {
    struct Case {
        int plus, minus;
        bool before, after;
    } cases[] = {{600, 500, false, true}, {400, 500, true, false}, {500, 500, true, true},
                 {500, 500, false, false}, {1023, 0, true, true},   {0, 1, false, false}};
    for (int kind = 2; kind <= 6; ++kind)
        for (const Case& c : cases) {
            MiniChip chip = compchip(kind);
            chip.cell(MiniChip::kAcsr) = static_cast<uint8_t>((c.before ? kAco : 0) | 1);  // mode 1: no flag
            inputs(chip, c.plus, c.minus);
            chip.step();
            EXPECT_EQ(chip.cell(MiniChip::kAcsr), (c.after ? kAco : 0) | 1)
                << "kind " << kind << ": " << c.plus << " against " << c.minus;
        }
}

// ACSR after one step from `acsr` (mode bits 1-0: 0 toggle, 1 none, 2 falling, 3 rising), with
// `plus` and `minus` on the two inputs: the output and its flag, ACD, the bandgap (251 for kind
// 3) on plus, and kind 6's hysteresis from ACSRB; other kinds ignore ACSRB (0x84: no hysteresis,
// plus from the third input).
TEST(Comparator, AcsrAfterOneStep) {
    constexpr uint8_t O = kAco, I = kAci;
    struct Case {
        int kind;
        uint8_t acsrb, acsr;
        int plus, minus;
        uint8_t after;
    } cases[] = {
        {2, 0, 0, 700, 500, O | I},        {2, 0, O, 300, 500, I},          {2, 0, O, 700, 500, O},
        {2, 0, 0, 300, 500, 0},            {2, 0, 1, 700, 500, O | 1},      {2, 0, O | 1, 300, 500, 1},
        {2, 0, O | 2, 300, 500, I | 2},    {2, 0, 2, 700, 500, O | 2},      {2, 0, 3, 700, 500, O | I | 3},
        {2, 0, O | 3, 300, 500, 3},        {2, 0, O | 3, 700, 500, O | 3},  {2, 0, kAcd | O, 900, 100, kAcd | I},
        {2, 0, kAcbg | 1, 0, 250, kAcbg | O | 1},                           {2, 0, kAcbg | 1, 0, 252, kAcbg | 1},
        {2, 0x84, 0, 501, 500, O | I},
        {6, 0x80, 0, 502, 500, 0},         {6, 0x80, 0, 503, 500, O | I},   {6, 0x80, O, 498, 500, O},
        {6, 0x80, O, 497, 500, I},         {6, 0xC0, 0, 505, 500, 0},       {6, 0xC0, 0, 506, 500, O | I},
        {6, 0xC0, O, 495, 500, O},         {6, 0xC0, O, 494, 500, I},       {6, 0x40, 0, 501, 500, O | I},
        {6, 0x00, O, 499, 500, I},
    };
    for (const Case& c : cases) {
        MiniChip chip = compchip(c.kind);
        chip.cell(MiniChip::kAcsrb) = c.acsrb;
        chip.cell(MiniChip::kAcsr) = c.acsr;
        inputs(chip, c.plus, c.minus);
        chip.step();
        EXPECT_EQ(chip.cell(MiniChip::kAcsr), c.after) << "kind " << c.kind << " ACSRB " << int(c.acsrb) << " ACSR "
                                                       << int(c.acsr) << ": " << c.plus << " against " << c.minus;
    }
}

TEST(Comparator, MinusThroughTheAdcMultiplexer) {
    struct Case {
        int kind;
        int control;
        uint8_t bit;
        bool adcon;
        uint8_t admux;
        int minus;  // channel whose value is compared
    } cases[] = {
        {3, MiniChip::kAdcsrb, 0x40, false, 0x0B, 3},  {3, MiniChip::kAdcsrb, 0x40, true, 0x0B, kMinus},
        {3, MiniChip::kSfior, 0x08, false, 0x03, kMinus}, {4, MiniChip::kSfior, 0x08, false, 0x0B, 3},
        {4, MiniChip::kSfior, 0x08, true, 0x03, kMinus}, {4, MiniChip::kAdcsrb, 0x40, false, 0x03, kMinus},
        {5, MiniChip::kAcsr, kAcme, false, 0x0B, 11},   {5, MiniChip::kAcsr, kAcme, true, 0x0B, kMinus},
        {5, MiniChip::kSfior, 0x08, false, 0x03, kMinus}, {2, MiniChip::kAcsr, kAcme, false, 0x03, kMinus},
        {2, MiniChip::kSfior, 0x08, false, 0x03, kMinus}, {6, MiniChip::kAcsr, kAcme, false, 0x0B, 11},
        {6, MiniChip::kAcsr, kAcme, true, 0x0B, kMinus},
    };
    for (const Case& c : cases) {
        MiniChip chip = compchip(c.kind);
        for (int ch = 0; ch < kAdcChannelCount; ++ch) setanaloginput(chip.m, ch, 10 * ch + 1);
        chip.cell(c.control) |= c.bit;
        chip.cell(MiniChip::kAdcsra) = c.adcon ? kAden : 0;
        chip.cell(MiniChip::kAdmux) = c.admux;
        EXPECT_EQ(comparatorinputs(chip.m).minus, 10 * c.minus + 1) << "kind " << c.kind << " case admux "
                                                                  << int(c.admux) << " adc " << c.adcon;
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
