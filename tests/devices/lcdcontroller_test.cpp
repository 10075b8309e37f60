// The instruction set on the controller alone: byte sequences in, display memory and
// controller state out.

#include <gtest/gtest.h>

#include "devices/lcdcontroller.h"

namespace velmora::test {
namespace {

struct Byte {
    bool rs;
    uint8_t value;
};
constexpr Byte C(uint8_t v) { return {false, v}; }
constexpr Byte D(uint8_t v) { return {true, v}; }

struct Row {
    const char* name;
    int lines;
    std::vector<Byte> bytes;
    int address, shift, cursormode, interfacelength, functionlines;
    bool cgrammode;
    float busy;
};

TEST(LcdInstructions, CommandAndDataBytes) {
    const Row rows[] = {
        {"command 0 only sets busy", 2, {D('A'), C(0)}, 1, 0, 0, 8, 1, false, 42},
        {"clear display", 2, {D('A'), D('B'), C(0x18), C(1)}, 0, 0, 0, 8, 1, false, 42},
        {"return home keeps cells", 2, {D('A'), C(0x18), C(2)}, 0, 0, 0, 8, 1, false, 42},
        {"return home 3", 2, {D('A'), C(3)}, 0, 0, 0, 8, 1, false, 42},
        {"entry mode leaves CGRAM", 2, {C(0x40), C(0x06)}, 0, 0, 0, 8, 1, false, 42},
        {"display control sets cursor mode", 2, {C(0x0F)}, 0, 0, 3, 8, 1, false, 42},
        {"cursor underline only", 2, {C(0x0E)}, 0, 0, 2, 8, 1, false, 42},
        {"display off not modelled", 2, {C(0x09)}, 0, 0, 1, 8, 1, false, 42},
        {"cursor left from 0 wraps to 79", 2, {C(0x10)}, 79, 0, 0, 8, 1, false, 42},
        {"cursor right from 79 wraps to 0", 2, {C(0xE7), C(0x14)}, 0, 0, 0, 8, 1, false, 42},
        {"shift right on two rows", 2, {C(0x18), C(0x18)}, 0, 2, 0, 8, 1, false, 42},
        {"shift left wraps to 39", 2, {C(0x1C)}, 0, 39, 0, 8, 1, false, 42},
        {"shift left wraps to 79 on one row", 1, {C(0x1C)}, 0, 79, 0, 8, 1, false, 42},
        {"function set 4-bit, 2 lines", 2, {C(0x28)}, 0, 0, 0, 4, 2, false, 42},
        {"function set 8-bit, 1 line", 1, {C(0x28), C(0x30)}, 0, 0, 0, 8, 1, false, 42},
        {"two lines reset a shift above 39", 1, {C(0x1C), C(0x38)}, 0, 0, 0, 8, 2, false, 42},
        {"set CGRAM address", 2, {C(0x48)}, 0, 0, 0, 8, 1, true, 42},
        {"set DDRAM 0x27", 2, {C(0xA7)}, 39, 0, 0, 8, 1, false, 42},
        {"set DDRAM 0x40 is cell 40", 2, {C(0xC0)}, 40, 0, 0, 8, 1, false, 42},
        {"set DDRAM 0x67 is cell 79", 2, {C(0xE7)}, 79, 0, 0, 8, 1, false, 42},
        {"set DDRAM 0x28 leaves counter", 2, {C(0x85), C(0xA8)}, 5, 0, 0, 8, 1, false, 42},
        {"set DDRAM 0x3F leaves counter", 2, {C(0x85), C(0xBF)}, 5, 0, 0, 8, 1, false, 42},
        {"set DDRAM 0x68 leaves counter", 2, {C(0x85), C(0xE8)}, 5, 0, 0, 8, 1, false, 42},
        {"set DDRAM 0x7F leaves counter", 2, {C(0x85), C(0xFF)}, 5, 0, 0, 8, 1, false, 42},
        {"data moves the counter", 2, {D('A'), D('B')}, 2, 0, 0, 8, 1, false, 46},
        {"data at 79 wraps to 0", 2, {C(0xE7), D('Z')}, 0, 0, 0, 8, 1, false, 46},
        {"CGRAM data leaves the counter", 2, {C(0x40), D(0x1F)}, 0, 0, 0, 8, 1, true, 46},
    };
    for (const Row& row : rows) {
        LcdController c;
        const LcdContext context{row.lines, 42, 46, 4.0f, nullptr};
        for (const Byte& b : row.bytes) lcdexecute(c, b.value, b.rs, context);
        EXPECT_EQ(c.address, row.address) << row.name;
        EXPECT_EQ(c.shift, row.shift) << row.name;
        EXPECT_EQ(c.cursormode, row.cursormode) << row.name;
        EXPECT_EQ(c.interfacelength, row.interfacelength) << row.name;
        EXPECT_EQ(c.functionlines, row.functionlines) << row.name;
        EXPECT_EQ(c.cgrammode, row.cgrammode) << row.name;
        EXPECT_EQ(c.busy, row.busy) << row.name;
    }
}

TEST(LcdInstructions, FunctionSetBelowTwoMegahertzDoublesTheDelay) {
    const struct {
        float mhz;
        float busy;
    } rows[] = {{1.0f, 84}, {1.999f, 84}, {2.0f, 42}, {16.0f, 42}};
    for (const auto& row : rows) {
        LcdController c;
        lcdexecute(c, 0x28, false, LcdContext{2, 42, 46, row.mhz, nullptr});
        EXPECT_EQ(c.busy, row.busy) << row.mhz << " MHz";
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
