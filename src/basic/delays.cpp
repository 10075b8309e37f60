#include "basic/delays.h"

#include <cmath>

#include "basic/defines.h"
#include "basic/emit.h"
#include "basic/operands.h"
#include "basic/symbols.h"

namespace velmora {

namespace {

// The clock as the compiler keeps it, single precision, and its whole megahertz.
float clockf(const CompileContext& ctx) { return static_cast<float>(ctx.clockmhz); }
int wholemhz(const CompileContext& ctx) { return static_cast<int>(clockf(ctx)); }

// Halves go up.
int64_t roundup(double x) {
    const double whole = std::floor(x);
    return static_cast<int64_t>(x - whole >= 0.5 ? whole + 1 : whole);
}
// Halves go to the even neighbour, as the language's plain conversion does.
int64_t roundeven(double x) { return static_cast<int64_t>(std::nearbyint(x)); }

std::string byteof(int64_t value, int k) { return immediate((value >> (8 * k)) & 0xFF); }

bool limitedset(const CompileContext& ctx) { return ctx.model->instset == 2; }

// Cycles of the call and loads around the word loop, and the loop's NOPs: none on the
// smallest parts or below 5 MHz.
int wordloopnops(const CompileContext& ctx) {
    const int k = wholemhz(ctx) - 5;
    return k < 0 || ctx.model->flashbytes < 4096 ? 0 : k;
}

int64_t delaystep(const CompileContext& ctx, int cycles) { return roundup(cycles / clockf(ctx) * 256); }

bool incorrect(CompileContext& ctx) { return fail(ctx, ": Incorrect argument."); }

}  // namespace

RoutineText waitmsroutine(const CompileContext& ctx) {
    const bool limited = limitedset(ctx);
    // The inner loop of 4 (or 6) cycles a pass, with 12 (or 14) around it, makes one ms.
    const int64_t k = limited ? roundeven((wholemhz(ctx) * 1000.0 - 14) / 6) : roundeven((wholemhz(ctx) * 1000.0 - 12) / 4);
    RoutineText text{kRoutineWaitMs, "; Waitms Routine", {"W001: MOV R16,R24", "OR R16,R25", "BRNE W002", "RET",
                                                          "W002: RCALL W003"}};
    const auto countdown = [&](const char* low, const char* high) {
        if (!limited) {
            text.lines.push_back(std::string("SBIW ") + high + ":" + low + ",0x01");
            return;
        }
        for (const std::string& line : {std::string("SUBI ") + low + ",0x01", std::string("SBC ") + high + ",R15",
                                        std::string("MOV R16,") + low, std::string("OR R16,") + high})
            text.lines.push_back(line);
    };
    countdown("R24", "R25");
    for (const std::string& line : {std::string("BRNE W002"), std::string("RET"), "W003: LDI R26," + byteof(k, 0),
                                    "LDI R27," + byteof(k, 1)})
        text.lines.push_back(line);
    const size_t loop = text.lines.size();
    countdown("R26", "R27");
    text.lines[loop] = "W004: " + text.lines[loop];
    text.lines.push_back("BRNE W004");
    text.lines.push_back("RET");
    return text;
}

RoutineText waitusbyteroutine(const CompileContext& ctx) {
    const int64_t step = delaystep(ctx, 4);
    return {kRoutineWaitUsByte,
            "; Waitus Routine - Byte Argument",
            {"X001: CLR R16", "X000: LDI R19," + byteof(step, 0), "LDI R20," + byteof(step, 1), "X002: SUB R16,R19",
             "SBC R17,R20", "BRCC X002", "RET"}};
}

RoutineText waituswordroutine(const CompileContext& ctx) {
    const int nops = wordloopnops(ctx);
    const int64_t step = delaystep(ctx, nops + 5);
    RoutineText text{kRoutineWaitUsWord,
                     "; Waitus Routine - Word Argument",
                     {"Y001: CLR R16", "Y000: LDI R19," + byteof(step, 0), "LDI R20," + byteof(step, 1),
                      "Y002: SUB R16,R19", "SBC R17,R20", "SBC R18,R15"}};
    for (int i = 0; i < nops; ++i) text.lines.push_back("NOP");
    text.lines.push_back("BRCC Y002");
    text.lines.push_back("RET");
    return text;
}

std::vector<std::string> waitusbytelines(const CompileContext& ctx, int n) {
    // 14 cycles of call and loads come off.
    int64_t value = static_cast<int64_t>(n) * 256 - delaystep(ctx, 14);
    if (value < 0) value = 0;
    return {"LDI R16," + byteof(value, 0), "LDI R17," + byteof(value, 1), "RCALL X000"};
}

std::vector<std::string> waituswordlines(const CompileContext& ctx, int n) {
    const int overhead = wholemhz(ctx) >= 5 && ctx.model->flashbytes >= 4096 ? wholemhz(ctx) + 16 - 5 : 16;
    int64_t value = static_cast<int64_t>(n) * 256 - delaystep(ctx, overhead);
    if (value < 0) value = 0;
    return {"LDI R16," + byteof(value, 0), "LDI R17," + byteof(value, 1), "LDI R18," + byteof(value, 2),
            "RCALL Y000"};
}

void waitusconstantbyte(CompileContext& ctx, int n) {
    for (const std::string& line : waitusbytelines(ctx, n)) emitcode(ctx, line);
}

void waitusconstantword(CompileContext& ctx, int n) {
    for (const std::string& line : waituswordlines(ctx, n)) emitcode(ctx, line);
}

bool waitmsstatement(CompileContext& ctx, const std::string& argument) {
    const int simulated = defineparameter(ctx, "SIMULATION_WAITMS_VALUE");
    const std::string text = simulated > 0 ? std::to_string(simulated) : argument;
    requestroutine(ctx, kRoutineWaitMs);
    const Operand op = operandof(ctx, text);
    if (op.type == kTypeBit) return incorrect(ctx);
    if (op.type == kTypeNone) {
        std::string value = text;
        if (!constantword(ctx, value)) return false;
    }
    if (!loadoperand(ctx, op, 2, 24)) return false;
    emitcode(ctx, "RCALL W001");
    return true;
}

bool waitusstatement(CompileContext& ctx, const std::string& argument) {
    const Operand op = operandof(ctx, argument);
    if (op.type == kTypeBit) return incorrect(ctx);
    if (op.type == kTypeNone) {
        std::string value = argument;
        if (!constantword(ctx, value)) return false;
        const int n = std::stoi(value);
        requestroutine(ctx, n < 256 ? kRoutineWaitUsByte : kRoutineWaitUsWord);
        if (n < 256)
            waitusconstantbyte(ctx, n);
        else
            waitusconstantword(ctx, n);
        return true;
    }
    // A variable wait takes no overhead off.
    if (op.type == kTypeByte || op.type == kTypeByteIndexed) {
        requestroutine(ctx, kRoutineWaitUsByte);
        if (!loadoperandbyte0(ctx, op, "R17")) return false;
        emitcode(ctx, "RCALL X001");
        return true;
    }
    requestroutine(ctx, kRoutineWaitUsWord);
    if (!loadoperandword0(ctx, op, "R17")) return false;
    loadoperandbyte1(ctx, op, "R18");
    emitcode(ctx, "RCALL Y001");
    return true;
}

}  // namespace velmora
