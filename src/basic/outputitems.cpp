#include "basic/outputitems.h"

#include <algorithm>

#include "basic/emit.h"
#include "basic/operands.h"
#include "basic/tokens.h"

namespace velmora {

namespace {

void sendconstant(CompileContext& ctx, const OutputSink& sink, int value) {
    emitcode(ctx, "LDI R31," + immediate(value));
    emitcode(ctx, std::string("RCALL ") + sink.send);
}

bool decimal(CompileContext& ctx, const OutputSink& sink, const std::string& operand) {
    const Operand op = operandof(ctx, operand);
    if (op.type == kTypeBit) return fail(ctx, ": Incorrect argument.");
    const std::string digits = std::string("RCALL ") + sink.digits;
    if (op.type == kTypeLong) {
        requestroutine(ctx, kRoutineDivideLong);
        requestroutine(ctx, sink.digitsroutine);
        requestroutine(ctx, kRoutineDecimalLong);
        loadoperand(ctx, op, 4, 24);
        for (const std::string& call : {std::string("RCALL DC11"), digits, std::string("RCALL DC15"), digits})
            emitcode(ctx, call);
        return true;
    }
    requestroutine(ctx, kRoutineDivide);
    requestroutine(ctx, sink.digitsroutine);
    requestroutine(ctx, kRoutineDecimalWord);
    if (!loadoperand(ctx, op, 2, 20)) return false;
    emitcode(ctx, "RCALL DC01");
    emitcode(ctx, digits);
    return true;
}

bool item(CompileContext& ctx, const OutputSink& sink, const std::string& text) {
    if (sink.linebreaks && (text == "CrLf" || text == "Lf")) {
        if (text == "CrLf") sendconstant(ctx, sink, 0x0D);
        sendconstant(ctx, sink, 0x0A);
        return true;
    }
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"') {
        for (size_t i = 1; i + 1 < text.size(); ++i) sendconstant(ctx, sink, static_cast<unsigned char>(text[i]));
        return true;
    }
    if (text.starts_with("#")) return decimal(ctx, sink, text.substr(1));
    const Operand op = operandof(ctx, text);
    if (op.type == kTypeBit) return fail(ctx, ": Incorrect argument.");
    if (!loadoperandbyte0(ctx, op, "R31")) return false;
    emitcode(ctx, std::string("RCALL ") + sink.send);
    const int bytes = op.type == kTypeLong ? sink.longbytes : bytesoftype(op.type);
    for (int k = 1; k < bytes; ++k) {
        loadoperandupper(ctx, k, op, "R31");
        emitcode(ctx, std::string("RCALL ") + sink.send);
    }
    return true;
}

}  // namespace

bool outputitems(CompileContext& ctx, const std::string& items, const OutputSink& sink) {
    std::string list = items;
    while (!list.empty())
        if (!item(ctx, sink, trimblanks(nextargument(list)))) return false;
    return true;
}

RoutineText digitemitter(int number, const char* comment, const std::string& entry, const std::string& send) {
    const std::string helper = entry.substr(0, entry.size() - 1) + "2";
    RoutineText text{number, comment, {}};
    for (int r = 0; r <= 4; ++r) {
        text.lines.push_back((r == 0 ? entry + ": " : "") + "MOV R31,R" + std::to_string(r));
        text.lines.push_back("RCALL " + helper);
    }
    for (const std::string& line : {std::string("RET"), helper + ": CPSE R31,R15", "RCALL " + send, std::string("RET")})
        text.lines.push_back(line);
    return text;
}

}  // namespace velmora
