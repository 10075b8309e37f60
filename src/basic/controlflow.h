#pragma once
// Structured statements: While, If (block and one-line), Select Case and For, each keeping
// its labels on its own stack.

#include <string>

#include "basic/compilecontext.h"
#include "basic/tokens.h"

namespace velmora {

bool whilestatement(CompileContext& ctx, const Tokens& t);
bool wendstatement(CompileContext& ctx);
bool ifstatement(CompileContext& ctx, const Tokens& t);
bool elsestatement(CompileContext& ctx);
bool endifstatement(CompileContext& ctx);
bool selectstatement(CompileContext& ctx, const std::string& variable);
bool casestatement(CompileContext& ctx, const std::string& text);
bool caseelsestatement(CompileContext& ctx);
bool endselectstatement(CompileContext& ctx);
bool forstatement(CompileContext& ctx, const Tokens& t);
bool nextstatement(CompileContext& ctx, const std::string& variable);

}  // namespace velmora
