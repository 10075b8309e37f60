#pragma once
// The generated program from its header to ".END": start-up code, the rows, the end.

#include "basic/compilecontext.h"

namespace velmora {

inline constexpr const char* kCompiledWith = "; Compiled with: Velmora v";

bool generateprogram(CompileContext& ctx);

// Whether an interrupt routine must save register `n`: used by generated code and named by
// the text of interrupt routines in the first sweep. R15 and R16 are handled apart.
bool registerneedssaving(const CompileContext& ctx, int n);

}  // namespace velmora
