// The ADC: conversion timing, the sample taken at the start, the data registers per kind,
// the ADCL/ADCH lock and the reference input of kind 5.

#include <gtest/gtest.h>

#include "core/adc.h"
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

TEST(Adc, StartWithTheConverterOffClearsAtOnce) {
    MiniChip chip = adcchip(3);
    chip.load({sbi(MiniChip::kAdcsra, 6), kNop});
    chip.cell(MiniChip::kAdch) = 0x55;
    setanaloginput(chip.m, 0, 0);
    chip.step();
    EXPECT_EQ(chip.cell(MiniChip::kAdcsra), 0);
    EXPECT_EQ(chip.cell(MiniChip::kAdch), 0x55);
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

TEST(Adc, ResultRegistersByKind) {
    struct Case {
        int kind;
        uint8_t admux, adcsrb;
        int value;
        uint8_t high, low;
    } cases[] = {
        {3, 0, 0, 1023, 0x03, 0xFF},           {3, kAdlar, 0, 1023, 0xFF, 0xC0},
        {3, kAdlar, 0, 514, 0x80, 0x80},       {4, kAdlar, 0, 1023, 0xFF, 0xC0},
        {6, kAdlar, 0, 1, 0x00, 0x40},         {7, kAdlar, 0, 1023, 0xFF, 0xC0},
        {8, kAdlar, 0, 1023, 0xFF, 0xC0},      {8, 0, 0, 600, 0x02, 0x58},
        {2, 0, kAdlarInAdcsrb, 1023, 0xFF, 0xC0},
        {2, kAdlar, 0, 1023, 0x03, 0xFF},      // kind 2 keeps its adjust bit in ADCSRB
        {5, kAdlar, kAdlarInAdcsrb, 1023, 0x03, 0xFF},  // kind 5 has none
    };
    for (const Case& c : cases) {
        MiniChip chip = adcchip(c.kind);
        chip.cell(MiniChip::kAdcsra) = kAden;
        chip.cell(MiniChip::kAdmux) = c.admux;
        chip.cell(MiniChip::kAdcsrb) = c.adcsrb;
        setanalogmode(chip.m, 0, true);
        setanaloginput(chip.m, 0, c.value);
        convert(chip);
        EXPECT_EQ(chip.cell(MiniChip::kAdch), c.high) << "kind " << c.kind << " value " << c.value;
        EXPECT_EQ(chip.cell(MiniChip::kAdcl), c.low) << "kind " << c.kind << " value " << c.value;
        EXPECT_TRUE(chip.cell(MiniChip::kAdcsra) & kAdif);
    }
}

TEST(Adc, ChannelSelectionByKind) {
    // ADMUX 9: channel 9 for four channel bits, channel 1 for the three of kind 5.
    struct Case {
        int kind;
        uint8_t admux;
        int expected;
    } cases[] = {{2, 9, 900}, {3, 9, 900}, {6, 0x09, 900}, {5, 9, 100}, {3, 0xD1, 100}, {5, 0x21, 100}};
    for (const Case& c : cases) {
        MiniChip chip = adcchip(c.kind);
        chip.cell(MiniChip::kAdcsra) = kAden;
        chip.cell(MiniChip::kAdmux) = c.admux;
        for (int ch : {1, 9}) setanalogmode(chip.m, ch, true);
        setanaloginput(chip.m, 1, 100);
        setanaloginput(chip.m, 9, 900);
        convert(chip);
        EXPECT_EQ(chip.cell(MiniChip::kAdch) * 256 + chip.cell(MiniChip::kAdcl), c.expected)
            << "kind " << c.kind << " admux " << int(c.admux);
    }
}

TEST(Adc, KindFiveSamplesTheReferenceWithAdmuxBitSix) {
    struct Case {
        int bandgap, expected;
    } cases[] = {{1, 0}, {2, 225}, {3, 251}, {4, 241}, {5, 249}, {0, 0}, {6, 0}};
    for (const Case& c : cases) {
        EXPECT_EQ(referencevalue(c.bandgap), c.expected) << c.bandgap;
        ChipKinds kinds;
        kinds.adcconf = 5;
        kinds.compconf = {2, c.bandgap, 8, 9};
        MiniChip chip(kinds);
        chip.cell(MiniChip::kAdcsra) = kAden;
        chip.cell(MiniChip::kAdmux) = kReferenceInput;
        setanalogmode(chip.m, 0, true);
        setanaloginput(chip.m, 0, 777);
        convert(chip);
        EXPECT_EQ(chip.cell(MiniChip::kAdch) * 256 + chip.cell(MiniChip::kAdcl), c.expected) << c.bandgap;
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

TEST(Adc, KindsWithoutAConverter) {
    for (int kind : {0, 1, 9}) {
        MiniChip chip = adcchip(kind);
        chip.cell(MiniChip::kAdcsra) = kAden;
        chip.load({sbi(MiniChip::kAdcsra, 6)});
        chip.step();
        chip.step(150);
        EXPECT_EQ(chip.cell(MiniChip::kAdcsra), kAden | kAdsc) << kind;
    }
}

}  // namespace
}  // namespace velmora::test
