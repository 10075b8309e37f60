#include "cli/statedump.h"

#include <algorithm>
#include <ostream>
#include <string>

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

// Calls `visit(name, value, digits)` for every named register the model shows, hardware
// stack levels (four digits) among them, in the model's order.
template <typename Visit>
void namedregisters(const Machine& m, Visit visit) {
    for (const NamedRegister& r : m.namedregisters) {
        if (r.address >= kHwStackPseudoAddress) {
            const int level = r.address - kHwStackPseudoAddress;
            if (level < static_cast<int>(m.hwstack.size())) visit(r.text, static_cast<uint32_t>(m.hwstack[level]), 4);
        } else if (r.address >= 0 && r.address < m.dataspacesize) {
            visit(r.text, m.datamem[r.address], 2);
        }
    }
}

// A JSON string: quotes, backslashes and control characters escaped.
std::string jsonstring(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
            quoted += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            static const char kDigits[] = "0123456789abcdef";
            quoted += "\\u00";
            quoted += kDigits[c >> 4];
            quoted += kDigits[c & 15];
        } else {
            quoted += c;
        }
    }
    return quoted + "\"";
}

}  // namespace

void dumpstate(const Machine& m, std::ostream& out) {
    for (int r = 0; r < 32; ++r)
        out << "R" << r << (r < 10 ? " " : "") << " = $" << hex2(m.datamem[r]) << ((r % 8 == 7) ? "\n" : "  ");
    out << "SREG = $" << hex2(m.datamem[kSregAddress]) << "\n";
    out << "SP = $" << hex4(static_cast<uint32_t>(stackpointer(m))) << "\n";
    out << "PC = $" << hex6(static_cast<uint32_t>(m.pc)) << "\n";
    namedregisters(m, [&out](const std::string& name, uint32_t value, int digits) {
        out << name << " = $" << (digits == 4 ? hex4(value) : hex2(static_cast<uint8_t>(value))) << "\n";
    });
    dumpeeprom(m, out);
}

void dumpstatejson(const Machine& m, std::ostream& out, const WatchedValues& watched) {
    out << "{\"registers\":[";
    for (int r = 0; r < 32; ++r) out << (r ? "," : "") << static_cast<int>(m.datamem[r]);
    out << "],\"SREG\":" << static_cast<int>(m.datamem[kSregAddress]) << ",\"SP\":" << stackpointer(m)
        << ",\"PC\":" << m.pc << ",\"io\":{";
    const char* separator = "";
    namedregisters(m, [&](const std::string& name, uint32_t value, int) {
        out << separator << jsonstring(name) << ":" << value;
        separator = ",";
    });
    out << "},\"eeprom\":[";
    for (size_t a = 0; a < m.eeprommem.size(); ++a) out << (a ? "," : "") << static_cast<int>(m.eeprommem[a]);
    out << "]";
    if (!watched.empty()) {
        out << ",\"watch\":{";
        for (size_t i = 0; i < watched.size(); ++i)
            out << (i ? "," : "") << jsonstring(watched[i].first) << ":" << watched[i].second;
        out << "}";
    }
    out << "}\n";
}

}  // namespace velmora
