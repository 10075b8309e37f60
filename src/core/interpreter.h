#pragma once
// One instruction: fetch two words at pc, decode through the chain's table, execute,
// and account the cycles. The caller has already counted the base cycle.

#include <array>

#include "core/decode.h"
#include "core/machine.h"

namespace velmora {

namespace detail {
using Handler = void (*)(Machine&, uint16_t op);
using HandlerTable = std::array<Handler, static_cast<size_t>(Op::Count)>;
extern const HandlerTable g_handlers;
}  // namespace detail

inline void addcycles(Machine& m, uint32_t n) {
    m.totalcycles += n;
}

// Steps pc by one word; running off the end of program memory wraps and stops.
inline void pcstep(Machine& m) {
    if (++m.pc >= m.flashwords) {
        m.pc = m.flashwords > 0 ? m.pc % m.flashwords : 0;
        m.stoprequest = true;
        m.stopreason = Machine::StopReason::EndOfMemory;
    }
}

// After a jump: a program counter brought back into program memory without stopping.
inline int32_t wrappedpc(int32_t pc, int32_t flashwords) {
    if (flashwords <= 0) return 0;
    if (pc < 0) pc += flashwords;
    pc %= flashwords;
    return pc < 0 ? pc + flashwords : pc;
}
inline void pcnormalize(Machine& m) { m.pc = wrappedpc(m.pc, m.flashwords); }

struct QuietRun {
    uint32_t steps;
    bool ended;  // the last step ended the quiet; the rest of that step is still to do
};
// Up to `count` steps of a quiet machine (peripherals resting, no interrupt can be pending,
// nobody watching between steps), each as far as its instruction. Stops after a step that
// enables interrupts, wakes the peripherals, asks for attention, stops, or is BREAK.
QuietRun runquiet(Machine& m, uint32_t count);

// Executes the instruction at pc. Leaves laststep Unrecognized (and sets stoprequest)
// when no line of the chain accepts the word.
inline void executeinstruction(Machine& m) {
    const uint16_t op = progword(m, m.pc);
    const Op id = decode(op);
    m.lastpc = m.pc;
    m.laststep = Machine::LastStep::Instruction;
    detail::g_handlers[static_cast<size_t>(id)](m, op);
}

}  // namespace velmora
