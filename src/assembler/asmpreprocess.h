#pragma once
// What happens to the source before pass 1: the model's definitions and the register names
// become symbols, and lines written for other assemblers are neutralised or rewritten.

#include <string>
#include <vector>

#include "assembler/asmcontext.h"

namespace velmora {

// What the assembler takes from the selected model.
struct AsmModel {
    std::vector<std::string> definitiontext;  // ".equ NAME = VALUE" lines and anything else
    int flashsize = 0;                        // bytes
    int sramsize = 0;
    int extendedio = 0;
};

// The top of data memory: SRAM plus extended I/O plus the 96 register and I/O addresses, less 1.
int asmramend(const AsmModel& model);

// Enters the model's .EQU definitions, R0..R31, XL..ZH and RAMEND, in that order.
void asmpredefine(AsmContext& ctx, const AsmModel& model);

// The line as the passes see it: removed with a notice (.include, .cseg, .exit, .list,
// .nolist), rewritten (LOW(x), HIGH(x), .SET, .DEF) with the original behind a comment, or
// unchanged.
std::string asmpreprocess(const std::string& line);

}  // namespace velmora
