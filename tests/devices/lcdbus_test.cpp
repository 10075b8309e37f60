// The module driven through the pin model with real bus cycles: the 4-bit start, line
// layout, shift, user characters, busy timing worked out in cycles, busy-flag reads.

#include <gtest/gtest.h>

#include <sstream>

#include "lcdfixture.h"

namespace velmora::test {
namespace {

TEST(LcdBus, StandardFourBitStartThenText) {
    LcdBench b;
    b.init4bit();
    EXPECT_EQ(b.lcd.state.interfacelength, 4);
    EXPECT_EQ(b.lcd.state.functionlines, 2);
    EXPECT_FALSE(b.lcd.error);
    b.text("Hi");
    EXPECT_EQ(b.rows(), (std::vector<std::string>{"Hi              ", "                "}));
}

TEST(LcdBus, LinearCounterSecondLineJumpAndShift) {
    const struct {
        const char* name;
        std::vector<std::pair<bool, uint8_t>> bytes;  // rs, value
        std::vector<std::string> rows;
    } cases[] = {
        {"41 characters run into cell 40, the second row",
         {},
         {"0123456789012345", "@               "}},
        {"set DDRAM 0x40 starts the second row", {{false, 0xC0}, {true, 'x'}}, {"                ", "x               "}},
        {"shift by one shows from cell 1", {{true, 'A'}, {true, 'B'}, {false, 0x18}}, {"B               ", "                "}},
        {"shift back wraps to cell 39", {{true, 'A'}, {false, 0x1C}}, {" A              ", "                "}},
        {"cursor moves left and overwrites", {{true, 'A'}, {true, 'B'}, {false, 0x10}, {true, 'C'}},
         {"AC              ", "                "}},
    };
    for (const auto& c : cases) {
        LcdBench b;
        b.init4bit();
        if (c.bytes.empty()) {
            for (int i = 0; i < 40; ++i) b.write(static_cast<uint8_t>('0' + i % 10), true);
            b.write('@', true);
        }
        for (const auto& [rs, value] : c.bytes) b.write(value, rs);
        EXPECT_EQ(b.rows(), c.rows) << c.name;
    }
}

TEST(LcdBus, UserCharacterShowsItsPatternAsWritten) {
    LcdBench b;
    b.init4bit();
    b.write(0x48, false);  // character 1
    const uint8_t pattern[8] = {0x0E, 0x11, 0x11, 0x1F, 0x11, 0x11, 0x0E, 0x00};
    for (uint8_t row : pattern) b.write(row, true);
    b.write(0x80, false);
    b.write(1, true);
    EXPECT_EQ(b.lcd.state.cells[0].glyph, (LcdGlyph{0x0E, 0x11, 0x11, 0x1F, 0x11, 0x11, 0x0E, 0x00}));
    EXPECT_EQ(b.rows()[0][0], '?');
}

// Data busy 46 us. The byte executes at the falling edge; the next falling edge comes two
// one-cycle steps after `gap` idle steps, so it sees 46 - (gap + 2) / MHz microseconds left.
TEST(LcdBus, BusyTimeCountedInCycles) {
    const struct {
        float mhz;
        int gap;
        bool accepted;
    } rows[] = {{4.0f, 181, false}, {4.0f, 182, true}, {8.0f, 365, false}, {8.0f, 366, true},
                {1.0f, 43, false},  {1.0f, 44, true}};
    for (const auto& row : rows) {
        LcdBench b(row.mhz);
        b.init4bit();
        b.idle(1000);
        b.write('A', true);  // clears the way; the next byte is timed from here
        b.strobe('B', true);
        b.strobe(static_cast<uint8_t>('B' << 4), true);
        b.idle(static_cast<uint64_t>(row.gap));
        b.strobe('C', true);
        b.strobe(static_cast<uint8_t>('C' << 4), true);
        b.idle(1000);
        const std::string expected = row.accepted ? "ABC" : "AB";
        EXPECT_EQ(b.rows()[0].substr(0, expected.size() + 1), expected + " ")
            << row.mhz << " MHz, gap " << row.gap;
        EXPECT_EQ(b.lcd.error, !row.accepted) << row.mhz << " MHz, gap " << row.gap;
    }
}

TEST(LcdBus, BusyFlagPollWaitsTheBusyTime) {
    LcdBench b;
    b.init4bit();
    b.strobe('A', true);
    b.strobe(static_cast<uint8_t>('A' << 4), true);
    const uint64_t executed = b.chip.m.totalcycles;
    b.port(kRw, 0x0E);  // data lines in, RS low, R/W high
    b.port(kRw | kE);   // first read strobe: E high drives the bus
    std::vector<uint64_t> busyat;
    while (b.chip.m.totalcycles - executed < 190) {
        const uint8_t pin = datamemread(b.chip.m, MiniChip::kPinb);
        if (pin & 0x80) busyat.push_back(b.chip.m.totalcycles - executed);
        b.idle(1);
    }
    ASSERT_FALSE(busyat.empty());
    EXPECT_EQ(busyat.back(), 183u);  // 46 us at 4 MHz is 184 cycles
    // The counter (cell 1) without the flag; both strobes of a 4-bit read give the high nibble.
    EXPECT_EQ(datamemread(b.chip.m, MiniChip::kPinb) & 0xF0, 0x00);
    b.port(kRw);
    EXPECT_EQ(getinput(b.chip.m, kPortB) & 0xF0, 0) << "the falling edge releases the bus";
    b.chip.m.datamem[MiniChip::kPortb] = 0;
    b.lcd.state.address = 0x35;
    b.port(kRw | kE);
    EXPECT_EQ(datamemread(b.chip.m, MiniChip::kPinb) & 0xF0, 0x30);
    b.port(kRw);
    b.port(kRw | kE);
    EXPECT_EQ(datamemread(b.chip.m, MiniChip::kPinb) & 0xF0, 0x30);
}

TEST(LcdBus, ByteWhileBusyIsLostAndLogged) {
    LcdBench b;
    std::ostringstream log;
    b.lcd.log = DeviceLog(&log, "lcd");
    b.init4bit();
    b.strobe('A', true);
    b.strobe(static_cast<uint8_t>('A' << 4), true);
    b.strobe('B', true);  // still busy
    b.idle(400);
    b.write('C', true);
    EXPECT_TRUE(b.lcd.error);
    EXPECT_EQ(b.rows()[0].substr(0, 3), "AC ");
    EXPECT_NE(log.str().find("\tlcd\tdropped: busy\n"), std::string::npos) << log.str();
    EXPECT_NE(log.str().find("\tlcd\tdata 41\n"), std::string::npos) << log.str();
}

TEST(LcdBus, InitPhaseStrobeWhileBusyShowsNoError) {
    LcdBench b;
    b.idle(6600);
    b.strobe(0x30, false);
    EXPECT_TRUE(b.lcd.state.initphase);
    b.strobe(0x20, false);  // during the 42 us of the first: dropped without an error
    EXPECT_FALSE(b.lcd.error);
    EXPECT_EQ(b.lcd.state.interfacelength, 8);
    b.idle(200);
    EXPECT_FALSE(b.lcd.state.initphase) << "cleared when the busy time ran out";
}

TEST(LcdBus, StrobeDuringPowerOnBusyIsAnError) {
    LcdBench b;
    b.strobe(0x30, false);
    EXPECT_TRUE(b.lcd.error);
}

TEST(LcdBus, HalfByteForgottenAfter500Microseconds) {
    LcdBench b;
    b.init4bit();
    b.strobe('A', true);
    b.idle(2001);  // more than 500 us at 4 MHz
    b.write('B', true);
    EXPECT_EQ(b.rows()[0].substr(0, 2), "B ");
}

TEST(LcdBus, EightBitInterface) {
    LcdBench b;
    b.lcd.config.interface = kLcdInterface8;
    b.lcd.config.dataport = kPortC;
    b.lcd.config.rw = PinWire{};
    datamemwrite(b.chip.m, MiniChip::kDdrc, 0xFF);
    b.idle(6600);
    const auto put = [&](uint8_t value, bool rs) {
        datamemwrite(b.chip.m, MiniChip::kPortc, value);
        b.port(static_cast<uint8_t>((rs ? kRs : 0) | kE));
        b.port(rs ? kRs : 0);
        b.idle(200);
    };
    put(0x38, false);
    put('O', true);
    put('K', true);
    EXPECT_EQ(b.lcd.state.interfacelength, 8);
    EXPECT_EQ(b.rows()[0].substr(0, 3), "OK ");
    EXPECT_FALSE(b.lcd.state.initphase);
}

TEST(LcdBus, LowNibbleWiring) {
    LcdBench b;
    b.lcd.config.interface = kLcdInterfaceLow;
    b.lcd.config.dataport = kPortC;
    datamemwrite(b.chip.m, MiniChip::kDdrc, 0x0F);
    b.idle(6600);
    const auto nibble = [&](uint8_t value, bool rs) {
        datamemwrite(b.chip.m, MiniChip::kPortc, value & 0x0F);
        b.port(static_cast<uint8_t>((rs ? kRs : 0) | kE));
        b.port(rs ? kRs : 0);
    };
    nibble(0x3, false);  // 8-bit length: executes 0x30
    b.idle(200);
    nibble(0x2, false);  // now four bits
    b.idle(200);
    nibble('Z' >> 4, true);
    nibble('Z' & 15, true);
    b.idle(200);
    EXPECT_EQ(b.rows()[0].substr(0, 2), "Z ");
}

}  // namespace
}  // namespace velmora::test
