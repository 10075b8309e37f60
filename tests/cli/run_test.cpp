// velmora-cli as scripts use it (data/conventions.txt), and run: the summary and the dump of a
// finished run, the cycle limit, word files.
//
// velmora-cli run: reading the options for the USART, pins and analog inputs (the usage
// errors that bad ones give are rows of data/conventions.txt).

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>

#include "cli/commands.h"
#include "cli/runoptions.h"
#include "clirows.h"

namespace velmora {
namespace {

using Result = test::CliResult;
Result run(const std::vector<std::string>& args) { return test::runinprocess(args); }

// Help on stdout with exit 0, usage errors on stderr with exit 2, exit codes by the reason a
// run ended, and error messages that name their file: one row per command line.
TEST(CliConventions, EveryCommandLineGivesItsCodeAndStreams) { test::runcommandrows("conventions.txt"); }

TEST(CliConventions, VersionIsTheBuildsVersion) {
    const Result r = run({"--version"});
    EXPECT_EQ(r.code, 0);
    // "velmora-cli 1.2" or "velmora-cli 1.2.3": digits and dots after the name.
    const std::string version = r.out.substr(std::min(r.out.size(), sizeof "velmora-cli " - 1));
    EXPECT_EQ(r.out.rfind("velmora-cli ", 0), 0u) << r.out;
    EXPECT_TRUE(version.size() >= 4 && version.find('.') != std::string::npos && version.back() == '\n' &&
                version.find_first_not_of("0123456789.") == version.size() - 1)
        << r.out;
    EXPECT_EQ(r.err, "");
}

// The example, an avr-gcc image at a cycle limit, BASIC programs: rows of data/runs.txt.
TEST(CliRun, EveryRowOfTheTable) { test::runcommandrows("runs.txt"); }
TEST(CliRun, ElfPrograms) { test::runcommandrows("elf.txt"); }

TEST(CliRun, JsonDumpIsOneLineWithTheSameValues) {
    const Result r = run({"run", "--dump-format", "json", std::string(VELMORA_SOURCE_DATA_DIR) + "/examples/countdown.words"});
    EXPECT_EQ(r.code, kExitSleep);
    ASSERT_EQ(r.out.rfind("{\"registers\":[", 0), 0u) << r.out;
    EXPECT_EQ(r.out.find('\n'), r.out.size() - 1) << r.out;
    // R17 holds 55, as the text dump shows it; values are decimal.
    std::istringstream values(r.out.substr(r.out.find('[') + 1));
    std::string value;
    for (int i = 0; i <= 17; ++i) std::getline(values, value, ',');
    EXPECT_EQ(value, "55");
    for (const char* part : {"],\"SREG\":", ",\"SP\":", ",\"PC\":", ",\"io\":{\"", "},\"eeprom\":[255,"})
        EXPECT_NE(r.out.find(part), std::string::npos) << part;
    EXPECT_EQ(r.out.substr(r.out.size() - 3), "]}\n");
}

TEST(CliRun, ACycleLimitAloneStopsAtTheSameStepAsWithOtherLimits) {
    // Alone, the limit rides on the machine's attention cycle; beside an instruction limit it
    // is a per-step hook. Both must stop after the same step with the same state.
    const std::string hex = std::string(VELMORA_TEST_DATA_DIR) + "/../../firmware/hex/crc-atmega328p.hex";
    for (const char* cycles : {"1", "2", "3", "1000", "123457", "930000"}) {
        SCOPED_TRACE(cycles);
        const Result alone = run({"run", "--model", "ATmega328P", "--max-cycles", cycles, "--dump", hex});
        const Result hooked = run({"run", "--model", "ATmega328P", "--max-cycles", cycles, "--max-instructions",
                                   "999999999", "--dump", hex});
        EXPECT_EQ(alone.code, kExitLimit);
        EXPECT_EQ(hooked.code, kExitLimit);
        EXPECT_EQ(alone.out, hooked.out);
        const auto summary = [](const std::string& err) { return err.substr(err.find("Real-time")); };
        EXPECT_EQ(summary(alone.err), summary(hooked.err));
    }
}

TEST(RunOptions, EscapesOfUartText) {
    struct {
        const char* text;
        std::string bytes;
    } cases[] = {
        {"plain", "plain"},
        {"a\\nb\\r", "a\nb\r"},
        {"\\t\\\\", "\t\\"},
        {"\\x41\\x4a", "AJ"},
        {"\\x4", "\x04"},
        {"\\x4g", "\x04g"},
        {"\\x414", "A4"},
        {"\\xFF\\0", std::string("\xFF\0", 2)},
        {"", ""},
    };
    for (const auto& c : cases) {
        std::string error;
        const auto bytes = unescape(c.text, error);
        ASSERT_TRUE(bytes) << c.text << ": " << error;
        EXPECT_EQ(*bytes, c.bytes) << c.text;
    }
    for (const char* bad : {"\\", "ab\\", "\\q", "\\x", "\\xg1", "\\N"}) {
        std::string error;
        EXPECT_FALSE(unescape(bad, error)) << bad;
        EXPECT_FALSE(error.empty()) << bad;
    }
}

// Pins as PORTx.BIT=0|1[@CYCLE], analog inputs as CHANNEL=VALUE[@CYCLE].
TEST(RunOptions, PinAndAnalogInputs) {
    const struct {
        const char* text;
        bool pin;
        int where, bit, value;  // where: the port code or the channel
        uint64_t cycle;
    } cases[] = {
        {"PORTB.0=1", true, 6, 0, 1, 0},        {"portd.7=0@123", true, 8, 7, 0, 123},
        {"PORTA.3=1@0", true, 5, 3, 1, 0},      {"PORTG.5=0@18446744073", true, 11, 5, 0, 18446744073ull},
        {"3=512@1000", false, 3, 0, 512, 1000}, {"15=1023", false, 15, 0, 1023, 0},
        {"0=0@0", false, 0, 0, 0, 0},
    };
    for (const auto& c : cases) {
        std::string error;
        const auto input = c.pin ? parsepininput(c.text, error) : parseanaloginput(c.text, error);
        ASSERT_TRUE(input) << c.text;
        EXPECT_EQ(input->kind, c.pin ? ScheduledInput::Kind::Pin : ScheduledInput::Kind::Analog) << c.text;
        EXPECT_EQ(c.pin ? input->portcode : input->channel, c.where) << c.text;
        if (c.pin) { EXPECT_EQ(input->bit, c.bit) << c.text; }
        EXPECT_EQ(input->value, c.value) << c.text;
        EXPECT_EQ(input->cycle, c.cycle) << c.text;
    }
    for (const char* bad : {"PORTB.8=1", "PORTH.0=1", "PORTB.0=2", "PORTB.0=1@", "PORTB.0=1@-5", "PORTB.0=1@1e3",
                            "PORTB0=1", "PINB.0=1", "PORTB.0", "PORTB.01=1", "PORTB.0=1@5@6", ""}) {
        std::string error;
        EXPECT_FALSE(parsepininput(bad, error)) << bad;
        EXPECT_NE(error.find("PORTx.BIT=0|1[@CYCLE]"), std::string::npos) << error;
    }
    for (const char* bad : {"16=1", "3=1024", "=5", "3=", "a=1", "3=5@x", "3", "-1=5", "3=-5"}) {
        std::string error;
        EXPECT_FALSE(parseanaloginput(bad, error)) << bad;
        EXPECT_NE(error.find("CHANNEL=VALUE"), std::string::npos) << error;
    }
}

TEST(RunOptions, InputsRunInCycleOrderAndUartSourcesInCommandLineOrder) {
    std::string error;
    const auto options = parserunoptions({"--pin", "PORTB.1=1@50", "--uart-in", "a", "--analog", "2=9@10",
                                          "prog.hex", "--uart-in-file", "f.bin", "--pin", "PORTB.2=0@10",
                                          "--uart-in", "\\x62"},
                                         error);
    ASSERT_TRUE(options) << error;
    EXPECT_EQ(options->file, "prog.hex");
    ASSERT_EQ(options->inputs.size(), 3u);
    EXPECT_EQ(options->inputs[0].text, "2=9@10");
    EXPECT_EQ(options->inputs[1].text, "PORTB.2=0@10");
    EXPECT_EQ(options->inputs[2].text, "PORTB.1=1@50");
    ASSERT_EQ(options->uartin.size(), 3u);
    EXPECT_FALSE(options->uartin[0].isfile);
    EXPECT_EQ(options->uartin[0].text, "a");
    EXPECT_TRUE(options->uartin[1].isfile);
    EXPECT_EQ(options->uartin[1].text, "f.bin");
    EXPECT_EQ(options->uartin[2].text, "b");
}

TEST(RunOptions, CountsAndAddresses) {
    std::string error;
    const auto options = parserunoptions(
        {"--max-cycles", "12345", "--max-instructions", "7", "--break", "$1F", "--break", "0x20", "--break", "21",
         "--break", "main", "--uart-time", "50", "x.words"},
        error);
    ASSERT_TRUE(options) << error;
    EXPECT_EQ(options->maxcycles, 12345u);
    EXPECT_EQ(options->maxinstructions, 7u);
    EXPECT_EQ(options->breakpoints,
              (std::vector<BreakTarget>{{"$1F", 0x1F}, {"0x20", 0x20}, {"21", 0x21}, {"main", std::nullopt}}));
    ASSERT_TRUE(options->uarttime);
    EXPECT_EQ(*options->uarttime, 50.0f);
    for (std::vector<std::string> bad : std::vector<std::vector<std::string>>{
             {"--max-cycles", "+5", "x"}, {"--break", "$", "x"}, {"--break", "12G", "x"},
             {"--uart-time", "49", "x"}, {"--uart-time", "100001", "x"}, {"x", "y"}, {}}) {
        EXPECT_FALSE(parserunoptions(bad, error)) << bad.size();
        EXPECT_FALSE(error.empty());
    }
}

}  // namespace
}  // namespace velmora
