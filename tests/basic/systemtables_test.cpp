// The three system tables of the BASIC Compiler window: their headers, and rows checked
// against the data sheets' register addresses, bit numbers and vectors.

#include "basic/systemtables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "basicfixture.h"

namespace velmora::test {
namespace {

using TableFunction = std::string (*)(const BasicModel&);

std::vector<std::string> tablelines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

struct Header {
    const char* table;
    TableFunction function;
    const char* first;
    const char* rule;
};

TEST(SystemTables, HeadersAndEveryRowHasThreeColumns) {
    const Header headers[] = {
        {"variables", systemvariablestable, "Name\tType\tAddress", "------------------------"},
        {"bit names", systembitnamestable, "Name\tValue\tRegister", "-------------------------"},
        {"interrupts", systeminterruptstable, "Name\tVector\tDescription", "----------------------------"},
    };
    for (const Header& h : headers)
        for (const char* model : {"ATmega32", "ATtiny13", "ATmega128"}) {
            const std::vector<std::string> lines = tablelines(h.function(basicmodel(model)));
            ASSERT_GT(lines.size(), 2u) << h.table << " " << model;
            EXPECT_EQ(lines[0], h.first) << h.table << " " << model;
            EXPECT_EQ(lines[1], h.rule) << h.table << " " << model;
            for (size_t i = 2; i < lines.size(); ++i)
                EXPECT_EQ(std::count(lines[i].begin(), lines[i].end(), '\t'), 2) << h.table << " " << model << ": "
                                                                                   << lines[i];
        }
}

struct Row {
    const char* model;
    TableFunction function;
    const char* line;
};

// Addresses are data addresses: I/O number plus 0x20, extended I/O as it stands.
TEST(SystemTables, RowsFromTheDataSheets) {
    const Row rows[] = {
        {"ATmega32", systemvariablestable, "PORTB\tByte\t0x38"},
        {"ATmega32", systemvariablestable, "PB\tByte\t0x38"},
        {"ATmega32", systemvariablestable, "PB3\tBit\t0x38,3"},
        {"ATmega32", systemvariablestable, "SREG\tByte\t0x5F"},
        {"ATmega32", systemvariablestable, "R0\tByte\t0x00"},
        {"ATmega32", systemvariablestable, "ZH\tByte\t0x1F"},
        {"ATmega128", systemvariablestable, "PORTF\tByte\t0x62"},
        {"ATmega128", systemvariablestable, "PF7\tBit\t0x62,7"},
        {"ATmega128", systemvariablestable, "UCSR1A\tByte\t0x9B"},
        {"ATtiny13", systemvariablestable, "PB4\tBit\t0x38,4"},
        {"ATmega32", systembitnamestable, "INT0\t6\tGICR(0x5B)"},
        {"ATmega32", systembitnamestable, "ADEN\t7\tADCSRA(0x26)"},
        {"ATmega32", systembitnamestable, "TXEN\t3\tUCSRB(0x2A)"},
        {"ATtiny13", systembitnamestable, "SE\t5\tMCUCR(0x55)"},
        {"ATmega32", systeminterruptstable, "INT0\t0x0002\tExternal Interrupt Request 0"},
        {"ATmega32", systeminterruptstable, "SPMR\t0x0028\tStore Program Memory Ready"},
        {"ATtiny13", systeminterruptstable, "INT0\t0x0001\tExternal Interrupt Request 0"},
        {"ATmega128", systeminterruptstable, "USART1_TX\t0x0040\tUSART1 Tx Complete"},
    };
    for (const Row& row : rows) {
        const std::vector<std::string> lines = tablelines(row.function(basicmodel(row.model)));
        EXPECT_NE(std::find(lines.begin(), lines.end(), row.line), lines.end()) << row.model << ": " << row.line;
    }
}

TEST(SystemTables, OneRowPerInterruptAndPerNamedBit) {
    // ATmega32: vectors 1 to 20 behind the reset; ATtiny13: 1 to 9.
    EXPECT_EQ(tablelines(systeminterruptstable(basicmodel("ATmega32"))).size(), 2u + 20u);
    EXPECT_EQ(tablelines(systeminterruptstable(basicmodel("ATtiny13"))).size(), 2u + 9u);
    const BasicModel& m32 = basicmodel("ATmega32");
    EXPECT_EQ(tablelines(systembitnamestable(m32)).size(), 2u + m32.bitnames.size());
}

}  // namespace
}  // namespace velmora::test
