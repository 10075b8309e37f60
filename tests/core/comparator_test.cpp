// The analog comparator: the output rule, the interrupt modes, the bandgap, the minus input
// through the ADC multiplexer per kind, the input selection and hysteresis of kind 6.

#include <gtest/gtest.h>

#include "core/adc.h"
#include "core/comparator.h"
#include "core/encode.h"
#include "core/minichip.h"

namespace velmora::test {
namespace {

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

TEST(Comparator, InterruptModes) {
    struct Case {
        int mode;
        bool from, to, flag;
    } cases[] = {
        {0, false, true, true},   {0, true, false, true},  {0, true, true, false},  {0, false, false, false},
        {1, false, true, false},  {1, true, false, false}, {2, true, false, true},  {2, false, true, false},
        {3, false, true, true},   {3, true, false, false}, {3, true, true, false},
    };
    for (const Case& c : cases) {
        MiniChip chip = compchip(2);
        chip.cell(MiniChip::kAcsr) = static_cast<uint8_t>((c.from ? kAco : 0) | c.mode);
        inputs(chip, c.to ? 700 : 300, 500);
        chip.step();
        EXPECT_EQ((chip.cell(MiniChip::kAcsr) & kAci) != 0, c.flag)
            << "mode " << c.mode << " " << c.from << "->" << c.to;
    }
}

TEST(Comparator, DisabledOutputIsZero) {
    MiniChip chip = compchip(2);
    chip.cell(MiniChip::kAcsr) = kAcd | kAco;  // mode 0
    inputs(chip, 900, 100);
    chip.step();
    EXPECT_EQ(chip.cell(MiniChip::kAcsr), kAcd | kAci);
}

TEST(Comparator, BandgapReplacesThePlusInput) {
    // Bandgap kind 3 reads 251.
    struct Case {
        int minus;
        bool output;
    } cases[] = {{250, true}, {252, false}};
    for (const Case& c : cases) {
        MiniChip chip = compchip(2);
        chip.cell(MiniChip::kAcsr) = kAcbg | 1;
        inputs(chip, 0, c.minus);
        chip.step();
        EXPECT_EQ((chip.cell(MiniChip::kAcsr) & kAco) != 0, c.output) << c.minus;
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

TEST(Comparator, OtherKindsIgnoreAcsrb) {
    MiniChip chip = compchip(2);
    for (int ch = 0; ch < kAdcChannelCount; ++ch) setanaloginput(chip.m, ch, 10 * ch + 1);
    chip.cell(MiniChip::kAcsrb) = 0x84;
    EXPECT_EQ(comparatorinputs(chip.m).plus, 10 * kPlus + 1);
    EXPECT_EQ(comparatorinputs(chip.m).minus, 10 * kMinus + 1);
    inputs(chip, 501, 500);
    chip.step();
    EXPECT_TRUE(chip.cell(MiniChip::kAcsr) & kAco);  // no hysteresis
}

TEST(Comparator, KindSixHysteresis) {
    struct Case {
        uint8_t acsrb;
        bool before;
        int plus, minus;
        bool after;
    } cases[] = {
        {0x80, false, 502, 500, false}, {0x80, false, 503, 500, true}, {0x80, true, 498, 500, true},
        {0x80, true, 497, 500, false},  {0xC0, false, 505, 500, false}, {0xC0, false, 506, 500, true},
        {0xC0, true, 495, 500, true},   {0xC0, true, 494, 500, false},  {0x40, false, 501, 500, true},
        {0x00, true, 499, 500, false},
    };
    for (const Case& c : cases) {
        MiniChip chip = compchip(6);
        chip.cell(MiniChip::kAcsrb) = c.acsrb;
        chip.cell(MiniChip::kAcsr) = c.before ? kAco : 0;
        inputs(chip, c.plus, c.minus);
        chip.step();
        EXPECT_EQ((chip.cell(MiniChip::kAcsr) & kAco) != 0, c.after)
            << int(c.acsrb) << " " << c.before << " " << c.plus << "/" << c.minus;
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
