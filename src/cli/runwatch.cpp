#include "cli/runwatch.h"

#include <ostream>

#include "core/textcase.h"

namespace velmora {

std::optional<std::vector<WatchEntry>> resolvewatches(const Machine& m, const std::vector<WatchEntry>& variables,
                                                      const std::vector<std::string>& names, std::string& error) {
    std::vector<WatchEntry> entries;
    for (const std::string& name : names) {
        // BASIC names are lower case; registers are found in any case.
        const std::string lower = lowercase(name), upper = uppercase(name);
        std::optional<WatchEntry> found;
        for (const WatchEntry& variable : variables)
            if (!found && variable.name == lower) found = variable;
        for (const NamedRegister& reg : m.namedregisters)
            if (!found && uppercase(reg.name) == upper && reg.address < m.dataspacesize)
                found = WatchEntry{reg.name, WatchKind::Byte, reg.address, 0};
        for (int r = 0; r < 32 && !found; ++r)
            if (upper == "R" + std::to_string(r)) found = WatchEntry{upper, WatchKind::Byte, r, 0};
        if (!found) {
            error = "--watch '" + name + "' names no variable of the program, no register of the model and no R0-R31";
            return std::nullopt;
        }
        entries.push_back(*found);
    }
    return entries;
}

WatchedValues watchedvalues(const Machine& m, const std::vector<std::string>& names,
                            const std::vector<WatchEntry>& entries) {
    WatchedValues values;
    for (size_t i = 0; i < entries.size() && i < names.size(); ++i)
        values.emplace_back(names[i], watchvalue(m, entries[i]));
    return values;
}

void printwatches(const WatchedValues& values, std::ostream& out) {
    for (const auto& [name, value] : values) out << name << " = " << value << "\n";
}

}  // namespace velmora
