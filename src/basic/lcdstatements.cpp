#include "basic/lcdstatements.h"

#include <vector>

#include "basic/defines.h"
#include "basic/delays.h"
#include "basic/emit.h"
#include "basic/operands.h"
#include "basic/outputitems.h"
#include "basic/symbols.h"
#include "basic/tokens.h"

namespace velmora {

namespace {

// The pins the Define parameters give, as the routines name them.
struct LcdWiring {
    std::string data;  // port letter of the data lines
    bool eightbits;
    bool highnibble;  // four lines on bits 4..7 (LCD_DBIT 4), else on 0..3
    std::string rs, e, rw;  // "PORTB,3" without the register's prefix: "B,3"
    bool hasrw;
    bool polls;  // reads the busy flag instead of waiting

    std::string port(const std::string& pin) const { return "PORT" + pin; }
};

std::string pin(const CompileContext& ctx, const char* reg, const char* bit) {
    return portletter(ctx, defineparameter(ctx, reg)) + "," + std::to_string(defineparameter(ctx, bit));
}

LcdWiring wiring(const CompileContext& ctx) {
    LcdWiring w;
    w.data = portletter(ctx, defineparameter(ctx, "LCD_DREG"));
    w.eightbits = defineparameter(ctx, "LCD_BITS") == 8;
    w.highnibble = defineparameter(ctx, "LCD_DBIT") == 4;
    w.rs = pin(ctx, "LCD_RSREG", "LCD_RSBIT");
    w.e = pin(ctx, "LCD_EREG", "LCD_EBIT");
    w.hasrw = defineparameter(ctx, "LCD_RWREG") != 0;
    w.rw = w.hasrw ? pin(ctx, "LCD_RWREG", "LCD_RWBIT") : "";
    w.polls = w.hasrw && defineparameter(ctx, "LCD_READ_BUSY_FLAG") == 1;
    return w;
}

bool initialised(CompileContext& ctx) {
    return ctx.lcdinitialised || fail(ctx, ": LCD module must be initialized first with LCDINIT statement.");
}

void command(CompileContext& ctx, int value) {
    emitcode(ctx, "LDI R31," + immediate(value));
    emitcode(ctx, "RCALL LC02");
}

void append(std::vector<std::string>& lines, const std::vector<std::string>& more) {
    lines.insert(lines.end(), more.begin(), more.end());
}

// One half of a byte onto a four-line bus: the port's other half kept, R31's upper nibble (or
// its lower one after SWAP) put in.
void nibble(std::vector<std::string>& lines, const LcdWiring& w, bool swap) {
    append(lines, {"IN R16,PORT" + w.data, w.highnibble ? "ANDI R16,0x0F" : "ANDI R16,0xF0"});
    if (swap) lines.push_back("SWAP R31");
    append(lines, {"MOV R17,R31", w.highnibble ? "ANDI R17,0xF0" : "ANDI R17,0x0F", "OR R16,R17",
                   "OUT PORT" + w.data + ",R16"});
}

// LC01 (RS high, a character) or LC02 (RS low, a command).
std::vector<std::string> sendbyte(const CompileContext& ctx, const LcdWiring& w, bool character) {
    std::vector<std::string> lines = {std::string(character ? "LC01: SBI " : "LC02: CBI ") + w.port(w.rs)};
    if (w.hasrw) lines.push_back("CBI " + w.port(w.rw));
    if (w.eightbits) {
        append(lines, {"OUT PORT" + w.data + ",R31", "RCALL LCX1"});
    } else {
        nibble(lines, w, !w.highnibble);
        lines.push_back("RCALL LCX1");
        nibble(lines, w, true);
        lines.push_back("RCALL LCX1");
    }
    if (w.polls) {
        const std::string ddr = "DDR" + w.data;
        append(lines, {"CBI " + w.port(w.rs), "SBI " + w.port(w.rw)});
        if (w.eightbits)
            lines.push_back("OUT " + ddr + ",R15");
        else
            append(lines, {"IN R16," + ddr, w.highnibble ? "ANDI R16,0x0F" : "ANDI R16,0xF0", "OUT " + ddr + ",R16"});
        const std::string poll = character ? "LC10" : "LC11";
        lines.push_back(poll + ": RCALL LCX2");
        // On four lines both reads deliver the upper nibble; the first holds the flag.
        if (w.eightbits)
            lines.push_back("SBRC R31,7");
        else
            append(lines, {"MOV R30,R31", "RCALL LCX2", w.highnibble ? "SBRC R30,7" : "SBRC R30,3"});
        lines.push_back("RJMP " + poll);
        if (w.eightbits)
            append(lines, {"SER R16", "OUT " + ddr + ",R16"});
        else
            append(lines, {"IN R16," + ddr, w.highnibble ? "ORI R16,0xF0" : "ORI R16,0x0F", "OUT " + ddr + ",R16"});
    } else if (character) {
        append(lines, waitusbytelines(ctx, defineparameter(ctx, "LCD_DATAUS")));
    } else {
        append(lines, waituswordlines(ctx, defineparameter(ctx, "LCD_COMMANDUS")));
    }
    lines.push_back("RET");
    return lines;
}

const OutputSink kLcdSink = {"LC01", "LC21", kRoutineLcdDigits, 2, false};

struct CommandWord {
    const char* word;
    int value;
};
const CommandWord kCommandWords[] = {
    {"LcdClear", 0x01},      {"LcdHome", 0x02},       {"LcdDisplayOn", 0x0C},         {"LcdCurOff", 0x0C},
    {"LcdDisplayOff", 0x08}, {"LcdCurBlink", 0x0D},   {"LcdCurUnderline", 0x0E},     {"LcdCurBlinkUnderline", 0x0F},
    {"LcdLeft", 0x10},       {"LcdRight", 0x14},      {"LcdShiftLeft", 0x18},        {"LcdShiftRight", 0x1C},
};

// The line of "LcdLine3Home", "LcdLine2Clear(...)": 1 to 4 and what follows the digit, or 0.
int linenumber(const std::string& word, std::string& rest) {
    if (!word.starts_with("LcdLine") || word.size() < 8 || word[7] < '1' || word[7] > '4') return 0;
    rest = word.substr(8);
    return word[7] - '0';
}

int linehome(const CompileContext& ctx, int line) {
    const int chars = defineparameter(ctx, "LCD_CHARS");
    return (line % 2 == 1 ? 0x80 : 0xC0) + (line >= 3 ? chars : 0);
}

bool lineposition(CompileContext& ctx, int line, const std::string& argument) {
    const Operand op = operandof(ctx, argument);
    if (op.type == kTypeNone) {
        const int64_t x = constantvalue(ctx, argument);
        if (x < 1 || x > 40) return fail(ctx, ": Incorrect cursor position argument.");
        command(ctx, linehome(ctx, line) + static_cast<int>(x) - 1);
        return true;
    }
    if (op.type != kTypeByte && op.type != kTypeWord && op.type != kTypeByteIndexed && op.type != kTypeWordIndexed)
        return fail(ctx, ": Incorrect cursor position argument.");
    if (!loadoperandbyte0(ctx, op, "R31")) return false;
    emitcode(ctx, "DEC R31");
    emitcode(ctx, line % 2 == 1 ? "ORI R31,0x80" : "ORI R31,0xC0");
    // Subtracting 256 - LCD_CHARS adds LCD_CHARS.
    if (line >= 3) emitcode(ctx, "SUBI R31," + immediate(256 - defineparameter(ctx, "LCD_CHARS")));
    emitcode(ctx, "RCALL LC02");
    return true;
}

bool linecommand(CompileContext& ctx, int line, const std::string& rest) {
    if (line >= 3 && defineparameter(ctx, "LCD_LINES") != 4)
        return fail(ctx, ": Statement available for 4-line LCD modules only.");
    if (rest == "Home") {
        command(ctx, linehome(ctx, line));
        return true;
    }
    if (rest == "Clear") {
        const int chars = defineparameter(ctx, "LCD_CHARS");
        command(ctx, linehome(ctx, line));
        emitcode(ctx, "LDI R30," + immediate(chars == 0 ? 0x28 : chars));
        const std::string loop = newlabel(ctx);
        emitlabel(ctx, loop, "LDI R31,0x20");
        emitcode(ctx, "RCALL LC01");
        emitcode(ctx, "DEC R30");
        emitcode(ctx, "BRNE " + loop);
        command(ctx, linehome(ctx, line));
        return true;
    }
    if (rest.starts_with("Pos(") && rest.ends_with(")")) return lineposition(ctx, line, rest.substr(4, rest.size() - 5));
    return fail(ctx, ": Incorrect argument.");
}

}  // namespace

bool lcdinitstatement(CompileContext& ctx, const std::string& argument) {
    if (ctx.lcdinitialised) return fail(ctx, ": LCDINIT statement may appear only once.");
    if ((defineparameter(ctx, "LCD_LINES") == 0) != (defineparameter(ctx, "LCD_CHARS") == 0))
        return fail(ctx, ": Both LCD_LINES and LCD_CHARS parameters have to be defined.");
    const std::string text = argument.empty() ? "0" : argument;
    int cursor = -1;
    const char* const kCursorWords[] = {"LcdCurOff", "LcdCurBlink", "LcdCurUnderline", "LcdCurBlinkUnderline"};
    for (int i = 0; i < 4; ++i)
        if (text == kCursorWords[i]) cursor = i;
    if (cursor < 0 && operandof(ctx, text).type == kTypeNone) {
        const int64_t value = constantvalue(ctx, text);
        if (value >= 0 && value <= 3) cursor = static_cast<int>(value);
    }
    if (cursor < 0) return fail(ctx, ": Incorrect argument.");
    for (int routine : {kRoutineWaitMs, kRoutineWaitUsByte, kRoutineWaitUsWord, kRoutineLcdChar, kRoutineLcdCommand})
        requestroutine(ctx, routine);

    const LcdWiring w = wiring(ctx);
    // Control lines low, then made outputs.
    for (const std::string* line : {&w.rs, &w.e, w.hasrw ? &w.rw : nullptr})
        if (line) emitcode(ctx, "CBI PORT" + *line);
    for (const std::string* line : {&w.rs, &w.e, w.hasrw ? &w.rw : nullptr})
        if (line) emitcode(ctx, "SBI DDR" + *line);
    if (w.eightbits) {
        emitcode(ctx, "SER R16");
    } else {
        emitcode(ctx, "IN R16,DDR" + w.data);
        emitcode(ctx, w.highnibble ? "ORI R16,0xF0" : "ORI R16,0x0F");
    }
    emitcode(ctx, "OUT DDR" + w.data + ",R16");
    const int initms = defineparameter(ctx, "LCD_INITMS");
    emitcode(ctx, "LDI R24," + immediate(initms & 0xFF));
    emitcode(ctx, "LDI R25," + immediate(initms >> 8));
    emitcode(ctx, "RCALL W001");
    for (int i = 0; i < 3; ++i) command(ctx, 0x33);
    if (w.eightbits) {
        command(ctx, 0x38);
    } else {
        command(ctx, 0x22);
        command(ctx, 0x28);
    }
    command(ctx, 0x0C + cursor);
    command(ctx, 0x01);
    ctx.lcdinitialised = true;
    return true;
}

bool lcdoutstatement(CompileContext& ctx, const std::string& items) {
    return initialised(ctx) && outputitems(ctx, items, kLcdSink);
}

bool lcdcmdoutstatement(CompileContext& ctx, const std::string& argument) {
    if (!initialised(ctx)) return false;
    for (const CommandWord& word : kCommandWords)
        if (argument == word.word) {
            command(ctx, word.value);
            return true;
        }
    std::string rest;
    if (const int line = linenumber(argument, rest)) return linecommand(ctx, line, rest);
    const Operand op = operandof(ctx, argument);
    if (op.type != kTypeNone && op.type != kTypeByte && op.type != kTypeByteIndexed)
        return fail(ctx, ": Incorrect argument.");
    if (!loadoperandbyte0(ctx, op, "R31")) return false;
    emitcode(ctx, "RCALL LC02");
    return true;
}

bool lcddefcharstatement(CompileContext& ctx, const std::string& arguments) {
    if (!initialised(ctx)) return false;
    std::string list = arguments;
    std::vector<std::string> values;
    while (!list.empty()) values.push_back(trimblanks(nextargument(list)));
    const auto constantin = [&](const std::string& text, int high) {
        const int64_t value = operandof(ctx, text).type == kTypeNone ? constantvalue(ctx, text) : -1;
        return value >= 0 && value <= high ? static_cast<int>(value) : -1;
    };
    const int n = values.empty() ? -1 : constantin(values[0], 7);
    if (n < 0) return fail(ctx, ": Incorrect argument.");
    if (values.size() > 9) return fail(ctx, ": Too many arguments.");
    if (values.size() < 9) return fail(ctx, ": Too few arguments.");
    command(ctx, n * 8 + 64);
    for (size_t i = 1; i < values.size(); ++i) {
        const int row = constantin(values[i], 31);
        if (row < 0) return fail(ctx, ": Incorrect argument.");
        emitcode(ctx, "LDI R31," + immediate(row));
        emitcode(ctx, "RCALL LC01");
    }
    command(ctx, 0x02);
    return true;
}

RoutineText lcdcharroutine(const CompileContext& ctx) {
    const LcdWiring w = wiring(ctx);
    RoutineText text{kRoutineLcdChar, "; Lcdout Routine", sendbyte(ctx, w, true)};
    // The E pulse, and the read of the bus while E is high.
    const std::vector<std::string> wait = waitusbytelines(ctx, 1);
    text.lines.push_back("LCX1: SBI " + w.port(w.e));
    append(text.lines, wait);
    text.lines.push_back("CBI " + w.port(w.e));
    append(text.lines, wait);
    text.lines.push_back("RET");
    if (w.polls) {
        text.lines.push_back("LCX2: SBI " + w.port(w.e));
        append(text.lines, wait);
        text.lines.push_back("IN R31,PIN" + w.data);
        text.lines.push_back("CBI " + w.port(w.e));
        append(text.lines, wait);
        text.lines.push_back("RET");
    }
    return text;
}

RoutineText lcdcommandroutine(const CompileContext& ctx) {
    return {kRoutineLcdCommand, "; Lcdcmdout Routine", sendbyte(ctx, wiring(ctx), false)};
}

RoutineText lcddigitsroutine(const CompileContext&) {
    return digitemitter(kRoutineLcdDigits, "; Lcdout Decimal Routine", "LC21", "LC01");
}

}  // namespace velmora
