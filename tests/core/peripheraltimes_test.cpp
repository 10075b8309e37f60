// The settable peripheral times: settings read into the machine, and the "Change ..."
// commands with their prompts, ranges and refusals.

#include <gtest/gtest.h>

#include "core/memorysettings.h"
#include "core/peripheraltimes.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

struct Asker {
    std::optional<std::string> answer;
    std::string prompt, current;
    int asked = 0;
    AskNumber function() {
        return [this](const std::string& p, const std::string& c) {
            ++asked;
            prompt = p;
            current = c;
            return answer;
        };
    }
};

TEST(PeripheralTimes, ReadingPutsTheStoredTimesIntoTheMachine) {
    Machine m;
    MemorySettings settings;
    settings.putsettingdword("EEPROM Write Time", 100);
    settings.putsettingdword("A/D Conversion Time", 5000);  // out of range: the default counts
    readperipheraltimes(m, settings);
    EXPECT_EQ(m.eepromwritetime, 100.0f);
    EXPECT_EQ(m.adconversiontime, 25.0f);
    EXPECT_EQ(m.uarttime, 1000.0f);
    EXPECT_EQ(peripheraltimes().size(), 3u);
    // A missing value is written with its default.
    EXPECT_EQ(settings.getsetting("UART Transmit/Receive Time", "x"), "1000");
}

TEST(PeripheralTimes, AGoodAnswerIsStoredAndApplied) {
    Machine m;
    MemorySettings settings;
    RecordingMessenger messenger;
    Asker asker;
    asker.answer = " 120";
    EXPECT_EQ(changeperipheraltime(m, settings, messenger, adconversiontime(), asker.function()),
              TimeChange::Changed);
    EXPECT_EQ(asker.prompt, adconversiontime().prompt);
    EXPECT_EQ(asker.current, "25");
    EXPECT_EQ(m.adconversiontime, 120.0f);
    EXPECT_EQ(settings.getsettingdword("A/D Conversion Time", 0), 120);
    EXPECT_TRUE(messenger.messages.empty());
}

TEST(PeripheralTimes, RangeLimitsAndCancel) {
    struct Case {
        std::optional<std::string> answer;
        TimeChange result;
        float value;
    } cases[] = {
        {"50", TimeChange::Changed, 50},         {"20000", TimeChange::Changed, 20000},
        {"49", TimeChange::OutOfRange, 3400},    {"20001", TimeChange::OutOfRange, 3400},
        {"abc", TimeChange::OutOfRange, 3400},   {"", TimeChange::Cancelled, 3400},
        {std::nullopt, TimeChange::Cancelled, 3400}, {"75us", TimeChange::Changed, 75},
    };
    for (const Case& c : cases) {
        Machine m;
        MemorySettings settings;
        RecordingMessenger messenger;
        Asker asker;
        asker.answer = c.answer;
        EXPECT_EQ(changeperipheraltime(m, settings, messenger, eepromwritetime(), asker.function()), c.result)
            << c.answer.value_or("(cancel)");
        EXPECT_EQ(m.eepromwritetime, c.value);
        const bool told = c.result == TimeChange::OutOfRange;
        ASSERT_EQ(messenger.messages.size(), told ? 1u : 0u);
        if (told) {
            EXPECT_EQ(messenger.messages[0], "Allowed range 50-20000.");
        }
    }
}

TEST(PeripheralTimes, TheEepromTimeIsRefusedWhileRunning) {
    Machine m;
    m.simulationrunning = true;
    MemorySettings settings;
    RecordingMessenger messenger;
    Asker asker;
    asker.answer = "100";
    EXPECT_EQ(changeperipheraltime(m, settings, messenger, eepromwritetime(), asker.function()),
              TimeChange::Refused);
    EXPECT_EQ(asker.asked, 0);
    ASSERT_EQ(messenger.messages.size(), 1u);
    EXPECT_EQ(messenger.messages[0], "Please stop the simulation first.");
    EXPECT_EQ(changeperipheraltime(m, settings, messenger, adconversiontime(), asker.function()),
              TimeChange::Changed);
    EXPECT_EQ(m.adconversiontime, 100.0f);
}

}  // namespace
}  // namespace velmora::test
