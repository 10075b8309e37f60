// Idle peripherals stop being stepped until something they can see changes, and a quiet
// machine runs its instructions without the per-step looks. Neither may show: avr-gcc
// firmware that uses pins, the ADC, INT0/INT1, the USART both ways and the EEPROM ends in
// exactly the same state, at the same cycle, with the same output, as when every phase runs
// in every step.

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "cli/runio.h"
#include "cli/runoptions.h"
#include "cli/session.h"
#include "core/runcontrol.h"

namespace velmora::test {
namespace {

const std::filesystem::path kHexFolder = std::filesystem::path(VELMORA_TEST_DATA_DIR) / ".." / ".." / "firmware" / "hex";

struct Case {
    const char* hex;
    const char* model;
    const char* mhz;
    std::vector<std::string> inputs;  // --pin and --analog options
    std::string uartinput;
};

struct Outcome {
    std::string output;
    std::vector<uint8_t> data, eeprom;
    uint64_t cycles = 0, instructions = 0;
    int32_t pc = 0;
    Machine::StopReason reason = Machine::StopReason::None;
};

Outcome run(const Case& c, bool phasesrest) {
    std::ostringstream out, err;
    CliSession session(err);
    Outcome outcome;
    if (!session.selectmodel(std::string(c.model)) || !session.setclock(c.mhz) ||
        !session.loadprogram((kHexFolder / c.hex).string())) {
        ADD_FAILURE() << err.str();
        return outcome;
    }
    std::vector<std::string> args = c.inputs;
    args.push_back("program.hex");
    std::string error;
    const std::optional<RunOptions> options = parserunoptions(args, error);
    if (!options) {
        ADD_FAILURE() << error;
        return outcome;
    }
    Machine& m = session.machine();
    RunControl& control = session.runcontrol();
    RunIo io(m, out, options->inputs, c.uartinput);
    io.attach(control);
    if (!phasesrest) control.phases.busy = nullptr;  // every phase in every step
    control.menuspeed(kRateUltimate);
    control.menustart();
    io.finish();
    outcome.output = out.str();
    outcome.data.assign(m.datamem.begin(), m.datamem.end());
    outcome.eeprom = m.eeprommem;
    outcome.cycles = m.totalcycles;
    outcome.instructions = m.totalinstructions;
    outcome.pc = m.pc;
    outcome.reason = m.stopreason;
    return outcome;
}

TEST(RestingPhases, FirmwareCannotTellTheDifference) {
    const Case cases[] = {
        {"adc-atmega32.hex", "ATmega32", "8",
         {"--analog", "0=700@0", "--analog", "1=100@0", "--analog", "1=900@40000", "--analog", "2=1023@0", "--pin",
          "PORTA.4=1@0"},
         ""},
        {"int0-atmega328p.hex", "ATmega328P", "16",
         {"--pin", "PORTD.2=1@16000", "--pin", "PORTD.2=0@32000", "--pin", "PORTD.3=1@24000", "--pin",
          "PORTD.3=0@40000", "--pin", "PORTD.2=1@48000"},
         ""},
        {"int0-attiny2313.hex", "ATtiny2313", "8", {"--pin", "PORTD.2=1@8000", "--pin", "PORTD.3=0@9000"}, ""},
        {"echo-atmega32.hex", "ATmega32", "8", {}, "abc. rest"},
        {"sum-attiny2313.hex", "ATtiny2313", "8", {}, "1 2 3="},
        {"eeprom-atmega328p.hex", "ATmega328P", "16", {}, ""},
        {"hello-atmega8.hex", "ATmega8", "8", {}, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.hex);
        const Outcome always = run(c, false);
        const Outcome resting = run(c, true);
        EXPECT_EQ(always.reason, Machine::StopReason::Sleep);
        EXPECT_FALSE(always.output.empty());
        EXPECT_EQ(resting.output, always.output);
        EXPECT_EQ(resting.cycles, always.cycles);
        EXPECT_EQ(resting.instructions, always.instructions);
        EXPECT_EQ(resting.pc, always.pc);
        EXPECT_EQ(resting.reason, always.reason);
        EXPECT_TRUE(resting.data == always.data) << "data space differs";
        EXPECT_TRUE(resting.eeprom == always.eeprom) << "EEPROM differs";
    }
}

}  // namespace
}  // namespace velmora::test
