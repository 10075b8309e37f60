#include "devices/lcdpaint.h"

namespace velmora {

namespace {

constexpr int kCellPitchX = 18, kCellPitchY = 29, kDotPitch = 3, kDotSize = 2;

void paintglyph(Canvas& canvas, int r, int c, const LcdGlyph& glyph, const LcdColors& colours) {
    const int left = kCellPitchX * c - 13, top = kCellPitchY * r - 24;
    for (int row = 0; row < 8; ++row)
        for (int col = 0; col < 5; ++col) {
            const bool lit = glyph[row] & (0x10 >> col);
            canvas.fillrect(left + kDotPitch * col, top + kDotPitch * row, kDotSize, kDotSize,
                            lit ? colours.lit : colours.dark);
        }
}

// Codes the ROM leaves blank read as blanks; a user character only when its pattern is.
char lcdtextchar(const LcdCell& cell) {
    const int code = cell.code;
    if (code >= 32 && code <= 125) return static_cast<char>(code);
    if ((code >= 16 && code < 32) || (code >= 128 && code <= 160)) return ' ';
    if (code < 16) {
        for (uint8_t row : cell.glyph)
            if (row != 0) return '?';
        return ' ';
    }
    return '?';
}

}  // namespace

void lcdstepphase(LcdController& c) {
    switch (c.cursormode) {
    case 0: c.cursorphase = 0; break;
    case 1: c.cursorphase = c.cursorphase == 2 ? 0 : 2; break;
    case 2: c.cursorphase = 1; break;
    default: c.cursorphase = c.cursorphase == 2 ? 1 : 2; break;
    }
}

int lcdpanelwidth(int chars) { return kCellPitchX * chars + 11; }
int lcdpanelheight(int lines) { return kCellPitchY * lines + 9; }

int lcdvisiblecell(int lines, int chars, int shift, int r, int c) {
    const int half = kLcdCells / 2;
    if (lines == 1) {
        if (shift != 0) return (shift + c - 1) % kLcdCells;
        // The real part shows DDRAM 0x00.. on the left half and 0x40.. on the right.
        return c <= chars / 2 ? c - 1 : half - 1 + (c - chars / 2);
    }
    // Rows 3 and 4 of a four-row module continue rows 1 and 2 after `chars` cells.
    const int index = (r >= 3 ? chars : 0) + c - 1;
    const int inhalf = (shift + index) % half;
    return (r % 2 == 0) ? half + inhalf : inhalf;
}

std::optional<LcdPlace> lcdcursorplace(int lines, int chars, int shift, int address) {
    if (lines == 1) {
        int p = address;
        if (p < shift) p += kLcdCells;
        const int column = p - shift + 1;
        if (column > chars) return std::nullopt;
        return LcdPlace{1, column};
    }
    const int half = kLcdCells / 2;
    const bool second = address >= half;
    int p = second ? address - half : address;
    if (p < shift) p += half;
    const int column = p - shift + 1;
    if (column <= chars) return LcdPlace{second ? 2 : 1, column};
    if (lines == 4 && column <= 2 * chars) return LcdPlace{second ? 4 : 3, column - chars};
    return std::nullopt;
}

void lcdpaintcursor(const LcdController& c, int lines, int chars, const LcdColors& colours, const LcdCharRom* rom,
                    Canvas& canvas) {
    if (c.cursormode == 0) return;
    const auto place = lcdcursorplace(lines, chars, c.shift, c.address);
    if (!place) return;
    LcdGlyph glyph = c.cells[c.address].glyph;
    if (c.cursorphase == 1) glyph[7] = 0x1F;
    if (c.cursorphase == 2) glyph = rom ? rom->glyphs[kLcdBlockCode] : LcdGlyph{};
    paintglyph(canvas, place->row, place->column, glyph, colours);
}

void lcdcursortick(LcdController& c, int lines, int chars, const LcdColors& colours, const LcdCharRom* rom,
                   Canvas& canvas) {
    lcdstepphase(c);
    lcdpaintcursor(c, lines, chars, colours, rom, canvas);
}

void lcdpaintcells(const LcdController& c, int lines, int chars, const LcdColors& colours, const LcdCharRom* rom,
                   Canvas& canvas) {
    if (canvas.width != lcdpanelwidth(chars) || canvas.height != lcdpanelheight(lines))
        canvas.resize(lcdpanelwidth(chars), lcdpanelheight(lines), colours.background);
    for (int r = 1; r <= lines; ++r)
        for (int col = 1; col <= chars; ++col)
            paintglyph(canvas, r, col, c.cells[lcdvisiblecell(lines, chars, c.shift, r, col)].glyph, colours);
    lcdpaintcursor(c, lines, chars, colours, rom, canvas);
}

void lcdrepaint(LcdController& c, int lines, int chars, const LcdColors& colours, const LcdCharRom* rom,
                Canvas& canvas) {
    lcdstepphase(c);
    lcdpaintcells(c, lines, chars, colours, rom, canvas);
}

std::vector<std::string> lcdtextrows(const LcdController& c, int lines, int chars) {
    std::vector<std::string> rows;
    for (int r = 1; r <= lines; ++r) {
        std::string text;
        for (int col = 1; col <= chars; ++col) {
            const LcdCell& cell = c.cells[lcdvisiblecell(lines, chars, c.shift, r, col)];
            text += lcdtextchar(cell);
        }
        rows.push_back(std::move(text));
    }
    return rows;
}

}  // namespace velmora
