// End to end: C programs built with avr-gcc and avr-libc (build.sh) run on
// velmora-cli, which must print exactly what each program sends over the USART and
// end on its closing SLEEP. The programs sleep right after their last write to UDR,
// so their last bytes are printed only because the run lets the transmitter finish.
//
// Expected output comes from outside the simulator: for computation, from the same
// sources compiled for the host (make-expected.sh, files in expected/); for programs
// that react to pins, analog inputs or received bytes, from the inputs given here,
// with the reasoning beside each row.
//
// A C program built with avr-gcc (src/lcd.c; src/lcdpoll.c is the same with busy-flag
// polling over R/W on PB1) drives a 2x16 character LCD in 4-bit mode on PORTB, and
// `velmora-cli run --lcd` must print what the source writes. The expected rows and the
// bytes of the log are worked out by hand from the source, not taken from a run.

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "support/childprocess.h"
#include "support/tempfolder.h"

namespace velmora::firmware {
namespace {

const std::filesystem::path kFolder = std::filesystem::path(VELMORA_TEST_DATA_DIR).parent_path();

struct Row {
    std::string program;
    std::string model;                // as `velmora-cli models` names it
    std::vector<std::string> inputs;  // --uart-in, --pin, --analog options
    std::string expected;             // empty: expected/<program>-<chip>.txt
    uint64_t maxcycles = 50'000'000;  // only a guard against a hung program
};

void PrintTo(const Row& row, std::ostream* os) { *os << row.program << " on " << row.model; }

std::string chipname(const std::string& model) {
    std::string chip;
    for (char c : model) chip += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return chip;
}

// The clock each HEX was built for (F_CPU in targets.sh).
int megahertz(const std::string& model) { return chipname(model) == "atmega328p" ? 16 : 8; }

std::string readfile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// Cycle count of a moment in the run, in milliseconds of simulated time.
std::string at(const std::string& model, double ms) {
    return "@" + std::to_string(static_cast<uint64_t>(ms * 1000 * megahertz(model)));
}

const char* const kFullChips[] = {"ATmega32", "ATmega328P", "ATtiny2313"};
const char* const kMegas[] = {"ATmega32", "ATmega328P"};

std::vector<Row> rows() {
    std::vector<Row> table;

    // Pure computation; the tiny has no room for printf and the float library.
    for (const char* model : kFullChips)
        for (const char* program : {"crc", "arith", "sort", "recurse", "eeprom"}) table.push_back({program, model, {}, {}});
    for (const char* model : kMegas) {
        table.push_back({"printf", model, {}, {}, 150'000'000});
        table.push_back({"float", model, {}, {}, 150'000'000});
    }

    // ADC. Channel 0 is held at 700 ($2BC), channel 1 at 100 until 5 ms and then at
    // 900, channel 2 at 1023; channel 3 is not driven, so its low pin reads 0; the pin
    // of channel 4 is a digital input held high, which the ADC sees as the top value.
    // The first five conversions finish long before 5 ms; the later one of channel 1
    // follows a 10 ms wait. Left-adjusted, 1023 is ADCH 255 and ADCL 3 << 6 = 192.
    // The lock: ADCL of channel 0 reads $BC = 188; the conversion of channel 2 that
    // completes before ADCH is read is dropped, so ADCH still gives channel 0's 2;
    // the next conversion of channel 2 is kept again.
    for (const char* model : kMegas) {
        const std::string pin4 = chipname(model) == "atmega32" ? "PORTA.4=1@0" : "PORTC.4=1@0";
        table.push_back({"adc", model,
                         {"--analog", "0=700@0", "--analog", "1=100@0", "--analog", "1=900" + at(model, 5),
                          "--analog", "2=1023@0", "--pin", pin4},
                         "ch0=700\nch1=100\nch2=1023\nch3=0\nch4=1023\nlater ch1=900\nleft ch2 255 192\n"
                         "adif ch0=700\nlocked 2 188\nafter ch2=1023\n"});
    }

    // INT0 counts rising edges of PD2, INT1 falling edges of PD3, for 10 ms from
    // start-up. PD2 rises at 1, 3 and 5 ms (3 edges) and falls between them; its rise
    // at 12 ms comes after interrupts are disabled again. PD3 falls at 2.5 and 4.5 ms
    // (2 edges); its rises do not count.
    for (const char* model : kFullChips) {
        std::vector<std::string> pins;
        for (auto [pin, ms] : std::initializer_list<std::pair<const char*, double>>{
                 {"PORTD.2=1", 1}, {"PORTD.2=0", 2}, {"PORTD.2=1", 3}, {"PORTD.2=0", 4}, {"PORTD.2=1", 5},
                 {"PORTD.2=0", 6}, {"PORTD.2=1", 12}, {"PORTD.3=1", 1.5}, {"PORTD.3=0", 2.5},
                 {"PORTD.3=1", 3.5}, {"PORTD.3=0", 4.5}, {"PORTD.3=1", 7}}) {
            pins.push_back("--pin");
            pins.push_back(pin + at(model, ms));
        }
        table.push_back({"int0", model, pins, "rising 3 falling 2\n"});
    }

    // Receive interrupt: the 19 bytes up to and including the first '.' come back in
    // upper case, then a line break and their count; the bytes after it are not echoed.
    for (const char* model : kFullChips)
        table.push_back({"echo", model, {"--uart-in", "hello, Velmora 123. ignored"}, "HELLO, VELMORA 123.\n19\n"});

    // Polling receive: each number is printed as it ends; 12 + 345 - 67 + 8 - 1000 = -702.
    for (const char* model : kFullChips)
        table.push_back({"sum", model, {"--uart-in", "12 345 -67 8 -1000="}, "12 345 -67 8 -1000 sum -702\n"});

    // avr-libc's start-up code and the chip's own USART register names, on every
    // ATmega model with a USART.
    for (const char* model : {"ATmega8", "ATmega16", "ATmega32", "ATmega48", "ATmega88", "ATmega168", "ATmega328P",
                              "ATmega64", "ATmega128", "ATmega162", "ATmega8515"})
        table.push_back({"hello", model, {}, "hello from " + chipname(model) + "\n"});
    return table;
}

class Firmware : public testing::TestWithParam<Row> {};

TEST_P(Firmware, PrintsWhatTheProgramSends) {
    const Row& row = GetParam();
    const std::string chip = chipname(row.model);
    const std::filesystem::path hex = kFolder / "hex" / (row.program + "-" + chip + ".hex");
    ASSERT_TRUE(std::filesystem::exists(hex)) << hex << " is missing; tests/firmware/build.sh makes it";
    std::string expected = row.expected;
    if (expected.empty()) {
        const std::filesystem::path file = kFolder / "expected" / (row.program + "-" + chip + ".txt");
        expected = readfile(file);
        ASSERT_FALSE(expected.empty()) << file << " is missing; tests/firmware/make-expected.sh makes it";
    }
    ASSERT_TRUE(std::filesystem::exists(VELMORA_CLI_PATH)) << VELMORA_CLI_PATH << " is not built";

    std::vector<std::string> args = {"run", "--model", row.model, "--clock", std::to_string(megahertz(row.model)),
                                     "--max-cycles", std::to_string(row.maxcycles)};
    args.insert(args.end(), row.inputs.begin(), row.inputs.end());
    args.push_back(hex.string());
    const test::ChildRun run = test::runcli(args, 300);

    ASSERT_FALSE(run.timedout) << "velmora-cli did not finish; stderr:\n" << run.err;
    EXPECT_EQ(run.out, expected) << "stderr:\n" << run.err;
    EXPECT_EQ(run.code, 0) << "the run should end on SLEEP; stderr:\n" << run.err;
}

std::string rowname(const testing::TestParamInfo<Row>& info) {
    return info.param.program + "_" + info.param.model;
}

INSTANTIATE_TEST_SUITE_P(Programs, Firmware, testing::ValuesIn(rows()), rowname);

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
