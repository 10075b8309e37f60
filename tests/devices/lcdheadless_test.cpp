// The module without a window: the --lcd option texts, the printed rows, the change log, and the
// wiring taken from a BASIC program's Define lines (tables in data/tables.txt).

#include <gtest/gtest.h>

#include <sstream>

#include "devices/lcdbasic.h"
#include "devices/lcdheadless.h"
#include "lcdfixture.h"

namespace velmora::test {
namespace {

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

}  // namespace
}  // namespace velmora::test
