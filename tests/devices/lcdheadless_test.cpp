// The module without a window: device specs, the printed rows, the change log, and the
// wiring taken from a BASIC program's Define lines.

#include <gtest/gtest.h>

#include <sstream>

#include "devices/lcdbasic.h"
#include "devices/lcdheadless.h"
#include "lcdfixture.h"

namespace velmora::test {
namespace {

TEST(LcdSpec, ItemsGiveTheConfiguration) {
    const auto wiring = [](int lines, int chars, int port, int interface, PinWire rs, PinWire e, PinWire rw) {
        LcdConfig c;
        c.lines = lines;
        c.chars = chars;
        c.dataport = port;
        c.interface = interface;
        c.rs = rs;
        c.e = e;
        c.rw = rw;
        return c;
    };
    const PinWire b3{kPortB, 3}, b2{kPortB, 2};
    const struct {
        const char* spec;
        LcdConfig config;
    } rows[] = {
        {"", LcdConfig{}},
        {"2x16,d=PORTB.4,rs=PORTB.3,e=PORTB.2", LcdConfig{}},
        {"4x20, D=portc.0, RS=PORTD.7, E=PORTD.6, RW=PORTD.5",
         wiring(4, 20, kPortC, kLcdInterfaceLow, {kPortD, 7}, {kPortD, 6}, {kPortD, 5})},
        {"PORTA,8bit,E=PORTB.3,RS=PORTB.2", wiring(2, 16, kPortA, kLcdInterface8, b2, {kPortB, 3}, {})},
        {"d=PORTC.0,bits=8", wiring(2, 16, kPortC, kLcdInterface8, b3, b2, {})},
        {"8bit,4bit", LcdConfig{}},
        {"1x16", wiring(1, 16, kPortB, kLcdInterfaceHigh, b3, b2, {})},
        {"2x40", wiring(2, 40, kPortB, kLcdInterfaceHigh, b3, b2, {})},
    };
    for (const auto& row : rows) {
        std::string error;
        const auto config = parselcdspec(row.spec, error);
        ASSERT_TRUE(config) << row.spec << ": " << error;
        EXPECT_EQ(*config, row.config) << row.spec;
    }
    std::string error;
    const auto delays = parselcdspec("init=2000,cmd=50,data=60", error);
    ASSERT_TRUE(delays) << error;
    EXPECT_EQ(delays->busyinit, 2000);
    EXPECT_EQ(delays->busycmd, 50);
    EXPECT_EQ(delays->busydata, 60);
}

TEST(LcdSpec, BadItemsSayWhich) {
    const struct {
        const char* spec;
        const char* error;
    } rows[] = {
        {"3x16", "'3X16': not a module type"},
        {"d=PORTB.2", "'D=PORTB.2': expected PORTx, PORTx.4 or PORTx.0"},
        {"rs=PORTH.1", "'RS=PORTH.1': expected a pin such as PORTB.3"},
        {"e=PORTB", "'E=PORTB': expected a pin"},
        {"cmd=19", "'CMD=19': expected whole microseconds from 20 to 5000"},
        {"init=5001", "'INIT=5001': expected whole microseconds"},
        {"bits=6", "'BITS=6': expected 4 or 8"},
        {"colour=2", "'COLOUR=2': unknown item"},
        {"bas=/nonexistent/x.bas", "cannot read '/nonexistent/x.bas'"},
    };
    for (const auto& row : rows) {
        std::string error;
        EXPECT_FALSE(parselcdspec(row.spec, error)) << row.spec;
        EXPECT_EQ(error.rfind(row.error, 0), 0u) << row.spec << " gave: " << error;
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
    const struct {
        const char* name;
        const char* source;
        int dataport, interface, lines, chars;
        PinWire rs, e, rw;
    } rows[] = {
        {"no defines: the defaults, type kept", "print 1\n", kPortB, 4, 1, 40, {kPortB, 3}, {kPortB, 2}, {}},
        {"full set",
         "Define LCD_DREG = PORTC\nDEFINE LCD_DBIT = 0\n\tdefine  lcd_rsreg=portd ' comment\nDefine LCD_RSBIT = 4\n"
         "Define LCD_EREG = PORTD\nDefine LCD_EBIT = 5\nDefine LCD_RWREG = PORTD\nDefine LCD_RWBIT = 6\n"
         "Define LCD_LINES = 4\nDefine LCD_CHARS = 20\n",
         kPortC, 0, 4, 20, {kPortD, 4}, {kPortD, 5}, {kPortD, 6}},
        {"8 bits, hexadecimal and binary numbers",
         "Define LCD_BITS = 8\nDefine LCD_RSBIT = 0x07\nDefine LCD_EBIT = %110\n", kPortB, 8, 1, 40, {kPortB, 7},
         {kPortB, 6}, {}},
        {"not a number is ignored", "Define LCD_EBIT = X\nDefine LCD_LINES = 3\nDefine LCD_CHARS = 16\n", kPortB, 4,
         1, 40, {kPortB, 3}, {kPortB, 2}, {}},
        {"legal type taken", "Define LCD_LINES = 2\nDefine LCD_CHARS = 24 'wide\n", kPortB, 4, 2, 24, {kPortB, 3},
         {kPortB, 2}, {}},
        {"a comment hides the line", "' Define LCD_DREG = PORTA\n", kPortB, 4, 1, 40, {kPortB, 3}, {kPortB, 2}, {}},
        {"CR LF line ends, as the editor writes them",
         "Define LCD_DREG = PORTC\r\nDefine LCD_LINES = 2\r\nDefine LCD_CHARS = 20\r\n", kPortC, 4, 2, 20,
         {kPortB, 3}, {kPortB, 2}, {}},
    };
    for (const auto& row : rows) {
        LcdConfig start;
        start.lines = 1;
        start.chars = 40;
        start.dataport = kPortA;
        const LcdConfig c = lcdconfigfrombasic(row.source, start);
        EXPECT_EQ(c.dataport, row.dataport) << row.name;
        EXPECT_EQ(c.interface, row.interface) << row.name;
        EXPECT_EQ(c.lines, row.lines) << row.name;
        EXPECT_EQ(c.chars, row.chars) << row.name;
        EXPECT_EQ(c.rs, row.rs) << row.name;
        EXPECT_EQ(c.e, row.e) << row.name;
        EXPECT_EQ(c.rw, row.rw) << row.name;
    }
}

}  // namespace
}  // namespace velmora::test
