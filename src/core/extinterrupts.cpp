#include "core/extinterrupts.h"

#include <array>

#include "core/roleregisters.h"

namespace velmora {

namespace {

constexpr int kPortA = kPortCodeA, kPortB = kPortCodeA + 1, kPortD = kPortCodeA + 3;
constexpr int kFirstKind = 2;

// Indexed by kind minus 2.
constexpr std::array<ExternalInterruptPin, 6> kInt0Pins{{
    {kPortD, 0x04, false, 0},
    {kPortD, 0x04, true, 0},
    {kPortD, 0x01, true, 0},
    {kPortB, 0x04, false, 0},
    {kPortB, 0x40, false, 0},
    {kPortB, 0x02, false, 0},
}};
// INT1 of kind 5 is sensed by MCUCR bits 1-0, the bits INT0 uses too.
constexpr std::array<ExternalInterruptPin, 4> kInt1Pins{{
    {kPortD, 0x08, false, 2},
    {kPortD, 0x08, true, 2},
    {kPortD, 0x02, true, 2},
    {kPortA, 0x04, false, 0},
}};

template <size_t N>
const ExternalInterruptPin* pinofkind(const std::array<ExternalInterruptPin, N>& table, int kind) {
    const int index = kind - kFirstKind;
    return index >= 0 && index < static_cast<int>(N) ? &table[index] : nullptr;
}

enum Sense { kSenseNone = 0, kSenseChange = 1, kSenseFalling = 2, kSenseRising = 3 };

ExternalInterruptLine resolve(const Machine& m, const ExternalInterruptPin* pin, int flagaddress, uint8_t flagmask,
                              bool previous) {
    ExternalInterruptLine line;
    line.previous = previous;
    if (!pin) return line;
    line.port = pin->portcode - kPortCodeA;
    line.mask = pin->mask;
    const int control = pin->eicra ? m.roles.eicra : m.roles.mcucr;
    line.control = bound(m, control) ? control : 0;
    line.shift = pin->shift;
    if (flagaddress >= 0 && flagaddress < m.dataspacesize) line.flagaddress = flagaddress;
    line.flagmask = flagmask;
    return line;
}

void detect(Machine& m, ExternalInterruptLine& line) {
    if (!line.mask) return;
    // Ports the model lacks always read 0 here: a reset clears every port's levels.
    const bool level = m.ports[line.port].pinread & line.mask;
    if (level == line.previous) return;  // no edge of any kind
    line.previous = level;
    const int sense = line.control ? (m.datamem[line.control] >> line.shift) & 3 : kSenseNone;
    const bool edge = sense == kSenseChange || (sense == kSenseFalling && !level) || (sense == kSenseRising && level);
    if (edge && line.flagaddress >= 0) m.datamem[line.flagaddress] |= line.flagmask;
}

}  // namespace

const ExternalInterruptPin* int0pin(int kind) { return pinofkind(kInt0Pins, kind); }
const ExternalInterruptPin* int1pin(int kind) { return pinofkind(kInt1Pins, kind); }

void planexternalinterrupts(Machine& m) {
    ExternalInterruptState& s = m.extinterrupts;
    s.dataspacesize = m.dataspacesize;
    s.int0 = resolve(m, int0pin(m.kinds.int0), m.int0flagaddress, m.int0flagmask, s.int0.previous);
    s.int1 = resolve(m, int1pin(m.kinds.int1), m.int1flagaddress, m.int1flagmask, s.int1.previous);
}

void externalinterrupts(Machine& m) {
    ExternalInterruptState& s = m.extinterrupts;
    if (s.dataspacesize != m.dataspacesize) planexternalinterrupts(m);
    detect(m, s.int0);
    detect(m, s.int1);
}

}  // namespace velmora
