#include "basic/basicmodel.h"

#include <string_view>

#include "core/machine.h"
#include "core/numbers.h"
#include "core/textcase.h"
#include "models/modelfile.h"

namespace velmora {

namespace {

// Upper case, tabs as blanks, runs of blanks folded, cut at ";".
std::string foldline(std::string_view line) {
    std::string out;
    for (char c : line) {
        if (c == ';') break;
        if (c == '\t') c = ' ';
        if (c == ' ' && (out.empty() || out.back() == ' ')) continue;
        out += c;
    }
    while (!out.empty() && out.back() == ' ') out.pop_back();
    return uppercase(out);
}

// ".EQU NAME = VALUE" split into its name and value; false for any other line.
bool equline(std::string_view folded, std::string& name, std::string& value) {
    if (!folded.starts_with(".EQU ")) return false;
    const std::string_view rest = folded.substr(5);
    const size_t equals = rest.find('=');
    if (equals == std::string_view::npos) return false;
    std::string_view n = rest.substr(0, equals), v = rest.substr(equals + 1);
    while (!n.empty() && n.back() == ' ') n.remove_suffix(1);
    while (!v.empty() && v.front() == ' ') v.remove_prefix(1);
    if (n.empty() || v.empty()) return false;
    name = n;
    value = v;
    return true;
}

size_t sectiontwolines(const ModelDefinitions& definitions) {
    size_t bitlines = 0;
    for (const std::string& line : definitions.bitdefinitions)
        if (!line.starts_with(";")) ++bitlines;
    return definitions.definitiontext.size() > bitlines ? definitions.definitiontext.size() - bitlines : 0;
}

}  // namespace

BasicModel basicmodelof(const Machine& m, const ModelDefinitions& definitions, const std::string& clocktext,
                        double clockmhz) {
    BasicModel model;
    model.name = m.modelname;
    model.clocktext = clocktext;
    model.clockmhz = clockmhz;
    model.datasize = m.dataspacesize;
    model.sramfirst = 96 + m.extendedio;
    model.sramsize = m.sramsize;
    model.flashbytes = m.flashsize;
    model.flashwords = m.flashwords;
    model.eepromsize = m.eepromsize;
    model.instset = m.kinds.instsetconf == 2 ? 2 : 1;
    model.adcclass = m.kinds.adcconf;
    model.eeclass = m.kinds.eeconf;
    model.uartclass = m.kinds.uartconf;

    const size_t count = sectiontwolines(definitions);
    for (size_t i = 0; i < count; ++i) {
        std::string name, value;
        if (!equline(foldline(definitions.definitiontext[i]), name, value)) continue;
        const int number = parsenumber16(value);
        if (number == kNotANumber16) continue;
        const int address = number <= 0x3F ? number + 32 : number;
        model.registers.push_back({name, address});
        if (name.size() == 5 && name.starts_with("PORT") && name[4] >= 'A' && name[4] <= 'G')
            model.ports[static_cast<size_t>(name[4] - 'A')] = true;
    }
    for (const NamedRegister& reg : m.namedregisters)
        if (reg.address < 10000) model.sfraddresses.push_back(reg.address);

    std::string owner;
    for (const std::string& raw : definitions.bitdefinitions) {
        if (raw.starts_with("; ")) {
            const std::string header = uppercase(raw.substr(2));
            owner = header.substr(0, header.find(' '));
            continue;
        }
        std::string name, value;
        if (!equline(foldline(raw), name, value)) continue;
        const int bit = parsenumber16(value);
        if (bit < 0 || bit > 7) continue;
        model.bitnames.push_back({name, bit, owner});
    }

    for (const InterruptEntry& entry : m.interrupttable) {
        int bit = 0;
        while (bit < 7 && !(entry.enablemask & (1 << bit))) ++bit;
        model.interrupts.push_back({entry.name, entry.vector, entry.description, entry.enableaddress, bit});
    }
    return model;
}

}  // namespace velmora
