// Section 1: the data space map. Every line sets a write mask; lines with a name other than
// "XXXX" also make the named-register table.

#include <algorithm>

#include "core/hextext.h"
#include "core/numbers.h"
#include "models/modelsections.h"
#include "models/modeltext.h"

namespace velmora::models {

namespace {
const char* const kStackLevelTexts[] = {"Stack Level 0", "Stack Level 1", "Stack Level 2"};
}

void readregisterline(ModelReading& reading, const std::string& line) {
    std::string text = line;
    std::replace(text.begin(), text.end(), '\t', ',');
    const std::vector<std::string> fields = splitfields(text, ',');
    if (fields.size() < 4) return;
    const int address = hexfield(fields[0], 2);
    const std::string name = trim(fields[1]);
    const int reset = hexfield(fields[2], 2);
    const int mask = hexfield(fields[3], 2);
    // A line that cannot be read, or maps a cell the data space does not have, is dropped.
    Machine& m = reading.m;
    if (address < 0 || reset < 0 || mask < 0 || address >= m.dataspacesize) return;
    m.datamask[address] = static_cast<uint8_t>(mask);
    if (name.empty() || name == "XXXX") return;
    m.namedregisters.push_back(
        {"$" + hex3(static_cast<uint32_t>(address)) + "   " + name, name, address, static_cast<uint8_t>(reset)});
}

int findregister(const Machine& m, std::string_view name) {
    if (name.empty()) return -1;
    const std::string wanted = uppercase(name);
    for (const NamedRegister& r : m.namedregisters)
        if (r.address < kHwStackPseudoAddress && uppercase(r.name) == wanted) return r.address;
    return -1;
}

void addhardwarestackentries(Machine& m) {
    for (int level = 0; level < 3; ++level)
        m.namedregisters.push_back({kStackLevelTexts[level], "", kHwStackPseudoAddress + level, 0});
}

}  // namespace velmora::models
