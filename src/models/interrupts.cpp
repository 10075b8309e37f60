// Section 4: the interrupt table, in priority order.

#include <algorithm>

#include "core/numbers.h"
#include "models/modelsections.h"
#include "models/modeltext.h"

namespace velmora::models {

namespace {

struct BitReference {
    int address = 0;
    uint8_t mask = 1;
    bool resolved = true;
};

// "REGISTER.b", or empty for none. What does not resolve stays at address 0.
BitReference resolvebit(const Machine& m, std::string_view field) {
    const std::string text = trim(field);
    if (text.empty()) return {};
    BitReference ref;
    const size_t point = text.rfind('.');
    const std::string digit = point == std::string::npos ? std::string() : text.substr(point + 1);
    if (digit.size() == 1 && digit[0] >= '0' && digit[0] <= '7') ref.mask = static_cast<uint8_t>(1u << (digit[0] - '0'));
    else ref.resolved = false;
    const int address = point == std::string::npos ? -1 : findregister(m, std::string_view(text).substr(0, point));
    if (address < 0) ref.resolved = false;
    else if (ref.resolved) ref.address = address;
    return ref;
}

// Ready interrupts fire while their status bit reads 0.
int polarityof(const std::string& name) { return name == "SPMR" || name == "ERDY" ? 0 : 1; }

}  // namespace

void buildinterrupts(Machine& m, const std::vector<NumberedLine>& lines, std::vector<std::string>& warnings) {
    auto warn = [&warnings](int number) {
        warnings.push_back("Error in interrupt definition " + std::to_string(number) + ".");
    };
    for (const NumberedLine& line : lines) {
        const std::vector<std::string> fields = splitfields(line.text, ',');
        InterruptEntry entry;
        entry.name = trim(fieldat(fields, 0));
        entry.vector = hexfield(fieldat(fields, 1), 4);
        // Without a name or a vector there is nothing an interrupt could jump to.
        if (entry.name.empty() || entry.vector < 0) {
            warn(line.number);
            continue;
        }
        entry.description = trim(fieldat(fields, 2));
        const BitReference enable = resolvebit(m, fieldat(fields, 3));
        const BitReference flag = resolvebit(m, fieldat(fields, 4));
        for (const BitReference* ref : {&enable, &flag})
            if (!ref->resolved) warn(line.number);
        entry.enableaddress = enable.address;
        entry.enablemask = enable.mask;
        entry.flagaddress = flag.address;
        entry.flagmask = flag.mask;
        entry.polarity = polarityof(entry.name);
        m.interrupttable.push_back(entry);
    }
    // The external interrupt logic watches the flags of INT0 and INT1 itself.
    auto named = [&m](const char* name) {
        return std::find_if(m.interrupttable.begin(), m.interrupttable.end(),
                            [name](const InterruptEntry& e) { return e.name == name; });
    };
    if (auto int0 = named("INT0"); int0 != m.interrupttable.end()) {
        m.int0flagaddress = int0->flagaddress;
        m.int0flagmask = int0->flagmask;
    }
    if (auto int1 = named("INT1"); int1 != m.interrupttable.end()) {
        m.int1flagaddress = int1->flagaddress;
        m.int1flagmask = int1->flagmask;
    }
}

}  // namespace velmora::models
