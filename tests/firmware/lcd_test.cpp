// A C program built with avr-gcc (src/lcd.c; src/lcdpoll.c is the same with busy-flag
// polling over R/W on PB1) drives a 2x16 character LCD in 4-bit mode on PORTB, and
// `velmora-cli run --lcd` must print what the source writes. The expected rows and the
// bytes of the log are worked out by hand from the source, not taken from a run.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "support/childprocess.h"
#include "support/tempfolder.h"

namespace velmora::firmware {
namespace {

const std::filesystem::path kHex = std::filesystem::path(VELMORA_TEST_DATA_DIR).parent_path() / "hex";

// Line 2 at DDRAM 0x42 first, then line 1 from 0x00 ending in user character 0, the bell
// of the source's `bell` rows (0x04 0x0E 0x0E 0x0E 0x1F 0x00 0x04 0x00, bit 4 leftmost).
const std::string kDisplay =
    "lcd:\n"
    "|Velmora LCD ?   |\n"
    "|  sum 1..10 = 55|\n"
    "row 1 column 13: user character 0 ..#.. .###. .###. .###. ##### ..... ..#.. .....\n";
const std::string kError = "ERROR: New command or data received while LCD was busy.\n";

struct Chip {
    const char* model;
    const char* file;  // as build.sh names the HEX files
    const char* mhz;   // F_CPU in targets.sh
};
const Chip kChips[] = {
    {"ATmega328P", "atmega328p", "16"}, {"ATmega32", "atmega32", "8"}, {"ATtiny2313", "attiny2313", "8"}};

test::ChildRun runlcd(const Chip& chip, const std::string& program, const std::string& setup,
                      const std::vector<std::string>& more = {}) {
    const std::filesystem::path hex = kHex / (program + "-" + chip.file + ".hex");
    EXPECT_TRUE(std::filesystem::exists(hex)) << hex << " is missing; tests/firmware/build.sh makes it";
    std::vector<std::string> args = {"run", "--model", chip.model, "--clock", chip.mhz, "--max-cycles", "5000000",
                                     "--lcd", setup};
    args.insert(args.end(), more.begin(), more.end());
    args.push_back(hex.string());
    return test::runcli(args, 120);
}

TEST(LcdFromC, PrintsWhatTheProgramWrites) {
    const struct {
        const char* program;
        const char* setup;
        bool shown;  // the text as written; otherwise bytes were lost
        bool error;
        const char* why;
    } rows[] = {
        {"lcd", "2x16", true, false, "fixed delays of 50 us and 2 ms against busy times of 42/46 us"},
        {"lcd", "2x16,d=PORTB.4,rs=PORTB.3,e=PORTB.2,init=1640,cmd=42,data=46", true, false, "the defaults spelt out"},
        {"lcd", "2x16,cmd=100,data=200", false, true, "50 us is shorter than these busy times"},
        {"lcdpoll", "2x16,rw=PORTB.1", true, false, "waits for the busy flag"},
        {"lcdpoll", "2x16,rw=PORTB.1,cmd=100,data=200", true, false, "polling follows longer busy times"},
        {"lcdpoll", "2x16", false, true, "R/W not wired: the flag reads 0, bytes come too soon"},
    };
    for (const Chip& chip : kChips)
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(row.program) + " on " + chip.model + " with " + row.setup + ": " + row.why);
            const test::ChildRun run = runlcd(chip, row.program, row.setup);
            ASSERT_FALSE(run.timedout);
            EXPECT_EQ(run.code, 0) << "the run should end on SLEEP; stderr:\n" << run.err;
            // The USART's line, then the display.
            EXPECT_EQ(run.out.rfind("lcd done\nlcd:\n", 0), 0u) << run.out;
            if (row.shown) {
                EXPECT_EQ(run.out, "lcd done\n" + kDisplay + (row.error ? kError : ""));
            }
            EXPECT_EQ(run.out.find(kError) != std::string::npos, row.error) << run.out;
        }
}

// Every byte the module took, in order: the start-up, the bell's rows, the two lines.
TEST(LcdFromC, LogHoldsEveryByteInOrder) {
    std::vector<std::string> expected = {"command 30", "command 30", "command 30", "command 20", "command 28",
                                         "command 0C", "command 01", "command 06", "command 40"};
    for (const char* row : {"04", "0E", "0E", "0E", "1F", "00", "04", "00"})
        expected.push_back(std::string("data ") + row);
    const auto text = [&expected](const std::string& chars) {
        for (unsigned char c : chars) {
            char hex[8];
            std::snprintf(hex, sizeof hex, "%02X", c);
            expected.push_back(std::string("data ") + hex);
        }
    };
    expected.push_back("command C2");
    text("sum 1..10 = 55");
    expected.push_back("command 80");
    text("Velmora LCD ");
    expected.push_back("data 00");

    for (const Chip& chip : kChips)
        for (const char* program : {"lcd", "lcdpoll"}) {
            SCOPED_TRACE(std::string(program) + " on " + chip.model);
            test::TempFolder folder;
            const std::string log = (folder / "devices.log").string();
            const test::ChildRun run = runlcd(chip, program, "2x16,rw=PORTB.1", {"--device-log", log});
            EXPECT_EQ(run.code, 0) << run.err;
            std::ifstream file(log);
            std::string line;
            std::vector<std::string> bytes;
            uint64_t first = 0, previous = 0;
            while (std::getline(file, line)) {
                std::istringstream fields(line);
                uint64_t cycle = 0;
                std::string device, what;
                fields >> cycle;
                fields.ignore(1);
                std::getline(fields, device, '\t');
                std::getline(fields, what);
                EXPECT_EQ(device, "lcd") << line;
                EXPECT_GE(cycle, previous) << line;
                if (bytes.empty()) first = cycle;
                previous = cycle;
                bytes.push_back(what);
            }
            EXPECT_EQ(bytes, expected);
            // The first byte follows the program's 20 ms wait at power-up.
            EXPECT_GE(first, 20u * 1000u * std::stoul(chip.mhz));
            EXPECT_LT(first, 21u * 1000u * std::stoul(chip.mhz));
        }
}

}  // namespace
}  // namespace velmora::firmware
