// The byte-level USART: frame time in cycles from the byte time and the clock, the status
// flags, the receive FIFO or single buffer per register style, the shared UCSRC/UBRRH
// address, and its interrupts through the model's table.

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "core/encode.h"
#include "core/memory.h"
#include "core/peripherals.h"
#include "core/usart.h"
#include "support/ioencode.h"
#include "support/sectiontable.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

// I/O addresses as an ATmega8 has them; the kinds that give UCSRC an address of its own
// use the ATtiny2313 places.
constexpr int kUbrrl = 0x09, kUcsrb = 0x0A, kUcsra = 0x0B, kUdr = 0x0C, kShared = 0x20, kOwnUcsrc = 0x03,
              kOwnUbrrh = 0x02;
constexpr int kRxVector = 0x10, kUdreVector = 0x20, kTxVector = 0x30;


struct UsartSim : Sim {
    explicit UsartSim(int kind, float mhz = 4) : Sim(32768, 1024, 0) {
        m.kinds.uartconf = kind;
        m.clockfrequency = mhz;
        RegisterRoles& r = m.roles;
        r.ubrrl = kUbrrl + 32;
        r.ucsrb = kUcsrb + 32;
        r.ucsra = kUcsra + 32;
        r.udr = kUdr + 32;
        if (sharesucsrc(m)) {
            r.ucsrc = r.ubrrh = kShared + 32;
        } else if (!singlereceivebuffer(m)) {
            r.ucsrc = kOwnUcsrc + 32;
            r.ubrrh = kOwnUbrrh + 32;
        }
        addregister("UCSRA", r.ucsra, 0x20, 0x03);
        addregister("UCSRB", r.ucsrb, 0x00, 0xFF);
        addregister("UDR", r.udr, 0x00, 0xFF);
        addregister("UBRRL", r.ubrrl, 0x00, 0xFF);
        if (r.ucsrc) addregister("UCSRC", r.ucsrc, 0x86, 0xFF);
        if (r.ubrrh && r.ubrrh != r.ucsrc) addregister("UBRRH", r.ubrrh, 0x00, 0x0F);
        m.interrupttable = {{"USART_RXC", kRxVector, "", r.ucsrb, 0x80, r.ucsra, kUsartRxc, 1},
                            {"USART_UDRE", kUdreVector, "", r.ucsrb, 0x20, r.ucsra, kUsartUdre, 1},
                            {"USART_TXC", kTxVector, "", r.ucsrb, 0x40, r.ucsra, kUsartTxc, 1}};
        marksideeffects(m);
        clean(m);
        stacktop();
        run.phases = standardphases();
    }
    void addregister(const char* name, int address, uint8_t reset, uint8_t mask) {
        m.namedregisters.push_back({name, name, address, reset});
        m.datamask[address] = mask;
    }
    // Program words from address 0 and NOPs behind them up to the end of memory (16 Ki words).
    void program(std::vector<uint16_t> words) {
        words.resize(static_cast<size_t>(m.flashwords), kNop);
        load(words);
    }
    uint8_t ucsra() const { return m.datamem[m.roles.ucsra]; }
    void setucsrb(uint8_t v) { m.datamem[m.roles.ucsrb] = v; }
    std::string output() {
        uint8_t bytes[kUsartOutputCapacity];
        const size_t n = usarttakeoutput(m, bytes, sizeof bytes);
        return std::string(bytes, bytes + n);
    }
    // Steps until the condition holds after a step; the number of steps, or -1 past the limit.
    int stepuntil(const std::function<bool()>& done, int limit = 1000000) {
        for (int i = 1; i <= limit; ++i) {
            step();
            if (done()) return i;
        }
        return -1;
    }
};

// A program that sends one byte and then runs NOPs (the NOP sled wraps to the start).
std::vector<uint16_t> sendone(uint8_t byte) { return {ldi(16, byte), out(kUdr, 16)}; }

TEST(Usart, FrameTimeInCyclesIsByteTimeTimesClockWhateverUbrrHoldsLongInstructionsOvershoot) {
    for (const TableRow& row : tablerows("usart.txt", "frame time")) {
        SCOPED_TRACE(row.where);
        UsartSim sim(3, static_cast<float>(row.number(0)));
        sim.m.uarttime = static_cast<float>(row.number(1));
        sim.m.datamem[sim.m.roles.ubrrl] = static_cast<uint8_t>(row.number(2));
        std::vector<uint16_t> words = sendone('A');
        if (row.flag(3)) words.push_back(rjmp(-1));
        sim.program(words);
        sim.step();  // LDI
        const uint64_t before = sim.m.totalcycles;
        sim.step();  // OUT: the byte goes straight to the shifter
        EXPECT_EQ(sim.m.usart.txshift, 'A');
        EXPECT_TRUE(sim.ucsra() & kUsartUdre);
        EXPECT_FALSE(sim.ucsra() & kUsartTxc);
        ASSERT_GT(sim.stepuntil([&] { return sim.m.usart.txoutputcount > 0; }), 0);
        EXPECT_EQ(sim.m.totalcycles - before, static_cast<uint64_t>(row.number(4)));
        EXPECT_TRUE(sim.ucsra() & kUsartTxc);
        EXPECT_EQ(sim.output(), "A");
        datamemwrite(sim.m, sim.m.roles.ucsra, kUsartTxc);  // a one clears the flag, UDRE stays
        EXPECT_EQ(sim.ucsra(), kUsartUdre);
    }
}

TEST(Usart, SecondWriteWaitsInTheBufferAndAThirdIsLost) {
    UsartSim sim(2);
    sim.program({ldi(16, 'a'), ldi(17, 'b'), ldi(18, 'c'), out(kUdr, 16), out(kUdr, 17), out(kUdr, 18)});
    sim.step(3);
    const uint64_t before = sim.m.totalcycles;
    sim.step();
    EXPECT_TRUE(sim.ucsra() & kUsartUdre) << "the first byte left the buffer in its own step";
    sim.step();
    EXPECT_EQ(sim.m.usart.txbuffer, 'b');
    EXPECT_FALSE(sim.ucsra() & kUsartUdre);
    sim.step();  // UDRE clear: 'c' is dropped
    EXPECT_EQ(sim.m.usart.txbuffer, 'b');
    EXPECT_EQ(sim.m.datamem[sim.m.roles.udr], 0);
    sim.stepuntil([&] { return sim.m.usart.txoutputcount > 0; });
    EXPECT_EQ(sim.m.totalcycles - before, 4000u);
    EXPECT_FALSE(sim.ucsra() & kUsartTxc) << "TXC waits while a byte is still buffered";
    sim.step();  // 'b' moves to the shifter, the buffer is free again
    EXPECT_TRUE(sim.ucsra() & kUsartUdre);
    sim.stepuntil([&] { return sim.m.usart.txoutputcount > 1; });
    EXPECT_EQ(sim.m.totalcycles - before, 8000u);
    EXPECT_TRUE(sim.ucsra() & kUsartTxc);
    EXPECT_EQ(sim.output(), "ab");
    sim.step(10000);
    EXPECT_EQ(sim.output(), "");
}

TEST(Usart, EnableStatesFollowTheControlBitsButDoNotGateTheTransmitter) {
    for (const TableRow& row : tablerows("usart.txt", "enable")) {
        SCOPED_TRACE(row.where);
        UsartSim sim(static_cast<int>(row.number(0)));
        sim.setucsrb(static_cast<uint8_t>(row.number(1)));
        if (sim.m.roles.ucsrc) sim.m.datamem[sim.m.roles.ucsrc] = static_cast<uint8_t>(row.number(2));
        sim.program(sendone('!'));
        sim.step(2);
        EXPECT_EQ(usarttransmitterenabled(sim.m), row.flag(3));
        EXPECT_EQ(usartreceiverenabled(sim.m), row.flag(4));
        sim.step(4000);
        EXPECT_EQ(sim.output(), "!");
    }
}

TEST(Usart, ReceivedByteArrivesWhenItsTimeIsStrictlyOver) {
    for (int kind : {2, 3, 4, 5, 6, 7, 8}) {
        UsartSim sim(kind);
        sim.setucsrb(kUsartRxen);
        sim.program({});
        sim.step();
        ASSERT_TRUE(usartreceiverready(sim.m));
        ASSERT_TRUE(usartreceive(sim.m, 'R'));
        EXPECT_FALSE(usartreceive(sim.m, 'S')) << "the shifter is busy";
        EXPECT_FALSE(usartreceiverready(sim.m));
        // 0.25 us per NOP: above 1000 us after 4001 of them.
        EXPECT_EQ(sim.stepuntil([&] { return (sim.ucsra() & kUsartRxc) != 0; }), 4001) << "kind " << kind;
        EXPECT_EQ(datamemread(sim.m, sim.m.roles.udr), 'R');
        sim.step();
        EXPECT_FALSE(sim.ucsra() & kUsartRxc);
        EXPECT_EQ(datamemread(sim.m, sim.m.roles.udr), 0) << "an empty FIFO reads the cell";
    }
}

// Feeds bytes as a terminal would, whenever the shifter is free, for `steps` steps.
void feed(UsartSim& sim, const std::string& bytes, int steps) {
    size_t next = 0;
    for (int i = 0; i < steps; ++i) {
        if (next < bytes.size() && usartreceiverready(sim.m))
            usartreceive(sim.m, static_cast<uint8_t>(bytes[next++]));
        sim.step();
    }
}

TEST(Usart, TwoByteFifoHoldsAThirdByteInTheShifterWithoutLoss) {
    for (int kind : {2, 3, 4, 5, 8}) {
        UsartSim sim(kind);
        sim.setucsrb(kUsartRxen);
        sim.program({});
        feed(sim, "xyz", 20000);
        EXPECT_EQ(sim.m.usart.rxfifo1, 'x');
        EXPECT_EQ(sim.m.usart.rxfifo2, 'y');
        EXPECT_EQ(sim.m.usart.rxshift, 'z') << "waits, its time running on";
        EXPECT_FALSE(sim.ucsra() & kUsartOverrun);
        EXPECT_EQ(datamemread(sim.m, sim.m.roles.udr), 'x');
        EXPECT_TRUE(sim.ucsra() & kUsartRxc);
        sim.step();  // the waiting byte's time is long over: it moves up at once
        EXPECT_EQ(sim.m.usart.rxfifo2, 'z');
        EXPECT_EQ(datamemread(sim.m, sim.m.roles.udr), 'y');
        EXPECT_EQ(datamemread(sim.m, sim.m.roles.udr), 'z');
        sim.step();
        EXPECT_FALSE(sim.ucsra() & kUsartRxc);
    }
}

TEST(Usart, SingleBufferLosesAnUnreadByteAndFlagsTheOverrun) {
    for (int kind : {6, 7}) {
        UsartSim sim(kind);
        sim.setucsrb(kUsartRxen);
        sim.program({});
        feed(sim, "pq", 9000);
        EXPECT_EQ(sim.m.usart.rxfifo1, 'p');
        EXPECT_EQ(sim.m.usart.rxshift, -1) << "'q' is gone";
        EXPECT_TRUE(sim.ucsra() & kUsartOverrun);
        EXPECT_EQ(datamemread(sim.m, sim.m.roles.udr), 'p');
        feed(sim, "r", 4100);
        EXPECT_FALSE(sim.ucsra() & kUsartOverrun) << "a byte taken without loss clears it";
        EXPECT_EQ(datamemread(sim.m, sim.m.roles.udr), 'r');
    }
}

// Disabling the receiver empties it at the next step; a reset empties the transmitter too.
TEST(Usart, DisablingTheReceiverOrACleanEmptiesIt) {
    for (bool reset : {false, true}) {
        SCOPED_TRACE(reset ? "clean" : "receiver disabled");
        UsartSim sim(3);
        sim.setucsrb(kUsartRxen | kUsartTxen);
        sim.program(sendone('e'));
        feed(sim, "12", 9000);
        ASSERT_TRUE(sim.ucsra() & kUsartRxc);
        ASSERT_GT(sim.m.usart.txoutputcount, 0);
        usartreceive(sim.m, '3');
        if (reset) {
            clean(sim.m);
            EXPECT_EQ(sim.m.usart.txshift, -1);
            EXPECT_EQ(sim.output(), "");
            EXPECT_EQ(sim.ucsra(), 0x20);
        } else {
            sim.setucsrb(0);
            sim.step();
            EXPECT_FALSE(usartreceiverready(sim.m));
        }
        EXPECT_FALSE(sim.ucsra() & kUsartRxc);
        EXPECT_EQ(sim.m.usart.rxfifo1, -1);
        EXPECT_EQ(sim.m.usart.rxfifo2, -1);
        EXPECT_EQ(sim.m.usart.rxshift, -1);
    }
}
TEST(Usart, SharedAddressWritesTheShadowUnlessBitSevenIsSet) {
    for (int kind : {3, 8}) {
        UsartSim sim(kind);
        const int address = sim.m.roles.ucsrc;
        datamemwrite(sim.m, address, 0x7B);
        EXPECT_EQ(sim.m.usart.ubrrhshadow, 0x0B);
        EXPECT_EQ(sim.m.datamem[address], 0x86) << "the UCSRC cell keeps its value";
        datamemwrite(sim.m, address, 0x8E);
        EXPECT_EQ(sim.m.datamem[address], 0x8E);
        EXPECT_EQ(sim.m.usart.ubrrhshadow, 0x0B);
    }
    UsartSim own(5);
    datamemwrite(own.m, own.m.roles.ucsrc, 0x06);
    EXPECT_EQ(own.m.datamem[own.m.roles.ucsrc], 0x06);
    EXPECT_EQ(own.m.usart.ubrrhshadow, 0);
}

TEST(Usart, SharedAddressReadsUcsrcOnlyRightAfterAnotherRead) {
    UsartSim sim(3);
    datamemwrite(sim.m, sim.m.roles.ucsrc, 0x05);  // UBRRH
    sim.program({in(16, kShared), in(17, kShared), in(18, kShared), kNop, in(19, kShared), kNop, in(20, kShared)});
    sim.step(7);
    EXPECT_EQ(sim.reg(16), 0x05);
    EXPECT_EQ(sim.reg(17), 0x86) << "one cycle after a read: UCSRC";
    EXPECT_EQ(sim.reg(18), 0x05) << "the pair is used up";
    EXPECT_EQ(sim.reg(19), 0x05);
    EXPECT_EQ(sim.reg(20), 0x05) << "two cycles apart: UBRRH again";
}

TEST(Usart, NoUsartKindsLeaveUdrPlain) {
    for (int kind : {0, 1}) {
        UsartSim sim(kind);
        sim.program(sendone('N'));
        sim.step(5000);
        EXPECT_EQ(sim.m.datamem[sim.m.roles.udr], 'N');
        EXPECT_EQ(sim.output(), "");
        EXPECT_EQ(sim.ucsra(), 0x20) << "no flags driven";
    }
}

// Each interrupt of the USART entered once through the model's table: its handler counts
// entries in r21; the receive handler reads UDR into r20, the data register empty handler
// sends r16 and disables itself, the transmit complete latch is cleared by the entry.
TEST(Usart, EachInterruptEntersItsHandlerOnce) {
    const struct {
        const char* name;
        int kind, vector;
        std::vector<uint16_t> start, handler;  // the handler ends with RETI
        uint8_t ucsrb;
        int received;  // a byte the terminal sends after the first step, or -1
        int entry;     // the step that enters the handler, or -1 if not checked
        const char* output;
    } rows[] = {
        {"RXC", 3, kRxVector, {kSei, rjmp(-1)}, {in(20, kUdr)}, 0x80 | kUsartRxen, 'K', -1, ""},
        {"UDRE", 5, kUdreVector, {ldi(16, 'U'), kSei, rjmp(-1)}, {out(kUdr, 16), iobit(0x9800, kUcsrb, 5)},
         0x20 | kUsartTxen, -1, 3, "U"},
        {"TXC", 7, kTxVector, {ldi(16, 'T'), kSei, out(kUdr, 16), rjmp(-1)}, {}, 0x40 | kUsartTxen, -1, -1, "T"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        UsartSim sim(row.kind);
        std::vector<uint16_t> words = row.start;
        words.resize(static_cast<size_t>(row.vector), kNop);
        words.push_back(inc(21));
        words.insert(words.end(), row.handler.begin(), row.handler.end());
        words.push_back(kReti);
        sim.program(words);
        sim.setucsrb(row.ucsrb);
        sim.step();
        if (row.received >= 0) usartreceive(sim.m, static_cast<uint8_t>(row.received));
        const int entry = sim.stepuntil([&] { return sim.m.pc == row.vector; }, 10000);
        ASSERT_GT(entry, 0);
        if (row.entry > 0) { EXPECT_EQ(1 + entry, row.entry); }
        if (row.received >= 0) {
            EXPECT_TRUE(sim.ucsra() & kUsartRxc) << "set again by the phase of the entry step";
            sim.step(3);
            EXPECT_EQ(sim.reg(20), row.received);
            EXPECT_EQ(sim.m.pc, 1) << "back in the loop";
        }
        sim.step(10000);
        EXPECT_EQ(sim.reg(21), 1) << "entered once";
        EXPECT_EQ(sim.output(), row.output);
        if (row.vector == kTxVector) { EXPECT_FALSE(sim.ucsra() & kUsartTxc) << "cleared by the entry"; }
    }
}

TEST(Usart, OutputRingKeepsTheNewestBytesInOrder) {
    UsartSim sim(2, 1);
    sim.m.uarttime = 50;
    sim.program({});
    const int total = kUsartOutputCapacity + 44;
    for (int i = 0; i < total; ++i) {
        sim.m.usart.txbuffer = i & 0xFF;
        wakeperipherals(sim.m);  // as the write to UDR that it stands for does
        sim.stepuntil([&] { return sim.m.usart.txshift < 0 && sim.m.usart.txbuffer < 0; });
    }
    uint8_t first[10];
    ASSERT_EQ(usarttakeoutput(sim.m, first, sizeof first), 10u);
    EXPECT_EQ(first[0], 44);
    EXPECT_EQ(first[9], 53);
    const std::string rest = sim.output();
    ASSERT_EQ(rest.size(), static_cast<size_t>(kUsartOutputCapacity - 10));
    EXPECT_EQ(static_cast<uint8_t>(rest.back()), (total - 1) & 0xFF);
}

}  // namespace
}  // namespace velmora::test
