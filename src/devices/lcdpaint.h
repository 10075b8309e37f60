#pragma once
// What the LCD module shows: which display cell stands at each row and column for the
// module's type and shift, the dots of every cell painted into a Canvas, the cursor, and
// the same contents as text rows for headless runs.

#include <optional>
#include <string>
#include <vector>

#include "devices/canvas.h"
#include "devices/lcdconfig.h"
#include "devices/lcdcontroller.h"

namespace velmora {

// Panel size in pixels: 18 per character plus 11, 29 per row plus 9.
int lcdpanelwidth(int chars);
int lcdpanelheight(int lines);

// The cell shown at row r and column c (both from 1).
int lcdvisiblecell(int lines, int chars, int shift, int r, int c);

struct LcdPlace {
    int row;
    int column;
    bool operator==(const LcdPlace&) const = default;
};
// Where the cursor at `address` shows, if it is visible.
std::optional<LcdPlace> lcdcursorplace(int lines, int chars, int shift, int address);

// Paints every cell, dots lit and dark, then the cursor in its present phase.
void lcdpaintcells(const LcdController& c, int lines, int chars, const LcdColors& colours, const LcdCharRom* rom,
                   Canvas& canvas);
// Paints the cell under the counter as plain, underlined or block by the cursor phase.
void lcdpaintcursor(const LcdController& c, int lines, int chars, const LcdColors& colours, const LcdCharRom* rom,
                    Canvas& canvas);
// Paints every cell, dots lit and dark, then runs the cursor routine (which steps the blink).
void lcdrepaint(LcdController& c, int lines, int chars, const LcdColors& colours, const LcdCharRom* rom,
                Canvas& canvas);
// The blink step alone: the cursor phase that the cursor mode gives next.
void lcdstepphase(LcdController& c);
// The cursor routine of the blink timer: steps the cursor phase by the cursor mode, then
// paints the cell under the counter as plain, underlined or block.
void lcdcursortick(LcdController& c, int lines, int chars, const LcdColors& colours, const LcdCharRom* rom,
                   Canvas& canvas);

// One text per row as the panel shows it. Codes 32..125 are their ASCII characters (92 too,
// which the ROM shows as the yen sign); codes the ROM leaves blank and user characters whose
// pattern is blank are blanks; anything else (user characters, katakana, arrows) is '?'.
std::vector<std::string> lcdtextrows(const LcdController& c, int lines, int chars);

}  // namespace velmora
