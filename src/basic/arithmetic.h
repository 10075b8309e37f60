#pragma once
// One-operator rows: arithmetic (+ - * / Mod), logic (And Or Xor and their negations), Not,
// and Sqr.

#include <string>
#include <vector>

#include "basic/compilecontext.h"

namespace velmora {

bool arithmetic(CompileContext& ctx, const std::string& result, const std::string& a, const std::string& op,
                const std::string& b);
bool logic(CompileContext& ctx, const std::string& result, const std::string& a, const std::string& op,
           const std::string& b);
bool notstatement(CompileContext& ctx, const std::string& result, const std::string& source);
// x = ShiftLeft(a, n) and x = ShiftRight(a, n).
bool shiftstatement(CompileContext& ctx, const std::string& result, bool left, const std::string& a,
                    const std::string& count);
bool sqrstatement(CompileContext& ctx, const std::string& result, const std::string& argument);

// A temporary of the width `type` whose name is not in `busy`, declared when none is; its
// name, or empty after the error.
std::string temporary(CompileContext& ctx, int type, const std::vector<std::string>& busy = {});

}  // namespace velmora
