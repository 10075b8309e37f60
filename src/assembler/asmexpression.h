#pragma once
// Operand values: a symbol, a number, or one binary operation on two such items, with an
// optional byte-selecting prefix. No parentheses and no precedence, by design.

#include <cstdint>
#include <string_view>

#include "assembler/asmcontext.h"

namespace velmora {

// A symbol, a number, "$", or "a op b" with op one of + - * / (the first of them that stands
// inside the text, in that order). Division rounds to the nearest integer, ties to even.
// 100000 for anything else, a division by zero and a result beyond 32 bits.
int32_t asmevalterm(const AsmContext& ctx, std::string_view text);

// A term with an optional "upper ", "high " or "low " prefix; a plain number up to 999999999;
// kAsmInvalid when unreadable.
int32_t asmevalexpr(const AsmContext& ctx, std::string_view text);

}  // namespace velmora
