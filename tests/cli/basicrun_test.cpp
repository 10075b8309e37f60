// BASIC programs through velmora-cli run: the line trace follows loops, Gosub and If branches
// as worked out from the programs; --watch prints variables; an interrupt routine on a model
// without SRAM keeps the interrupted code's registers. Adcin, Write and Read, and Lcdout are
// rows of data/runs.txt.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "cli/commands.h"
#include "inprocess.h"
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
    const struct {
        const char* name;
        const char* source;
        const char* lines;
    } rows[] = {
        // The Dims make no code; the body runs three times; Next jumps back to the body.
        {"For loop", "Dim i As Byte\r\nDim s As Byte\r\nFor i = 1 To 3\r\ns = s + i\r\nNext i\r\nEnd\r\n",
         "3 4 5 4 5 4 5 6"},
        // The label line has no code of its own: its statement is line 11. Return lands on line
        // 4; a = 6 takes the Then branch, whose end jumps (line 6, Else) past the Else branch to
        // Endif, which shares End's address: line 9.
        {"Gosub and If", "Dim a As Byte\r\na = 5\r\nGosub sub\r\nIf a = 6 Then\r\na = 7\r\nElse\r\na = 8\r\nEndif\r\n"
                         "End\r\nsub:\r\na = a + 1\r\nReturn\r\n",
         "2 3 11 12 4 5 6 9"},
        // While tests at its top: twice true, then false to the line after Wend.
        {"While", "Dim n As Byte\r\nn = 2\r\nWhile n > 0\r\nn = n - 1\r\nWend\r\nEnd\r\n", "2 3 4 5 3 4 5 3 6"},
        // A one-line If whose test fails goes straight on.
        {"one-line If", "Dim a As Byte\r\nIf a = 1 Then a = 2\r\na = 3\r\nEnd\r\n", "2 3 4"},
    };
    for (const auto& row : rows) {
        TempFolder folder;
        const std::string program = writeprogram(folder, "prog.bas", row.source);
        const std::string trace = (folder / "prog.trace").string();
        const CliResult run = runinprocess(
            {"run", "--model", "ATmega328P", "--infinite-loop-stop", "--trace-basic", trace, program});
        EXPECT_EQ(run.code, kExitInfiniteLoop) << row.name << "\n" << run.err;
        EXPECT_EQ(tracedlines(trace), row.lines) << row.name;
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

}  // namespace
}  // namespace velmora::test
