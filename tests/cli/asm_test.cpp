// velmora-cli asm: the built program writes the listing and HEX file beside the source as
// the Assembler window does, reports the error rows and count, and exits 3 on errors.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/childprocess.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

TEST(CliAsm, AGoodSourceLeavesItsListingAndHexFile) {
    ASSERT_TRUE(std::filesystem::exists(VELMORA_CLI_PATH)) << VELMORA_CLI_PATH << " is not built";
    TempFolder folder;
    writefile(folder / "blink.v1.asm",
              "START: LDI R16,low(RAMEND)\r\n"
              "        LDI R17,high(RAMEND)\r\n"
              "        OUT PORTB,R16\r\n"
              "        RJMP START\r\n");
    const ChildRun r = runcli({"asm", "--model", "atmega328p", (folder / "blink.v1.asm").string()});
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

// The rows and the report the errors give are a row of data/conventions.txt.
TEST(CliAsm, ErrorsLeaveNoOutputs) {
    TempFolder folder;
    writefile(folder / "bad.asm", " NOP\n LDI R15,256\nX: NOP\nX: NOP\n");
    writefile(folder / "bad.lst", "stale");
    EXPECT_EQ(runcli({"asm", "--model", "ATmega8", (folder / "bad.asm").string()}).code, 3);
    EXPECT_FALSE(std::filesystem::exists(folder / "bad.lst"));
    EXPECT_FALSE(std::filesystem::exists(folder / "bad.hex"));
}

TEST(CliAsm, TheModelDecidesThePredefinedSymbols) {
    TempFolder folder;
    writefile(folder / "m.asm", " LDI R16,high(RAMEND)\n");
    runcli({"asm", "--model", "atmega8", (folder / "m.asm").string()});
    EXPECT_EQ(readfile(folder / "m.hex"), ":020000040000FA\r\n:0200000004E01A\r\n:00000001FF\r\n");
    runcli({"asm", "--model", "atmega328p", (folder / "m.asm").string()});
    EXPECT_EQ(readfile(folder / "m.hex"), ":020000040000FA\r\n:0200000008E016\r\n:00000001FF\r\n");
}

}  // namespace
}  // namespace velmora::test
