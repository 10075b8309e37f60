// BASIC programs through velmora-cli run: the line trace follows loops, Gosub and If branches
// as worked out from the programs (data/traces.txt); --watch prints variables; an interrupt
// routine on a model without SRAM keeps the interrupted code's registers. Adcin, Write and
// Read, and Lcdout are rows of data/runs.txt.
//
// BASIC programs, one per statement family, compiled and run by `velmora-cli run` on two
// models; what the USART prints must equal NAME.expected, worked out by hand from the
// language rules in NAME.reasoning.md. ATmega32 is in because its UBRRH and UCSRC share
// one address; ATmega328P has the newer UART. Interrupt programs name their model's vectors
// and registers, so they run on one. End is a jump to itself, which the run stops at with
// --infinite-loop-stop; the cycle limit only catches a program that hangs.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "inprocess.h"
#include "support/sectiontable.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

std::string writeprogram(const TempFolder& folder, const std::string& name, const std::string& text) {
    const std::string path = (folder / name).string();
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

// The LINE column of a trace file, blank-separated.
std::string tracedlines(const std::string& path) {
    std::ifstream file(path);
    std::string cycle, line, lines;
    while (file >> cycle >> line) lines += (lines.empty() ? "" : " ") + line;
    return lines;
}

TEST(CliTraceBasic, LinesFollowTheControlFlow) {
    for (const TableRow& row : tablerows("traces.txt", "Traces")) {
        TempFolder folder;
        const std::string program = writeprogram(folder, "prog.bas", row[1]);
        const std::string trace = (folder / "prog.trace").string();
        const CliResult run = runinprocess(
            {"run", "--model", "ATmega328P", "--infinite-loop-stop", "--trace-basic", trace, program});
        EXPECT_EQ(run.code, kExitInfiniteLoop) << row.where << "\n" << run.err;
        EXPECT_EQ(tracedlines(trace), row[2]) << row.where;
    }
}

// --watch names the program's variables (values from procedures.reasoning.md) and the
// model's registers; JSON puts them into the dump (an unknown name is a row of
// data/conventions.txt).
TEST(CliBasicRun, WatchPrintsVariablesAndRegisters) {
    const std::string program =
        (std::filesystem::path(VELMORA_TEST_DATA_DIR).parent_path().parent_path() / "basic/data/families/procedures.bas")
            .string();
    const std::vector<std::string> run = {"run", "--model", "ATmega32", "--infinite-loop-stop", "--watch", "total",
                                          "--watch", "arr(3)", "--watch", "N", "--watch", "ddrb", "--watch", "R15"};
    std::vector<std::string> text = run;
    text.push_back(program);
    const CliResult plain = runinprocess(text);
    EXPECT_EQ(plain.code, kExitInfiniteLoop) << plain.err;
    EXPECT_NE(plain.out.find("P12 1262\r\ntotal = 1262\narr(3) = 3\nN = 9\nddrb = 0\nR15 = 0\n"), std::string::npos)
        << plain.out;

    std::vector<std::string> json = run;
    json.insert(json.end(), {"--dump-format", "json", program});
    const CliResult dumped = runinprocess(json);
    EXPECT_NE(dumped.out.find(",\"watch\":{\"total\":1262,\"arr(3)\":3,\"N\":9,\"ddrb\":0,\"R15\":0}}"),
              std::string::npos)
        << dumped.out;
    EXPECT_EQ(dumped.out.find("total = "), std::string::npos);
}

// ATtiny12 has no SRAM and no stack to push on: the routine copies R16, SREG and what it
// uses into registers of their own and back. INT0 (PB1) on rising edges, 20 of them 100
// cycles apart, so that some land inside the main loop's Word addition, which keeps R16 to
// R18 busy as the routine's own addition does (a routine that left out R17, R18 or SREG
// gives another sum, tried). 1 + 2 + ... + 200 = 20100 = 0x4E84; seen = 1 + ... + 20 = 210.
TEST(CliBasicRun, InterruptRoutineWithoutSramRestoresWhatItUses) {
    TempFolder folder;
    const std::string program = writeprogram(
        folder, "int0.bas",
        "Dim edges As Byte\r\nDim seen As Word\r\nDim sum As Word\r\nDim i As Byte\r\nMCUCR = 3\r\n"
        "Enable INT0\r\nEnable\r\nFor i = 1 To 200\r\nsum = sum + i\r\nNext i\r\nDisable\r\n"
        "Write 0, edges\r\nWrite 1, seen.LB\r\nWrite 2, sum.LB\r\nWrite 3, sum.HB\r\nASM: SLEEP\r\n"
        "End\r\nOn Interrupt INT0\r\nedges = edges + 1\r\nseen = seen + edges\r\nResume\r\n");
    std::vector<std::string> args = {"run", "--model", "ATtiny12", "--dump"};
    for (int k = 0; k < 20; ++k)
        args.insert(args.end(), {"--pin", "PORTB.1=1@" + std::to_string(1000 + 100 * k), "--pin",
                                 "PORTB.1=0@" + std::to_string(1050 + 100 * k)});
    args.push_back(program);
    const CliResult run = runinprocess(args);
    EXPECT_EQ(run.code, kExitSleep) << run.err;
    EXPECT_NE(run.out.find("0000: 14 D2 84 4E FF"), std::string::npos) << run.out;
}

// The programs live with the BASIC compiler's data, beside this folder's.
const std::filesystem::path kFamilies =
    std::filesystem::path(VELMORA_TEST_DATA_DIR).parent_path().parent_path() / "basic" / "data" / "families";

const char* const kBoth[] = {"ATmega328P", "ATmega32"};

const struct {
    const char* program;
    const char* model;  // null: both
} kPrograms[] = {
    {"arithmetic", nullptr}, {"divzero", nullptr},    {"sqr", nullptr},        {"brackets", nullptr},
    {"shifts", nullptr},     {"logic", nullptr},      {"arrays", nullptr},     {"lookup", nullptr},
    {"loops", nullptr},      {"selectcase", nullptr}, {"ifgoto", nullptr},     {"hserout", nullptr},
    {"hserin", nullptr},     {"procedures", nullptr}, {"int0edges", "ATmega328P"}, {"rxecho", "ATmega32"},
};

struct Row {
    std::string program, model;
};

std::vector<Row> rows() {
    std::vector<Row> all;
    for (const auto& entry : kPrograms)
        for (const char* model : kBoth)
            if (!entry.model || std::string(entry.model) == model) all.push_back({entry.program, model});
    return all;
}

// NAME.args: more options for the run, one per line.
std::vector<std::string> extraoptions(const std::filesystem::path& file) {
    std::vector<std::string> options;
    if (!std::filesystem::exists(file)) return options;
    std::istringstream lines(readfile(file));
    for (std::string line; std::getline(lines, line);)
        if (!line.empty()) options.push_back(line);
    return options;
}

class BasicFamilies : public testing::TestWithParam<Row> {};

TEST_P(BasicFamilies, UsartPrintsTheHandWorkedResults) {
    const Row& row = GetParam();
    const std::filesystem::path source = kFamilies / (row.program + ".bas");
    std::vector<std::string> args = {"run", "--model", row.model, "--infinite-loop-stop", "--max-cycles", "20000000"};
    // A program that reads the USART gets its bytes from NAME.uartin.
    const std::filesystem::path input = kFamilies / (row.program + ".uartin");
    if (std::filesystem::exists(input)) args.insert(args.end(), {"--uart-in-file", input.string()});
    for (const std::string& option : extraoptions(kFamilies / (row.program + ".args"))) args.push_back(option);
    args.push_back(source.string());

    const CliResult run = runinprocess(args);
    const std::string name = row.program + " on " + row.model;
    EXPECT_EQ(run.code, kExitInfiniteLoop) << name << " did not end at End:\n" << run.err;
    EXPECT_EQ(run.out, readfile(kFamilies / (row.program + ".expected"))) << name;
}

INSTANTIATE_TEST_SUITE_P(Programs, BasicFamilies, testing::ValuesIn(rows()),
                         [](const testing::TestParamInfo<Row>& info) {
                             return info.param.program + "_" + info.param.model;
                         });

// Every program in the folder has its rows, its expected output and its reasoning.
TEST(BasicFamiliesFolder, EveryProgramIsInTheTable) {
    std::set<std::string> listed;
    for (const auto& entry : kPrograms) listed.insert(entry.program);
    int found = 0;
    for (const auto& entry : std::filesystem::directory_iterator(kFamilies)) {
        if (entry.path().extension() != ".bas") continue;
        const std::string program = entry.path().stem().string();
        ++found;
        EXPECT_TRUE(listed.contains(program)) << program << ".bas has no row";
        EXPECT_TRUE(std::filesystem::exists(kFamilies / (program + ".expected"))) << program;
        EXPECT_TRUE(std::filesystem::exists(kFamilies / (program + ".reasoning.md"))) << program;
    }
    EXPECT_EQ(found, static_cast<int>(std::size(kPrograms)));
}

}  // namespace
}  // namespace velmora::test
