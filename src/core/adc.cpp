#include "core/adc.h"

#include "core/roleregisters.h"

namespace velmora {

namespace {

constexpr int kFirstKind = 2, kLastKind = 8;
constexpr int kReferenceKind = 5;  // three channel bits; ADMUX bit 6 samples the reference
constexpr int kLeftAdjustInAdcsrb = 2;
constexpr uint8_t kAdlarAdmux = 0x20, kAdlarAdcsrb = 0x10, kReferenceSelect = 0x40;

int sample(const Machine& m, int kind) {
    const uint8_t admux = rolevalue(m, m.roles.admux);
    if (kind == kReferenceKind) {
        if (admux & kReferenceSelect) return referencevalue(bandgapkind(m));
        return m.analog[admux & 7].analoginput;
    }
    return m.analog[admux & 15].analoginput;
}

bool leftadjusted(const Machine& m, int kind) {
    if (kind == kReferenceKind) return false;
    if (kind == kLeftAdjustInAdcsrb) return rolevalue(m, m.roles.adcsrb) & kAdlarAdcsrb;
    return rolevalue(m, m.roles.admux) & kAdlarAdmux;
}

void writeresult(Machine& m, int kind, int value) {
    if (leftadjusted(m, kind)) {
        setrolevalue(m, m.roles.adch, static_cast<uint8_t>(value / 4));
        setrolevalue(m, m.roles.adcl, static_cast<uint8_t>((value & 3) * 64));
    } else {
        setrolevalue(m, m.roles.adch, static_cast<uint8_t>(value / 256));
        setrolevalue(m, m.roles.adcl, static_cast<uint8_t>(value & 255));
    }
}

}  // namespace

int referencevalue(int bandgapkind) {
    // Volts of each kind's bandgap against the 5 V full scale.
    static constexpr double kVolts[] = {0, 0, 1.1, 1.23, 1.18, 1.22};
    if (bandgapkind < 1 || bandgapkind > 5) return 0;
    return static_cast<int>(kAdcTop * kVolts[bandgapkind] / 5);
}

int bandgapkind(const Machine& m) { return m.kinds.compconf.size() > 1 ? m.kinds.compconf[1] : 0; }

bool adcbusy(const Machine& m) {
    const int kind = m.kinds.adcconf;
    if (kind < kFirstKind || kind > kLastKind || !bound(m, m.roles.adcsra)) return false;
    return (m.datamem[m.roles.adcsra] & (kAden | kAdsc)) == (kAden | kAdsc);
}

void adcstep(Machine& m) {
    const int kind = m.kinds.adcconf;
    if (kind < kFirstKind || kind > kLastKind || !bound(m, m.roles.adcsra)) return;
    uint8_t& adcsra = m.datamem[m.roles.adcsra];
    AdcState& adc = m.adc;
    if ((adcsra & (kAden | kAdsc)) != (kAden | kAdsc)) {
        adc.timer = 0;
        adc.sample = 0;
        adcsra &= static_cast<uint8_t>(~kAdsc);
        return;
    }
    if (adc.timer == 0) adc.sample = sample(m, kind);
    adc.timer += static_cast<float>(instructioncycles(m)) / m.clockfrequency;
    if (adc.timer >= m.adconversiontime) {
        adc.timer = 0;
        adcsra |= kAdif;
        // A result that completes between reads of ADCL and ADCH is dropped.
        if (!adc.locked) writeresult(m, kind, adc.sample);
    }
    // One conversion per start: free running is not simulated.
    if (adc.timer <= 0) adcsra &= static_cast<uint8_t>(~kAdsc);
}

}  // namespace velmora
