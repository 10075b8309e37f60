// Start, Step, Stop, the rates and the statistics.
//
// The settable peripheral times: the "Change ..." commands with their prompts and ranges. The
// stored times read at every bound are rows of shell/settings_test.cpp; the refusal of
// the EEPROM time while running is in shell/mainwindow_options_test.cpp.

#include <gtest/gtest.h>

#include <iterator>

#include "core/encode.h"
#include "core/memorysettings.h"
#include "core/peripheraltimes.h"
#include "core/timetext.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

// Each text against its expectation, worked out by hand.
TEST(TimeText, TimesFrequenciesAndTheSummary) {
    const std::string us = " \xC2\xB5s";
    const std::pair<std::string, std::string> cases[] = {
        {timetext(4, 4.0f), "1.00" + us},  {timetext(0, 4.0f), "0.00" + us},   {timetext(1, 4.0f), "0.25" + us},
        {timetext(43, 4.0f), "10.75" + us}, {timetext(1, 3.0f), "0.33" + us},
        {timetext(1, 8.0f), "0.12" + us},  // 12.5 hundredths: half to even
        {timetext(3, 8.0f), "0.38" + us},  // 37.5 hundredths: half to even
        // From ten million cycles on the value is truncated: 10000001 * 100 / 3 = 333333366.67
        {timetext(10000001, 3.0f), "3333333.66" + us},
        {getclockfrequency("4"), "4.0 MHz"}, {getclockfrequency(".5"), "0.5 MHz"},
        {getclockfrequency("7.3728"), "7.3728 MHz"}, {frequencytext(4.0f), "4"}, {frequencytext(7.3728f), "7.3728"},
        // Elapsed time across midnight stays positive.
        {elapsedtext(86399.5, 0.55), "1.05"}, {elapsedtext(10.0, 12.345), "2.34"}, {elapsedtext(10.0, 10.0), "0.00"},
        {RunControl::summarytext(33, "0.01", 43, 4.0f),
         "Total number of executed instructions is 33.\n0.01 seconds elapsed.\n"
         "Real-time duration of the simulation is 43 clock cycles or 10.75" + us + " at 4 MHz."},
    };
    for (size_t i = 0; i < std::size(cases); ++i) EXPECT_EQ(cases[i].first, cases[i].second) << "row " << i;
}

TEST(RunControl, StartThenStopAtStepByStepCountsOneCycleNoInstruction) {
    Sim sim;
    sim.run.menuspeed(1);
    sim.load({kNop, kNop});
    sim.run.menustart();
    EXPECT_TRUE(sim.m.simulationrunning);
    EXPECT_TRUE(sim.run.stepenabled());
    EXPECT_FALSE(sim.run.startenabled());
    sim.run.menustop();
    EXPECT_FALSE(sim.m.simulationrunning);
    ASSERT_EQ(sim.messenger.messages.size(), 1u);
    EXPECT_NE(sim.messenger.messages[0].find("executed instructions is 0.\n"), std::string::npos);
    EXPECT_NE(sim.messenger.messages[0].find("is 1 clock cycles"), std::string::npos);
    EXPECT_TRUE(sim.run.startenabled());
    EXPECT_FALSE(sim.run.stepenabled());
}

TEST(RunControl, StepRunsExactlyOneInstructionAndSleepEndsTheRun) {
    Sim sim;
    sim.run.menuspeed(1);
    sim.load({kNop, kNop, kSleep});
    sim.run.menustart();
    sim.run.menustep();
    sim.run.menustep();
    EXPECT_EQ(sim.m.totalinstructions, 2u);
    EXPECT_EQ(sim.m.pc, 2);
    EXPECT_TRUE(sim.m.simulationrunning);
    sim.run.menustep();
    EXPECT_FALSE(sim.m.simulationrunning);
    EXPECT_EQ(sim.messenger.messages.size(), 1u);
}

TEST(RunControl, RunsToSleepAtEveryRateWithTheRightNaps) {
    for (int rate = 2; rate <= 6; ++rate) {
        Sim sim;
        sim.run.menuspeed(rate);
        sim.load({kNop, kNop, kSleep});
        sim.run.menustart();
        EXPECT_FALSE(sim.m.simulationrunning) << rate;
        EXPECT_EQ(sim.m.totalinstructions, 3u);
        EXPECT_EQ(sim.m.totalcycles, 4u);  // three instructions plus the start cycle
        // The step that sleeps raises stoprequest, which ends its naps at once.
        EXPECT_EQ(sim.clock.naps, 2 * kRateNaps[rate]) << rate;
    }
}

TEST(RunControl, StopRequestDuringTheLoopEndsAtTheEndOfTheStep) {
    Sim sim;
    sim.run.menuspeed(4);
    sim.load({rjmp(-1)});
    int yields = 0;
    sim.clock.onyield = [&] {
        if (++yields == 30) sim.run.menustop();
    };
    sim.run.menustart();
    EXPECT_FALSE(sim.m.simulationrunning);
    EXPECT_EQ(sim.m.stopreason, Machine::StopReason::User);
    EXPECT_EQ(sim.messenger.messages.size(), 1u);
}

TEST(RunControl, BreakpointHookDropsToStepByStepAndRateChangeResumesWithoutReset) {
    Sim sim;
    sim.run.menuspeed(3);
    sim.load({kNop, kNop, kNop, kNop, kSleep});
    sim.run.addhook(HookSlot::Breakpoints, 0, [](RunControl& rc) {
        if (rc.machine().pc == 2) rc.menuspeed(1);
    });
    sim.run.menustart();
    EXPECT_TRUE(sim.m.simulationrunning);
    EXPECT_EQ(sim.run.simulationrate(), 1);
    EXPECT_EQ(sim.m.pc, 2);
    EXPECT_TRUE(sim.run.stepenabled());
    sim.run.menuspeed(3);  // resume: no clean, the loop goes on from pc 2
    EXPECT_FALSE(sim.m.simulationrunning);
    EXPECT_EQ(sim.m.totalinstructions, 5u);
}

TEST(RunControl, StopRequestAndBreakpointInTheSameStepStillStop) {
    Sim sim;
    sim.run.menuspeed(4);
    sim.load({kSleep});
    sim.run.addhook(HookSlot::Breakpoints, 0, [](RunControl& rc) { rc.menuspeed(1); });
    sim.run.menustart();
    EXPECT_EQ(sim.run.simulationrate(), 1);
    EXPECT_FALSE(sim.m.simulationrunning);
}

TEST(RunControl, HooksRunInSlotOrder) {
    Sim sim;
    std::string order;
    sim.run.addhook(HookSlot::Modules, 0, [&](RunControl&) { order += "M"; });
    sim.run.addhook(HookSlot::Window, 17, [&](RunControl&) { order += "7"; });
    sim.run.addhook(HookSlot::Breakpoints, 0, [&](RunControl&) { order += "B"; });
    const int id = sim.run.addhook(HookSlot::Window, 4, [&](RunControl&) { order += "4"; });
    sim.load({kNop, kNop});
    sim.step();
    EXPECT_EQ(order, "47BM");
    sim.run.removehook(id);
    sim.step();
    EXPECT_EQ(order, "47BM7BM");
}

TEST(RunControl, AHookMayRemoveItselfAndAddAnother) {
    Sim sim;
    std::string order;
    int self = 0;
    self = sim.run.addhook(HookSlot::RunToStatement, 0, [&](RunControl& rc) {
        order += "R";
        rc.removehook(self);
        rc.addhook(HookSlot::Window, 0, [&](RunControl&) { order += "w"; });
    });
    sim.run.addhook(HookSlot::Modules, 0, [&](RunControl&) { order += "M"; });
    sim.load({kNop, kNop, kNop});
    sim.step(3);
    // The hooks behind it still run in its step; the new one from the next step on.
    EXPECT_EQ(order, "RMwMwM");
}

TEST(RunControl, EkranAtUltimateOnlyOnTheTimer) {
    Sim sim;
    int refreshes = 0;
    sim.run.ekran = [&] { ++refreshes; };
    sim.run.menuspeed(6);
    sim.load(std::vector<uint16_t>(100, kNop));
    sim.step(10);
    EXPECT_EQ(refreshes, 0);
    sim.run.ultimatetick();
    sim.step(10);
    EXPECT_EQ(refreshes, 1);
    sim.run.menuspeed(5);
    sim.step(10);
    EXPECT_EQ(refreshes, 11);
}

TEST(RunControl, ResetStatisticsKeepsTotals) {
    Sim sim;
    sim.load({kNop, kNop});
    sim.step(2);
    sim.run.menuresetstatistics();
    EXPECT_EQ(instructioncounter(sim.m), 0u);
    EXPECT_EQ(clockcyclecounter(sim.m), 0u);
    EXPECT_EQ(sim.m.totalinstructions, 2u);
    EXPECT_EQ(sim.m.totalcycles, 2u);
}

TEST(RunControl, RateIsStoredAndDurationsShift) {
    Sim sim;
    sim.run.menuspeed(5);
    EXPECT_EQ(sim.settings.getsettingdword("Simulation Rate", 0), 5);
    for (int run = 0; run < 3; ++run) {
        std::vector<uint16_t> program(static_cast<size_t>(run) * 4, kNop);
        program.push_back(kSleep);
        sim.load(program);
        sim.run.menustart();
    }
    // Runs of 2, 6 and 10 cycles at 4 MHz: 0.5, 1.5 and 2.5 microseconds.
    EXPECT_EQ(sim.settings.getsetting("Simulation Duration -2", ""), "0.5");
    EXPECT_EQ(sim.settings.getsetting("Simulation Duration -1", ""), "1.5");
    EXPECT_EQ(sim.settings.getsetting("Simulation Duration 0", ""), "2.5");
}

TEST(RunControl, StartRefusedWithoutSimulationModule) {
    Sim sim;
    sim.m.kinds.simconf = 2;
    sim.run.menustart();
    EXPECT_FALSE(sim.m.simulationrunning);
    ASSERT_EQ(sim.messenger.messages.size(), 1u);
    EXPECT_EQ(sim.messenger.messages[0], "Simulation module not available for the selected microcontroller model.");
}

struct Asker {
    std::optional<std::string> answer;
    std::string prompt, current;
    AskNumber function() {
        return [this](const std::string& p, const std::string& c) {
            prompt = p;
            current = c;
            return answer;
        };
    }
};

// The answer to the prompt (which shows the current value) against the time's range; a good
// one is applied and stored, a bad one told, an empty one or none cancels.
TEST(PeripheralTimes, RangeLimitsAndCancel) {
    struct Case {
        const PeripheralTime& time;
        std::optional<std::string> answer;
        TimeChange result;
        float value;
    } cases[] = {
        {eepromwritetime(), "50", TimeChange::Changed, 50},
        {eepromwritetime(), "20000", TimeChange::Changed, 20000},
        {eepromwritetime(), "49", TimeChange::OutOfRange, 3400},
        {eepromwritetime(), "20001", TimeChange::OutOfRange, 3400},
        {eepromwritetime(), "abc", TimeChange::OutOfRange, 3400},
        {eepromwritetime(), "", TimeChange::Cancelled, 3400},
        {eepromwritetime(), std::nullopt, TimeChange::Cancelled, 3400},
        {eepromwritetime(), "75us", TimeChange::Changed, 75},
        {adconversiontime(), " 120", TimeChange::Changed, 120},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.time.caption) + ": " + c.answer.value_or("(cancel)"));
        Machine m;
        MemorySettings settings;
        RecordingMessenger messenger;
        Asker asker;
        asker.answer = c.answer;
        EXPECT_EQ(changeperipheraltime(m, settings, messenger, c.time, asker.function()), c.result);
        EXPECT_EQ(asker.prompt, c.time.prompt);
        const bool eeprom = &c.time == &eepromwritetime();
        EXPECT_EQ(asker.current, eeprom ? "3400" : "25");
        EXPECT_EQ(eeprom ? m.eepromwritetime : m.adconversiontime, c.value);
        if (c.result == TimeChange::Changed) {
            EXPECT_EQ(settings.getsettingdword(eeprom ? "EEPROM Write Time" : "A/D Conversion Time", 0), c.value);
        }
        const bool told = c.result == TimeChange::OutOfRange;
        ASSERT_EQ(messenger.messages.size(), told ? 1u : 0u);
        if (told) {
            EXPECT_EQ(messenger.messages[0], "Allowed range 50-20000.");
        }
    }
}

}  // namespace
}  // namespace velmora::test
