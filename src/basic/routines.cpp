#include "basic/routines.h"

#include <string>
#include <utility>
#include <vector>

#include "basic/adc.h"
#include "basic/delays.h"
#include "basic/eeprom.h"
#include "basic/lcdstatements.h"
#include "basic/emit.h"
#include "basic/operands.h"
#include "basic/outputitems.h"

namespace velmora {

namespace {

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

// The same two algorithms at 32 bits, over 33 passes; R28 counts.
const RoutineText kMultiplyLong = {
    kRoutineMultiplyLong, "; Long Multiplication Routine",
    {"LM01: CLR R27", "CLR R26", "CLR R25", "SUB R24,R24", "LDI R28,0x21", "LM02: ROR R23", "ROR R22", "ROR R21",
     "ROR R20", "DEC R28", "BREQ LM04", "BRCC LM03", "ADD R24,R16", "ADC R25,R17", "ADC R26,R18", "ADC R27,R19",
     "LM03: ROR R27", "ROR R26", "ROR R25", "ROR R24", "RJMP LM02", "LM04: RET"}};

const RoutineText kDivideLong = {
    kRoutineDivideLong, "; Long Division Routine",
    {"LD01: CLR R24", "CLR R25", "CLR R26", "SUB R27,R27", "LDI R28,0x21", "LD02: ROL R16", "ROL R17", "ROL R18",
     "ROL R19", "DEC R28", "BRNE LD03", "RET", "LD03: ROL R24", "ROL R25", "ROL R26", "ROL R27", "SUB R24,R20",
     "SBC R25,R21", "SBC R26,R22", "SBC R27,R23", "BRCC LD04", "ADD R24,R20", "ADC R25,R21", "ADC R26,R22",
     "ADC R27,R23", "CLC", "RJMP LD02", "LD04: SEC", "RJMP LD02"}};

// R24..R27 into ten digits R0..R9 through LD01, as DC01 does for Words; DC15 brings the last
// five down to R0..R4, since the digit emitters know five registers.
RoutineText decimallong() {
    RoutineText text{kRoutineDecimalLong, "; Decimal Conversion Routine - Long", {"DC11: SET"}};
    static const uint32_t kPowers[] = {1000000000, 100000000, 10000000, 1000000, 100000, 10000, 1000, 100, 10};
    for (int digit = 0; digit < 9; ++digit) {
        for (int k = 0; k < 4; ++k)
            text.lines.push_back("LDI R" + std::to_string(20 + k) + "," + immediate((kPowers[digit] >> (8 * k)) & 0xFF));
        text.lines.push_back("RCALL DC12");
        text.lines.push_back("MOV R" + std::to_string(digit) + ",R16");
    }
    for (const char* line : {"SUBI R24,0xD0", "MOV R9,R24", "RET", "DC12: MOV R16,R24", "MOV R17,R25", "MOV R18,R26",
                             "MOV R19,R27", "RCALL LD01", "CPSE R16,R15", "CLT", "BRTS DC13", "SUBI R16,0xD0",
                             "DC13: RET", "DC15: MOV R0,R5", "MOV R1,R6", "MOV R2,R7", "MOV R3,R8", "MOV R4,R9", "RET"})
        text.lines.push_back(line);
    return text;
}

// Shifts by the count in R18 (R20 for Long): entered at the counting step, so a count of 0
// leaves the value as it is.
const RoutineText kShiftLeft = {kRoutineShiftLeft, "; ShiftLeft Routine",
                                {"SL01: LSL R16", "ROL R17", "SL00: SUBI R18,0x01", "BRCC SL01", "RET"}};
const RoutineText kShiftRight = {kRoutineShiftRight, "; ShiftRight Routine",
                                 {"SR01: LSR R17", "ROR R16", "SR00: SUBI R18,0x01", "BRCC SR01", "RET"}};
const RoutineText kShiftLeftLong = {
    kRoutineShiftLeftLong, "; ShiftLeft Long Routine",
    {"SLX1: LSL R16", "ROL R17", "ROL R18", "ROL R19", "SLX0: SUBI R20,0x01", "BRCC SLX1", "RET"}};
const RoutineText kShiftRightLong = {
    kRoutineShiftRightLong, "; ShiftRight Long Routine",
    {"SRX1: LSR R19", "ROR R18", "ROR R17", "ROR R16", "SRX0: SUBI R20,0x01", "BRCC SRX1", "RET"}};

// R20:R21 into five digits R0..R4 by division through D001: T stands for "no digit yet", so
// leading zeros stay 0 and every later digit gets 48 added; the last digit always does.
const RoutineText kDecimalWord = {
    kRoutineDecimalWord, "; Decimal Conversion Routine - Word",
    {"DC01: SET", "LDI R18,0x10", "LDI R19,0x27", "RCALL DC02", "MOV R0,R16", "LDI R18,0xE8", "LDI R19,0x03",
     "RCALL DC02", "MOV R1,R16", "LDI R18,0x64", "LDI R19,0x00", "RCALL DC02", "MOV R2,R16", "LDI R18,0x0A",
     "LDI R19,0x00", "RCALL DC02", "MOV R3,R16", "SUBI R20,0xD0", "MOV R4,R20", "RET", "DC02: MOV R16,R20",
     "MOV R17,R21", "RCALL D001", "CPSE R16,R15", "CLT", "BRTS DC03", "SUBI R16,0xD0", "DC03: RET"}};

// The hardware UART's send (HS01) and receive (HS10) by the model's USART kind.
RoutineText hardwareserial(int uartclass) {
    RoutineText text{kRoutineHardwareSerial, "; Hardware Serial Communication Routines", {}};
    if (uartclass == 5) {
        text.lines = {"HS01: LDS R16,UCSR0A", "SBRS R16,UDRE0", "RJMP HS01", "STS UDR0,R31", "RET",
                      "HS10: LDS R16,UCSR0A", "SBRS R16,RXC0", "RJMP HS10", "LDS R31,UDR0", "RET"};
        return text;
    }
    const bool zero = uartclass == 4 || uartclass == 8;
    const std::string status = zero ? "UCSR0A" : uartclass == 7 ? "USR" : "UCSRA";
    const std::string data = zero ? "UDR0" : "UDR";
    const std::string suffix = zero ? "0" : "";
    text.lines = {"HS01: SBIS " + status + ",UDRE" + suffix, "RJMP HS01", "OUT " + data + ",R31", "RET",
                  "HS10: SBIS " + status + ",RXC" + suffix, "RJMP HS10", "IN R31," + data, "RET"};
    return text;
}

// A routine's text for the model and parameters of the compile.
using Builder = RoutineText (*)(const CompileContext&);

template <const RoutineText& text>
RoutineText fixed(const CompileContext&) {
    return text;
}

// In the order they are written.
const std::pair<int, Builder> kLibrary[] = {
    {kRoutineMultiply, fixed<kMultiply>},
    {kRoutineDivide, fixed<kDivide>},
    {kRoutineEeprom, eepromroutine},
    {kRoutineSquareRoot, fixed<kSquareRoot>},
    {kRoutineWaitMs, waitmsroutine},
    {kRoutineWaitUsByte, waitusbyteroutine},
    {kRoutineWaitUsWord, waituswordroutine},
    {kRoutineAdc, adcroutine},
    {kRoutineLcdChar, lcdcharroutine},
    {kRoutineLcdCommand, lcdcommandroutine},
    {kRoutineLcdDigits, lcddigitsroutine},
    {kRoutineShiftLeft, fixed<kShiftLeft>},
    {kRoutineShiftRight, fixed<kShiftRight>},
    {kRoutineHardwareSerial, [](const CompileContext& ctx) { return hardwareserial(ctx.model->uartclass); }},
    {kRoutineHserDigits,
     [](const CompileContext&) { return digitemitter(kRoutineHserDigits, "; Hserout Decimal Routine", "HS21", "HS01"); }},
    {kRoutineDecimalLong, [](const CompileContext&) { return decimallong(); }},
    {kRoutineMultiplyLong, fixed<kMultiplyLong>},
    {kRoutineDivideLong, fixed<kDivideLong>},
    {kRoutineShiftLeftLong, fixed<kShiftLeftLong>},
    {kRoutineShiftRightLong, fixed<kShiftRightLong>},
    {kRoutineDecimalWord, fixed<kDecimalWord>},
};

void emitroutine(CompileContext& ctx, const RoutineText& routine) {
    // Registers a routine requested inside an interrupt routine touches are saved there too.
    const bool wasininterrupt = ctx.ininterrupt;
    ctx.ininterrupt = ctx.routineusedininterrupt[static_cast<size_t>(routine.number)];
    emitraw(ctx, routine.comment);
    for (const std::string& line : routine.lines) {
        const size_t colon = line.find(": ");
        if (colon == std::string::npos)
            emitcode(ctx, line);
        else
            emitlabel(ctx, line.substr(0, colon), line.substr(colon + 2));
    }
    ctx.ininterrupt = wasininterrupt;
}

}  // namespace

void emitroutines(CompileContext& ctx) {
    for (const auto& [number, build] : kLibrary)
        if (ctx.routineused[static_cast<size_t>(number)]) emitroutine(ctx, build(ctx));
}

}  // namespace velmora
