#include "shell/mainwindowfields.h"

#include <algorithm>

#include "core/hextext.h"
#include "core/timetext.h"

namespace velmora {

int firstsramaddress(const Machine& m) { return 96 + m.extendedio; }

int sramscrollmax(const Machine& m) { return std::max(0, m.sramsize - kSramRows); }

int registerscrollmax(const Machine& m) {
    return std::max(0, static_cast<int>(m.namedregisters.size()) - kRegisterRows);
}

ListScroll clampscroll(const Machine& m, ListScroll scroll) {
    return {std::clamp(scroll.sram, 0, sramscrollmax(m)), std::clamp(scroll.registers, 0, registerscrollmax(m))};
}

std::string sramcelltext(int address) { return dollarhex(static_cast<uint32_t>(address), address >= 4096 ? 4 : 3); }

std::string pctext(const Machine& m) { return hex6(static_cast<uint32_t>(m.pc)); }

std::string highestpctext(const Machine& m) { return hex6(static_cast<uint32_t>(std::max(0, m.flashwords - 1))); }

std::vector<SramRow> gprprint(const Machine& m, int scroll) {
    std::vector<SramRow> rows(kSramRows);
    for (int i = 0; i < kSramRows; ++i) {
        const int cell = scroll + i;
        if (cell < 0 || cell >= m.sramsize) {
            rows[i] = {captions::kNotAvailable, captions::kNotAvailable, -1};
            continue;
        }
        const int address = firstsramaddress(m) + cell;
        rows[i] = {sramcelltext(address), hex2(m.datamem[address]), address};
    }
    return rows;
}

namespace {
RegisterRow registerrow(const Machine& m, int index) {
    const NamedRegister& reg = m.namedregisters[index];
    RegisterRow row;
    row.text = reg.text;
    row.tableindex = index;
    if (reg.address >= kHwStackPseudoAddress) {
        // A hardware stack level holds a whole return address.
        const int level = reg.address - kHwStackPseudoAddress;
        row.value = hex3(static_cast<uint32_t>(level < 3 ? m.hwstack[level] : 0) & 0xFFF);
        row.lamps.fill(Lamp::None);
        return row;
    }
    const bool inside = reg.address >= 0 && reg.address < m.dataspacesize;
    const uint8_t value = inside ? m.datamem[reg.address] : 0;
    const uint8_t mask = inside ? m.datamask[reg.address] : 0;
    row.value = hex2(value);
    row.editable = inside;
    for (int bit = 7; bit >= 0; --bit) {
        const uint8_t b = static_cast<uint8_t>(1u << bit);
        row.lamps[7 - bit] = !(mask & b) ? Lamp::Masked : (value & b) ? Lamp::One : Lamp::Zero;
    }
    return row;
}
}  // namespace

std::vector<RegisterRow> sfrprint(const Machine& m, int scroll) {
    std::vector<RegisterRow> rows(kRegisterRows);
    for (int i = 0; i < kRegisterRows; ++i) {
        const int index = scroll + i;
        if (index < 0 || index >= static_cast<int>(m.namedregisters.size())) {
            rows[i].lamps.fill(Lamp::None);
            continue;
        }
        rows[i] = registerrow(m, index);
    }
    return rows;
}

RunFields runfields(const Machine& m, ListScroll scroll) {
    RunFields f;
    f.qinst = instructiontext(m);
    // A reset empties both instruction texts until the next Start.
    const bool shown = m.simulationrunning || m.laststep != Machine::LastStep::None;
    f.qinstnext = shown ? nextinstructiontext(m) : std::string();
    f.qbrojinst = std::to_string(instructioncounter(m));
    f.qcount = std::to_string(clockcyclecounter(m));
    f.qrealtime = timetext(clockcyclecounter(m), m.clockfrequency);
    f.qpc = pctext(m);
    f.pclampcount = std::clamp(m.pcbits, 0, kPcLamps);
    for (int bit = 0; bit < kPcLamps; ++bit) f.pclamps[bit] = (m.pc >> bit) & 1;
    const std::vector<SramRow> sram = gprprint(m, scroll.sram);
    std::copy(sram.begin(), sram.end(), f.sram.begin());
    const std::vector<RegisterRow> regs = sfrprint(m, scroll.registers);
    std::copy(regs.begin(), regs.end(), f.registers.begin());
    return f;
}

}  // namespace velmora
