#include "cli/statedump.h"

#include <algorithm>
#include <ostream>

#include "core/hextext.h"
#include "core/stack.h"

namespace velmora {

namespace {

void dumpeeprom(const Machine& m, std::ostream& out) {
    if (m.eeprommem.empty()) return;
    out << "EEPROM:\n";
    bool anyrow = false;
    for (size_t a = 0; a < m.eeprommem.size(); a += 16) {
        const size_t end = std::min(a + 16, m.eeprommem.size());
        bool erased = true;
        for (size_t i = a; i < end; ++i) erased = erased && m.eeprommem[i] == 0xFF;
        if (erased) continue;  // only rows that hold data
        anyrow = true;
        out << hex4(static_cast<uint32_t>(a)) << ":";
        for (size_t i = a; i < end; ++i) out << " " << hex2(m.eeprommem[i]);
        out << "\n";
    }
    if (!anyrow) out << "(all $FF)\n";
}

}  // namespace

void dumpstate(const Machine& m, std::ostream& out) {
    for (int r = 0; r < 32; ++r)
        out << "R" << r << (r < 10 ? " " : "") << " = $" << hex2(m.datamem[r]) << ((r % 8 == 7) ? "\n" : "  ");
    out << "SREG = $" << hex2(m.datamem[kSregAddress]) << "\n";
    out << "SP = $" << hex4(static_cast<uint32_t>(stackpointer(m))) << "\n";
    out << "PC = $" << hex6(static_cast<uint32_t>(m.pc)) << "\n";
    for (const NamedRegister& r : m.namedregisters) {
        if (r.address >= kHwStackPseudoAddress) {
            const int level = r.address - kHwStackPseudoAddress;
            if (level >= static_cast<int>(m.hwstack.size())) continue;
            out << r.text << " = $" << hex4(static_cast<uint32_t>(m.hwstack[level])) << "\n";
        } else if (r.address >= 0 && r.address < m.dataspacesize) {
            out << r.text << " = $" << hex2(m.datamem[r.address]) << "\n";
        }
    }
    dumpeeprom(m, out);
}

}  // namespace velmora
