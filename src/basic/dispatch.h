#pragma once
// What a source row is: a chain of shape tests in a fixed order, the first that fits takes
// the row to its handler. Handlers report their own errors.

#include <string>

#include "basic/compilecontext.h"

namespace velmora {

// The place in the chain of the first shape that fits the row, 0 for none.
int chainrule(const std::string& row);

bool dispatchrow(CompileContext& ctx, const std::string& row);
// The statement behind Then on a one-line If: the same chain, for fewer statements.
bool dispatchthen(CompileContext& ctx, const std::string& statement);

}  // namespace velmora
