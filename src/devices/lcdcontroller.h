#pragma once
// The HD44780-style controller of the LCD module without its bus: display memory, CGRAM, the
// address counter, cursor and shift, and what one command or data byte does to them.

#include <array>
#include <cstdint>

#include "devices/lcdrom.h"

namespace velmora {

inline constexpr int kLcdCells = 80;       // cells 0..39 are DDRAM 0x00..0x27, 40..79 are 0x40..0x67
inline constexpr int kLcdCgramBytes = 64;  // eight user characters of eight rows

struct LcdCell {
    LcdGlyph glyph{};  // the pattern when it was written: later CGRAM changes do not reach it
    uint8_t code = 0;
};

struct LcdController {
    std::array<LcdCell, kLcdCells> cells{};
    std::array<LcdGlyph, 8> cgram{};
    int address = 0;  // the cursor: a cell number 0..79
    bool cgrammode = false;
    int cgramaddress = 0;  // character times 8 plus row
    int shift = 0;
    int cursormode = 0;   // 0 off, 1 blink, 2 underline, 3 both
    int cursorphase = 0;  // 0 plain glyph, 1 underlined, 2 block
    int interfacelength = 8;
    int functionlines = 1;
    float busy = 0;  // microseconds left; 0 means ready
    bool previouse = false;
    int pendingnibble = 0;  // 0: none; else the high nibble's value plus 1000
    double laststrobe = 0;  // microseconds
    bool initphase = false;
};

// What a byte needs beyond the controller: the module's rows, its delays and clock, the ROM.
struct LcdContext {
    int lines = 2;
    int busycmd = 42;
    int busydata = 46;
    float mhz = 4;
    const LcdCharRom* rom = nullptr;  // none: ROM glyphs are blank
};

// Clear Display: CGRAM mode off, every cell blank with code 0, counter and shift 0.
void lcdclear(LcdController& c);
// The power-on state with the given busy time: 8-bit, one function line, cursor off, clear.
void lcdpoweron(LcdController& c, float busyinit);
// Executes a whole byte as a command (rs false) or data (rs true); sets the busy time.
void lcdexecute(LcdController& c, uint8_t byte, bool rs, const LcdContext& context);
// What a read puts on the bus: the counter with the busy flag, or the code under the counter.
uint8_t lcdreadvalue(const LcdController& c, bool rs);
// The glyph that a data byte writes: CGRAM for codes 0..15, the ROM for the others.
LcdGlyph lcdglyph(const LcdController& c, uint8_t code, const LcdCharRom* rom);

}  // namespace velmora
