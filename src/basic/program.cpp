#include "basic/program.h"

#include "basic/declarations.h"
#include "basic/dispatch.h"
#include "basic/emit.h"
#include "basic/interruptcontrol.h"
#include "basic/procedures.h"
#include "basic/jumps.h"
#include "basic/routines.h"
#include "core/hextext.h"

namespace velmora {

namespace {

const char* const kOrgZero = ".ORG    0x000000";

// The reset jump, a jump for each vector that has a routine, and the common exit.
void emitvectortable(CompileContext& ctx, const std::string& startlabel) {
    emitraw(ctx, kOrgZero);
    emitcode(ctx, "RJMP " + startlabel);
    for (size_t i = 0; i < ctx.model->interrupts.size(); ++i) {
        if (!ctx.interruptused[i]) continue;
        ctx.interruptlabel[i] = newlabel(ctx);
        emitraw(ctx, ".ORG    0x" + hex6(static_cast<uint32_t>(ctx.model->interrupts[i].vector)));
        emitcode(ctx, "RJMP " + ctx.interruptlabel[i]);
    }
    ctx.exitlabel = newlabel(ctx);
    emitinterruptexit(ctx);
}

void emitstartup(CompileContext& ctx) {
    if (ctx.startfromzero) {
        emitraw(ctx, kOrgZero);
        return;
    }
    std::string startlabel;
    if (ctx.interrupts) {
        startlabel = newlabel(ctx);
        emitvectortable(ctx, startlabel);
    } else {
        emitraw(ctx, kOrgZero);
    }
    if (startlabel.empty())
        emitcode(ctx, "CLR R15");
    else
        emitlabel(ctx, startlabel, "CLR R15");
    if (!ctx.model->hassram()) return;
    emitcode(ctx, "LDI R16,low RAMEND");
    emitcode(ctx, "OUT SPL,R16");
    if (ctx.model->datasize > 256) {
        emitcode(ctx, "LDI R16,high RAMEND");
        emitcode(ctx, "OUT SPH,R16");
    }
}

bool emitrow(CompileContext& ctx, int n) {
    const SourceRow& row = ctx.rows[static_cast<size_t>(n)];
    std::string comment = "; " + std::to_string(n) + ": ";
    if (!row.username.empty()) comment += row.username + ": ";
    emitraw(ctx, comment + row.statement + row.comment);
    if (!row.label.empty()) emitlabel(ctx, row.label);
    return dispatchrow(ctx, row.statement);
}

bool checkopenblocks(CompileContext& ctx) {
    ctx.currentline = ctx.sourcelinecount() + 1;
    if (!ctx.whilestack.empty()) return fail(ctx, ": Wend is missing.");
    if (!ctx.forstack.empty()) return fail(ctx, ": Next is missing.");
    if (!ctx.ifstack.empty()) return fail(ctx, ": Endif is missing.");
    if (ctx.ininterrupt) return fail(ctx, ": Resume is missing.");
    return true;
}

}  // namespace

bool generateprogram(CompileContext& ctx) {
    emitraw(ctx, std::string(kCompiledWith) + VELMORA_VERSION);
    emitraw(ctx, "; Microcontroller model: " + ctx.model->name);
    emitraw(ctx, "; Clock frequency: " + ctx.model->clocktext);
    emitraw(ctx, "; Begin");
    if (ctx.stephold) {
        if (ctx.model->hassram())
            emitraw(ctx, ".EQU    REGSTEP = 0x" + hexdigits(static_cast<uint32_t>(ctx.model->sramfirst), 1));
        else if (!declarevariable(ctx, "regstep", "Byte"))
            return false;
    }
    if (!declareinterruptbackups(ctx)) return false;
    emitstartup(ctx);
    emitraw(ctx, "; Begin of program");
    if (!declareroutinevariables(ctx)) return false;
    for (int n = 1; n <= ctx.sourcelinecount(); ++n) {
        ctx.currentline = n;
        if (!emitrow(ctx, n)) return false;
    }
    if (!checkopenblocks(ctx)) return false;
    emitraw(ctx, "; End of program");
    emitselfjump(ctx);
    emitroutines(ctx);
    emitraw(ctx, "; End of listing");
    emitraw(ctx, ".END");
    return true;
}

}  // namespace velmora
