#pragma once
// WaitMs and WaitUs, and the fixed short waits device routines put in line: delay constants
// worked out at compile time from the clock, so the program needs no timer.

#include <string>
#include <vector>

#include "basic/compilecontext.h"
#include "basic/routines.h"

namespace velmora {

bool waitmsstatement(CompileContext& ctx, const std::string& argument);
bool waitusstatement(CompileContext& ctx, const std::string& argument);

// A wait of n microseconds in line: n below 256 through X000, n up to 65535 through Y000.
// They do not request their routine; the caller does.
void waitusconstantbyte(CompileContext& ctx, int n);
void waitusconstantword(CompileContext& ctx, int n);
// The same lines, for routines that put the wait in their own text.
std::vector<std::string> waitusbytelines(const CompileContext& ctx, int n);
std::vector<std::string> waituswordlines(const CompileContext& ctx, int n);

// The routines' texts for the compile's clock and model.
RoutineText waitmsroutine(const CompileContext& ctx);
RoutineText waitusbyteroutine(const CompileContext& ctx);
RoutineText waituswordroutine(const CompileContext& ctx);

}  // namespace velmora
