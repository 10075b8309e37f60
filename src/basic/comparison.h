#pragma once
// Tests: code that skips the next line when `a op b` holds, so the next line can be the
// jump to the false target. Only that jump may need to reach far.

#include <string>
#include <vector>

#include "basic/compilecontext.h"

namespace velmora {

struct Test {
    std::string a, op, b;
};

// "a op b" with op one of = <> < <= > >=; false after the error.
bool parsetest(CompileContext& ctx, const std::string& text, Test& test);

// Emits the test; false after the error.
bool comparison(CompileContext& ctx, const std::string& text);

// The tests of a condition joined by `joiner` ("And" or "Or").
std::vector<std::string> splittests(const std::string& condition, const std::string& joiner);

}  // namespace velmora
