// A client's packets through a session on a small program, as (request -> reply) rows in
// order: steps, breakpoints, a watched write, the program's end, Ctrl-C, damaged packets.
// The replies are read back from the bytes the session sent.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/encode.h"
#include "gdb/gdbsession.h"
#include "support/ioencode.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

uint16_t dec(int d) { return r1(0x940A, d); }

// r16 counts 5 down while r17 counts up; then r17 goes to $101 and the program sleeps.
//   0 ldi r16,5   1 sts $100,r16   3 inc r17   4 dec r16   5 brne 3   6 sts $101,r17   8 sleep
const std::vector<uint16_t> kProgram = {ldi(16, 5), sts(16), 0x0100, inc(17), dec(16), branch(false, 1, -3),
                                        sts(17),    0x0101,  kSleep};

struct Client : Sim {
    explicit Client(std::vector<uint16_t> program = kProgram) {
        load(program);
        run.phases.busy = [](const Machine&) { return false; };
        run.menuspeed(kRateStep);
        run.menustart();
        clock.onyield = [this] { session.duringrun(); };
    }
    // The payloads of the packets the session sent since the last call, and its acks.
    std::vector<std::string> request(const std::string& wire) {
        sent.clear();
        session.receive(wire.data(), wire.size());
        std::vector<RspEvent> events;
        RspReader().feed(sent.data(), sent.size(), events);
        std::vector<std::string> texts;
        for (const RspEvent& e : events) texts.push_back(e.kind == RspEvent::Kind::Packet ? e.payload : "ack");
        return texts;
    }
    std::string sent, typed;
    GdbSession session{run, [this](const std::string& bytes) { sent += bytes; },
                       [this] { return std::exchange(typed, std::string()); }};
};

TEST(GdbSession, DrivesTheProgramAsTheClientAsks) {
    const struct {
        const char* wire;
        std::vector<std::string> replies;
    } rows[] = {
        {"$?#3f", {"ack", "S05"}},
        {"$s#73", {"ack", "S05"}},
        {"$p22#d4", {"ack", "02000000"}},         // LDI done: PC byte 2
        {"$Z0,8,2#4c", {"ack", "OK"}},            // word 4, DEC
        {"$c#63", {"ack", "S05"}},
        {"$p22#d4", {"ack", "08000000"}},
        {"$p11#d2", {"ack", "01"}},               // r17 after one INC
        {"$z0,8,2#6c", {"ack", "OK"}},
        {"$Z2,800101,1#3f", {"ack", "OK"}},
        {"$vCont;c#a8", {"ack", "T05watch:800101;"}},
        {"$m800101,1#f4", {"ack", "05"}},
        {"$p22#d4", {"ack", "10000000"}},         // past the STS: word 8
        {"$c#63", {"ack", "W00"}},                // SLEEP ends the program
        {"$c#00", {"-"}},                         // a damaged packet is asked again
        {"-", {"W00"}},                           // the client asks for the last reply again
        {"$qTStatus#49", {"ack", ""}},
        {"$k#6b", {"ack"}},
    };
    Client c;
    for (const auto& row : rows) {
        std::vector<std::string> replies = c.request(row.wire);
        // A nak of our own is a bare '-', not a packet.
        if (c.sent == "-") replies = {"-"};
        EXPECT_EQ(replies, row.replies) << row.wire;
    }
    EXPECT_EQ(c.session.end(), GdbSession::End::Killed);
    EXPECT_TRUE(c.request("$?#3f").empty()) << "nothing after k";
}

TEST(GdbSession, CtrlCEndsARunThatWouldNeverEnd) {
    Client c({inc(20), rjmp(-2)});
    c.clock.tick = 0.01;
    c.typed = "\x03";
    EXPECT_EQ(c.request("$c#63"), (std::vector<std::string>{"ack", "S02"}));
    EXPECT_TRUE(c.m.simulationrunning);
    EXPECT_EQ(c.request("$D#44"), (std::vector<std::string>{"ack", "OK"}));
    EXPECT_EQ(c.session.end(), GdbSession::End::Detached);
}

}  // namespace
}  // namespace velmora::test
