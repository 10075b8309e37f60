// velmora-cli run as its own process with programs assembled by avra (data/make.sh): USART
// output on stdout byte for byte and the cycles it takes; the limits, pins and the dump are
// rows of data/usartrun.txt. With a character LCD wired by --lcd: the option's errors, where
// the display is printed among the other output, and the change log of --device-log (what a
// real program shows on it is tested with avr-gcc firmware in tests/firmware/firmware_test.cpp).
//
// The last bytes a program writes to UDR before it stops. velmora-cli lets the transmitter
// finish them (a real chip in idle sleep sends them); the desktop program leaves them in
// the transmitter, as it always did.
//
// Pin traces of `run --vcd`: a firmware that toggles PORTB after delays counted by hand
// (data/toggle-atmega8.asm, assembled by avra) must show its edges at exactly those cycles.
// The file is read back with a small reader of the format.

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/programinput.h"
#include "cli/runoptions.h"
#include "cli/session.h"
#include "cli/vcdtrace.h"
#include "clirows.h"
#include "core/memorysettings.h"
#include "core/usart.h"
#include "inprocess.h"
#include "shell/simulation.h"
#include "support/childprocess.h"
#include "support/modelchoice.h"
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

TEST(UsartRun, LimitsPinsAndTheDump) { runcommandrows("usartrun.txt"); }

TEST(UsartRun, ByteTimeOptionScalesTheRun) {
    // 14 bytes at 100 us each and 16 MHz: 1600 cycles a byte, plus a few dozen for the code.
    const ChildRun run = runcli({"run", "--model", "ATmega328P", "--clock", "16", "--uart-time", "100",
                                 kData + "/hello-atmega328p.hex"});
    EXPECT_EQ(run.code, kExitSleep) << run.err;
    EXPECT_EQ(run.out, "328P says hi\r\n");
    EXPECT_GE(summarycycles(run.err), 14u * 1600u);
    EXPECT_LT(summarycycles(run.err), 14u * 1600u + 200u);
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

// PB0 rises at 20000 and falls at 40000: "L" goes out a few cycles after the fall.
TEST(UsartRun, PinsChangeAtTheirCycle) {
    const ChildRun late = runcli({"run", "--model", "ATmega8", kPins, "--pin", "PORTB.0=1@20000", "--pin",
                                  "PORTB.0=0@40000"});
    EXPECT_EQ(late.out, "HL");
    EXPECT_GE(summarycycles(late.err), 44000u);
    EXPECT_LT(summarycycles(late.err), 44100u);
}

const std::string kBlank = "lcd:\n|                |\n|                |\n";

// Bad options, and where the display stands among the other output: rows of data/lcdrun.txt.
TEST(LcdRun, OptionErrorsAndWhereTheDisplayIsPrinted) {
    runcommandrows("lcdrun.txt");
    // The dump comes last, so that its JSON stays the last line.
    TempFolder folder;
    writefile(folder / "ok.words", "9588\n");
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

// "O" goes out at once, "K" waits in the buffer until "O" is out, the line break waits until
// "K" shifts; then the program ends with `ending`. At 4 MHz a byte takes 4000 cycles, so at
// the end "K" is still shifting and the line break is in the buffer.
std::string program(const std::string& ending) {
    return " LDI R16,8\n OUT UCSRB,R16\n"
           " LDI R16,79\n OUT UDR,R16\n"
           "W1: SBIS UCSRA,5\n RJMP W1\n LDI R16,75\n OUT UDR,R16\n"
           "W2: SBIS UCSRA,5\n RJMP W2\n LDI R16,10\n OUT UDR,R16\n"
           " CLI\n"
           "END: " + ending + "\n";  // word address $D
}

TEST(Drain, TheLastBytesWrittenToUdrArePrintedHoweverTheRunEnds) {
    const struct {
        const char* ending;
        std::vector<std::string> options;
        int code;
    } rows[] = {
        {"SLEEP", {}, kExitSleep},  // UDR = '\n'; cli; sleep
        {"BREAK", {}, kExitStepByStep},
        {"RJMP END", {"--max-cycles", "9000"}, kExitLimit},
        {"RJMP END", {"--break", "D"}, kExitBreakpoint},
    };
    TempFolder folder;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.ending + (row.options.empty() ? "" : " " + row.options[0]));
        writefile(folder / "last.asm", program(row.ending));
        std::vector<std::string> args = {"run", "--model", "ATmega8"};
        args.insert(args.end(), row.options.begin(), row.options.end());
        args.push_back((folder / "last.asm").string());
        const CliResult r = runinprocess(args);
        EXPECT_EQ(r.code, row.code) << r.err;
        EXPECT_EQ(r.out, "OK\n");
        // The bytes come before the summary, and their time is not in it: the line break was
        // written a few cycles after "O" went out, long before the 12000 cycles of three bytes.
        EXPECT_LT(summarycycles(r.err), 9100u) << r.err;
    }
}

TEST(Drain, TheDesktopProgramLeavesThemInTheTransmitter) {
    TempFolder folder;
    writefile(folder / "last.asm", program("SLEEP"));
    StreamMessenger messenger(std::cerr);
    SteadyClock clock;
    MemorySettings settings;
    Simulation sim(messenger, clock, settings, VELMORA_SOURCE_DATA_DIR);
    ASSERT_TRUE(sim.buildmodellist()) << sim.error();
    ASSERT_TRUE(selectmodelnamed(sim, "ATmega8")) << sim.error();
    Machine& m = sim.machine();
    ASSERT_TRUE(loadprogramfile(m, (folder / "last.asm").string(), messenger, std::cerr));

    sim.run().menuspeed(kRateUltimate);
    sim.run().menustart();
    uint8_t sent[8];
    const size_t n = usarttakeoutput(m, sent, sizeof sent);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(sent), n), "O");
    EXPECT_EQ(m.usart.txshift, 'K');
    EXPECT_EQ(m.usart.txbuffer, '\n');
    EXPECT_EQ(m.stopreason, Machine::StopReason::Sleep);

    // The same cycle count as velmora-cli's run of the same program: the drain took no time.
    const CliResult r = runinprocess({"run", "--model", "ATmega8", (folder / "last.asm").string()});
    EXPECT_EQ(summarycycles(r.err), m.totalcycles);
}

const std::string kToggle = std::string(VELMORA_TEST_DATA_DIR) + "/toggle-atmega8.hex";

struct Edge {
    std::string pin;
    int level;
    uint64_t time;  // in the file's units
    bool operator==(const Edge&) const = default;
};

void PrintTo(const Edge& e, std::ostream* os) { *os << e.pin << "=" << e.level << "@" << e.time; }

struct Vcd {
    std::string timescale;
    std::vector<std::string> pins;  // in declaration order
    std::vector<Edge> initial, edges;
    uint64_t end = 0;  // the last time stamp
};

// Reads what the writer writes: the declarations, the $dumpvars block and the changes of
// one-bit wires.
Vcd readvcd(const std::string& text) {
    Vcd vcd;
    std::map<std::string, std::string> names;  // identifier -> pin
    std::istringstream in(text);
    std::string token;
    bool dumpvars = false;
    while (in >> token) {
        if (token == "$timescale") {
            std::string number, unit;
            in >> number >> unit;
            vcd.timescale = number + " " + unit;
        } else if (token == "$var") {
            std::string type, size, id, name;
            in >> type >> size >> id >> name;
            names[id] = name;
            vcd.pins.push_back(name);
        } else if (token == "$version" || token == "$comment") {
            while (in >> token && token != "$end") {
            }
        } else if (token == "$dumpvars") {
            dumpvars = true;
        } else if (token == "$end") {
            dumpvars = false;
        } else if (token[0] == '#') {
            vcd.end = std::stoull(token.substr(1));
        } else if (token[0] == '0' || token[0] == '1') {
            const Edge edge{names[token.substr(1)], token[0] - '0', vcd.end};
            (dumpvars ? vcd.initial : vcd.edges).push_back(edge);
        }
    }
    return vcd;
}

Vcd traced(const std::vector<std::string>& options) {
    TempFolder folder;
    std::vector<std::string> args = {"run", "--model", "ATmega8", "--vcd", (folder / "t.vcd").string()};
    args.insert(args.end(), options.begin(), options.end());
    args.push_back(kToggle);
    const CliResult r = runinprocess(args);
    EXPECT_EQ(r.code, kExitSleep) << r.err;
    return readvcd(readfile(folder / "t.vcd"));
}

TEST(Vcd, EdgesComeAtTheCyclesCountedByHand) {
    // At 8 MHz a cycle is 125 ns; the cycles are those in the source's comments.
    const Vcd vcd = traced({"--clock", "8", "--vcd-pins", "portb.1,PORTB.0"});
    EXPECT_EQ(vcd.timescale, "1 ns");
    EXPECT_EQ(vcd.pins, (std::vector<std::string>{"PB0", "PB1"}));
    EXPECT_EQ(vcd.initial, (std::vector<Edge>{{"PB0", 0, 0}, {"PB1", 0, 0}}));
    EXPECT_EQ(vcd.edges, (std::vector<Edge>{
                             {"PB0", 1, 5 * 125}, {"PB1", 1, 37 * 125}, {"PB0", 0, 39 * 125}, {"PB1", 0, 4042 * 125}}));
    EXPECT_EQ(vcd.end, 4043u * 125);
}

TEST(Vcd, EveryPinOfEveryPortByDefaultAndInputsToo) {
    // PD2 driven from outside shows where the input acts: at the end of the first instruction
    // that ends at or after cycle 100, the SBIW of the second loop that ends at 101. The other
    // pins stay low.
    const Vcd vcd = traced({"--pin", "PORTD.2=1@100"});
    EXPECT_EQ(vcd.timescale, "10 ns");  // 4 MHz: 25 units a cycle
    ASSERT_EQ(vcd.pins.size(), 24u);     // ports B, C and D
    EXPECT_EQ(vcd.pins.front(), "PB0");
    EXPECT_EQ(vcd.pins.back(), "PD7");
    EXPECT_EQ(vcd.initial.size(), 24u);
    EXPECT_EQ(vcd.edges, (std::vector<Edge>{{"PB0", 1, 5 * 25},
                                            {"PB1", 1, 37 * 25},
                                            {"PB0", 0, 39 * 25},
                                            {"PD2", 1, 101 * 25},
                                            {"PB1", 0, 4042 * 25}}));
}

TEST(Vcd, TheTimeUnitKeepsEveryCycleExact) {
    const struct {
        float mhz;
        const char* unit;
        uint64_t onecycle, thousandcycles;
    } rows[] = {
        {1, "1 us", 1, 1000},
        {4, "10 ns", 25, 25000},
        {8, "1 ns", 125, 125000},
        {16, "100 ps", 625, 625000},
        {20, "10 ns", 5, 5000},
        {0.032768f, "1 fs", 30517578125, 30517578125000},
        // 271.2673... ns has no exact unit: 100 ps, rounded to the nearest.
        {3.6864f, "100 ps", 2713, 2712674},
    };
    for (const auto& row : rows) {
        const VcdTimescale scale = vcdtimescale(row.mhz);
        EXPECT_EQ(scale.unit(), row.unit) << row.mhz;
        EXPECT_EQ(scale.time(1), row.onecycle) << row.mhz;
        EXPECT_EQ(scale.time(1000), row.thousandcycles) << row.mhz;
    }
}

}  // namespace
}  // namespace velmora::test
