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
