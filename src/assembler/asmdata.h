#pragma once
// The data directives .DB and .DW: their element lists, strings included, and their bytes.

#include <string>
#include <string_view>

#include "assembler/asmcontext.h"

namespace velmora {

// At most this many elements per directive, after string expansion.
inline constexpr int kAsmMaxDataItems = 16;

// Splits the list at every comma and turns each quoted text of two or more characters
// into single-quoted character elements: "AB",1 becomes 'A', 'B', 1. A list without such
// a text comes back unchanged.
std::string asmexpandstrings(std::string_view list);

// Elements in the list, where ',' and "," count as one element each; 0 above 16.
int asmcountitems(std::string_view list);

// The opcode text of a .DB list: one byte per element, padded with "00" to whole words.
// Empty after reporting "Invalid argument of the .DB directive." on the line.
std::string asmencodedb(AsmContext& ctx, std::string_view list, AsmLine& line);

// The opcode text of a .DW list, each word low byte first; empty after reporting
// "Invalid argument of the .DW directive.".
std::string asmencodedw(AsmContext& ctx, std::string_view list, AsmLine& line);

}  // namespace velmora
