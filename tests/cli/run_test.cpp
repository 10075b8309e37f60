// velmora-cli run: the summary and the dump of a finished run, the cycle limit, word files.

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>

#include "cli/commands.h"
#include "inprocess.h"
#include "cli/programinput.h"

namespace velmora {
namespace {

using Result = test::CliResult;
Result run(const std::vector<std::string>& args) { return test::runinprocess(args); }

std::string writeprogram(const std::string& name, const std::string& text) {
    const std::string path = testing::TempDir() + name;
    std::ofstream(path) << text;
    return path;
}

TEST(CliRun, ExampleRunsToSleepAndDumpsRegisters) {
    const Result r = run({"run", "--dump", std::string(VELMORA_SOURCE_DATA_DIR) + "/examples/countdown.words"});
    EXPECT_EQ(r.code, kExitSleep);
    // 10 + 9 + ... + 1 = 55 = $37.
    EXPECT_NE(r.out.find("R17 = $37"), std::string::npos) << r.out;
    EXPECT_NE(r.err.find("Total number of executed instructions is 33."), std::string::npos) << r.err;
    EXPECT_NE(r.err.find("43 clock cycles"), std::string::npos);
}

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

TEST(CliRun, RunningOffTheEndOfMemoryIsReported) {
    // A bare machine of 16 Ki words filled with NOPs (0000) after an erased fill would be
    // UNRECOGNIZED; so fill the whole memory with NOPs.
    std::string program;
    for (int i = 0; i < 16384; ++i) program += "0000\n";
    EXPECT_EQ(run({"run", writeprogram("cli_nops.words", program)}).code, kExitEndOfMemory);
}

TEST(CliRun, ClockChangesTheTimeText) {
    const Result r = run({"run", "--clock", "8", writeprogram("cli_clock.words", "0000 9588\n")});
    EXPECT_NE(r.err.find("3 clock cycles or 0.38 \xC2\xB5s at 8 MHz."), std::string::npos) << r.err;
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

TEST(WordFile, CommentsAndSeparators) {
    std::string error;
    const auto words = parsewordfile("; header\nE00A E010 ; two\n\n9588\n", error);
    ASSERT_TRUE(words);
    EXPECT_EQ(*words, (std::vector<uint16_t>{0xE00A, 0xE010, 0x9588}));
    EXPECT_FALSE(parsewordfile("10000\n", error));
}

}  // namespace
}  // namespace velmora
