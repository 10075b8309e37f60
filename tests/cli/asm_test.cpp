// velmora-cli asm: the built program writes the listing and HEX file beside the source as
// the Assembler window does, reports the error rows and count, and exits 3 on errors.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>
#include <sys/wait.h>

#include "support/tempfolder.h"

namespace velmora::test {
namespace {

struct Outcome {
    int code = -1;
    std::string out, err;
};

std::string quoted(const std::string& text) {
    std::string q = "'";
    for (char c : text) q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

// Runs the built velmora-cli with `args`; stderr is caught in a file of `folder`.
Outcome runcli(const TempFolder& folder, const std::vector<std::string>& args) {
    const std::filesystem::path errfile = folder / "stderr.txt";
    std::string command = quoted(VELMORA_CLI_PATH);
    for (const std::string& a : args) command += " " + quoted(a);
    command += " 2>" + quoted(errfile.string());
    Outcome outcome;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) return outcome;
    char buffer[4096];
    for (size_t n; (n = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) outcome.out.append(buffer, n);
    const int status = ::pclose(pipe);
    outcome.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    outcome.err = readfile(errfile);
    return outcome;
}

TEST(CliAsm, AGoodSourceLeavesItsListingAndHexFile) {
    ASSERT_TRUE(std::filesystem::exists(VELMORA_CLI_PATH)) << VELMORA_CLI_PATH << " is not built";
    TempFolder folder;
    writefile(folder / "blink.v1.asm",
              "START: LDI R16,low(RAMEND)\r\n"
              "        LDI R17,high(RAMEND)\r\n"
              "        OUT PORTB,R16\r\n"
              "        RJMP START\r\n");
    const Outcome r = runcli(folder, {"asm", "--model", "atmega328p", (folder / "blink.v1.asm").string()});
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out, "Number of errors = 0\n");
    EXPECT_EQ(r.err, "");
    // RAMEND of an ATmega328P is $8FF; PORTB is I/O address 5. Words checked with avr-as.
    EXPECT_EQ(readfile(folder / "blink.hex"),
              ":020000040000FA\r\n:080000000FEF18E005B9FCCF79\r\n:00000001FF\r\n");
    const std::string listing = readfile(folder / "blink.lst");
    EXPECT_NE(listing.find("0003    000002  B905            OUT PORTB,R16\r\n"), std::string::npos) << listing;
    EXPECT_TRUE(listing.ends_with("Number of errors = 0\r\n"));
}

TEST(CliAsm, ErrorsAreReportedAndLeaveNoOutputs) {
    TempFolder folder;
    writefile(folder / "bad.asm", " NOP\n LDI R15,256\nX: NOP\nX: NOP\n");
    writefile(folder / "bad.lst", "stale");
    const Outcome r = runcli(folder, {"asm", "--model", "ATmega8", (folder / "bad.asm").string()});
    EXPECT_EQ(r.code, 3);
    EXPECT_EQ(r.out,
              "0002 Error: Invalid argument of the instruction.\n"
              "0004 Error: Duplicate label.\n"
              "Number of errors = 3\n");
    EXPECT_EQ(r.err, "Assembly was not successful.\nYour assembler source contains 3 errors.\n");
    EXPECT_FALSE(std::filesystem::exists(folder / "bad.lst"));
    EXPECT_FALSE(std::filesystem::exists(folder / "bad.hex"));
}

TEST(CliAsm, TheModelDecidesThePredefinedSymbols) {
    TempFolder folder;
    writefile(folder / "m.asm", " LDI R16,high(RAMEND)\n");
    runcli(folder, {"asm", "--model", "atmega8", (folder / "m.asm").string()});
    EXPECT_EQ(readfile(folder / "m.hex"), ":020000040000FA\r\n:0200000004E01A\r\n:00000001FF\r\n");
    runcli(folder, {"asm", "--model", "atmega328p", (folder / "m.asm").string()});
    EXPECT_EQ(readfile(folder / "m.hex"), ":020000040000FA\r\n:0200000008E016\r\n:00000001FF\r\n");
}

TEST(CliAsm, BadRequestsAreRefusedClearly) {
    TempFolder folder;
    writefile(folder / "p.asm", " NOP\n");
    writefile(folder / "p.hex", ":00000001FF\r\n");

    Outcome r = runcli(folder, {"asm"});
    EXPECT_EQ(r.code, 2);
    EXPECT_NE(r.err.find("usage: velmora-cli asm"), std::string::npos);

    r = runcli(folder, {"asm", "--model", "atmega9999", (folder / "p.asm").string()});
    EXPECT_EQ(r.code, 3);
    EXPECT_NE(r.err.find("no model named 'atmega9999'"), std::string::npos) << r.err;

    r = runcli(folder, {"asm", (folder / "p.hex").string()});
    EXPECT_EQ(r.code, 3);
    EXPECT_EQ(r.err, "This extension is not allowed for assembler source files.\n");

    r = runcli(folder, {"asm", (folder / "none.asm").string()});
    EXPECT_EQ(r.code, 3);
    EXPECT_NE(r.err.find("none.asm"), std::string::npos) << r.err;

    r = runcli(folder, {"asm", "--bogus", (folder / "p.asm").string()});
    EXPECT_EQ(r.code, 2);
}

}  // namespace
}  // namespace velmora::test
