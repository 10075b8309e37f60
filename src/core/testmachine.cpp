#include "core/testmachine.h"

#include "core/hextext.h"
#include "core/memory.h"

namespace velmora {

void configurebaremachine(Machine& m, int flashsize, int sramsize, int eepromsize) {
    m.namedregisters.clear();
    m.interrupttable.clear();
    m.kinds = PeripheralKinds{};
    m.roles = RegisterRoles{};
    resize(m, flashsize, 0, sramsize, eepromsize);
    const struct {
        const char* name;
        int address;
        uint8_t reset;
    } registers[] = {{"SREG", kSregAddress, 0}, {"SPH", kSphAddress, 0}, {"SPL", kSplAddress, 0}};
    for (const auto& r : registers) {
        m.namedregisters.push_back({"$" + hex3(r.address) + "   " + r.name, r.name, r.address, r.reset});
        m.datamask[r.address] = 255;
        m.bitnames[r.address][8] = r.name;
    }
    marksideeffects(m);
}

void loadwords(Machine& m, const std::vector<uint16_t>& words) {
    for (size_t i = 0; i < words.size() && 2 * i + 1 < static_cast<size_t>(m.flashsize); ++i) {
        m.progmem[2 * i] = static_cast<uint8_t>(words[i] & 0xFF);
        m.progmem[2 * i + 1] = static_cast<uint8_t>(words[i] >> 8);
    }
}

}  // namespace velmora
