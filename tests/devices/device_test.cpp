// The device pattern: turns only after a pin could have changed or at a cycle asked for, so
// a program that leaves the pins alone runs with the module attached as without it.

#include <gtest/gtest.h>

#include "lcdfixture.h"

namespace velmora::test {
namespace {

struct CountingLcd : LcdModule {
    int turns = 0;
    uint64_t attend(Machine& m) override {
        ++turns;
        return LcdModule::attend(m);
    }
};

TEST(DevicePattern, QuietProgramGivesNoTurnsOnceTheBusyTimeIsOver) {
    MiniChip chip;
    chip.m.clockfrequency = 4.0f;
    loadwords(chip.m, {0xCFFF});  // rjmp . : writes no pin
    CountingLcd lcd;
    lcd.attach(chip.m);
    chip.m.attentioncycle = 400000;  // the run's end
    chip.run.onattention = [&chip] {
        if (chip.m.totalcycles >= 400000) chip.m.stoprequest = true;
        chip.m.attentioncycle = 400000;  // set afresh in every turn, as the headless runner does
    };
    chip.run.menuspeed(kRateUltimate);
    chip.run.menustart();
    // After the first step; when the 1640 us power-on busy time ends; at the run's end.
    EXPECT_EQ(lcd.turns, 3);
    EXPECT_EQ(lcd.state.busy, 0);
    EXPECT_GE(chip.m.totalcycles, 400000u);
}

TEST(DevicePattern, PinChangeOrInputChangeGivesATurn) {
    MiniChip chip;
    CountingLcd lcd;
    lcd.attach(chip.m);
    std::fill(chip.m.progmem.begin(), chip.m.progmem.end(), 0);
    clean(chip.m);
    chip.m.simulationrunning = true;
    chip.step(7000);
    const int rested = lcd.turns;
    chip.step(100);
    EXPECT_EQ(lcd.turns, rested);
    datamemwrite(chip.m, MiniChip::kPortc, 1);
    chip.step(2);
    EXPECT_EQ(lcd.turns, rested + 1) << "a port register written";
    setinput(chip.m, kPortD, 4);
    chip.step(2);
    EXPECT_EQ(lcd.turns, rested + 2) << "an outside input changed";
    lcd.detach();
    datamemwrite(chip.m, MiniChip::kPortc, 2);
    chip.step(2);
    EXPECT_EQ(lcd.turns, rested + 2) << "detached";
}

}  // namespace
}  // namespace velmora::test
