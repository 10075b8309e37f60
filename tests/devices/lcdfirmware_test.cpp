// A program assembled by avra (data/lcd4bit.asm, rebuilt by data/make-lcd4bit.sh) starts the
// module in 4-bit mode, polls the busy flag and writes two lines. The module's turns on pin
// changes and on its own busy deadline must give exactly what a hook after every step gives.

#include <gtest/gtest.h>

#include <sstream>

#include "lcdfixture.h"

namespace velmora::test {
namespace {

// Resets the module with the machine, and leaves its turns to a per-step hook.
struct ResetOnly : PinObserver {
    LcdModule& lcd;
    explicit ResetOnly(LcdModule& module) : lcd(module) {}
    void reset(Machine& m) override { lcd.reset(m); }
    uint64_t attend(Machine&) override { return UINT64_MAX; }
};

// What a run leaves: the rows, the log, the error, cycles, PORTB's inputs and the controller.
struct ProgramRun {
    std::vector<std::string> rows;
    std::string log;
    bool error = false;
    uint64_t cycles = 0;
    uint8_t input = 0;
    float busy = 0;
    int address = 0;
    bool initphase = false;
    int pendingnibble = 0;
    bool operator==(const ProgramRun&) const = default;
};

ProgramRun runprogram(float mhz, bool everystep) {
    MiniChip chip;
    chip.m.clockfrequency = mhz;
    EXPECT_TRUE(loadhexrecords(chip.m, VELMORA_TEST_DATA_DIR "/lcd4bit.hex"));
    LcdModule lcd;
    lcd.config.rw = PinWire{kPortB, 1};
    std::ostringstream log;
    lcd.log = DeviceLog(&log, "lcd");
    ResetOnly resetonly(lcd);
    if (everystep) {
        addobserver(chip.m, &resetonly);
        chip.run.addhook(HookSlot::Window, 4, [&lcd](RunControl& run) { lcd.refreshlcd(run.machine()); });
    } else {
        lcd.attach(chip.m);
    }
    // A guard against a program that never sleeps; the same in both runs.
    chip.m.attentioncycle = 4000000;
    chip.run.onattention = [&chip] {
        if (chip.m.totalcycles >= 4000000) chip.m.stoprequest = true;
        chip.m.attentioncycle = 4000000;  // set afresh in every turn, as the headless runner does
    };
    chip.run.menuspeed(kRateUltimate);
    chip.run.menustart();
    removeobserver(chip.m, &resetonly);
    lcd.settle(chip.m);
    return {lcdtextrows(lcd.state, 2, 16), log.str(), lcd.error,      chip.m.totalcycles, getinput(chip.m, kPortB),
            lcd.state.busy,                    lcd.state.address, lcd.state.initphase, lcd.state.pendingnibble};
}

TEST(LcdFirmware, TurnsOnChangeEqualAHookAfterEveryStep) {
    // Powers of two take the computed deadline; the others count down in every busy step.
    // At 20 MHz the program's fixed waits are too short, so bytes are lost: that must match too.
    for (const float mhz : {4.0f, 1.0f, 16.0f, 3.6864f, 20.0f, 7.3728f}) {
        const ProgramRun onchange = runprogram(mhz, false), everystep = runprogram(mhz, true);
        EXPECT_EQ(onchange.log, everystep.log) << mhz << " MHz";
        EXPECT_TRUE(onchange == everystep) << mhz << " MHz: rows, error, cycles, inputs or controller differ";
        EXPECT_FALSE(onchange.log.empty()) << mhz << " MHz";
        if (mhz == 4.0f) {
            EXPECT_EQ(onchange.rows, (std::vector<std::string>{"Hello, Velmora! ", "LCD 4-bit test  "}));
            EXPECT_FALSE(onchange.error);
            EXPECT_LT(onchange.cycles, 4000000u) << "ended by SLEEP";
        }
    }
}

}  // namespace
}  // namespace velmora::test
