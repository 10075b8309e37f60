#pragma once
// Declarations: where variables live, and the Dim, Symbol, Const and Reserve statements.

#include <string>
#include <vector>

#include "basic/compilecontext.h"

namespace velmora {

// Sets up the SRAM table of a sweep: the model's SRAM, or on a model without SRAM the 32
// virtual locations at 96..127 that let the first sweep run.
void preparememory(CompileContext& ctx);

// A run of free locations: registers first where they may hold it, or -1.
int allocate(CompileContext& ctx, int bytes);
int allocateat(CompileContext& ctx, int bytes, int address);

// `typeword` is "Bit", "Byte", "Word" or "Long".
bool declarevariable(CompileContext& ctx, const std::string& name, const std::string& typeword);
bool declarevariableat(CompileContext& ctx, const std::string& name, const std::string& typeword,
                       const std::string& addresstext);
bool declarearray(CompileContext& ctx, const std::string& declaration, const std::string& typeword);
bool declaresymbol(CompileContext& ctx, const std::string& name, const std::string& argument);
bool declareconstant(CompileContext& ctx, const std::string& name, const std::string& value);
bool reserve(CompileContext& ctx, const std::string& addresstext);

// The scan before code generation: labels, the flags that act from anywhere, the memory plan.
bool declarationscan(CompileContext& ctx);

}  // namespace velmora
