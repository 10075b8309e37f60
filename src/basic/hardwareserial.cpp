#include "basic/hardwareserial.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "basic/defines.h"
#include "basic/emit.h"
#include "basic/operands.h"
#include "basic/outputitems.h"
#include "basic/routines.h"
#include "basic/symbols.h"
#include "basic/tokens.h"

namespace velmora {

namespace {

const int kStandardRates[] = {300, 600, 1200, 2400, 4800, 9600, 14400, 19200, 28800, 31250, 38400, 56000, 57600};

struct Divisor {
    int n = 0;
    long rate = 0;
    bool doublespeed = false;
};

// The divisor whose rate comes nearest the wanted one; ties keep the smaller divisor, and
// normal speed wins over double speed.
Divisor bestdivisor(double mhz, long baud, int uartclass) {
    Divisor best;
    long besterror = 100000;
    const int top = uartclass == 7 ? 255 : 4095;
    const bool doubling = uartclass != 6 && uartclass != 7;
    for (int pass = 0; pass < (doubling ? 2 : 1); ++pass) {
        const double divider = pass == 0 ? 16 : 8;
        for (int n = 0; n <= top; ++n) {
            const long rate = static_cast<long>(std::nearbyint(mhz * 1000000 / divider / (n + 1)));
            if (std::labs(baud - rate) >= besterror) continue;
            besterror = std::labs(baud - rate);
            best = {n, rate, pass == 1};
        }
    }
    return best;
}

// The first four characters of a percentage as the figure prints.
std::string percent(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.15g", value);
    return std::string(text).substr(0, 4);
}

struct RegisterWrite {
    int value;  // -1, -2, -3: the divisor's low byte, its high byte, the status value
    const char* line;
};

std::vector<RegisterWrite> registerwrites(int uartclass) {
    switch (uartclass) {
    case 2:
    case 3:
        return {{-1, "OUT UBRRL,R16"}, {-2, "OUT UBRRH,R16"}, {-3, "OUT UCSRA,R16"},
                {uartclass == 2 ? 0x06 : 0x86, "OUT UCSRC,R16"}, {0x18, "OUT UCSRB,R16"}};
    case 4:
        return {{-1, "OUT UBRR0L,R16"}, {-2, "STS UBRR0H,R16"}, {-3, "OUT UCSR0A,R16"}, {0x06, "STS UCSR0C,R16"},
                {0x18, "OUT UCSR0B,R16"}};
    case 5:
        return {{-1, "STS UBRR0L,R16"}, {-2, "STS UBRR0H,R16"}, {-3, "STS UCSR0A,R16"}, {0x06, "STS UCSR0C,R16"},
                {0x18, "STS UCSR0B,R16"}};
    case 6:
        return {{-1, "OUT UBRR,R16"}, {-2, "OUT UBRRHI,R16"}, {0x40, "OUT UCSRA,R16"}, {0x18, "OUT UCSRB,R16"}};
    case 7:
        return {{-1, "OUT UBRR,R16"}, {0x40, "OUT USR,R16"}, {0x18, "OUT UCR,R16"}};
    default:
        return {{-1, "OUT UBRR0L,R16"}, {-2, "OUT UBRR0H,R16"}, {-3, "OUT UCSR0A,R16"}, {0x86, "OUT UCSR0C,R16"},
                {0x18, "OUT UCSR0B,R16"}};
    }
}

bool opened(CompileContext& ctx) {
    return ctx.uartopened || fail(ctx, ": Hardware UART port must be opened first with HSEROPEN statement.");
}

// Hserout sends all four bytes of a Long, low first.
const OutputSink kSerialSink = {"HS01", "HS21", kRoutineHserDigits, 4, true};

}  // namespace

bool hseropen(CompileContext& ctx, const std::string& argument) {
    if (ctx.uartopened && defineparameter(ctx, "ALLOW_MULTIPLE_HSEROPEN") != 1)
        return fail(ctx, ": HSEROPEN statement may appear only once.");
    std::string baudtext = argument.empty() ? "9600" : argument;
    requestroutine(ctx, kRoutineHardwareSerial);
    const int uartclass = ctx.model->uartclass;
    if (uartclass <= 1) return fail(ctx, ": Hardware UART not available for the selected device.");
    if (symboltype(ctx, baudtext) != kTypeNone) return fail(ctx, ": Baud Rate argument must be a constant.");
    if (!constantlong(ctx, baudtext)) return false;
    const long baud = std::stol(baudtext);
    if (defineparameter(ctx, "ALLOW_ALL_BAUDRATES") == 1) {
        if (baud < 100 || baud > 200000) return fail(ctx, ": Invalid Baud Rate specified.");
    } else {
        bool standard = false;
        for (int rate : kStandardRates) standard = standard || rate == baud;
        if (!standard)
            return fail(ctx,
                        ": Invalid Baud Rate specified. Use 300, 600, 1200, 2400, 4800, 9600, 14400, 19200, 28800, "
                        "31250, 38400, 56000 or 57600.");
    }
    const Divisor divisor = bestdivisor(ctx.clockmhz, baud, uartclass);
    const long error = std::labs(baud - divisor.rate);
    emitraw(ctx, ";       Exact baud rate: " + std::to_string(divisor.rate));
    emitraw(ctx, ";       Baud rate error: " + std::to_string(error) + " (" +
                     percent(static_cast<double>(error) / static_cast<double>(baud) * 100) + "%)");
    for (const RegisterWrite& write : registerwrites(uartclass)) {
        const int value = write.value == -1   ? divisor.n & 0xFF
                          : write.value == -2 ? divisor.n >> 8
                          : write.value == -3 ? (divisor.doublespeed ? 2 : 0) + 64
                                              : write.value;
        emitcode(ctx, "LDI R16," + immediate(value));
        emitcode(ctx, write.line);
    }
    ctx.uartopened = true;
    return true;
}

bool hserout(CompileContext& ctx, const std::string& items) {
    if (!opened(ctx)) return false;
    return outputitems(ctx, items, kSerialSink);
}

bool hserin(CompileContext& ctx, const std::string& variables) {
    if (!opened(ctx)) return false;
    std::string list = variables;
    while (!list.empty()) {
        const std::string item = trimblanks(nextargument(list));
        if (item.starts_with("#")) return fail(ctx, ": Decimal input (#) not supported.");
        const Operand op = operandof(ctx, item);
        if (op.type == kTypeNone || op.type == kTypeBit) return fail(ctx, ": Incorrect argument.");
        for (int k = 0; k < bytesoftype(op.type); ++k) {
            emitcode(ctx, "RCALL HS10");
            storeresultbyte(ctx, k, op.type, op.address, "R31");
        }
    }
    return true;
}

bool hserget(CompileContext& ctx, const std::string& variable) {
    if (!opened(ctx)) return false;
    const Operand op = operandof(ctx, variable);
    if (op.type != kTypeByte && op.type != kTypeByteIndexed) return fail(ctx, ": HSERGET argument must be Byte variable.");
    emitcode(ctx, "MOV R31,R15");
    switch (ctx.model->uartclass) {
    case 4:
    case 8:
        emitcode(ctx, "SBIC UCSR0A,RXC0");
        emitcode(ctx, "IN R31,UDR0");
        break;
    case 5:
        emitcode(ctx, "LDS R16,UCSR0A");
        emitcode(ctx, "SBRC R16,RXC0");
        emitcode(ctx, "LDS R31,UDR0");
        break;
    case 7:
        emitcode(ctx, "SBIC USR,RXC");
        emitcode(ctx, "IN R31,UDR");
        break;
    default:
        emitcode(ctx, "SBIC UCSRA,RXC");
        emitcode(ctx, "IN R31,UDR");
        break;
    }
    storeresultbyte0(ctx, op.type, op.address, "R31");
    return true;
}

}  // namespace velmora
