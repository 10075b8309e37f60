// velmora-cli run with a character LCD wired by --lcd: the option's errors, where the display
// is printed among the other output, and the change log of --device-log. What a real
// program shows on it is tested with avr-gcc firmware in tests/firmware/lcd_test.cpp.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "cli/runoptions.h"
#include "clirows.h"

namespace velmora::test {
namespace {

const std::string kBlank = "lcd:\n|                |\n|                |\n";

// Bad options, and where the display stands among the other output: rows of data/lcdrun.txt.
TEST(LcdRun, OptionErrorsAndWhereTheDisplayIsPrinted) {
    runcommandrows("lcdrun.txt");
    // The dump comes last, so that its JSON stays the last line.
    TempFolder folder;
    writefile(folder / "ok.words", "9588\n");
    const CliResult dump = runinprocess({"run", "--lcd", "2x16", "--dump", expand("@/ok.words", folder)});
    EXPECT_EQ(dump.out.rfind(kBlank + "R0  = $00", 0), 0u) << dump.out;
    const CliResult json =
        runinprocess({"run", "--lcd", "2x16", "--dump-format", "json", expand("@/ok.words", folder)});
    EXPECT_EQ(json.out.rfind(kBlank + "{", 0), 0u) << json.out;
    EXPECT_EQ(json.out.find('\n', kBlank.size()), json.out.size() - 1) << json.out;
}

TEST(LcdRun, QuietProgramLeavesAnEmptyLog) {
    TempFolder folder;
    writefile(folder / "nops.words", "0000 0000 0000 9588\n");
    writefile(folder / "devices.log", "left from before\n");
    const CliResult r = runinprocess({"run", "--lcd", "2x16", "--device-log", expand("@/devices.log", folder),
                                      expand("@/nops.words", folder)});
    EXPECT_EQ(r.code, kExitSleep) << r.err;
    EXPECT_EQ(r.out, kBlank);
    EXPECT_TRUE(std::filesystem::exists(folder / "devices.log"));
    EXPECT_EQ(readfile(folder / "devices.log"), "");
}

TEST(LcdRun, OptionsKeepTheSetupAsGiven) {
    const struct {
        std::vector<std::string> args;
        std::string setup, log;
    } rows[] = {
        {{"--lcd", "4x20,d=PORTC.0", "f.hex"}, "4x20,d=PORTC.0", ""},
        {{"f.hex", "--lcd=2x16", "--device-log", "out.log"}, "2x16", "out.log"},
        {{"--device-log=x", "--lcd", "", "f.hex"}, "", "x"},  // an empty setup keeps every default
    };
    for (const auto& row : rows) {
        std::string error;
        const auto options = parserunoptions(row.args, error);
        ASSERT_TRUE(options) << row.setup << ": " << error;
        ASSERT_EQ(options->devices.size(), 1u) << row.setup;
        EXPECT_STREQ(options->devices[0].kind->option, "--lcd");
        EXPECT_EQ(options->devices[0].setup, row.setup);
        EXPECT_EQ(options->devicelog, row.log) << row.setup;
    }
}

}  // namespace
}  // namespace velmora::test
