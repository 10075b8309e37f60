#pragma once
// Adcin: one conversion on a channel into a variable, through routine A001, whose text
// follows the model's ADC kind and the ADC Define parameters.

#include <string>

#include "basic/compilecontext.h"
#include "basic/routines.h"

namespace velmora {

bool adcinstatement(CompileContext& ctx, const std::string& arguments);
RoutineText adcroutine(const CompileContext& ctx);

}  // namespace velmora
