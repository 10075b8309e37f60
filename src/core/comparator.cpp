#include "core/comparator.h"

#include "core/adc.h"
#include "core/roleregisters.h"

namespace velmora {

namespace {

constexpr int kFirstKind = 2, kLastKind = 6;
constexpr int kPlain = 2, kMuxAdcsrb = 3, kMuxSfior = 4, kMuxAcsr = 5, kSelectable = 6;
constexpr uint8_t kAcmeAdcsrb = 0x40, kAcmeSfior = 0x08;
constexpr int kNarrowHysteresis = 2, kWideHysteresis = 5;

int analogvalue(const Machine& m, int channel) {
    return channel >= 0 && channel < kAdcChannelCount ? m.analog[channel].analoginput : 0;
}

int compconf(const Machine& m, size_t index) {
    return index < m.kinds.compconf.size() ? m.kinds.compconf[index] : 0;
}
int kind(const Machine& m) { return compconf(m, 0); }
// A model without a third input compares 0 there.
int channelvalue(const Machine& m, size_t confindex) {
    return confindex < m.kinds.compconf.size() ? analogvalue(m, m.kinds.compconf[confindex]) : 0;
}
int plusvalue(const Machine& m) { return channelvalue(m, 2); }
int minusvalue(const Machine& m) { return channelvalue(m, 3); }
int thirdvalue(const Machine& m) { return channelvalue(m, 4); }

bool adcoff(const Machine& m) { return !(rolevalue(m, m.roles.adcsra) & kAden); }
int admuxchannel(const Machine& m, uint8_t bits) { return analogvalue(m, rolevalue(m, m.roles.admux) & bits); }

int selectedplus(const Machine& m, uint8_t select) {
    if (select <= 1) return plusvalue(m);
    if (select <= 3) return minusvalue(m);
    return thirdvalue(m);
}

int selectedminus(const Machine& m, uint8_t select) {
    switch (select) {
    case 1:
    case 3: return thirdvalue(m);
    case 2:
    case 4: return plusvalue(m);
    default: return minusvalue(m);
    }
}

int hysteresis(const Machine& m) {
    if (kind(m) != kSelectable) return 0;
    const uint8_t acsrb = rolevalue(m, m.roles.acsrb);
    if (!(acsrb & kHsel)) return 0;
    return (acsrb & kHlev) ? kWideHysteresis : kNarrowHysteresis;
}

}  // namespace

ComparatorInputs comparatorinputs(const Machine& m) {
    const uint8_t acsr = rolevalue(m, m.roles.acsr);
    const uint8_t select = rolevalue(m, m.roles.acsrb) & kAcmInputs;
    const int k = kind(m);
    ComparatorInputs in;
    if (acsr & kAcbg)
        in.plus = referencevalue(bandgapkind(m));
    else
        in.plus = k == kSelectable ? selectedplus(m, select) : plusvalue(m);
    switch (k) {
    case kMuxAdcsrb:
        in.minus = (rolevalue(m, m.roles.adcsrb) & kAcmeAdcsrb) && adcoff(m) ? admuxchannel(m, 7) : minusvalue(m);
        break;
    case kMuxSfior:
        in.minus = (rolevalue(m, m.roles.sfior) & kAcmeSfior) && adcoff(m) ? admuxchannel(m, 7) : minusvalue(m);
        break;
    case kMuxAcsr: in.minus = (acsr & kAcme) && adcoff(m) ? admuxchannel(m, 15) : minusvalue(m); break;
    case kSelectable:
        in.minus = (acsr & kAcme) && adcoff(m) ? admuxchannel(m, 15) : selectedminus(m, select);
        break;
    default: in.minus = minusvalue(m); break;
    }
    return in;
}

void plancomparator(Machine& m) {
    ComparatorState c;
    c.dataspacesize = m.dataspacesize;
    const int k = kind(m);
    if (k >= kFirstKind && k <= kLastKind && bound(m, m.roles.acsr)) {
        c.acsr = m.roles.acsr;
        // Registers a kind does not consult, or the model does not bind, are read as ACSR again.
        auto orfallback = [&m, &c](int address) { return bound(m, address) ? address : c.acsr; };
        const bool mux = k != kPlain;
        c.control = orfallback(k == kMuxAdcsrb ? m.roles.adcsrb
                               : k == kMuxSfior ? m.roles.sfior
                               : k == kSelectable ? m.roles.acsrb
                                                  : 0);
        c.admux = mux ? orfallback(m.roles.admux) : c.acsr;
        c.adcsra = mux ? orfallback(m.roles.adcsra) : c.acsr;
    }
    m.comparator = c;
}

namespace {

// The comparison itself, once something it depends on has changed.
[[gnu::noinline]] void compare(Machine& m, uint32_t registers) {
    ComparatorState& c = m.comparator;
    uint8_t& acsr = m.datamem[c.acsr];
    const bool old = acsr & kAco;
    bool state = false;
    if (!(acsr & kAcd)) {
        const ComparatorInputs in = comparatorinputs(m);
        const int width = hysteresis(m);
        // Equal inputs, or a difference inside the hysteresis, keep the output.
        state = old;
        if (!old && in.plus > in.minus + width) state = true;
        if (old && in.plus < in.minus - width) state = false;
    }
    bool flag = false;
    switch (acsr & kAcis) {
    case 0: flag = state != old; break;
    case 2: flag = old && !state; break;
    case 3: flag = !old && state; break;
    default: break;
    }
    if (flag) acsr |= kAci;
    acsr = state ? (acsr | kAco) : (acsr & static_cast<uint8_t>(~kAco));
    c.known = true;
    c.analogchanges = m.pinwatch.analogchanges;
    c.registers = (registers & ~uint32_t{0xFF}) | acsr;
}

}  // namespace

void comparatorstep(Machine& m) {
    ComparatorState& c = m.comparator;
    if (c.dataspacesize != m.dataspacesize) plancomparator(m);
    if (!c.acsr) return;
    const uint8_t* d = m.datamem.data();
    const uint32_t registers = d[c.acsr] | uint32_t{d[c.control]} << 8 | uint32_t{d[c.admux]} << 16 |
                               uint32_t{d[c.adcsra]} << 24;
    if (c.known && c.registers == registers && c.analogchanges == m.pinwatch.analogchanges) return;
    compare(m, registers);
}

}  // namespace velmora
