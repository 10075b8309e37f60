#include "basic/controlflow.h"

#include "basic/assignment.h"
#include "basic/comparison.h"
#include "basic/dispatch.h"
#include "basic/emit.h"
#include "basic/operands.h"
#include "basic/symbols.h"

namespace velmora {

namespace {

// The tests of a condition; when all hold, execution goes on behind the code, otherwise it
// jumps to `falselabel`. Or: each test but the last jumps to the body when it holds.
bool condition(CompileContext& ctx, const std::string& text, const std::string& falselabel) {
    const bool anyof = text.find(" Or ") != std::string::npos;
    const std::vector<std::string> tests = splittests(text, anyof ? "Or" : "And");
    const std::string body = anyof ? newlabel(ctx) : "";
    for (size_t i = 0; i < tests.size(); ++i) {
        if (!comparison(ctx, tests[i])) return false;
        if (!anyof || i + 1 == tests.size()) {
            emitcode(ctx, "RJMP " + falselabel);
            continue;
        }
        const std::string next = newlabel(ctx);
        emitcode(ctx, "RJMP " + next);
        emitcode(ctx, "RJMP " + body);
        emitlabel(ctx, next);
    }
    if (anyof) emitlabel(ctx, body);
    return true;
}

// `b` or `Not b`: skip the jump to `falselabel` when the Bit has the wanted value.
bool bitcondition(CompileContext& ctx, const std::string& bit, bool inverted, const std::string& falselabel) {
    if (symboltype(ctx, bit) != kTypeBit) return fail(ctx, ": Argument must be a Bit variable.");
    if (inverted)
        skipifbitclear(ctx, symboladdress(ctx, bit), "R16");
    else
        skipifbitset(ctx, symboladdress(ctx, bit), "R16");
    emitcode(ctx, "RJMP " + falselabel);
    return true;
}

// The text of tokens first..last joined by blanks.
std::string span(const Tokens& t, int first, int last) {
    std::string text;
    for (int i = first; i <= last; ++i) text += (i > first ? " " : "") + t[i];
    return text;
}

// Opens an If level for the test text and emits its test.
bool openif(CompileContext& ctx, const std::string& test, bool bitform, bool inverted) {
    ctx.ifstack.push_back({newlabel(ctx), "", false});
    const std::string& first = ctx.ifstack.back().first;
    return bitform ? bitcondition(ctx, test, inverted, first) : condition(ctx, test, first);
}

// The statements behind Then, split at the first Else.
bool oneline(CompileContext& ctx, const Tokens& t, int then) {
    int elseat = 0;
    for (int i = then + 1; i <= t.count() && !elseat; ++i)
        if (t[i] == "Else") elseat = i;
    const int thenend = elseat ? elseat - 1 : t.count();
    if (!dispatchthen(ctx, span(t, then + 1, thenend))) return false;
    if (elseat && (!elsestatement(ctx) || !dispatchthen(ctx, span(t, elseat + 1, t.count())))) return false;
    return endifstatement(ctx);
}

bool constantfits(const CompileContext& ctx, const std::string& text, int64_t limit) {
    const int64_t value = constantvalue(ctx, text);
    return value >= 0 && value <= limit;
}

// From and To of a loop over a running variable of type `type`.
bool limitfits(const CompileContext& ctx, int type, const std::string& text) {
    const Operand op = operandof(ctx, text);
    if (op.type == kTypeNone)
        return constantfits(ctx, text, type == kTypeByte ? 255 : type == kTypeWord ? 65535 : 4294967295LL);
    if (type == kTypeByte) return widthof(op.type) == kTypeByte;
    if (type == kTypeWord) return op.type != kTypeBit && op.type != kTypeLong;
    return op.type != kTypeBit;
}

bool stepfits(const CompileContext& ctx, int type, const std::string& text) {
    const Operand op = operandof(ctx, text);
    if (op.type == kTypeNone)
        return constantfits(ctx, text, type == kTypeByte ? 255 : type == kTypeWord ? 65535 : 4294967295LL);
    const int width = widthof(op.type);
    if (type == kTypeByte) return width == kTypeByte;
    if (type == kTypeWord) return width == kTypeByte || width == kTypeWord;
    return op.type != kTypeBit;
}

int bytesof(int type) { return type == kTypeLong ? 4 : type == kTypeWord ? 2 : 1; }

std::string r(int n) { return "R" + std::to_string(n); }

// `mnemonic` on the low bytes, `carry` on the rest: R16.. with R16+bytes.. (or R17 for Bytes).
void pairwise(CompileContext& ctx, const char* mnemonic, const char* carry, int bytes, bool swapped) {
    const int second = bytes == 1 ? 17 : 16 + bytes;
    for (int k = 0; k < bytes; ++k) {
        const int a = swapped ? second + k : 16 + k, b = swapped ? 16 + k : second + k;
        emitcode(ctx, std::string(k == 0 ? mnemonic : carry) + " " + r(a) + "," + r(b));
    }
}

}  // namespace

bool whilestatement(CompileContext& ctx, const Tokens& t) {
    ctx.whilestack.push_back({newlabel(ctx), newlabel(ctx)});
    const WhileLevel level = ctx.whilestack.back();
    emitlabel(ctx, level.start);
    if (t.count() == 2) return bitcondition(ctx, t[2], false, level.end);
    if (t.count() == 3 && t[2] == "Not") return bitcondition(ctx, t[3], true, level.end);
    return condition(ctx, span(t, 2, t.count()), level.end);
}

bool wendstatement(CompileContext& ctx) {
    if (ctx.whilestack.empty()) return fail(ctx, ": Wend without While.");
    emitcode(ctx, "RJMP " + ctx.whilestack.back().start);
    emitlabel(ctx, ctx.whilestack.back().end);
    ctx.whilestack.pop_back();
    return true;
}

bool ifstatement(CompileContext& ctx, const Tokens& t) {
    int then = 0;
    for (int i = 2; i <= t.count() && !then; ++i)
        if (t[i] == "Then") then = i;
    const bool bitform = then == 3 || (then == 4 && t[2] == "Not");
    const bool inverted = then == 4 && t[2] == "Not";
    if (!openif(ctx, bitform ? t[then - 1] : span(t, 2, then - 1), bitform, inverted)) return false;
    return then == t.count() || oneline(ctx, t, then);
}

bool elsestatement(CompileContext& ctx) {
    if (ctx.ifstack.empty()) return fail(ctx, ": Else without If.");
    IfLevel& level = ctx.ifstack.back();
    if (level.haselse) return fail(ctx, ": Duplicate Else.");
    level.second = newlabel(ctx);
    level.haselse = true;
    emitcode(ctx, "RJMP " + level.second);
    emitlabel(ctx, level.first);
    return true;
}

bool endifstatement(CompileContext& ctx) {
    if (ctx.ifstack.empty()) return fail(ctx, ": Endif without If.");
    const IfLevel& level = ctx.ifstack.back();
    emitlabel(ctx, level.haselse ? level.second : level.first);
    ctx.ifstack.pop_back();
    return true;
}

bool selectstatement(CompileContext& ctx, const std::string& variable) {
    ctx.selectstack.push_back({variable, 0});
    return true;
}

bool casestatement(CompileContext& ctx, const std::string& text) {
    if (ctx.selectstack.empty()) return fail(ctx, ": Case without Select Case.");
    SelectLevel& level = ctx.selectstack.back();
    if (level.count > 0 && !elsestatement(ctx)) return false;
    const std::string& x = level.variable;
    std::string test = x + (text.starts_with("<") || text.starts_with("=") || text.starts_with(">") ? " " : " = ") + text;
    // "x = 1, 2, < 5" becomes "x = 1 Or x = 2 Or x < 5".
    for (const char* op : {"<", ">", "<>", "<=", ">=", "="}) {
        const std::string from = std::string(", ") + op + " ";
        for (size_t at = test.find(from); at != std::string::npos; at = test.find(from, at))
            test.replace(at, from.size(), " Or " + x + " " + op + " ");
    }
    for (size_t at = test.find(", "); at != std::string::npos; at = test.find(", ", at))
        test.replace(at, 2, " Or " + x + " = ");
    ++level.count;
    return openif(ctx, test, false, false);
}

bool caseelsestatement(CompileContext& ctx) {
    if (ctx.selectstack.empty()) return fail(ctx, ": Case Else without Select Case.");
    return elsestatement(ctx);
}

bool endselectstatement(CompileContext& ctx) {
    if (ctx.selectstack.empty()) return fail(ctx, ": EndSelect without Select Case.");
    for (int i = ctx.selectstack.back().count; i > 0; --i)
        if (!endifstatement(ctx)) return false;
    ctx.selectstack.pop_back();
    return true;
}

bool forstatement(CompileContext& ctx, const Tokens& t) {
    const Operand running = operandof(ctx, t[2]);
    const int type = running.type;
    if (type != kTypeByte && type != kTypeWord && type != kTypeLong)
        return fail(ctx, ": The running variable in For statement must be Byte, Word or Long data type.");
    const std::string& from = t[4];
    const std::string& to = t[6];
    std::string step = t.count() == 8 ? t[8] : "1";
    const bool descending = step.starts_with("-");
    const std::string magnitude = descending ? step.substr(1) : step;
    if (!limitfits(ctx, type, from)) return fail(ctx, ": Incorrect From argument in For statement.");
    if (!limitfits(ctx, type, to)) return fail(ctx, ": Incorrect To argument in For statement.");
    if (!stepfits(ctx, type, magnitude)) return fail(ctx, ": Incorrect Step argument in For statement.");

    ctx.forstack.push_back({t[2], newlabel(ctx), newlabel(ctx), step});
    const ForLevel level = ctx.forstack.back();
    if (!assign(ctx, t[2], from)) return false;
    emitlabel(ctx, level.start);
    const int bytes = bytesof(type);
    if (!loadoperand(ctx, running, bytes, 16) || !loadoperand(ctx, operandof(ctx, to), bytes, bytes == 1 ? 17 : 16 + bytes))
        return false;
    pairwise(ctx, "CP", "CPC", bytes, !descending);
    const std::string body = newlabel(ctx);
    emitcode(ctx, "BRCC " + body);
    emitcode(ctx, "RJMP " + level.exit);
    emitlabel(ctx, body);
    return true;
}

bool nextstatement(CompileContext& ctx, const std::string& variable) {
    if (ctx.forstack.empty()) return fail(ctx, ": Next without For.");
    const ForLevel level = ctx.forstack.back();
    if (variable != level.variable) return fail(ctx, ": Incorrect argument.");
    const Operand running = operandof(ctx, variable);
    const int bytes = bytesof(running.type);
    const bool descending = level.step.starts_with("-");
    if (!descending && level.step == "1" && bytes == 1) {
        loadoperand(ctx, running, 1, 16);
        emitcode(ctx, "INC R16");
        storeresult(ctx, running.type, running.address, 1, 16);
        emitcode(ctx, "BREQ " + level.exit);
    } else if (!descending && level.step == "1" && bytes == 2) {
        const std::string carry = newlabel(ctx);
        loadoperand(ctx, running, 2, 16);
        emitcode(ctx, "INC R16");
        emitcode(ctx, "BRNE " + carry);
        emitcode(ctx, "INC R17");
        emitcode(ctx, "BREQ " + level.exit);
        emitlabel(ctx, carry);
        storeresult(ctx, running.type, running.address, 2, 16);
    } else {
        loadoperand(ctx, running, bytes, 16);
        const std::string magnitude = descending ? level.step.substr(1) : level.step;
        if (!loadoperand(ctx, operandof(ctx, magnitude), bytes, bytes == 1 ? 17 : 16 + bytes)) return false;
        pairwise(ctx, descending ? "SUB" : "ADD", descending ? "SBC" : "ADC", bytes, false);
        storeresult(ctx, running.type, running.address, bytes, 16);
        emitcode(ctx, "BRCS " + level.exit);
    }
    emitcode(ctx, "RJMP " + level.start);
    emitlabel(ctx, level.exit);
    ctx.forstack.pop_back();
    return true;
}

}  // namespace velmora
