// velmora-cli as scripts use it: help on stdout with exit 0, usage errors on stderr with
// exit 2, exit codes by the reason a run ended, and error messages that name their file.
// One row per command line.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "inprocess.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

struct Row {
    std::vector<std::string> args;  // "@/" stands for the row's folder of files
    int code;
    std::string out;  // expected on stdout: as a prefix, or "" for nothing at all
    std::string err;  // expected somewhere in stderr; "" for nothing at all
};

// Files the rows name, written once into a fresh folder.
void writefiles(const TempFolder& folder) {
    writefile(folder / "ok.words", "9588\n");             // SLEEP
    writefile(folder / "loop.words", "CFFF\n");           // RJMP to itself
    writefile(folder / "nops.words", "0000 0000 CFFD\n");  // two NOPs and back
    writefile(folder / "break.words", "0000 0000 0000 9588\n");
    writefile(folder / "garbage.words", "12345 zz\n");
    writefile(folder / "bad.hex", ":10000000\r\n");
    writefile(folder / "bad.asm", " NOP\n LDI R15,256\nX: NOP\nX: NOP\n");
    writefile(folder / "ok.asm", " LDI R16,1\n SLEEP\n");
    writefile(folder / "ok.bas", "Hseropen\r\nHserout \"hi\"\r\nASM: SLEEP\r\n");
    writefile(folder / "bad.bas", "Dim a As Byte\r\na = 300\r\n");
    writefile(folder / "clock.bas", "Define CLOCK_FREQUENCY = 8\r\nASM: SLEEP\r\n");
}

// The text with every "@/" made the folder's path.
std::string expand(std::string text, const TempFolder& folder) {
    const std::string path = (folder / "").string();
    for (size_t at = text.find("@/"); at != std::string::npos; at = text.find("@/", at + path.size()))
        text.replace(at, 2, path);
    return text;
}

std::string rowname(const Row& row) {
    std::string name;
    for (const std::string& a : row.args) name += (name.empty() ? "" : " ") + a;
    return name.empty() ? "(no arguments)" : name;
}

TEST(CliConventions, EveryCommandLineGivesItsCodeAndStreams) {
    const Row rows[] = {
        // The program and each command explain themselves on stdout.
        {{"--help"}, 0, "usage: velmora-cli COMMAND", ""},
        {{"-h"}, 0, "usage: velmora-cli COMMAND", ""},
        {{"models", "--help"}, 0, "usage: velmora-cli models", ""},
        {{"run", "--help"}, 0, "usage: velmora-cli run [OPTIONS] FILE", ""},
        {{"run", "-h", "--bogus"}, 0, "usage: velmora-cli run", ""},
        {{"asm", "--help"}, 0, "usage: velmora-cli asm", ""},
        {{"disasm", "--help"}, 0, "usage: velmora-cli disasm", ""},
        {{"basic", "--help"}, 0, "usage: velmora-cli basic", ""},
        {{"models"}, 0, "  AT90S2313\t", ""},
        // Usage errors: stderr, exit 2, nothing on stdout.
        {{}, kExitUsage, "", "usage: velmora-cli COMMAND"},
        {{"frobnicate"}, kExitUsage, "", "velmora-cli: unknown command 'frobnicate'"},
        {{"models", "extra"}, kExitUsage, "", "velmora-cli models: takes no file"},
        {{"run"}, kExitUsage, "", "velmora-cli run: no program file given\nusage: velmora-cli run"},
        {{"run", "@/ok.words", "@/ok.words"}, kExitUsage, "", "more than one program file given"},
        {{"run", "--bogus", "@/ok.words"}, kExitUsage, "", "velmora-cli run: unknown option --bogus"},
        {{"run", "@/ok.words", "--max-cycles"}, kExitUsage, "", "option --max-cycles needs a value"},
        {{"run", "--dump=yes", "@/ok.words"}, kExitUsage, "", "option --dump takes no value"},
        {{"run", "--max-cycles", "-5", "@/ok.words"}, kExitUsage, "", "--max-cycles '-5' is not a count"},
        {{"run", "--clock", "fast", "@/ok.words"}, kExitUsage, "", "the clock must be a positive number"},
        {{"run", "--pin", "PORTB.9=1", "@/ok.words"}, kExitUsage, "", "expected PORTx.BIT=0|1[@CYCLE]"},
        {{"run", "--analog", "3=2000", "@/ok.words"}, kExitUsage, "", "VALUE 0-1023"},
        {{"run", "--uart-in", "ab\\q", "@/ok.words"}, kExitUsage, "", "unknown escape \\q"},
        {{"run", "--uart-time", "10", "@/ok.words"}, kExitUsage, "", "50-100000"},
        {{"run", "--model", "ATmega8", "--pin", "PORTA.0=1", "@/ok.words"}, kExitUsage, "", "ATmega8 has no PORTA"},
        {{"run", "--model", "ATmega8", "--analog", "6=100", "@/ok.words"}, kExitUsage, "",
         "ATmega8 has no analog channel 6"},
        {{"run", "--model", "ATtiny13", "--uart-in", "x", "@/ok.words"}, kExitUsage, "", "ATtiny13 has no USART"},
        {{"run", "--vcd-pins", "PORTB,PB3", "@/ok.words"}, kExitUsage, "", "--vcd-pins 'PB3': expected PORTx"},
        {{"run", "--model", "ATmega8", "--vcd-pins", "PORTA", "@/ok.words"}, kExitUsage, "", "ATmega8 has no PORTA"},
        {{"run", "--dump-format", "xml", "@/ok.words"}, kExitUsage, "", "expected text or json"},
        {{"asm"}, kExitUsage, "", "velmora-cli asm: no source file given"},
        {{"basic"}, kExitUsage, "", "velmora-cli basic: no source file given"},
        {{"basic", "--clock", "0", "@/ok.bas"}, kExitUsage, "", "--clock takes a frequency in MHz"},
        {{"asm", "--bogus", "@/ok.asm"}, kExitUsage, "", "unknown option --bogus"},
        {{"disasm", "--layout", "fancy", "@/ok.words"}, kExitUsage, "", "unknown layout 'fancy'"},
        {{"disasm", "--model", "ATmega8"}, kExitUsage, "", "no HEX file given"},
        // Files and models that cannot be used: exit 3, and the message names the file.
        {{"run", "@/absent.hex"}, kExitInputError, "", "absent.hex: The file can not be opened."},
        {{"run", "@/absent.words"}, kExitInputError, "", "absent.words'"},
        {{"run", "@/bad.hex"}, kExitInputError, "", "bad.hex: Input program file in Intel Hex Format contains errors."},
        {{"run", "@/garbage.words"}, kExitInputError, "", "garbage.words: line 1"},
        {{"run", "--uart-in-file", "@/absent.bin", "@/ok.words"}, kExitInputError, "", "absent.bin'"},
        {{"run", "--uart-in-file", "@/", "@/ok.words"}, kExitInputError, "", "cannot read --uart-in-file '@/'"},
        {{"run", "--vcd", "@/absent/trace.vcd", "@/ok.words"}, kExitInputError, "", "absent/trace.vcd'"},
        {{"run", "--model", "NoSuchChip", "@/ok.words"}, kExitInputError, "", "no model named 'NoSuchChip'"},
        {{"disasm", "--model", "ATmega8", "@/absent.hex"}, kExitInputError, "", "absent.hex: The file can not be opened."},
        {{"asm", "@/bad.hex"}, kExitInputError, "", "This extension is not allowed for assembler source files.\n"},
        // Assembler errors: the rows and the report, then one line per error that editors read.
        {{"asm", "--model", "ATmega8", "@/bad.asm"}, kExitInputError,
         "0002 Error: Invalid argument of the instruction.\n0004 Error: Duplicate label.\nNumber of errors = 3\n",
         "Your assembler source contains 3 errors.\n@/bad.asm:2: error: Invalid argument of the instruction.\n"
         "@/bad.asm:4: error: Duplicate label.\n"},
        {{"run", "--model", "ATmega8", "@/bad.asm"}, kExitInputError, "", "@/bad.asm:4: error: Duplicate label.\n"},
        {{"run", "@/ok.asm"}, kExitSleep, "", "Total number of executed instructions is 2."},
        // BASIC: the window's report, the compile error as its box shows it and as editors read it.
        {{"basic", "--model", "ATmega8", "--assemble", "@/ok.bas"}, 0,
         "The compilation process was successful.\nThe size of the generated code is ", ""},
        {{"basic", "@/bad.bas"}, kExitInputError, "",
         "Error in line 2: Argument '300' is not a valid Byte type constant.\n"
         "@/bad.bas:2: error: Argument '300' is not a valid Byte type constant.\n"},
        {{"basic", "@/absent.bas"}, kExitInputError, "", "absent.bas' can not be opened."},
        {{"run", "--model", "ATmega328P", "@/ok.bas"}, kExitSleep, "hi", "Total number"},
        {{"run", "@/bad.bas"}, kExitInputError, "", "@/bad.bas:2: error: Argument '300'"},
        // The program's clock wins over the option's, as it does over the main window's field.
        {{"run", "--clock", "4", "@/clock.bas"}, kExitSleep, "", " at 8 MHz."},
        // Exit codes by the reason a run ended.
        {{"run", "@/ok.words"}, kExitSleep, "", "Total number of executed instructions is 1."},
        {{"run", "--infinite-loop-stop", "@/loop.words"}, kExitInfiniteLoop, "", "Total number"},
        {{"run", "--max-cycles", "1000", "@/loop.words"}, kExitLimit, "", "is 500."},
        {{"run", "--max-cycles=1000", "@/loop.words"}, kExitLimit, "", "is 500."},
        {{"run", "--max-instructions", "10", "@/nops.words"}, kExitLimit, "", "is 10."},
        {{"run", "--break", "2", "@/break.words"}, kExitBreakpoint, "", "is 2."},
        {{"run", "--max-cycles", "1000", "--", "@/loop.words"}, kExitLimit, "", "Total number"},
    };
    TempFolder folder;
    writefiles(folder);
    for (const Row& row : rows) {
        SCOPED_TRACE(rowname(row));
        std::vector<std::string> args;
        for (const std::string& a : row.args) args.push_back(expand(a, folder));
        const CliResult r = runinprocess(args);
        EXPECT_EQ(r.code, row.code) << r.err;
        if (row.out.empty()) EXPECT_EQ(r.out, "");
        else EXPECT_EQ(r.out.substr(0, row.out.size()), row.out);
        const std::string err = expand(row.err, folder);
        if (err.empty()) EXPECT_EQ(r.err, "");
        else EXPECT_NE(r.err.find(err), std::string::npos) << r.err;
    }
}

TEST(CliConventions, VersionIsTheBuildsVersion) {
    const CliResult r = runinprocess({"--version"});
    EXPECT_EQ(r.code, 0);
    // "velmora-cli 1.2" or "velmora-cli 1.2.3": digits and dots after the name.
    const std::string version = r.out.substr(std::min(r.out.size(), sizeof "velmora-cli " - 1));
    EXPECT_EQ(r.out.rfind("velmora-cli ", 0), 0u) << r.out;
    EXPECT_TRUE(version.size() >= 4 && version.find('.') != std::string::npos && version.back() == '\n' &&
                version.find_first_not_of("0123456789.") == version.size() - 1)
        << r.out;
    EXPECT_EQ(r.err, "");
}

}  // namespace
}  // namespace velmora::test
