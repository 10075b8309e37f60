#pragma once
// The two passes over the line table. Pass 1 finds labels and statements and sizes each
// line; pass 2 defines the .EQU names, evaluates operands and encodes.

#include "assembler/asmcontext.h"

namespace velmora {

// Labels longer than this are refused.
inline constexpr size_t kAsmMaxLabelLength = 32;

// Pass 1 of one line (1-based number): label, statement, arguments, size.
void asmpass1line(AsmContext& ctx, int number);

// Moves the location counter by the size of the line's statement, or flags the line.
void asmsizeline(AsmContext& ctx, AsmLine& line);

// Pass 2 of one line.
void asmpass2line(AsmContext& ctx, int number);

}  // namespace velmora
