// The last bytes a program writes to UDR before it stops. velmora-cli lets the transmitter
// finish them (a real chip in idle sleep sends them); the desktop program leaves them in
// the transmitter, as it always did.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/programinput.h"
#include "cli/session.h"
#include "core/memorysettings.h"
#include "core/usart.h"
#include "inprocess.h"
#include "shell/simulation.h"
#include "support/modelchoice.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

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

}  // namespace
}  // namespace velmora::test
