#pragma once
// A chip put together in the test, without a model file: ATmega32 addresses for the ports,
// EEPROM, ADC, comparator and MCUCR/GICR/GIFR, the extended addresses of the ATmega328P
// for EICRA and ADCSRB, and a free extended address for ACSRB. Every peripheral kind is
// the test's choice; the standard phases run in every step.

#include <string>
#include <vector>

#include "core/hextext.h"
#include "core/memory.h"
#include "core/peripherals.h"
#include "core/ports.h"
#include "support/ioencode.h"
#include "support/simfixture.h"

namespace velmora::test {

inline constexpr int kPortA = kPortCodeA, kPortB = kPortCodeA + 1, kPortC = kPortCodeA + 2, kPortD = kPortCodeA + 3;

struct ChipKinds {
    int int0 = 2, int1 = 2;
    std::vector<int> compconf{2, 3, 8, 9, 10};
    int adcconf = 3;
    int eeconf = 2;
};

struct MiniChip : Sim {
    // Data addresses.
    static constexpr int kPina = 0x39, kDdra = 0x3A, kPorta = 0x3B;
    static constexpr int kPinb = 0x36, kDdrb = 0x37, kPortb = 0x38;
    static constexpr int kPinc = 0x33, kDdrc = 0x34, kPortc = 0x35;
    static constexpr int kPind = 0x30, kDdrd = 0x31, kPortd = 0x32;
    static constexpr int kAdcl = 0x24, kAdch = 0x25, kAdcsra = 0x26, kAdmux = 0x27, kAcsr = 0x28;
    static constexpr int kEecr = 0x3C, kEedr = 0x3D, kEearl = 0x3E, kEearh = 0x3F;
    static constexpr int kSfior = 0x50, kMcucr = 0x55, kGifr = 0x5A, kGicr = 0x5B;
    static constexpr int kEicra = 0x69, kAdcsrb = 0x7B, kAcsrb = 0x8F;
    // Vectors (word addresses) of the interrupt table below.
    static constexpr int kInt0Vector = 0x02, kInt1Vector = 0x04, kAdcVector = 0x20, kErdyVector = 0x22,
                         kCompVector = 0x24;

    explicit MiniChip(const ChipKinds& kinds = {}, int eepromsize = 1024) : Sim(32768, 2048, eepromsize) {
        resize(m, 32768, 160, 2048, eepromsize);
        m.kinds.int0 = kinds.int0;
        m.kinds.int1 = kinds.int1;
        m.kinds.compconf = kinds.compconf;
        m.kinds.adcconf = kinds.adcconf;
        m.kinds.eeconf = kinds.eeconf;
        m.namedregisters.clear();
        using R = RegisterRoles;
        const struct {
            const char* name;
            int address;
            uint8_t reset, mask;
            int R::*role = nullptr;
        } registers[] = {
            {"PINA", kPina, 0, 0},          {"DDRA", kDdra, 0, 0xFF},       {"PORTA", kPorta, 0, 0xFF},
            {"PINB", kPinb, 0, 0},          {"DDRB", kDdrb, 0, 0xFF},       {"PORTB", kPortb, 0, 0xFF},
            {"PINC", kPinc, 0, 0},          {"DDRC", kDdrc, 0, 0xFF},       {"PORTC", kPortc, 0, 0xFF},
            {"PIND", kPind, 0, 0},          {"DDRD", kDdrd, 0, 0xFF},       {"PORTD", kPortd, 0, 0xFF},
            {"ADCL", kAdcl, 0, 0, &R::adcl},             {"ADCH", kAdch, 0, 0, &R::adch},
            {"ADCSRA", kAdcsra, 0, 0xEF, &R::adcsra},    {"ADMUX", kAdmux, 0, 0xFF, &R::admux},
            {"ACSR", kAcsr, 0, 0xCF, &R::acsr},          {"EECR", kEecr, 0, 0x3F, &R::eecr},
            {"EEDR", kEedr, 0, 0xFF, &R::eedr},          {"EEARL", kEearl, 0, 0xFF, &R::eearl},
            {"EEARH", kEearh, 0, 0x03, &R::eearh},       {"SFIOR", kSfior, 0, 0xEF, &R::sfior},
            {"MCUCR", kMcucr, 0, 0xFF, &R::mcucr},       {"GIFR", kGifr, 0, 0},
            {"GICR", kGicr, 0, 0xE3},                    {"EICRA", kEicra, 0, 0xFF, &R::eicra},
            {"ADCSRB", kAdcsrb, 0, 0xFF, &R::adcsrb},    {"ACSRB", kAcsrb, 0, 0xFF, &R::acsrb},
            {"SPL", kSplAddress, 0, 0xFF},               {"SPH", kSphAddress, 0, 0xFF},
            {"SREG", kSregAddress, 0, 0xFF},
        };
        RegisterRoles& roles = m.roles;
        roles = RegisterRoles{};
        for (const auto& r : registers) {
            m.namedregisters.push_back({"$" + hex3(r.address) + "   " + r.name, r.name, r.address, r.reset});
            m.datamask[r.address] = r.mask;
            if (r.role) roles.*r.role = r.address;
        }
        const int ports[][3] = {{kPorta, kPina, kDdra}, {kPortb, kPinb, kDdrb}, {kPortc, kPinc, kDdrc},
                                {kPortd, kPind, kDdrd}};
        for (int i = 0; i < 4; ++i) {
            roles.portexists[i] = true;
            roles.port[i] = ports[i][0];
            roles.pin[i] = ports[i][1];
            roles.ddr[i] = ports[i][2];
        }
        // Channels 0-7 on port A, 8 and 9 on PB2 and PB3, 10 on PD6.
        m.adcchannels = {};
        for (int ch = 0; ch < 8; ++ch) m.adcchannels[ch] = {true, kPortA, static_cast<uint8_t>(1u << ch), ch};
        m.adcchannels[8] = {true, kPortB, 0x04, 8};
        m.adcchannels[9] = {true, kPortB, 0x08, 9};
        m.adcchannels[10] = {true, kPortD, 0x40, 10};
        m.interrupttable = {{"INT0", kInt0Vector, "", kGicr, 0x40, kGifr, 0x40, 1},
                            {"INT1", kInt1Vector, "", kGicr, 0x80, kGifr, 0x80, 1},
                            {"ADC", kAdcVector, "", kAdcsra, 0x08, kAdcsra, 0x10, 1},
                            {"ERDY", kErdyVector, "", kEecr, 0x08, kEecr, 0x02, 0},
                            {"ANA_COMP", kCompVector, "", kAcsr, 0x08, kAcsr, 0x10, 1}};
        m.int0flagaddress = m.int1flagaddress = kGifr;
        m.int0flagmask = 0x40;
        m.int1flagmask = 0x80;
        marksideeffects(m);
        run.phases = standardphases();
        installperipherals(m);
        clean(m);
        stacktop();
    }

    uint8_t& cell(int address) { return m.datamem[address]; }
    // Cycles of the steps taken, counted from now.
    uint64_t cyclesfrom(uint64_t start) const { return m.totalcycles - start; }
};

}  // namespace velmora::test
