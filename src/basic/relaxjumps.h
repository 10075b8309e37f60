#pragma once
// On parts with more than 4096 flash words, relative jumps that cannot reach their target
// become absolute ones.

#include "basic/compilecontext.h"

namespace velmora {

// RJMP and RCALL reach 2048 words back and 2047 forward, and also across the end of flash.
bool jumpreaches(int from, int to, int flashwords);

void relaxjumps(CompileContext& ctx);

}  // namespace velmora
