// velmora-cli run: the summary and the dump of a finished run, the cycle limit, word files.

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>

#include "cli/commands.h"
#include "clirows.h"

namespace velmora {
namespace {

using Result = test::CliResult;
Result run(const std::vector<std::string>& args) { return test::runinprocess(args); }

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

}  // namespace
}  // namespace velmora
