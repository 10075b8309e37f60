// The instruction set on the controller alone: byte sequences in, display memory and
// controller state out (data/tables.txt).

#include <gtest/gtest.h>

#include <sstream>

#include "devices/lcdcontroller.h"
#include "support/sectiontable.h"

namespace velmora::test {
namespace {

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

}  // namespace
}  // namespace velmora::test
