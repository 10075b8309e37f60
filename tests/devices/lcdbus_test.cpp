// The module driven through the pin model with real bus cycles: the 4-bit start, line
// layout, shift, busy timing worked out in cycles (scripts in data/tables.txt), user
// characters, busy-flag reads and the other wirings.

#include <gtest/gtest.h>

#include <sstream>
#include <tuple>

#include "lcdfixture.h"

namespace velmora::test {
namespace {

TEST(LcdBus, ScriptsOfBusCycles) {
    for (const TableRow& row : tablerows("tables.txt", "Bus")) {
        LcdBench b(static_cast<float>(row.number(1)));
        std::ostringstream log;
        b.lcd.log = DeviceLog(&log, "lcd");
        b.script(row[2]);
        EXPECT_EQ(b.shown(), row[3]) << row.where;
        EXPECT_EQ(b.lcd.error, row.flag(4)) << row.where;
        EXPECT_NE(log.str().find(row[5]), std::string::npos) << row.where << ": " << log.str();
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

TEST(LcdBus, EightBitAndLowNibbleWiringOnPortC) {
    const struct {
        const char* name;
        int interface, ddr;
        bool rw;
        std::vector<std::tuple<uint8_t, bool, int>> strobes;  // PORTC, RS, idle steps after the strobe
        const char* shown;
        int length;
    } rows[] = {
        {"8-bit", kLcdInterface8, 0xFF, false, {{0x38, false, 200}, {'O', true, 200}, {'K', true, 200}}, "OK/", 8},
        // 0x3 executes 0x30 at the 8-bit length, then 0x2 makes it four bits.
        {"4-bit, low", kLcdInterfaceLow, 0x0F, true,
         {{0x3, false, 200}, {0x2, false, 200}, {'Z' >> 4, true, 0}, {'Z' & 15, true, 200}}, "Z/", 4},
    };
    for (const auto& row : rows) {
        LcdBench b;
        b.lcd.config.interface = row.interface;
        b.lcd.config.dataport = kPortC;
        if (!row.rw) b.lcd.config.rw = PinWire{};
        datamemwrite(b.chip.m, MiniChip::kDdrc, static_cast<uint8_t>(row.ddr));
        b.idle(6600);
        for (const auto& [value, rs, idle] : row.strobes) {
            datamemwrite(b.chip.m, MiniChip::kPortc, value);
            b.port(static_cast<uint8_t>((rs ? kRs : 0) | kE));
            b.port(rs ? kRs : 0);
            b.idle(static_cast<uint64_t>(idle));
        }
        EXPECT_EQ(b.shown(), row.shown) << row.name;
        EXPECT_EQ(b.lcd.state.interfacelength, row.length) << row.name;
        EXPECT_FALSE(b.lcd.state.initphase) << row.name;
    }
}

}  // namespace
}  // namespace velmora::test
