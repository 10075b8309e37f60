#pragma once
// The plain assignment `x = y` between any two operands, constants included.

#include <string>

#include "basic/compilecontext.h"

namespace velmora {

bool assign(CompileContext& ctx, const std::string& result, const std::string& source);

// Byte, Word or Long for the width of a value: elements count as their element type.
int widthof(int type);

}  // namespace velmora
