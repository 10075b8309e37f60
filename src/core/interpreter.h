#pragma once
// One instruction: fetch two words at pc, decode through the chain's table, execute,
// and account the cycles. The caller has already counted the base cycle.

#include "core/machine.h"

namespace velmora {

inline void addcycles(Machine& m, uint32_t n) {
    m.totalcycles += n;
    m.clockcyclecounter += n;
    m.instructioncycles += n;
}

// Steps pc by one word; running off the end of program memory wraps and stops.
inline void pcstep(Machine& m) {
    if (++m.pc >= m.flashwords) {
        m.pc = m.flashwords > 0 ? m.pc % m.flashwords : 0;
        m.stoprequest = true;
        m.stopreason = Machine::StopReason::EndOfMemory;
    }
}

// After a jump: brings pc back into program memory without stopping.
inline void pcnormalize(Machine& m) {
    if (m.flashwords <= 0) {
        m.pc = 0;
        return;
    }
    if (m.pc < 0) m.pc += m.flashwords;
    m.pc %= m.flashwords;
    if (m.pc < 0) m.pc += m.flashwords;
}

// Executes the instruction at pc. Leaves laststep Unrecognized (and sets stoprequest)
// when no line of the chain accepts the word.
void executeinstruction(Machine& m);

}  // namespace velmora
