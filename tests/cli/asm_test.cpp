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

TEST(CliAsm, ErrorsAreReportedAndLeaveNoOutputs) {
    TempFolder folder;
    writefile(folder / "bad.asm", " NOP\n LDI R15,256\nX: NOP\nX: NOP\n");
    writefile(folder / "bad.lst", "stale");
    const ChildRun r = runcli({"asm", "--model", "ATmega8", (folder / "bad.asm").string()});
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
    runcli({"asm", "--model", "atmega8", (folder / "m.asm").string()});
    EXPECT_EQ(readfile(folder / "m.hex"), ":020000040000FA\r\n:0200000004E01A\r\n:00000001FF\r\n");
    runcli({"asm", "--model", "atmega328p", (folder / "m.asm").string()});
    EXPECT_EQ(readfile(folder / "m.hex"), ":020000040000FA\r\n:0200000008E016\r\n:00000001FF\r\n");
}

TEST(CliAsm, BadRequestsAreRefusedClearly) {
    TempFolder folder;
    writefile(folder / "p.asm", " NOP\n");
    writefile(folder / "p.hex", ":00000001FF\r\n");

    ChildRun r = runcli({"asm"});
    EXPECT_EQ(r.code, 2);
    EXPECT_NE(r.err.find("usage: velmora-cli asm"), std::string::npos);

    r = runcli({"asm", "--model", "atmega9999", (folder / "p.asm").string()});
    EXPECT_EQ(r.code, 3);
    EXPECT_NE(r.err.find("no model named 'atmega9999'"), std::string::npos) << r.err;

    r = runcli({"asm", (folder / "p.hex").string()});
    EXPECT_EQ(r.code, 3);
    EXPECT_EQ(r.err, "This extension is not allowed for assembler source files.\n");

    r = runcli({"asm", (folder / "none.asm").string()});
    EXPECT_EQ(r.code, 3);
    EXPECT_NE(r.err.find("none.asm"), std::string::npos) << r.err;

    r = runcli({"asm", "--bogus", (folder / "p.asm").string()});
    EXPECT_EQ(r.code, 2);
}

TEST(CliAsm, AnAssembledProgramPrintsThroughRun) {
    TempFolder folder;
    writefile(folder / "hi.asm",
              "; Sends a text from program memory through USART0, then sleeps.\n"
              "        LDI R16,high(RAMEND)\n"
              "        OUT SPH,R16\n"
              "        LDI R16,low(RAMEND)\n"
              "        OUT SPL,R16\n"
              "        LDI R16,8           ; TXEN0\n"
              "        STS UCSR0B,R16\n"
              "        LDI R30,low(TEXT*2)\n"
              "        LDI R31,high(TEXT*2)\n"
              "NEXT:   LPM R17,Z+\n"
              "        TST R17\n"
              "        BREQ FLUSH\n"
              "WAIT:   LDS R16,UCSR0A\n"
              "        SBRS R16,5          ; UDRE0\n"
              "        RJMP WAIT\n"
              "        LDI R16,$40         ; clears TXC0\n"
              "        STS UCSR0A,R16\n"
              "        STS UDR0,R17\n"
              "        RJMP NEXT\n"
              "FLUSH:  LDS R16,UCSR0A\n"
              "        SBRS R16,6          ; TXC0\n"
              "        RJMP FLUSH\n"
              "        SLEEP\n"
              "TEXT:   .DB \"assembled here\",10,0\n");
    const ChildRun assembled = runcli({"asm", "--model", "ATmega328P", (folder / "hi.asm").string()});
    ASSERT_EQ(assembled.code, 0) << assembled.out << assembled.err;
    const ChildRun ran = runcli({"run", "--model", "ATmega328P", "--clock", "16", (folder / "hi.hex").string()});
    EXPECT_EQ(ran.code, 0) << ran.err;
    EXPECT_EQ(ran.out, "assembled here\n");
}

}  // namespace
}  // namespace velmora::test
