#pragma once
// Jumps between rows and the program's ends: Goto, Gosub, Return, End, Halt, Break.

#include <string>

#include "basic/compilecontext.h"

namespace velmora {

bool gotostatement(CompileContext& ctx, const std::string& label);
bool gosubstatement(CompileContext& ctx, const std::string& label);
bool returnstatement(CompileContext& ctx);
bool endstatement(CompileContext& ctx);
bool haltstatement(CompileContext& ctx);
bool breakstatement(CompileContext& ctx);

// A new label on a line that jumps to itself: where a program or a Halt stops.
void emitselfjump(CompileContext& ctx);

}  // namespace velmora
