// The settable peripheral times: the "Change ..." commands with their prompts and ranges. The
// stored times read at every bound are rows of shell/settingranges_test.cpp; the refusal of
// the EEPROM time while running is in shell/mainwindow_options_test.cpp.

#include <gtest/gtest.h>

#include "core/memorysettings.h"
#include "core/peripheraltimes.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

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
