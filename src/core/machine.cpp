#include "core/machine.h"

#include <algorithm>
#include <cmath>

#include "core/hextext.h"
#include "core/memory.h"

namespace velmora {

std::array<std::string, 9> defaultbitnames(int address) {
    std::array<std::string, 9> names;
    for (int bit = 0; bit < 8; ++bit) names[bit] = std::string(1, static_cast<char>('0' + bit));
    // I/O registers show their I/O address, everything else its data address.
    const int shown = (address >= 32 && address <= 95) ? address - 32 : address;
    names[8] = dollarhex(static_cast<uint32_t>(shown), shown >= 4096 ? 4 : 3);
    return names;
}

void setbreakpoints(Machine& m, const std::vector<int32_t>& words, uint8_t owner) {
    // One flag for every word the program counter can hold, the two spare ones included.
    const size_t count = m.progmem.size() / 2 + 1;
    if (m.breakat.size() != count) m.breakat.assign(count, 0);
    for (uint8_t& flag : m.breakat) flag &= static_cast<uint8_t>(~owner);
    for (int32_t word : words)
        if (word >= 0 && word < m.flashwords) m.breakat[static_cast<size_t>(word)] |= owner;
    m.breakpointsset = std::ranges::any_of(m.breakat, [](uint8_t flag) { return flag != 0; });
}

void resize(Machine& m, int flashsize, int extendedio, int sramsize, int eepromsize) {
    m.flashsize = flashsize < 0 ? 0 : flashsize;
    m.flashwords = m.flashsize / 2;
    m.pcbits = m.flashwords > 0 ? static_cast<int>(std::lround(std::log2(m.flashwords))) : 0;
    m.threebytepc = m.flashwords > 0x10000;
    m.progmem.assign(static_cast<size_t>(m.flashsize) + 4, m.unprogrammed);
    // Program memory of another size: nobody's breakpoints carry over.
    m.breakat.clear();
    setbreakpoints(m, {}, kBreakUser | kBreakDebugger);
    m.extendedio = extendedio < 0 ? 0 : extendedio;
    m.sramsize = sramsize < 0 ? 0 : sramsize;
    m.dataspacesize = m.extendedio + m.sramsize + 96;
    m.eightbitpointers = m.dataspacesize <= 256;
    m.datamem.assign(m.dataspacesize, 0);
    m.datamask.assign(m.dataspacesize, 0);
    for (int a = 96 + m.extendedio; a < m.dataspacesize; ++a) m.datamask[a] = 255;
    m.eepromsize = eepromsize < 0 ? 0 : eepromsize;
    m.eeprommem.assign(m.eepromsize, m.unprogrammed);
    m.bitnames.resize(m.dataspacesize);
    for (int a = 0; a < m.dataspacesize; ++a) m.bitnames[a] = defaultbitnames(a);
    marksideeffects(m);
}

void clean(Machine& m) {
    m.laststep = Machine::LastStep::None;
    m.totalinstructions = m.totalcycles = m.instructionmark = m.cyclemark = m.stepstartcycles = 0;
    m.pc = 0;
    m.hwstackdepth = 0;
    m.afterreti = false;
    m.watchhit = -1;
    std::fill(m.datamem.begin(), m.datamem.end(), 0);
    for (const NamedRegister& r : m.namedregisters)
        if (r.address < kHwStackPseudoAddress && r.address >= 0 && r.address < m.dataspacesize)
            m.datamem[r.address] = r.reset;
    m.usart = UsartState{};
    for (auto hook : m.cleanhooks) hook(m);
    for (PinObserver* observer : m.observers) observer->reset(m);
    wakeperipherals(m);
    m.attention = true;
}

}  // namespace velmora
