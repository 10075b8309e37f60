#pragma once
// The names of a program and what an operand text means: its type and its address.

#include <string>

#include "basic/compilecontext.h"

namespace velmora {

// Fills the symbol and bit-name tables from the model alone: its registers (PORTx with
// its PA..PG alias and bit names), R0..R31 and XL..ZH. User names are never kept across sweeps.
void loadsystemsymbols(CompileContext& ctx);

int symboltype(const CompileContext& ctx, const std::string& text);
int32_t symboladdress(const CompileContext& ctx, const std::string& text);

// The first match of the table by exact name, or null.
const SymbolEntry* findsymbol(const CompileContext& ctx, const std::string& name);

// "_" or a lower-case letter, then "_", lower-case letters and digits.
bool validname(const std::string& text);

// Each replaces a constant name by its value, checks the range and leaves a trimmed decimal
// in `text`; on failure it reports the argument message.
bool constantbit(CompileContext& ctx, std::string& text);
bool constantbyte(CompileContext& ctx, std::string& text);
bool constantword(CompileContext& ctx, std::string& text);
bool constantlong(CompileContext& ctx, std::string& text);

// The output register of a port the model has. PORTF and PORTG lie in extended I/O on the
// larger parts and are refused with a warning box.
bool isport(CompileContext& ctx, int32_t address);
std::string portletter(const CompileContext& ctx, int32_t address);

}  // namespace velmora
