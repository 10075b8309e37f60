#include "basic/routines.h"

#include <string_view>
#include <vector>

#include "basic/emit.h"

namespace velmora {

namespace {

struct RoutineText {
    int number;
    const char* comment;
    std::vector<std::string_view> lines;  // "LABEL: INSTRUCTION" where a label stands
};

// Shift-and-add over 16 rounds; the multiplier in R18:R19 becomes the low word of the product.
const RoutineText kMultiply = {
    kRoutineMultiply, "; Multiplication Routine",
    {"M001: CLR R21", "CLR R20", "LDI R22,0x10", "LSR R19", "ROR R18", "M002: BRCC M003", "ADD R20,R16", "ADC R21,R17",
     "M003: ROR R21", "ROR R20", "ROR R19", "ROR R18", "DEC R22", "BRNE M002", "RET"}};

// Restoring division in 17 passes: the first only shifts the first quotient bit in.
const RoutineText kDivide = {
    kRoutineDivide, "; Division Routine",
    {"D001: CLR R20", "SUB R21,R21", "LDI R22,0x11", "D002: ROL R16", "ROL R17", "DEC R22", "BRNE D003", "RET",
     "D003: ROL R20", "ROL R21", "SUB R20,R18", "SBC R21,R19", "BRCC D004", "ADD R20,R18", "ADC R21,R19", "CLC",
     "RJMP D002", "D004: SEC", "RJMP D002"}};

// Bit by bit over 8 rounds, the root built twice its value in R18:R19.
const RoutineText kSquareRoot = {
    kRoutineSquareRoot, "; Square Root Routine",
    {"S001: LDI R20,0x00", "LDI R21,0x00", "LDI R18,0x00", "LDI R19,0x00", "LDI R22,0x08", "S002: LSL R18", "ROL R19",
     "LSL R16", "ROL R17", "ROL R20", "ROL R21", "LSL R16", "ROL R17", "ROL R20", "ROL R21", "CP R18,R20",
     "CPC R19,R21", "BRCC S003", "INC R18", "SUB R20,R18", "SBC R21,R19", "INC R18", "S003: DEC R22", "BRNE S002",
     "LSR R19", "ROR R18", "MOV R16,R18", "RET"}};

// In the order they are written.
const RoutineText* const kLibrary[] = {&kMultiply, &kDivide, &kSquareRoot};

void emitroutine(CompileContext& ctx, const RoutineText& routine) {
    // Registers a routine requested inside an interrupt routine touches are saved there too.
    const bool wasininterrupt = ctx.ininterrupt;
    ctx.ininterrupt = ctx.routineusedininterrupt[static_cast<size_t>(routine.number)];
    emitraw(ctx, routine.comment);
    for (std::string_view line : routine.lines) {
        const size_t colon = line.find(": ");
        if (colon == std::string_view::npos)
            emitcode(ctx, std::string(line));
        else
            emitlabel(ctx, std::string(line.substr(0, colon)), std::string(line.substr(colon + 2)));
    }
    ctx.ininterrupt = wasininterrupt;
}

}  // namespace

void emitroutines(CompileContext& ctx) {
    for (const RoutineText* routine : kLibrary)
        if (ctx.routineused[static_cast<size_t>(routine->number)]) emitroutine(ctx, *routine);
}

}  // namespace velmora
