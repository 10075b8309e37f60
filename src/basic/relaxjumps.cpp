#include "basic/relaxjumps.h"

#include "core/textcase.h"

namespace velmora {

namespace {

void linkjumps(CompileContext& ctx) {
    for (JumpLine& line : ctx.jumplines) {
        line.targetindex = -1;
        if (line.target.empty()) continue;
        for (size_t i = 0; i < ctx.jumplines.size(); ++i)
            if (ctx.jumplines[i].label == line.target) {
                line.targetindex = static_cast<int>(i);
                break;
            }
    }
}

// RJMP becomes JMP, RCALL becomes CALL, whatever case the line was written in.
void widen(std::string& text, const std::string& mnemonic) {
    const size_t at = uppercase(text).find(mnemonic);
    if (at != std::string::npos) text.erase(at, 1);
}

}  // namespace

bool jumpreaches(int from, int to, int flashwords) {
    const int d = to - from;
    if (d >= -2048 && d <= 2047) return true;
    if (d > 2047) return d - flashwords >= -2048;
    return d + flashwords < 2048;
}

void relaxjumps(CompileContext& ctx) {
    if (ctx.model->flashwords <= 4096 || ctx.jumplines.size() != ctx.outputlines.size()) return;
    linkjumps(ctx);
    for (bool changed = true; changed;) {
        changed = false;
        for (size_t i = 0; i < ctx.jumplines.size(); ++i) {
            JumpLine& line = ctx.jumplines[i];
            if (line.jump.empty() || line.targetindex < 0) continue;
            const int from = ctx.lineaddress[i] + 1;
            const int to = ctx.lineaddress[static_cast<size_t>(line.targetindex)];
            if (jumpreaches(from, to, ctx.model->flashwords)) continue;
            widen(ctx.outputlines[i], line.jump);
            line.jump.clear();
            line.target.clear();
            for (size_t later = i + 1; later < ctx.lineaddress.size(); ++later) ++ctx.lineaddress[later];
            ++ctx.outputwords;
            changed = true;
        }
    }
}

}  // namespace velmora
