#pragma once
// Read and Write of the data EEPROM, through routines EE01 and EE02.

#include <string>

#include "basic/compilecontext.h"
#include "basic/routines.h"

namespace velmora {

bool readstatement(CompileContext& ctx, const std::string& arguments);
bool writestatement(CompileContext& ctx, const std::string& arguments);
RoutineText eepromroutine(const CompileContext& ctx);

}  // namespace velmora
