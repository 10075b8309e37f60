// Pin traces of `run --vcd`: a firmware that toggles PORTB after delays counted by hand
// (data/toggle-atmega8.asm, assembled by avra) must show its edges at exactly those cycles.
// The file is read back with a small reader of the format.

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/vcdtrace.h"
#include "inprocess.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

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
