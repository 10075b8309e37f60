#include "devices/lcdcontroller.h"

namespace velmora {

namespace {

// Rows and characters of the module decide where the display shift wraps.
int shiftring(int lines) { return lines == 1 ? kLcdCells : kLcdCells / 2; }

void command(LcdController& c, uint8_t byte, const LcdContext& context) {
    c.busy = static_cast<float>(context.busycmd);
    if (byte >= 64 && byte < 128) {
        c.cgrammode = true;
        c.cgramaddress = byte - 64;
        return;
    }
    if (byte != 0) c.cgrammode = false;
    if (byte == 1) {
        lcdclear(c);
    } else if (byte == 2 || byte == 3) {
        c.address = 0;
        c.shift = 0;
    } else if (byte >= 8 && byte < 16) {
        // Display on/off is not modelled: the display stays visible.
        c.cursormode = byte & 3;
    } else if (byte >= 16 && byte < 32) {
        const int ring = shiftring(context.lines);
        switch ((byte - 16) / 4) {
        case 0: c.address = c.address == 0 ? kLcdCells - 1 : c.address - 1; break;
        case 1: c.address = c.address == kLcdCells - 1 ? 0 : c.address + 1; break;
        case 2: c.shift = c.shift + 1 >= ring ? 0 : c.shift + 1; break;
        default: c.shift = c.shift - 1 < 0 ? ring - 1 : c.shift - 1; break;
        }
    } else if (byte >= 32 && byte < 64) {
        if (context.mhz < 2.0f) c.busy = 2.0f * static_cast<float>(context.busycmd);
        c.interfacelength = (byte & 0x10) ? 8 : 4;
        c.functionlines = (byte & 0x08) ? 2 : 1;
        if (c.functionlines == 2 && c.shift > 39) c.shift = 0;
    } else if (byte >= 128) {
        const int a = byte - 128;
        if (a < 40) c.address = a;
        else if (a >= 64 && a < 104) c.address = a - 24;
    }
    // 4..7, Entry Mode: increment, decrement and automatic shift are not modelled.
}

void data(LcdController& c, uint8_t byte, const LcdContext& context) {
    c.busy = static_cast<float>(context.busydata);
    if (c.cgrammode) {
        c.cgram[c.cgramaddress / 8][c.cgramaddress % 8] = byte & 0x1F;
        c.cgramaddress = (c.cgramaddress + 1) % kLcdCgramBytes;
        return;
    }
    c.cells[c.address] = LcdCell{lcdglyph(c, byte, context.rom), byte};
    c.address = (c.address + 1) % kLcdCells;
}

}  // namespace

LcdGlyph lcdglyph(const LcdController& c, uint8_t code, const LcdCharRom* rom) {
    if (code < 16) return c.cgram[code & 7];
    return rom ? rom->glyphs[code] : LcdGlyph{};
}

void lcdclear(LcdController& c) {
    c.cgrammode = false;
    c.cells.fill(LcdCell{});
    c.address = 0;
    c.shift = 0;
}

void lcdpoweron(LcdController& c, float busyinit) {
    c.previouse = false;
    c.pendingnibble = 0;
    c.busy = busyinit;
    c.interfacelength = 8;
    c.functionlines = 1;
    c.cursormode = c.cursorphase = 0;
    c.cgrammode = false;
    c.cgramaddress = 0;
    c.initphase = false;
    lcdclear(c);
}

void lcdexecute(LcdController& c, uint8_t byte, bool rs, const LcdContext& context) {
    if (rs) data(c, byte, context);
    else command(c, byte, context);
}

uint8_t lcdreadvalue(const LcdController& c, bool rs) {
    if (rs) return c.cells[c.address].code;
    return static_cast<uint8_t>(c.address + (c.busy > 0 ? 128 : 0));
}

}  // namespace velmora
