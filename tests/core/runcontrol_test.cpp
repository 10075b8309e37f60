// Start, Step, Stop, the rates and the statistics.
//
// The settable peripheral times: the "Change ..." commands with their prompts and ranges. The
// stored times read at every bound are rows of shell/settings_test.cpp; the refusal of
// the EEPROM time while running is in shell/mainwindow_options_test.cpp.

#include <gtest/gtest.h>

#include <map>


#include "core/encode.h"
#include "core/memorysettings.h"
#include "core/peripheraltimes.h"
#include "core/timetext.h"
#include "support/sectiontable.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

TEST(TimeText, TimesFrequenciesAndTheSummary) {
    for (const TableRow& row : tablerows("runcontrol.txt", "texts")) {
        const std::string& function = row[0];
        std::string text;
        if (function == "timetext")
            text = timetext(static_cast<uint64_t>(row.number(1)), std::stof(row[2]));
        else if (function == "getclockfrequency")
            text = getclockfrequency(row[1]);
        else if (function == "frequencytext")
            text = frequencytext(std::stof(row[1]));
        else if (function == "elapsedtext")
            text = elapsedtext(std::stod(row[1]), std::stod(row[2]));
        else
            ADD_FAILURE() << row.where << ": no function " << function;
        EXPECT_EQ(text, row[3]) << row.where;
    }
    EXPECT_EQ(RunControl::summarytext(33, "0.01", 43, 4.0f),
              "Total number of executed instructions is 33.\n0.01 seconds elapsed.\n"
              "Real-time duration of the simulation is 43 clock cycles or 10.75 \xC2\xB5s at 4 MHz.");
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

// The prompt shows the current value.
TEST(PeripheralTimes, RangeLimitsAndCancel) {
    const std::map<std::string, TimeChange> results = {{"changed", TimeChange::Changed},
                                                       {"out of range", TimeChange::OutOfRange},
                                                       {"cancelled", TimeChange::Cancelled}};
    for (const TableRow& row : tablerows("runcontrol.txt", "peripheral times")) {
        SCOPED_TRACE(row.where);
        const bool eeprom = row[0] == "EEPROM";
        const PeripheralTime& time = eeprom ? eepromwritetime() : adconversiontime();
        const auto result = results.at(row[2]);
        const auto value = static_cast<float>(row.number(3));
        Machine m;
        MemorySettings settings;
        RecordingMessenger messenger;
        Asker asker;
        if (row[1] != "(none)") asker.answer = row[1];
        EXPECT_EQ(changeperipheraltime(m, settings, messenger, time, asker.function()), result);
        EXPECT_EQ(asker.prompt, time.prompt);
        EXPECT_EQ(asker.current, eeprom ? "3400" : "25");
        EXPECT_EQ(eeprom ? m.eepromwritetime : m.adconversiontime, value);
        if (result == TimeChange::Changed) {
            EXPECT_EQ(settings.getsettingdword(eeprom ? "EEPROM Write Time" : "A/D Conversion Time", 0), value);
        }
        const bool told = result == TimeChange::OutOfRange;
        ASSERT_EQ(messenger.messages.size(), told ? 1u : 0u);
        if (told) {
            EXPECT_EQ(messenger.messages[0], "Allowed range 50-20000.");
        }
    }
}

}  // namespace
}  // namespace velmora::test
