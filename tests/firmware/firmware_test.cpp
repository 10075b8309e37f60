// End to end: C programs built with avr-gcc and avr-libc (build.sh) run on
// velmora-cli, which must print exactly what each program sends over the USART and
// end on its closing SLEEP. The programs sleep right after their last write to UDR,
// so their last bytes are printed only because the run lets the transmitter finish.
//
// Expected output comes from outside the simulator: for computation, from the same
// sources compiled for the host (make-expected.sh, files in expected/); for programs
// that react to pins, analog inputs or received bytes, from the inputs given here,
// with the reasoning beside each row.

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "support/childprocess.h"

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

}  // namespace
}  // namespace velmora::firmware
