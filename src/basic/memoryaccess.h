#pragma once
// Reading and writing memory by address (Pointer) and tables in program memory (LookUp).

#include <string>

#include "basic/compilecontext.h"

namespace velmora {

bool pointerread(CompileContext& ctx, const std::string& result, const std::string& address);
bool pointerwrite(CompileContext& ctx, const std::string& address, const std::string& source);
// `arguments` is what follows "LookUp(": the values, "), " and the index.
bool lookup(CompileContext& ctx, const std::string& result, const std::string& arguments);

}  // namespace velmora
