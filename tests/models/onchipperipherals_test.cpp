// The on-chip peripherals and the pin model on the shipped model files of the ATmega32,
// ATmega328P and ATtiny2313: bit positions as the data sheets give them, and small programs
// that use the ports, INT0, the ADC, the EEPROM and the comparator as firmware would.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/adc.h"
#include "core/comparator.h"
#include "core/eeprom.h"
#include "core/peripherals.h"
#include "core/ports.h"
#include "models/corepins.h"
#include "models/microcontrollerview.h"
#include "models/modelfile.h"
#include "support/ioencode.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

constexpr int kPortA = kPortCodeA, kPortB = kPortCodeA + 1, kPortD = kPortCodeA + 3;

struct Chip : Sim {
    explicit Chip(const std::string& model) {
        ModelDefinitions definitions;
        const ModelLoadResult result =
            modelload(std::string(VELMORA_SOURCE_DATA_DIR) + "/models", model, {}, m, definitions);
        EXPECT_TRUE(result.ok) << result.message;
        m.modelname = model;
        run.phases = standardphases();
        installperipherals(m);
        clean(m);
    }
    int at(const std::string& name) const {
        const int address = registeraddress(m, name);
        if (address < 0) ADD_FAILURE() << name << " not in " << m.modelname;
        return std::max(address, 0);
    }
    // Row of a bit name in its register's column, -1 when absent.
    int bit(const std::string& reg, const std::string& name) const {
        for (int row = 0; row < 8; ++row)
            if (m.bitnames[at(reg)][row] == name) return row;
        return -1;
    }
    uint8_t& cell(const std::string& name) { return m.datamem[at(name)]; }
    // Runs until SLEEP or the step limit; false when the limit ended it.
    bool runtosleep(int limit = 100000) {
        for (int i = 0; i < limit; ++i) {
            step();
            if (m.stoprequest) return m.stopreason == Machine::StopReason::Sleep;
        }
        return false;
    }
    // Program words at word address `at`, the rest NOP.
    void program(const std::vector<uint16_t>& words, int at = 0) {
        std::vector<uint16_t> image(static_cast<size_t>(at) + words.size() + 8, kNop);
        std::copy(words.begin(), words.end(), image.begin() + at);
        load(image);
        m.pc = 0;
    }
};

TEST(OnChipPeripherals, EveryShippedModelLetsItsPeripheralsAndInterruptsBeTracked) {
    // Registers among R0..R31 would keep every phase and the interrupt scan in every step.
    for (const ModelEntry& entry : modellist(std::string(VELMORA_SOURCE_DATA_DIR) + "/models").models) {
        SCOPED_TRACE(entry.name);
        Machine m;
        ModelDefinitions definitions;
        ASSERT_TRUE(modelload(std::string(VELMORA_SOURCE_DATA_DIR) + "/models", entry.name, {}, m, definitions).ok);
        EXPECT_FALSE(m.peripheralsalwaysawake);
        EXPECT_FALSE(m.interruptsuntracked);
    }
}

// Bit positions as the data sheets give them, and the core's own bit constants where it has one.
TEST(OnChipPeripherals, BitPositionsOfTheDataSheetsAreTheCoresBits) {
    const struct {
        const char* model;
        const char* reg;
        const char* name;
        int mask;
    } cases[] = {
        {"ATmega32", "ADCSRA", "ADIE", 1 << 3},  {"ATmega32", "ADMUX", "ADLAR", 1 << 5},  {"ATmega32", "EECR", "EERIE", 1 << 3},
        {"ATmega32", "SFIOR", "ACME", 1 << 3},   {"ATmega32", "MCUCR", "ISC01", 1 << 1},  {"ATmega32", "MCUCR", "ISC11", 1 << 3},
        {"ATmega32", "GIFR", "INTF0", 1 << 6},   {"ATmega328P", "EECR", "EEPM1", 1 << 5}, {"ATmega328P", "EECR", "EEPM0", 1 << 4},
        {"ATmega328P", "ADCSRB", "ACME", 1 << 6}, {"ATmega328P", "ADMUX", "ADLAR", 1 << 5},
        {"ATmega328P", "EICRA", "ISC01", 1 << 1}, {"ATmega328P", "EICRA", "ISC10", 1 << 2},
        {"ATmega328P", "EIFR", "INTF0", 1 << 0}, {"ATtiny2313", "MCUCR", "ISC01", 1 << 1},
        {"ATmega32", "ADCSRA", "ADEN", kAden},   {"ATmega32", "ADCSRA", "ADSC", kAdsc},
        {"ATmega32", "ADCSRA", "ADIF", kAdif},   {"ATmega32", "EECR", "EEMWE", kEemwe},
        {"ATmega32", "EECR", "EEWE", kEewe},     {"ATmega32", "EECR", "EERE", kEere},
        {"ATmega32", "ACSR", "ACD", kAcd},       {"ATmega32", "ACSR", "ACBG", kAcbg},
        {"ATmega32", "ACSR", "ACO", kAco},       {"ATmega32", "ACSR", "ACI", kAci},
        {"ATmega32", "ACSR", "ACIS1", 0x02},     {"ATmega32", "ACSR", "ACIS0", 0x01},
        {"ATmega328P", "EECR", "EEMPE", kEemwe}, {"ATmega328P", "EECR", "EEPE", kEewe},
        {"ATmega328P", "EECR", "EERE", kEere},   {"ATmega328P", "ADCSRA", "ADSC", kAdsc},
        {"ATtiny2313", "EECR", "EEMPE", kEemwe}, {"ATtiny2313", "EECR", "EEPE", kEewe},
        {"ATtiny2313", "ACSR", "ACBG", kAcbg},
    };
    for (const auto& c : cases) {
        Chip chip(c.model);
        const int bit = chip.bit(c.reg, c.name);
        ASSERT_GE(bit, 0) << c.model << " " << c.reg << "." << c.name;
        EXPECT_EQ(1 << bit, c.mask) << c.model << " " << c.reg << "." << c.name;
    }
}

TEST(OnChipPeripherals, EveryPortFollowsItsRegistersAsTheyAreEdited) {
    // Ports side by side in I/O space, and the ATmega128's F and G far off in extended I/O.
    for (const char* model : {"ATmega32", "ATmega328P", "ATtiny2313", "ATmega128", "ATtiny13"}) {
        Chip chip(model);
        chip.program({kNop, kNop, kNop, kNop, kNop, kNop, kNop, kNop});
        int ports = 0;
        for (int i = 0; i < kPortCount; ++i) {
            if (!chip.m.roles.portexists[i]) continue;
            ++ports;
            const int code = kPortCodeA + i;
            uint8_t& ddr = chip.m.datamem[chip.m.roles.ddr[i]];
            uint8_t& port = chip.m.datamem[chip.m.roles.port[i]];
            // Edited between steps, as the register display does it.
            ddr = 0xF0;
            port = 0x5A;
            putinput(chip.m, code, 0x0F);
            chip.step();
            EXPECT_EQ(getlevel(chip.m, code), 0x5F) << model << " port " << char('A' + i);
            port = 0xA5;
            chip.step();
            EXPECT_EQ(getlevel(chip.m, code), 0xAF) << model << " port " << char('A' + i);
            ddr = 0;
            chip.step();
            EXPECT_EQ(getlevel(chip.m, code), getinput(chip.m, code)) << model;
        }
        EXPECT_GT(ports, 0) << model;
    }
}

TEST(OnChipPeripherals, KindsOfTheThreeModels) {
    struct Case {
        const char* model;
        int int0, int1, comp, adc, ee;
    } cases[] = {{"ATmega32", 2, 2, 4, 3, 2}, {"ATmega328P", 3, 3, 3, 6, 3}, {"ATtiny2313", 2, 2, 2, 1, 5}};
    for (const Case& c : cases) {
        Chip chip(c.model);
        EXPECT_EQ(chip.m.kinds.int0, c.int0) << c.model;
        EXPECT_EQ(chip.m.kinds.int1, c.int1) << c.model;
        ASSERT_FALSE(chip.m.kinds.compconf.empty());
        EXPECT_EQ(chip.m.kinds.compconf[0], c.comp) << c.model;
        EXPECT_EQ(chip.m.kinds.adcconf, c.adc) << c.model;
        EXPECT_EQ(chip.m.kinds.eeconf, c.ee) << c.model;
    }
}

TEST(OnChipPeripherals, Atmega32ConvertsAChannelAndPollsTheFlag) {
    Chip chip("ATmega32");
    const int admux = chip.at("ADMUX"), adcsra = chip.at("ADCSRA");
    chip.program({ldi(16, 0x03), outd(admux, 16), ldi(16, 0xC0), outd(adcsra, 16),
                  sbis(adcsra, 4), rjmp(-2), ind(20, chip.at("ADCL")), ind(21, chip.at("ADCH")), kSleep});
    setanalogmode(chip.m, 3, true);
    setanaloginput(chip.m, 3, 0x2B7);
    ASSERT_TRUE(chip.runtosleep());
    EXPECT_EQ(chip.reg(20), 0xB7);
    EXPECT_EQ(chip.reg(21), 0x02);
}

TEST(OnChipPeripherals, Atmega32WritesAndReadsItsEeprom) {
    Chip chip("ATmega32");
    const int eecr = chip.at("EECR"), eedr = chip.at("EEDR");
    chip.program({ldi(16, 0x55), outd(chip.at("EEARL"), 16), ldi(16, 0x01), outd(chip.at("EEARH"), 16),
                  ldi(16, 0x5A), outd(eedr, 16), sbi(eecr, 2), sbi(eecr, 1), sbic(eecr, 1), rjmp(-2),
                  ldi(16, 0), outd(eedr, 16), sbi(eecr, 0), ind(22, eedr), kSleep});
    const uint64_t start = chip.m.totalcycles;
    ASSERT_TRUE(chip.runtosleep());
    EXPECT_EQ(chip.m.eeprommem[0x155], 0x5A);
    EXPECT_EQ(chip.reg(22), 0x5A);
    // 3400 us at 4 MHz are 13600 cycles of the polling loop.
    EXPECT_GT(chip.m.totalcycles - start, 13600u);
    EXPECT_LT(chip.m.totalcycles - start, 13650u);
}

TEST(OnChipPeripherals, Atmega32CountsFallingEdgesOnInt0) {
    Chip chip("ATmega32");
    // Vector 2: INC r24, RETI. Main at 0x20: falling edge sense, INT0 enabled, SEI, loop.
    std::vector<uint16_t> image(0x30, kNop);
    image[0] = rjmp(0x1F);
    image[2] = inc(24);
    image[3] = kReti;
    const uint16_t main[] = {ldi(16, 0x02), outd(chip.at("MCUCR"), 16), ldi(16, 0x40), outd(chip.at("GICR"), 16),
                             kSei, rjmp(-1)};
    std::copy(std::begin(main), std::end(main), image.begin() + 0x20);
    chip.load(image);
    chip.step(8);
    auto drive = [&](bool high) {
        if (high)
            setinput(chip.m, kPortD, 0x04);
        else
            clearinput(chip.m, kPortD, 0x04);
        chip.step(6);
    };
    drive(true);
    EXPECT_EQ(chip.reg(24), 0);
    drive(false);
    EXPECT_EQ(chip.reg(24), 1);
    drive(false);  // held low
    drive(true);
    EXPECT_EQ(chip.reg(24), 1);
    drive(false);
    EXPECT_EQ(chip.reg(24), 2);
}

TEST(OnChipPeripherals, Atmega328pReachesItsExtendedRegistersWithLdsAndSts) {
    Chip chip("ATmega328P");
    const int eicra = chip.at("EICRA"), admux = chip.at("ADMUX"), adcsra = chip.at("ADCSRA");
    ASSERT_GE(eicra, 0x60);
    ASSERT_GE(adcsra, 0x60);
    // Rising edge on INT0 by EICRA; ADC channel 2 left adjusted; poll ADSC with LDS.
    // LDS r17, ADCSRA; ANDI r17, $40; BRNE back to the LDS.
    chip.program({ldi(16, 0x03), sts(16), static_cast<uint16_t>(eicra), ldi(16, 0x22), sts(16),
                  static_cast<uint16_t>(admux), ldi(16, 0xC0), sts(16), static_cast<uint16_t>(adcsra), lds(17),
                  static_cast<uint16_t>(adcsra), ri(0x7000, 17, 0x40), branch(false, 1, -4), lds(20),
                  static_cast<uint16_t>(chip.at("ADCH")), lds(21), static_cast<uint16_t>(chip.at("ADCL")), kSleep});
    setanalogmode(chip.m, 2, true);
    setanaloginput(chip.m, 2, 1023);
    chip.step(3);
    setinput(chip.m, kPortD, 0x04);
    ASSERT_TRUE(chip.runtosleep());
    EXPECT_EQ(chip.reg(20), 0xFF);
    EXPECT_EQ(chip.reg(21), 0xC0);
    EXPECT_EQ(chip.cell("EIFR") & 0x01, 0x01);  // INT0's flag, not enabled
}

TEST(OnChipPeripherals, Atmega328pWritesWithEempeAndEepe) {
    Chip chip("ATmega328P");
    const int eecr = chip.at("EECR");
    chip.program({ldi(16, 0x07), outd(chip.at("EEARL"), 16), ldi(16, 0x03), outd(chip.at("EEARH"), 16),
                  ldi(16, 0xC3), outd(chip.at("EEDR"), 16), sbi(eecr, 2), sbi(eecr, 1), sbic(eecr, 1), rjmp(-2),
                  kSleep});
    ASSERT_TRUE(chip.runtosleep());
    EXPECT_EQ(chip.m.eeprommem[0x307], 0xC3);
}

TEST(OnChipPeripherals, Atmega328pComparatorMinusThroughTheMultiplexer) {
    Chip chip("ATmega328P");
    // AIN0 is channel 9 (PD6), AIN1 channel 10 (PD7); ACME with the ADC off takes ADMUX's channel.
    for (int ch : {1, 9, 10}) setanalogmode(chip.m, ch, true);
    setanaloginput(chip.m, 9, 500);
    setanaloginput(chip.m, 10, 600);
    setanaloginput(chip.m, 1, 400);
    chip.program({kNop, kNop, kNop});
    chip.step();
    EXPECT_FALSE(chip.cell("ACSR") & kAco);
    chip.cell("ADCSRB") = 0x40;
    chip.cell("ADMUX") = 0x01;
    chip.step();
    EXPECT_TRUE(chip.cell("ACSR") & kAco);
    EXPECT_TRUE(chip.cell("ACSR") & kAci);
    // ACBG: the 1.1 V bandgap (225) against channel 1.
    chip.cell("ACSR") = kAcbg;
    setanaloginput(chip.m, 1, 230);
    chip.step();
    EXPECT_FALSE(chip.cell("ACSR") & kAco);
}

TEST(OnChipPeripherals, Attiny2313Int0EepromAndComparator) {
    Chip chip("ATtiny2313");
    ASSERT_EQ(chip.m.eepromsize, 128);
    // INT0 at vector 1 (one-word vectors): INC r24, RETI at 1 and 2 would cross INT1, so jump.
    std::vector<uint16_t> image(0x30, kNop);
    image[0] = rjmp(0x1F);
    image[1] = rjmp(0x10 - 2);
    image[0x10] = inc(24);
    image[0x11] = kReti;
    const int eecr = chip.at("EECR");
    const uint16_t main[] = {ldi(16, 0x03), outd(chip.at("MCUCR"), 16), ldi(16, 0x40), outd(chip.at("GIMSK"), 16),
                             kSei, ldi(16, 0x7F), outd(chip.at("EEAR"), 16), ldi(16, 0x3C), outd(chip.at("EEDR"), 16),
                             sbi(eecr, 2), sbi(eecr, 1), sbic(eecr, 1), rjmp(-2), kSleep};
    std::copy(std::begin(main), std::end(main), image.begin() + 0x20);
    chip.load(image);
    // A rising edge on PD2 once interrupts are on, well before the timed EEMPE/EEPE pair.
    chip.step(6);
    setinput(chip.m, kPortD, 0x04);
    ASSERT_TRUE(chip.runtosleep());
    EXPECT_EQ(chip.reg(24), 1);
    EXPECT_EQ(chip.m.eeprommem[0x7F], 0x3C);
    // Comparator kind 2: AIN0 PB0 (channel 0) against AIN1 PB1 (channel 1), driven digitally.
    setinput(chip.m, kPortB, 0x01);
    chip.m.stoprequest = false;
    chip.program({kNop, kNop});
    chip.step(2);
    EXPECT_TRUE(chip.cell("ACSR") & kAco);
    putinput(chip.m, kPortB, 0x03);
    chip.step(2);
    EXPECT_TRUE(chip.cell("ACSR") & kAco);  // equal inputs keep the output
    putinput(chip.m, kPortB, 0x02);
    chip.step(2);
    EXPECT_FALSE(chip.cell("ACSR") & kAco);
}

TEST(OnChipPeripherals, TimersArePlainCells) {
    Chip chip("ATmega32");
    // TCCR0 with a running clock selected; the timer does not count and TOV0 never comes.
    chip.program({ldi(16, 0x01), outd(chip.at("TCCR0"), 16), ldi(16, 0x10), outd(chip.at("TCNT0"), 16),
                  ind(17, chip.at("TIFR")), sbrs(17, 0), rjmp(-3), kSleep});
    chip.step(4 + 3 * 700);
    EXPECT_EQ(chip.cell("TCNT0"), 0x10);
    EXPECT_EQ(chip.cell("TIFR"), 0);
    EXPECT_EQ(chip.m.pc, 4);
    chip.cell("TIFR") = 0x01;  // the user sets the flag by hand
    EXPECT_TRUE(chip.runtosleep(10));
}

TEST(OnChipPeripherals, TheViewWorksOnTheCorePinModel) {
    Chip chip("ATmega32");
    auto pins = makecorepins(chip.m);
    MicrocontrollerView view(chip.m, *pins);
    view.rebuild(PinFilters{});
    constexpr int kPd2 = 15, kPa0 = 39;
    view.leftclick(kPd2);
    EXPECT_EQ(getinput(chip.m, kPortD), 0x04);
    EXPECT_EQ(view.shown()[kPd2].leveltext, "ON");
    // Analog use of PA0 with a value typed in, converted by a program.
    view.rightclick(kPa0);
    EXPECT_TRUE(analogmode(chip.m, 0));
    view.leftclick(kPa0);
    ASSERT_TRUE(view.enteranalog("512"));
    EXPECT_EQ(analoginput(chip.m, 0), 512);
    chip.program({ind(16, chip.at("PIND")), ldi(17, 0xC0), outd(chip.at("ADCSRA"), 17), sbic(chip.at("ADCSRA"), 6),
                  rjmp(-2), ind(20, chip.at("ADCL")), ind(21, chip.at("ADCH")), kSleep});
    ASSERT_TRUE(chip.runtosleep());
    EXPECT_EQ(chip.reg(16), 0x04);
    EXPECT_EQ(chip.reg(21) * 256 + chip.reg(20), 512);
    // A pin the program drives shows its output; its button is disabled.
    chip.cell("DDRB") = 0x01;
    chip.cell("PORTB") = 0x01;
    view.refresh();
    EXPECT_EQ(view.shown()[0].leveltext, "ON");
    EXPECT_FALSE(view.shown()[0].enabled);
    EXPECT_EQ(pins->direction(kPortB), 0x01);
    EXPECT_EQ(pins->direction(kPortCodeA + 4), 0);  // the ATmega32 has no port E
}

}  // namespace
}  // namespace velmora::test
