#include "basic/jumps.h"

#include "basic/emit.h"

namespace velmora {

namespace {

// The generated label of the row the user named, or empty after the error.
std::string rowlabel(CompileContext& ctx, const std::string& name) {
    for (const SourceRow& row : ctx.rows)
        if (!row.username.empty() && row.username == name) return row.label;
    fail(ctx, ": Incorrect line label name.");
    return "";
}

bool jumpto(CompileContext& ctx, const char* mnemonic, const std::string& name) {
    const std::string label = rowlabel(ctx, name);
    if (label.empty()) return false;
    emitcode(ctx, std::string(mnemonic) + label);
    return true;
}

}  // namespace

void emitselfjump(CompileContext& ctx) {
    const std::string label = newlabel(ctx);
    emitlabel(ctx, label, "RJMP " + label);
}

bool gotostatement(CompileContext& ctx, const std::string& label) { return jumpto(ctx, "RJMP ", label); }

bool gosubstatement(CompileContext& ctx, const std::string& label) { return jumpto(ctx, "RCALL ", label); }

bool returnstatement(CompileContext& ctx) {
    if (ctx.ininterrupt) return fail(ctx, ": This statement can not be used in interrupt routine.");
    if (!ctx.afterend) return fail(ctx, ": Subroutines must be placed after END statement in program.");
    emitcode(ctx, "RET");
    return true;
}

bool endstatement(CompileContext& ctx) {
    ctx.afterend = true;
    emitselfjump(ctx);
    return true;
}

bool haltstatement(CompileContext& ctx) {
    emitselfjump(ctx);
    return true;
}

bool breakstatement(CompileContext& ctx) {
    emitcode(ctx, "BREAK");
    return true;
}

}  // namespace velmora
