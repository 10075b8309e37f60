#pragma once
// The program image of an assembly and its Intel HEX text.

#include <string>

#include "assembler/asmcontext.h"

namespace velmora {

// Lays every line's opcode into ctx.image at twice its word location, in line order, and
// returns the index of the byte stored last (-1 for none). Bytes beyond program memory are
// dropped. The last stored byte, not the highest, ends the file, so a source that ends
// with a backward .ORG loses what lies above it.
int asmbuildimage(AsmContext& ctx);

// The HEX file: the image from byte 0 to `last` in 16-byte records, each 64 KiB block
// announced by an extended linear address record, then the end record.
std::string asmhextext(const AsmContext& ctx, int last);

}  // namespace velmora
