#include "basic/interruptcontrol.h"

#include "basic/declarations.h"
#include "basic/emit.h"
#include "basic/operands.h"
#include "basic/registerscan.h"
#include "core/textcase.h"

namespace velmora {

namespace {

int interruptindex(const CompileContext& ctx, const std::string& name) {
    for (size_t i = 0; i < ctx.model->interrupts.size(); ++i)
        if (sameignoringcase(ctx.model->interrupts[i].name, name)) return static_cast<int>(i);
    return -1;
}

std::string backup(int n) { return "r" + std::to_string(n) + "_backup"; }

}  // namespace

bool registerneedssaving(const CompileContext& ctx, int n) {
    if (n == 15 || n == 16) return false;
    if (ctx.memoryusage.size() <= static_cast<size_t>(n) || ctx.memoryusage[static_cast<size_t>(n)] != kMemCodeRegister)
        return false;
    return namesregister(ctx.interrupttext, n);
}

bool interruptstatement(CompileContext& ctx, const std::string& name) {
    if (!ctx.afterend) return fail(ctx, ": Interrupt routine must be placed after END statement in program.");
    if (ctx.ininterrupt) return fail(ctx, ": This statement can not be used in interrupt routine.");
    if (name.empty()) return fail(ctx, ": Interrupt name missing.");
    const int index = interruptindex(ctx, name);
    if (index < 0) return fail(ctx, ": Unrecognized interrupt name.");
    emitlabel(ctx, ctx.interruptlabel[static_cast<size_t>(index)]);
    if (ctx.model->hassram()) {
        emitcode(ctx, "PUSH R16");
        emitcode(ctx, "IN R16,SREG");
        emitcode(ctx, "PUSH R16");
        for (int n = 0; n < 32; ++n)
            if (registerneedssaving(ctx, n)) emitcode(ctx, "PUSH R" + std::to_string(n));
    } else if (ctx.secondsweep) {
        emitcode(ctx, "IN sreg_backup,SREG");
        emitcode(ctx, "MOV r16_backup,R16");
        for (int n = 0; n < 32; ++n)
            if (registerneedssaving(ctx, n)) emitcode(ctx, "MOV " + backup(n) + ",R" + std::to_string(n));
    }
    ctx.ininterrupt = true;
    return true;
}

bool resumestatement(CompileContext& ctx) {
    if (!ctx.ininterrupt) return fail(ctx, ": This statement can not be used outside interrupt routine.");
    ctx.ininterrupt = false;
    emitcode(ctx, "RJMP " + ctx.exitlabel);
    return true;
}

void emitinterruptexit(CompileContext& ctx) {
    emitlabel(ctx, ctx.exitlabel);
    if (ctx.model->hassram()) {
        for (int n = 31; n >= 0; --n)
            if (registerneedssaving(ctx, n)) emitcode(ctx, "POP R" + std::to_string(n));
        emitcode(ctx, "POP R16");
        emitcode(ctx, "OUT SREG,R16");
        emitcode(ctx, "POP R16");
    } else if (ctx.secondsweep) {
        for (int n = 31; n >= 0; --n)
            if (registerneedssaving(ctx, n)) emitcode(ctx, "MOV R" + std::to_string(n) + "," + backup(n));
        emitcode(ctx, "MOV R16,r16_backup");
        emitcode(ctx, "OUT SREG,sreg_backup");
    }
    emitcode(ctx, "RETI");
}

bool declareinterruptbackups(CompileContext& ctx) {
    if (!ctx.interrupts || ctx.model->hassram() || !ctx.secondsweep) return true;
    if (!declarevariable(ctx, "r16_backup", "Byte") || !declarevariable(ctx, "sreg_backup", "Byte")) return false;
    for (int n = 0; n < 32; ++n)
        if (registerneedssaving(ctx, n) && !declarevariable(ctx, backup(n), "Byte")) return false;
    return true;
}

bool enablestatement(CompileContext& ctx, const std::string& name, bool enable) {
    if (name.empty()) {
        emitcode(ctx, enable ? "SEI" : "CLI");
        return true;
    }
    const int index = interruptindex(ctx, name);
    if (index < 0) return fail(ctx, ": Unrecognized interrupt name.");
    const BasicInterrupt& entry = ctx.model->interrupts[static_cast<size_t>(index)];
    const int32_t bit = entry.enableaddress * 100 + entry.enablebit;
    if (enable)
        setbit(ctx, bit, "R16");
    else
        clearbit(ctx, bit, "R16");
    return true;
}

}  // namespace velmora
