#pragma once
// The character LCD statements (Lcdinit, Lcdout, Lcdcmdout, Lcddefchar) and the routines
// that drive the module on the pins the LCD Define parameters name: LC01 sends a character,
// LC02 a command, LC21 the digits of a decimal number.

#include <string>

#include "basic/compilecontext.h"
#include "basic/routines.h"

namespace velmora {

bool lcdinitstatement(CompileContext& ctx, const std::string& argument);
bool lcdoutstatement(CompileContext& ctx, const std::string& items);
bool lcdcmdoutstatement(CompileContext& ctx, const std::string& command);
bool lcddefcharstatement(CompileContext& ctx, const std::string& arguments);

RoutineText lcdcharroutine(const CompileContext& ctx);
RoutineText lcdcommandroutine(const CompileContext& ctx);
RoutineText lcddigitsroutine(const CompileContext& ctx);

}  // namespace velmora
