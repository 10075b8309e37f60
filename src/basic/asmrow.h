#pragma once
// "ASM:" rows: a piece of assembler written into the program as it stands.

#include <string>

#include "basic/compilecontext.h"

namespace velmora {

// `text` is what stands behind "ASM:".
bool asmrow(CompileContext& ctx, const std::string& text);

}  // namespace velmora
