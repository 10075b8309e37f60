// Section 3: register headers and their ".equ" bit lines. Bits of registers the model does
// not name, and of the port registers, are dropped, so port bits keep their digit names.

#include "models/modelsections.h"
#include "models/modeltext.h"

namespace velmora::models {

namespace {

bool isheader(std::string_view line) { return line.starts_with(';'); }

// "; NAME free text": the word behind the semicolon.
std::string headername(std::string_view line) {
    line.remove_prefix(1);
    const size_t start = line.find_first_not_of(" \t");
    if (start == std::string_view::npos) return {};
    line.remove_prefix(start);
    return std::string(line.substr(0, line.find_first_of(" \t")));
}

bool isportregister(std::string_view name) {
    const std::string upper = uppercase(name);
    return (upper.size() == 5 && upper.starts_with("PORT")) ||
           (upper.size() == 4 && (upper.starts_with("DDR") || upper.starts_with("PIN")));
}

struct BitDefinition {
    std::string name;
    int row = -1;  // -1 when the line defines no bit
};

// ".equ NAME = d": the row is the line's last digit.
BitDefinition readbitdefinition(std::string_view line) {
    const std::string text = trim(line);
    if (!uppercase(text).starts_with(".EQU ")) return {};
    const size_t equals = text.find('=');
    const char last = text.back();
    if (equals == std::string::npos || last < '0' || last > '7') return {};
    BitDefinition bit{trim(std::string_view(text).substr(5, equals - 5)), last - '0'};
    if (bit.name.empty()) bit.row = -1;
    return bit;
}

}  // namespace

void readbitdefinitionline(ModelReading& reading, const std::string& line) {
    if (isheader(line)) {
        const std::string name = headername(line);
        reading.skipping = findregister(reading.m, name) < 0 || isportregister(name);
        if (!reading.skipping) reading.definitions.bitdefinitions.push_back(line);
        return;
    }
    if (reading.skipping) return;
    reading.definitions.bitdefinitions.push_back(line);
    reading.definitions.definitiontext.push_back(line);
}

void buildbitnames(Machine& m, const std::vector<std::string>& bitdefinitions) {
    auto inside = [&m](int address) { return address >= 0 && address < m.dataspacesize; };
    for (const NamedRegister& r : m.namedregisters)
        if (inside(r.address)) m.bitnames[r.address][8] = r.name;
    int column = -1;
    for (const std::string& line : bitdefinitions) {
        if (isheader(line)) {
            column = findregister(m, headername(line));
            continue;
        }
        const BitDefinition bit = readbitdefinition(line);
        if (bit.row >= 0 && inside(column)) m.bitnames[column][bit.row] = bit.name;
    }
}

}  // namespace velmora::models
