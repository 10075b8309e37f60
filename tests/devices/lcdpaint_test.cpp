// What the panel shows: cells by row and column for each module type and shift, the cursor's
// place and blink, the dots in the canvas, and the character ROM file.

#include <gtest/gtest.h>

#include "devices/lcdpaint.h"
#include "support/sectiontable.h"

namespace velmora::test {
namespace {

TEST(LcdLayout, CellAtRowAndColumnAndTheCursorsPlace) {
    for (const TableRow& row : tablerows("tables.txt", "Visible cells")) {
        const auto n = [&row](size_t i) { return static_cast<int>(row.number(i)); };
        EXPECT_EQ(lcdvisiblecell(n(0), n(1), n(2), n(3), n(4)), n(5)) << row.where;
    }
    for (const TableRow& row : tablerows("tables.txt", "Cursor places")) {
        const auto n = [&row](size_t i) { return static_cast<int>(row.number(i)); };
        const std::optional<LcdPlace> place = row[4].empty() ? std::nullopt : std::optional(LcdPlace{n(4), n(5)});
        EXPECT_EQ(lcdcursorplace(n(0), n(1), n(2), n(3)), place) << row.where;
    }
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
    for (const TableRow& row : tablerows("tables.txt", "Bad character ROMs")) {
        EXPECT_FALSE(readlcdrom(row[0], rom, error)) << row.where;
        EXPECT_EQ(error, row[1]) << row.where;
    }
}

}  // namespace
}  // namespace velmora::test
