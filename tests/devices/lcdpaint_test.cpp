// What the panel shows: cells by row and column for each module type and shift, the cursor's
// place and blink, the dots in the canvas, and the character ROM file.

#include <gtest/gtest.h>

#include "devices/lcdpaint.h"

namespace velmora::test {
namespace {

TEST(LcdLayout, CellAtRowAndColumn) {
    const struct {
        int lines, chars, shift, r, c, cell;
    } rows[] = {
        {1, 16, 0, 1, 1, 0},   {1, 16, 0, 1, 8, 7},    {1, 16, 0, 1, 9, 40},  {1, 16, 0, 1, 16, 47},
        {1, 16, 1, 1, 1, 1},   {1, 16, 79, 1, 2, 0},   {1, 16, 30, 1, 16, 45},
        {2, 16, 0, 1, 1, 0},   {2, 16, 0, 2, 1, 40},   {2, 40, 0, 2, 40, 79}, {2, 16, 39, 1, 1, 39},
        {2, 16, 39, 2, 2, 40}, {2, 24, 30, 2, 24, 53},
        {4, 20, 0, 1, 20, 19}, {4, 20, 0, 3, 1, 20},   {4, 20, 0, 2, 1, 40},  {4, 20, 0, 4, 20, 79},
        {4, 16, 0, 3, 1, 16},  {4, 16, 10, 3, 16, 1},  {4, 16, 10, 4, 16, 41},
    };
    for (const auto& row : rows)
        EXPECT_EQ(lcdvisiblecell(row.lines, row.chars, row.shift, row.r, row.c), row.cell)
            << row.lines << "x" << row.chars << " shift " << row.shift << " at " << row.r << "," << row.c;
}

TEST(LcdLayout, CursorPlace) {
    const struct {
        int lines, chars, shift, address;
        std::optional<LcdPlace> place;
    } rows[] = {
        {2, 16, 0, 0, LcdPlace{1, 1}},   {2, 16, 0, 15, LcdPlace{1, 16}}, {2, 16, 0, 16, std::nullopt},
        {2, 16, 0, 40, LcdPlace{2, 1}},  {2, 16, 2, 1, std::nullopt},     {2, 16, 2, 0, std::nullopt},
        {2, 16, 39, 0, LcdPlace{1, 2}},  {4, 20, 0, 20, LcdPlace{3, 1}},  {4, 20, 0, 79, LcdPlace{4, 20}},
        {1, 16, 0, 9, LcdPlace{1, 10}},  {1, 16, 0, 40, std::nullopt},    {1, 16, 70, 5, LcdPlace{1, 16}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(lcdcursorplace(row.lines, row.chars, row.shift, row.address), row.place)
            << row.lines << "x" << row.chars << " shift " << row.shift << " address " << row.address;
}

TEST(LcdPaint, DotsOfCellsAndTheBlinkingCursor) {
    LcdCharRom rom;
    std::string error;
    ASSERT_TRUE(loadlcdrom(VELMORA_SOURCE_DATA_DIR, rom, error)) << error;
    LcdController c;
    c.cells[0] = LcdCell{rom.glyphs['A'], 'A'};
    const LcdColors& colours = kLcdColorSchemes[0];
    Canvas canvas;
    lcdrepaint(c, 2, 16, colours, &rom, canvas);
    EXPECT_EQ(canvas.width, 18 * 16 + 11);
    EXPECT_EQ(canvas.height, 29 * 2 + 9);
    // 'A' row 0 is .###. : the dot in column 1 of cell (1,1) at x = 5 + 3, y = 5.
    EXPECT_EQ(canvas.at(8, 5), colours.lit);
    EXPECT_EQ(canvas.at(9, 6), colours.lit);
    EXPECT_EQ(canvas.at(5, 5), colours.dark);
    EXPECT_EQ(canvas.at(7, 5), colours.background) << "the gap between dots";
    // Blink only: block, plain, block.
    c.cursormode = 1;
    const int rowseven = 5 + 3 * 7;
    lcdcursortick(c, 2, 16, colours, &rom, canvas);
    EXPECT_EQ(c.cursorphase, 2);
    EXPECT_EQ(canvas.at(5, rowseven), colours.lit);
    lcdcursortick(c, 2, 16, colours, &rom, canvas);
    EXPECT_EQ(c.cursorphase, 0);
    EXPECT_EQ(canvas.at(5, rowseven), colours.dark);
    c.cursormode = 2;
    lcdcursortick(c, 2, 16, colours, &rom, canvas);
    EXPECT_EQ(c.cursorphase, 1);
    EXPECT_EQ(canvas.at(5, rowseven), colours.lit) << "underline on the eighth row";
    c.cursormode = 3;
    lcdcursortick(c, 2, 16, colours, &rom, canvas);
    EXPECT_EQ(c.cursorphase, 2);
    lcdcursortick(c, 2, 16, colours, &rom, canvas);
    EXPECT_EQ(c.cursorphase, 1);
}

TEST(LcdRom, PublishedGlyphsAndFileErrors) {
    LcdCharRom rom;
    std::string error;
    ASSERT_TRUE(loadlcdrom(VELMORA_SOURCE_DATA_DIR, rom, error)) << error;
    EXPECT_EQ(rom.glyphs['\\'], (LcdGlyph{0x11, 0x0A, 0x1F, 0x04, 0x1F, 0x04, 0x04, 0x00})) << "yen sign";
    EXPECT_EQ(rom.glyphs[126], (LcdGlyph{0x00, 0x04, 0x02, 0x1F, 0x02, 0x04, 0x00, 0x00})) << "right arrow";
    EXPECT_EQ(rom.glyphs[255], (LcdGlyph{0x1F, 0x1F, 0x1F, 0x1F, 0x1F, 0x1F, 0x1F, 0x1F})) << "block";
    EXPECT_EQ(rom.glyphs[32], LcdGlyph{});
    EXPECT_EQ(rom.glyphs[160], LcdGlyph{});
    int drawn = 0;
    for (int code = 33; code < 256; ++code) drawn += rom.glyphs[code] != LcdGlyph{};
    EXPECT_EQ(drawn, 95 + 95 - 1) << "33..127 and 161..255 drawn, FE blank";
    const struct {
        const char* text;
        const char* error;
    } bad[] = {
        {"41: 00 00 00 00 00 00 00\n", "line 1: fewer than eight rows"},
        {"\n0F: 00 00 00 00 00 00 00 00\n", "line 2: code 0F is not a ROM code"},
        {"41: 00 00 00 00 00 00 00 20\n", "line 1: row '20' is not 00..1F"},
        {"41 00 00\n", "line 1: expected 'XX:'"},
        {"41: 00 00 00 00 00 00 00 00 00\n", "line 1: more than eight rows"},
    };
    for (const auto& row : bad) {
        EXPECT_FALSE(readlcdrom(row.text, rom, error)) << row.text;
        EXPECT_EQ(error, row.error);
    }
}

}  // namespace
}  // namespace velmora::test
