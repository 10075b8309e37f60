// The desktop's GDB stub: the menu command, a client driving the loaded program through the
// window's timer, and what stays when the client goes. The program is data/examples/hello.asm
// on the ATmega32: eight words of set-up, `loop` at word 8, `rcall delay` at word 12, `delay`
// at word 14.

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "gdb/gdbserver.h"
#include "gdb/rsp.h"
#include "shell/settingnames.h"
#include "shellfixture.h"
#include "support/loopbackclient.h"
#include "support/sectiontable.h"

namespace velmora::test {
namespace {

struct Linked : Shell {
    int refreshes = 0;
    Linked() {
        select("ATmega32");
        loadhello();
        model.ekran = [this] { ++refreshes; };
    }
    GdbLink& link() { return model.gdb(); }
    // Sends packets as gdb would, lets the window's timer answer, and returns the replies.
    std::string exchange(LoopbackClient& client, const std::string& bytes) {
        client.send(bytes);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        link().tick();
        return client.receive();
    }
    std::string packet(LoopbackClient& client, const std::string& text) { return exchange(client, rspframe(text)); }
};

TEST(GdbLink, TheMenuCommandAsksForThePortAndRefusesWhatCannotServe) {
    const int port = freeport();
    for (const TableRow& row : tablerows("shelltables.txt", "gdbmenu")) {
        const bool listening = row.flag(4);
        const std::optional<std::string> answer =
            row[2] == "(cancel)" ? std::nullopt : std::optional(row[2] == "(free)" ? std::to_string(port) : row[2]);
        Shell shell;
        shell.select("ATmega32");
        if (row.flag(1)) shell.loadhello();
        shell.messenger.messages.clear();
        shell.input.answers = {answer};
        shell.model.command("menugdb");
        EXPECT_EQ(shell.model.gdb().listening(), listening) << row.where;
        EXPECT_EQ(shell.model.menustates()["menugdb"].checked, listening) << row.where;
        if (listening) {
            EXPECT_EQ(shell.input.defaults.at(0), "1234") << "the default port";
            EXPECT_EQ(shell.settings.getsetting(settingnames::kGdbPort, ""), std::to_string(port)) << row.where;
            EXPECT_EQ(shell.lastmessage(), "GDB server waiting for avr-gdb on 127.0.0.1:" + std::to_string(port) +
                                               " (target remote :" + std::to_string(port) + ").");
            shell.model.command("menugdb");
            EXPECT_FALSE(shell.model.gdb().listening()) << "the second choice stops it";
        } else {
            EXPECT_EQ(shell.lastmessage(), row[3]) << row.where;
        }
    }
}

TEST(GdbLink, ATakenPortIsToldAndTheLinkStaysOff) {
    Linked shell;
    GdbServer other;
    std::string error;
    ASSERT_TRUE(other.listen(0, error)) << error;
    EXPECT_FALSE(shell.link().start(other.port()));
    EXPECT_FALSE(shell.link().listening());
    EXPECT_EQ(shell.lastmessage().rfind("The GDB server could not listen on port " + std::to_string(other.port()), 0),
              0u)
        << shell.lastmessage();
}

// A client that comes finds the program started at Step By Step; a step and a continue to its
// breakpoint move the window with them; after it detaches, the user's breakpoint is still
// there and gdb's is gone, and the link waits for the next client.
TEST(GdbLink, AClientDrivesTheProgramAndLeavesTheUsersBreakpoints) {
    Linked shell;
    ASSERT_TRUE(shell.link().start(0));
    shell.model.breakpoints().toggle("000008");  // the user's, at `loop` (a word address)
    LoopbackClient client(shell.link().port());
    ASSERT_TRUE(client.connected());
    EXPECT_EQ(shell.packet(client, "?"), "+" + rspframe("S05"));
    EXPECT_TRUE(shell.link().connected());
    EXPECT_TRUE(shell.m().simulationrunning);
    EXPECT_EQ(shell.model.run().simulationrate(), kRateStep);

    const int before = shell.refreshes;
    EXPECT_EQ(shell.packet(client, "s"), "+" + rspframe("S05"));
    EXPECT_EQ(shell.m().pc, 1) << "one instruction: ldi";
    EXPECT_GT(shell.refreshes, before) << "the window follows the step";

    EXPECT_EQ(shell.packet(client, "Z0,1c,2"), "+" + rspframe("OK"));  // `delay`, a byte address
    EXPECT_EQ(shell.packet(client, "c"), "+" + rspframe("S05"));
    EXPECT_EQ(shell.m().pc, 8) << "the user's breakpoint at `loop` comes first";
    EXPECT_EQ(shell.packet(client, "c"), "+" + rspframe("S05"));
    EXPECT_EQ(shell.m().pc, 14) << "then gdb's at `delay`";
    EXPECT_EQ(shell.m().datamem[0x10], 1) << "r16 counted once before the call";
    EXPECT_EQ(shell.model.run().simulationrate(), kRateStep);

    EXPECT_EQ(shell.packet(client, "D"), "+" + rspframe("OK"));
    EXPECT_FALSE(shell.link().connected());
    EXPECT_TRUE(shell.link().listening());
    EXPECT_TRUE(shell.m().breakat[8]) << "the user's breakpoint stays";
    EXPECT_FALSE(shell.m().breakat[14]) << "gdb's went with it";
    EXPECT_TRUE(shell.m().simulationrunning) << "the user goes on from here";

    LoopbackClient next(shell.link().port());
    EXPECT_EQ(shell.packet(next, "?"), "+" + rspframe("S05")) << "a second client is served";
}

// Ctrl-C reaches a continue of the endless program through the run's yields; gdb's kill then
// ends the simulation as Stop does, and a client that just goes away leaves it standing.
TEST(GdbLink, CtrlCInterruptsAContinueAndKillStops) {
    Linked shell;
    shell.clock.tick = 0.01;  // the run yields to the client now and then
    ASSERT_TRUE(shell.link().start(0));
    LoopbackClient client(shell.link().port());
    EXPECT_EQ(shell.packet(client, "?"), "+" + rspframe("S05"));
    std::thread interrupt([&client] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        client.send("\x03");
    });
    const std::string reply = shell.packet(client, "c");
    interrupt.join();
    EXPECT_EQ(reply, "+" + rspframe("S02"));
    EXPECT_TRUE(shell.m().simulationrunning);

    shell.messenger.messages.clear();
    EXPECT_EQ(shell.exchange(client, rspframe("k")), "+");
    EXPECT_FALSE(shell.m().simulationrunning);
    EXPECT_EQ(shell.lastmessage().rfind("Total number of executed instructions is ", 0), 0u) << shell.lastmessage();
    EXPECT_FALSE(shell.link().connected());

    shell.model.command("menuspeed1");
    shell.model.command("menustart");
    LoopbackClient leaving(shell.link().port());
    EXPECT_EQ(shell.packet(leaving, "Z0,1c,2"), "+" + rspframe("OK"));
    leaving.close();
    shell.link().tick();
    EXPECT_FALSE(shell.link().connected());
    EXPECT_FALSE(shell.m().breakpointsset) << "the client's breakpoint went with it";
    EXPECT_TRUE(shell.m().simulationrunning);
}

}  // namespace
}  // namespace velmora::test
