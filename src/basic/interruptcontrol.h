#pragma once
// Enable and Disable: all interrupts (SEI, CLI) or one by its enable bit.

#include <string>

#include "basic/compilecontext.h"

namespace velmora {

bool enablestatement(CompileContext& ctx, const std::string& name, bool enable);

}  // namespace velmora
