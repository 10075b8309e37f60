// The instruction set on the controller alone: byte sequences in, display memory and
// controller state out; then the module driven through the pin model with real bus cycles:
// the 4-bit start, line layout, shift, busy timing worked out in cycles, user characters,
// busy-flag reads and the other wirings (scripts in data/tables.txt).
//
// The module without a window: the --lcd option texts, the printed rows, the change log, and the
// wiring taken from a BASIC program's Define lines (tables in data/tables.txt).
//
// The device pattern: turns only after a pin could have changed or at a cycle asked for, so
// a program that leaves the pins alone runs with the module attached as without it.

#include <gtest/gtest.h>

#include <sstream>
#include <tuple>

#include "devices/lcdbasic.h"
#include "devices/lcdcontroller.h"
#include "devices/lcdheadless.h"
#include "lcdfixture.h"
#include "support/sectiontable.h"

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

TEST(LcdInstructions, CommandAndDataBytes) {
    for (const TableRow& row : tablerows("tables.txt", "Instructions")) {
        LcdController c;
        const LcdContext context{static_cast<int>(row.number(1)), 42, 46, std::stof(row[10]), nullptr};
        std::istringstream bytes(row[2]);
        for (std::string b; bytes >> b;)
            lcdexecute(c, static_cast<uint8_t>(std::stoi(b.substr(1), nullptr, 16)), b[0] == 'D', context);
        EXPECT_EQ(std::vector<long>({c.address, c.shift, c.cursormode, c.interfacelength, c.functionlines}),
                  std::vector<long>({row.number(3), row.number(4), row.number(5), row.number(6), row.number(7)}))
            << row.where;
        EXPECT_EQ(c.cgrammode, row.flag(8)) << row.where;
        EXPECT_EQ(c.busy, static_cast<float>(row.number(9))) << row.where;
    }
}

TEST(LcdInstructions, ClearBlanksCellsAndKeepsUserCharacters) {
    LcdController c;
    const LcdContext context{2, 42, 46, 4.0f, nullptr};
    lcdexecute(c, 0x40, false, context);
    lcdexecute(c, 0x1F, true, context);
    lcdexecute(c, 0x80, false, context);
    lcdexecute(c, 0, true, context);
    lcdexecute(c, 1, false, context);
    EXPECT_EQ(c.cells[0].code, 0);
    EXPECT_EQ(c.cells[0].glyph, LcdGlyph{});
    EXPECT_EQ(c.cgram[0][0], 0x1F);
}

TEST(LcdInstructions, CgramWritesWrapAndDoNotReachWrittenCells) {
    LcdController c;
    const LcdContext context{2, 42, 46, 4.0f, nullptr};
    lcdexecute(c, 0x40 + 63, false, context);
    lcdexecute(c, 0xFF, true, context);  // low five bits only
    EXPECT_EQ(c.cgram[7][7], 0x1F);
    EXPECT_EQ(c.cgramaddress, 0);
    lcdexecute(c, 0x80, false, context);
    lcdexecute(c, 7, true, context);   // user character 7
    lcdexecute(c, 15, true, context);  // codes 8..15 show 0..7 again
    lcdexecute(c, 0x47, false, context);
    lcdexecute(c, 0x00, true, context);  // redefine row 7 of character 0 .. after the cells
    lcdexecute(c, 0x7F, false, context);
    lcdexecute(c, 0x01, true, context);  // row 7 of character 7 becomes 01
    EXPECT_EQ(c.cells[0].glyph[7], 0x1F);
    EXPECT_EQ(c.cells[1].glyph[7], 0x1F);
    EXPECT_EQ(c.cgram[7][7], 0x01);
    lcdexecute(c, 0x82, false, context);
    lcdexecute(c, 7, true, context);
    EXPECT_EQ(c.cells[2].glyph[7], 0x01);
}

TEST(LcdInstructions, ReadValueCarriesTheBusyFlag) {
    LcdController c;
    c.address = 45;
    c.cells[45].code = 'Q';
    c.busy = 0;
    EXPECT_EQ(lcdreadvalue(c, false), 45);
    c.busy = 0.25f;
    EXPECT_EQ(lcdreadvalue(c, false), 45 + 128);
    EXPECT_EQ(lcdreadvalue(c, true), 'Q');
}

// Lines, characters, data port, interface, RS, E and R/W of a row of data/tables.txt.
LcdConfig wiring(const TableRow& row, size_t first, LcdConfig c = {}) {
    c.lines = static_cast<int>(row.number(first));
    c.chars = static_cast<int>(row.number(first + 1));
    c.dataport = portof(row[first + 2]);
    c.interface = static_cast<int>(row.number(first + 3));
    c.rs = pinof(row[first + 4]);
    c.e = pinof(row[first + 5]);
    c.rw = pinof(row[first + 6]);
    return c;
}

TEST(LcdOptions, ItemsGiveTheConfigurationOrSayWhichIsBad) {
    std::string error;
    for (const TableRow& row : tablerows("tables.txt", "Device options")) {
        const auto config = parselcdspec(row[0], error);
        ASSERT_TRUE(config) << row.where << ": " << error;
        EXPECT_EQ(*config, wiring(row, 1)) << row.where;
    }
    const auto delays = parselcdspec("init=2000,cmd=50,data=60", error);
    ASSERT_TRUE(delays) << error;
    EXPECT_EQ(std::vector<int>({delays->busyinit, delays->busycmd, delays->busydata}),
              std::vector<int>({2000, 50, 60}));
    for (const TableRow& row : tablerows("tables.txt", "Bad device options")) {
        EXPECT_FALSE(parselcdspec(row[0], error)) << row.where;
        EXPECT_EQ(error.rfind(row[1], 0), 0u) << row.where << " gave: " << error;
    }
}

TEST(LcdHeadless, ProgramRunPrintsRowsAndLogsEveryByte) {
    MiniChip chip;
    ASSERT_TRUE(loadhexrecords(chip.m, VELMORA_TEST_DATA_DIR "/lcd4bit.hex"));
    std::ostringstream log;
    std::string error;
    auto lcd = attachlcd(chip.m, "2x16,d=PORTB.4,rs=PORTB.3,e=PORTB.2,rw=PORTB.1", error, &log);
    ASSERT_TRUE(lcd) << error;
    chip.run.menuspeed(kRateUltimate);
    chip.run.menustart();
    std::ostringstream out;
    printlcd(*lcd, out);
    EXPECT_EQ(out.str(), "|Hello, Velmora! |\n|LCD 4-bit test  |\n");
    // Four start-up bytes, four commands, 15 + 14 characters and the line jump.
    std::istringstream lines(log.str());
    std::string line;
    int count = 0;
    uint64_t previous = 0;
    while (std::getline(lines, line)) {
        ++count;
        const uint64_t cycle = std::stoull(line);
        EXPECT_GE(cycle, previous) << line;
        previous = cycle;
    }
    EXPECT_EQ(count, 4 + 4 + 15 + 14 + 1);
    EXPECT_NE(log.str().find("\tlcd\tcommand 28\n"), std::string::npos);
    EXPECT_NE(log.str().find("\tlcd\tdata 48\n"), std::string::npos);
}

TEST(LcdHeadless, BadSpecAttachesNothing) {
    MiniChip chip;
    std::string error;
    EXPECT_FALSE(attachlcd(chip.m, "5x5", error));
    EXPECT_EQ(error, "--lcd '5X5': not a module type (1x16, 2x16, 4x16, 2x20, 4x20, 2x24, 2x40), 4BIT, 8BIT or a port");
    EXPECT_TRUE(chip.m.observers.empty());
}

TEST(LcdBasic, DefineLinesGiveTheWiring) {
    LcdConfig start;
    start.lines = 1;
    start.chars = 40;
    start.dataport = kPortA;
    for (const TableRow& row : tablerows("tables.txt", "Basic defines")) {
        EXPECT_EQ(lcdconfigfrombasic(row[1], start), wiring(row, 2, start)) << row.where;
    }
}

struct CountingLcd : LcdModule {
    int turns = 0;
    uint64_t attend(Machine& m) override {
        ++turns;
        return LcdModule::attend(m);
    }
};

TEST(DevicePattern, QuietProgramGivesNoTurnsOnceTheBusyTimeIsOver) {
    MiniChip chip;
    chip.m.clockfrequency = 4.0f;
    loadwords(chip.m, {0xCFFF});  // rjmp . : writes no pin
    CountingLcd lcd;
    lcd.attach(chip.m);
    chip.m.attentioncycle = 400000;  // the run's end
    chip.run.onattention = [&chip] {
        if (chip.m.totalcycles >= 400000) chip.m.stoprequest = true;
        chip.m.attentioncycle = 400000;  // set afresh in every turn, as the headless runner does
    };
    chip.run.menuspeed(kRateUltimate);
    chip.run.menustart();
    // After the first step; when the 1640 us power-on busy time ends; at the run's end.
    EXPECT_EQ(lcd.turns, 3);
    EXPECT_EQ(lcd.state.busy, 0);
    EXPECT_GE(chip.m.totalcycles, 400000u);
}

TEST(DevicePattern, PinChangeOrInputChangeGivesATurn) {
    MiniChip chip;
    CountingLcd lcd;
    lcd.attach(chip.m);
    std::fill(chip.m.progmem.begin(), chip.m.progmem.end(), 0);
    clean(chip.m);
    chip.m.simulationrunning = true;
    chip.step(7000);
    const int rested = lcd.turns;
    chip.step(100);
    EXPECT_EQ(lcd.turns, rested);
    datamemwrite(chip.m, MiniChip::kPortc, 1);
    chip.step(2);
    EXPECT_EQ(lcd.turns, rested + 1) << "a port register written";
    setinput(chip.m, kPortD, 4);
    chip.step(2);
    EXPECT_EQ(lcd.turns, rested + 2) << "an outside input changed";
    lcd.detach();
    datamemwrite(chip.m, MiniChip::kPortc, 2);
    chip.step(2);
    EXPECT_EQ(lcd.turns, rested + 2) << "detached";
}

}  // namespace
}  // namespace velmora::test
