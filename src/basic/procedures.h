#pragma once
// Proc and Function: headers found by the declaration scan, arguments held in global
// variables with made-up names, bodies placed after End, and Call.

#include <string>

#include "basic/compilecontext.h"

namespace velmora {

// The declaration scan's part: a header row's text behind "Proc " or "Function ".
bool scanprocedure(CompileContext& ctx, const std::string& text);
bool scanfunction(CompileContext& ctx, const std::string& text);

// The variables of every argument and function result, declared ahead of the first row.
bool declareroutinevariables(CompileContext& ctx);

// "p_r_o_c_I_K" or "f_u_n_c_I_K": the variable of argument k (from 1) of routine i (from 1).
std::string argumentvariable(bool function, int i, int k);

// The body statements: a header row, Exit, End Proc and End Function.
bool routinestatement(CompileContext& ctx, bool function);
bool exitstatement(CompileContext& ctx);
bool endroutinestatement(CompileContext& ctx, bool function);

// "name(a, b, ...)": each argument assigned to its variable, then the call.
bool callstatement(CompileContext& ctx, const std::string& text);

// The function a token such as "f(3," calls, or null.
const RoutineEntry* functioncalled(const CompileContext& ctx, const std::string& token);

// Inside a body, an argument's name stands for its variable: the whole text, an array
// index "(name)" and a bit "name.".
std::string translatename(const CompileContext& ctx, const std::string& text);

}  // namespace velmora
