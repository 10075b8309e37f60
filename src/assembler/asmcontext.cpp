#include "assembler/asmcontext.h"

#include <utility>

#include "assembler/asmtext.h"

namespace velmora {

void asmreset(AsmContext& ctx, int flashsize) {
    ctx = AsmContext{};
    ctx.flashsize = flashsize > 0 ? flashsize : 0;
    ctx.image.assign(static_cast<size_t>(ctx.flashsize), 0);
}

int asmlookup(const AsmContext& ctx, std::string_view name) {
    const auto found = ctx.firstsymbol.find(uppercase(name));
    return found == ctx.firstsymbol.end() ? 0 : found->second + 1;
}

int asmaddsymbol(AsmContext& ctx, std::string_view name, int32_t value, int line) {
    std::string upper = uppercase(name);
    ctx.firstsymbol.emplace(upper, static_cast<int>(ctx.symbols.size()));
    ctx.symbols.push_back(AsmSymbol{std::move(upper), line, value});
    return static_cast<int>(ctx.symbols.size());
}

void asmerror(AsmContext& ctx, AsmLine& line, const char* text) {
    ++ctx.asmerrors;
    line.errorflag = true;
    line.errortext = text;
}

}  // namespace velmora
