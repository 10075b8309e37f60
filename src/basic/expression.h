#pragma once
// Rows with "=" that no simpler form takes: an expression of up to nine operands with
// brackets, evaluated through temporaries at Word width (Long for a Long result).

#include <string>

#include "basic/compilecontext.h"

namespace velmora {

bool expression(CompileContext& ctx, const std::string& row);

}  // namespace velmora
