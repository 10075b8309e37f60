// avr-gdb against velmora-cli run --gdb on the avr-gdb test program (tests/firmware/elf,
// built with -g -Og): every value gdb prints is worked out from the C source and the ABI, in
// the order gdb must print them. Skipped only where avr-gdb is not installed.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "support/childprocess.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

TEST(GdbRun, AvrGdbDebugsTheProgramThroughTheStub) {
    if (!std::filesystem::exists("/usr/bin/avr-gdb")) GTEST_SKIP() << "avr-gdb is not installed (Debian: gdb-avr)";
    TempFolder folder;
    const std::string data = VELMORA_TEST_DATA_DIR;
    const ChildRun run = runchild("/bin/bash",
                                  {data + "/gdbsession.sh", VELMORA_CLI_PATH,
                                   data + "/../../firmware/elf/debugged.elf", folder.path().string()},
                                  60);
    ASSERT_EQ(run.code, 0) << run.out << run.err;
    const char* const expected[] = {
        "Breakpoint 1, main () at debugged.c:29",
        "30\t    for (uint8_t i = 0; i < sizeof table; i++) {",  // next
        "31\t        const uint16_t term = square(table[i]);",    // next
        "$1 = 131",                                  // total's start value 0x83
        "$2 = 0x8fd",                                // SP: RAMEND $8FF less main's return address
        "Breakpoint 2, square (value=1 '\\001') at debugged.c:26",
        "$3 = 1 '\\001'",                            // the argument: table[0]
        "$4 = (void (*)()) 0xb4 <square>",           // avr-readelf: square at 0xb4
        "r24            0x1                 1",      // the argument's register
        "Old value = 0 '\\000'",                     // the watched write: count = i + 1, i = 0
        "New value = 1 '\\001'",
        "$5 = 1 '\\001'",
        "[Inferior 1 (Remote target) exited normally]",  // SLEEP after the output
    };
    size_t at = 0;
    for (const char* line : expected) {
        const size_t found = run.out.find(line, at);
        EXPECT_NE(found, std::string::npos) << "missing, or out of order: " << line << "\n" << run.out;
        if (found != std::string::npos) at = found + 1;
    }
    std::ifstream out(folder / "velmora.out");
    std::stringstream printed;
    printed << out.rdbuf();
    EXPECT_EQ(printed.str().substr(0, 18), "sum 0204 count 0A\n") << "the program's own output, as without gdb";
}

// A client that sends noise, a damaged packet and good ones, and goes away while the program
// stands at its breakpoint: each reply as the protocol wants it, and then the program runs
// on to its own end without the breakpoint, printing what it prints without a client.
TEST(GdbRun, AClientThatGoesAwayLeavesTheProgramRunningToItsEnd) {
    TempFolder folder;
    const std::string data = VELMORA_TEST_DATA_DIR;
    const ChildRun run = runchild("/bin/bash",
                                  {data + "/gdbsession.sh", VELMORA_CLI_PATH, data + "/../../firmware/elf/debugged.elf",
                                   folder.path().string(), "noise$g#00$m0,2#fb$Z0,bc,2#d9$c#63"},
                                  60);
    EXPECT_EQ(run.code, 0) << run.err;
    // A nak for the bad checksum; then acks, the first program bytes (JMP), OK, and SIGTRAP.
    EXPECT_EQ(run.out, "-+$0c94#00+$OK#9a+$S05#b8");
    std::ifstream out(folder / "velmora.out");
    std::stringstream printed;
    printed << out.rdbuf();
    EXPECT_EQ(printed.str(), "sum 0204 count 0A\n");
}

}  // namespace
}  // namespace velmora::test
