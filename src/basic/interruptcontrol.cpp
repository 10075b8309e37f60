#include "basic/interruptcontrol.h"

#include "basic/emit.h"
#include "basic/operands.h"
#include "core/textcase.h"

namespace velmora {

bool enablestatement(CompileContext& ctx, const std::string& name, bool enable) {
    if (name.empty()) {
        emitcode(ctx, enable ? "SEI" : "CLI");
        return true;
    }
    for (const BasicInterrupt& entry : ctx.model->interrupts) {
        if (!sameignoringcase(entry.name, name)) continue;
        const int32_t bit = entry.enableaddress * 100 + entry.enablebit;
        if (enable)
            setbit(ctx, bit, "R16");
        else
            clearbit(ctx, bit, "R16");
        return true;
    }
    return fail(ctx, ": Unrecognized interrupt name.");
}

}  // namespace velmora
