#pragma once
// Define parameters: compile-time settings of pins, timings and modes, and the clock.

#include <string>

#include "basic/compilecontext.h"

namespace velmora {

// Every parameter at its default; the clock at the simulator's value.
void definedefaults(CompileContext& ctx);

bool definestatement(CompileContext& ctx, const std::string& name, const std::string& value);

// A parameter's value (the caller names a parameter that exists).
int defineparameter(const CompileContext& ctx, const std::string& name);

}  // namespace velmora
