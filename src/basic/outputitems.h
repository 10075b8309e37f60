#pragma once
// The item lists of the output statements (Hserout, Lcdout): quoted texts, decimal numbers
// (#x), variables and constants, each sent a byte at a time through the statement's own
// routine; and the digit emitter that sends a decimal conversion's digits the same way.

#include <string>

#include "basic/compilecontext.h"
#include "basic/routines.h"

namespace velmora {

struct OutputSink {
    const char* send;    // the routine that sends R31, "HS01"
    const char* digits;  // the digit emitter, "HS21"
    int digitsroutine;   // its routine number
    int longbytes;       // bytes of a Long item that are sent, low first
    bool linebreaks;     // CrLf and Lf are items
};

// False after the error.
bool outputitems(CompileContext& ctx, const std::string& items, const OutputSink& sink);

// "HS21: MOV R31,R0", "RCALL HS22", ... for R0..R4, "RET", "HS22: CPSE R31,R15", "RCALL HS01",
// "RET": a zero register (a leading zero) is not sent.
RoutineText digitemitter(int number, const char* comment, const std::string& entry, const std::string& send);

}  // namespace velmora
