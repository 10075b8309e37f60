#pragma once
// The hardware UART statements: Hseropen with its baud divisor, Hserout, Hserin, Hserget.

#include <string>

#include "basic/compilecontext.h"

namespace velmora {

bool hseropen(CompileContext& ctx, const std::string& argument);
bool hserout(CompileContext& ctx, const std::string& items);
bool hserin(CompileContext& ctx, const std::string& variables);
bool hserget(CompileContext& ctx, const std::string& variable);

}  // namespace velmora
