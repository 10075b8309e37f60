#pragma once
// High, Low and Toggle of a Bit, and Config of a port's direction.

#include <string>

#include "basic/compilecontext.h"

namespace velmora {

enum class PinAction { High, Low, Toggle };

bool pinstatement(CompileContext& ctx, PinAction action, const std::string& pin);
bool configstatement(CompileContext& ctx, const std::string& target, const std::string& direction);

}  // namespace velmora
