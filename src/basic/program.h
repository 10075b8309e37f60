#pragma once
// The generated program from its header to ".END": start-up code, the rows, the end.

#include "basic/compilecontext.h"

namespace velmora {

inline constexpr const char* kCompiledWith = "; Compiled with: Velmora v";

bool generateprogram(CompileContext& ctx);

}  // namespace velmora
