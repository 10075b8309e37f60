#include "core/interrupts.h"

#include "core/interpreter.h"
#include "core/stack.h"

namespace velmora {

namespace {
uint8_t cell(const Machine& m, int address) {
    return address >= 0 && address < m.dataspacesize ? m.datamem[address] : 0;
}
}  // namespace

int pendinginterrupt(const Machine& m) {
    if (!(m.datamem[kSregAddress] & kFlagI)) return 0;
    const int count = static_cast<int>(m.interrupttable.size());
    for (int i = 0; i < count; ++i) {
        const InterruptEntry& e = m.interrupttable[i];
        if (!(cell(m, e.enableaddress) & e.enablemask)) continue;
        const int flag = (cell(m, e.flagaddress) & e.flagmask) ? 1 : 0;
        if (flag == e.polarity) return i + 1;
    }
    return 0;
}

void enterinterrupt(Machine& m, int number) {
    const InterruptEntry& e = m.interrupttable[number - 1];
    m.laststep = Machine::LastStep::Interrupt;
    m.datamem[kSregAddress] &= static_cast<uint8_t>(~kFlagI);
    pushreturnaddress(m, m.pc);
    m.pc = e.vector;
    pcnormalize(m);
    if (e.polarity == 1 && e.flagaddress >= 0 && e.flagaddress < m.dataspacesize)
        m.datamem[e.flagaddress] &= static_cast<uint8_t>(~e.flagmask);
    addcycles(m, 4);
}

}  // namespace velmora
