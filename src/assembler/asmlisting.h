#pragma once
// The listing: one row per program word of each source line, the error rows, and the
// count. Its fixed columns are read back by the Breakpoints Manager and source tracking.

#include <string>
#include <vector>

#include "assembler/asmcontext.h"

namespace velmora {

// The whole listing text, rows ended by CR LF. Fills ctx.errorsourceline and
// ctx.errorlistline and advances ctx.asmlistline as it goes.
std::string asmlistingtext(AsmContext& ctx);

// The error row of a flagged line as the listing prints it: "0012 Error: Duplicate label.".
std::string asmerrorrow(int linenumber, const std::string& errortext);

// The error rows of an assembly in line order: what a window or the command line reports.
std::vector<std::string> asmerrorrows(const AsmContext& ctx);

}  // namespace velmora
