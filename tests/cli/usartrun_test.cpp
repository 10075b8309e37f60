// velmora-cli run as its own process with programs assembled by avra (data/make.sh):
// USART output on stdout byte for byte, receiver input paced by the byte time, pins
// applied at their cycle, and the dump after the output.

#include <gtest/gtest.h>

#include <string>

#include "cli/commands.h"
#include "inprocess.h"
#include "support/childprocess.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

const std::string kData = VELMORA_TEST_DATA_DIR;
const std::string kEcho = kData + "/echo-atmega8.hex";
const std::string kPins = kData + "/pins-atmega8.hex";

TEST(UsartRun, EchoGivesBackEveryByteUnchanged) {
    const ChildRun run = runcli({"run", "--model", "ATmega8", kEcho, "--uart-in", "Hello\\r\\n\\0\\xff\\x04"});
    EXPECT_EQ(run.code, kExitSleep) << run.err;
    EXPECT_EQ(run.out, std::string("Hello\r\n\0\xff", 9));
    // Nine bytes and the EOT, each received in 4001 cycles (1000 us at 4 MHz, then the next
    // byte follows at once), and the last echo still to send: at least 10 * 4001.
    EXPECT_GE(summarycycles(run.err), 10u * 4001u);
    EXPECT_LT(summarycycles(run.err), 10u * 4001u + 4000u);
}

TEST(UsartRun, ReceivedBytesArePacedByTheByteTime) {
    // 'H' arrives near cycle 4000 and its echo is written to UDR at once; 'e' follows 4000
    // later. At the limit the transmitter finishes the echo it is sending.
    struct {
        const char* maxcycles;
        const char* out;
    } cases[] = {{"3900", ""}, {"10000", "He"}, {"13000", "Hel"}, {"17000", "Hell"}};
    for (const auto& c : cases) {
        const ChildRun run = runcli({"run", "--model", "ATmega8", "--max-cycles", c.maxcycles, "--uart-in",
                                     "Hello\\x04", kEcho});
        EXPECT_EQ(run.code, kExitLimit);
        EXPECT_EQ(run.out, c.out) << c.maxcycles;
    }
}

TEST(UsartRun, ByteTimeOptionScalesTheRun) {
    // 14 bytes at 100 us each and 16 MHz: 1600 cycles a byte, plus a few dozen for the code.
    const ChildRun run = runcli({"run", "--model", "ATmega328P", "--clock", "16", "--uart-time", "100",
                                 kData + "/hello-atmega328p.hex"});
    EXPECT_EQ(run.code, kExitSleep) << run.err;
    EXPECT_EQ(run.out, "328P says hi\r\n");
    EXPECT_GE(summarycycles(run.err), 14u * 1600u);
    EXPECT_LT(summarycycles(run.err), 14u * 1600u + 200u);
}

TEST(UsartRun, ClassicUartOfTheOldChips) {
    const ChildRun run = runcli({"run", "--model", "AT90S2313", kData + "/hello-at90s2313.hex"});
    EXPECT_EQ(run.code, kExitSleep) << run.err;
    EXPECT_EQ(run.out, "OK\n");
}

TEST(UsartRun, UartSourcesQueueInCommandLineOrder) {
    TempFolder folder;
    writefile(folder / "middle.bin", std::string("b\0c", 3));
    writefile(folder / "empty.bin", "");
    const ChildRun run = runcli({"run", "--model", "ATmega8", "--uart-in", "a", "--uart-in-file",
                                 (folder / "middle.bin").string(), "--uart-in-file", (folder / "empty.bin").string(),
                                 "--uart-in", "d\\x04", kEcho});
    EXPECT_EQ(run.code, kExitSleep) << run.err;
    EXPECT_EQ(run.out, std::string("ab\0cd", 5));
}

TEST(UsartRun, PinsChangeAtTheirCycle) {
    // PB0 rises at 20000: "H" is written a few cycles later; a run stopped after that prints it.
    struct {
        std::vector<std::string> options;
        int code;
        const char* out;
    } cases[] = {
        {{"--pin", "PORTB.0=1@20000", "--pin", "portb.0=0@40000"}, kExitSleep, "HL"},
        {{"--pin", "PORTB.0=1@20000", "--max-cycles", "19990"}, kExitLimit, ""},
        {{"--pin", "PORTB.0=1@20000", "--max-cycles", "24100"}, kExitLimit, "H"},
        {{"--pin", "PORTB.0=1@20000", "--max-cycles", "100000"}, kExitLimit, "H"},
        {{"--pin", "PORTB.1=1", "--max-cycles", "50000"}, kExitLimit, ""},
        // Set and cleared again in the same step: the program never sees it high.
        {{"--pin", "PORTB.0=1@500", "--pin", "PORTB.0=0@500", "--max-cycles", "50000"}, kExitLimit, ""},
        {{"--pin", "PORTB.0=1", "--pin", "PORTB.0=0@10000"}, kExitSleep, "HL"},
    };
    for (const auto& c : cases) {
        std::vector<std::string> args = {"run", "--model", "ATmega8", kPins};
        args.insert(args.end(), c.options.begin(), c.options.end());
        const ChildRun run = runcli(args);
        EXPECT_EQ(run.code, c.code) << c.options[1];
        EXPECT_EQ(run.out, c.out) << c.options[1];
    }
    const ChildRun late = runcli({"run", "--model", "ATmega8", kPins, "--pin", "PORTB.0=1@20000", "--pin",
                                  "PORTB.0=0@40000"});
    EXPECT_GE(summarycycles(late.err), 44000u);
    EXPECT_LT(summarycycles(late.err), 44100u);
}

TEST(UsartRun, DumpFollowsTheOutputOnALineOfItsOwn) {
    const ChildRun run = runcli({"run", "--model", "ATmega8", "--dump", "--uart-in", "Hi\\x04", kEcho});
    EXPECT_EQ(run.code, kExitSleep);
    EXPECT_EQ(run.out.rfind("Hi\nR0  = $00", 0), 0u) << run.out;
    for (const char* line : {"\nSREG = $", "\nPC = $", "   UBRRL = $19\n", "   UCSRB = $18\n", "   UCSRA = $60\n",
                             "   UCSRC = $86\n", "\nEEPROM:\n"})
        EXPECT_NE(run.out.find(line), std::string::npos) << line;
}

}  // namespace
}  // namespace velmora::test
