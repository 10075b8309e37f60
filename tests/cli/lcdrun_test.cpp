// velmora-cli run with a character LCD wired by --lcd: the option's errors, where the display
// is printed among the other output, and the change log of --device-log. What a real
// program shows on it is tested with avr-gcc firmware in tests/firmware/lcd_test.cpp.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/runoptions.h"
#include "inprocess.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

// A blank display, as a program that never touches the pins leaves it.
std::string blank(int lines, int chars) {
    std::string text = "lcd:\n";
    for (int row = 0; row < lines; ++row) text += "|" + std::string(static_cast<size_t>(chars), ' ') + "|\n";
    return text;
}
const std::string kBlank = "lcd:\n|                |\n|                |\n";

struct Row {
    std::vector<std::string> args;  // "@/" stands for the row's folder of files
    int code;
    std::string out;  // stdout in full
    std::string err;  // expected somewhere in stderr; "" for nothing at all
};

std::string expand(std::string text, const TempFolder& folder) {
    const std::string path = (folder / "").string();
    for (size_t at = text.find("@/"); at != std::string::npos; at = text.find("@/", at + path.size()))
        text.replace(at, 2, path);
    return text;
}

void runrows(const std::vector<Row>& rows, const TempFolder& folder) {
    for (const Row& row : rows) {
        std::string name;
        std::vector<std::string> args;
        for (const std::string& a : row.args) {
            args.push_back(expand(a, folder));
            name += " " + a;
        }
        SCOPED_TRACE(name);
        const CliResult r = runinprocess(args);
        EXPECT_EQ(r.code, row.code) << r.err;
        EXPECT_EQ(r.out, row.out);
        if (row.err.empty()) EXPECT_EQ(r.err.find("velmora-cli run:"), std::string::npos) << r.err;
        else EXPECT_NE(r.err.find(expand(row.err, folder)), std::string::npos) << r.err;
    }
}

TEST(LcdRun, BadOptionsAreUsageErrorsNamingTheOption) {
    TempFolder folder;
    writefile(folder / "ok.words", "9588\n");  // SLEEP
    const std::vector<Row> rows = {
        {{"run", "--lcd", "3x16", "@/ok.words"}, kExitUsage, "", "velmora-cli run: --lcd '3X16': not a module type"},
        {{"run", "--lcd", "2x16,e=PORTB", "@/ok.words"}, kExitUsage, "", "--lcd 'E=PORTB': expected a pin"},
        {{"run", "--lcd", "cmd=10", "@/ok.words"}, kExitUsage, "", "--lcd 'CMD=10': expected whole microseconds"},
        {{"run", "--lcd=2x16,flash", "@/ok.words"}, kExitUsage, "", "--lcd 'FLASH': not a module type"},
        {{"run", "--lcd", "bas=@/absent.bas", "@/ok.words"}, kExitUsage, "", "--lcd cannot read '@/absent.bas'"},
        {{"run", "--lcd", "2x16", "--lcd", "4x20", "@/ok.words"}, kExitUsage, "", "--lcd given twice"},
        {{"run", "@/ok.words", "--lcd"}, kExitUsage, "", "option --lcd needs a value"},
        {{"run", "--device-log", "@/log.txt", "@/ok.words"}, kExitUsage, "",
         "--device-log '@/log.txt': no device to log; wire one with --lcd"},
        {{"run", "--lcd", "2x16", "--device-log=", "@/ok.words"}, kExitUsage, "", "--device-log needs a file name"},
        // Ports the model does not have, after the model is known.
        {{"run", "--model", "ATmega8", "--lcd", "d=PORTA", "@/ok.words"}, kExitUsage, "",
         "--lcd 'd=PORTA': ATmega8 has no PORTA"},
        {{"run", "--model", "ATtiny13", "--lcd", "rs=PORTB.3,e=PORTD.6", "@/ok.words"}, kExitUsage, "",
         "ATtiny13 has no PORTD"},
        {{"run", "--model", "ATtiny13", "--lcd", "rw=PORTC.1", "@/ok.words"}, kExitUsage, "", "ATtiny13 has no PORTC"},
        // A log that cannot be written is a file error.
        {{"run", "--lcd", "2x16", "--device-log", "@/absent/log.txt", "@/ok.words"}, kExitInputError, "",
         "cannot write --device-log '@/absent/log.txt'"},
    };
    runrows(rows, folder);
}

TEST(LcdRun, DisplayFollowsTheUsartOutputAndPrecedesTheDump) {
    TempFolder folder;
    writefile(folder / "ok.words", "9588\n");
    writefile(folder / "loop.words", "CFFF\n");  // RJMP to itself
    // "hi" without a line break, then SLEEP.
    writefile(folder / "hi.bas", "Hseropen\r\nHserout \"hi\"\r\nASM: SLEEP\r\n");
    const std::vector<Row> rows = {
        {{"run", "--lcd", "2x16", "@/ok.words"}, kExitSleep, kBlank, ""},
        {{"run", "--lcd", "1x16", "@/ok.words"}, kExitSleep, blank(1, 16), ""},
        {{"run", "--lcd", "4X20,PORTC", "@/ok.words"}, kExitSleep, blank(4, 20), ""},
        {{"run", "--lcd", "2x40", "@/ok.words"}, kExitSleep, blank(2, 40), ""},
        // The display starts on a line of its own after what the USART sent.
        {{"run", "--model", "ATmega328P", "--lcd", "2x16", "@/hi.bas"}, kExitSleep, "hi\n" + kBlank, ""},
        // Printed whatever ended the run.
        {{"run", "--lcd", "2x16", "--max-cycles", "100", "@/loop.words"}, kExitLimit, kBlank, ""},
    };
    runrows(rows, folder);

    // The dump comes last, so that its JSON stays the last line.
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

TEST(LcdRun, HelpDescribesTheOptions) {
    const CliResult r = runinprocess({"run", "--help"});
    for (const char* text :
         {"\n  --lcd SETUP ", "\n  --device-log PATH ", "CYCLE<tab>DEVICE<tab>WHAT", "and last the dump"})
        EXPECT_NE(r.out.find(text), std::string::npos) << text;
}

}  // namespace
}  // namespace velmora::test
