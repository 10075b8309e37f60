// The on-chip peripherals and the pin model on the shipped model files of the ATmega32,
// ATmega328P and ATtiny2313: bit positions as the data sheets give them, small programs
// that use the ports, INT0, the ADC, the EEPROM and the comparator as firmware would, and
// the Microcontroller View on the core's pin model with its pin names (data/tables.txt).

#include <gtest/gtest.h>

#include <map>
#include <memory>
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
#include "models/pinnames.h"
#include "support/sectiontable.h"
#include "support/ioencode.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

constexpr int kPortB = kPortCodeA + 1, kPortD = kPortCodeA + 3;

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

// Bit positions as the data sheets give them, and the core's own bit constants where it has one.
TEST(OnChipPeripherals, BitPositionsOfTheDataSheetsAreTheCoresBits) {
    const std::map<std::string, int> core = {{"kAden", kAden}, {"kAdsc", kAdsc}, {"kAdif", kAdif}, {"kEemwe", kEemwe},
                                             {"kEewe", kEewe}, {"kEere", kEere}, {"kAcd", kAcd},   {"kAcbg", kAcbg},
                                             {"kAco", kAco},   {"kAci", kAci}};
    for (const TableRow& row : tablerows("tables.txt", "Bit positions")) {
        Chip chip(row[0]);
        const int bit = chip.bit(row[1], row[2]);
        ASSERT_GE(bit, 0) << row.where;
        EXPECT_EQ(1 << bit, core.contains(row[3]) ? core.at(row[3]) : row.number(3)) << row.where;
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
    // INT0, INT1, comparator, ADC and EEPROM kinds, each of the chip's own register layout.
    const std::pair<const char*, std::vector<int>> cases[] = {
        {"ATmega32", {2, 2, 4, 3, 2}}, {"ATmega328P", {3, 3, 3, 6, 3}}, {"ATtiny2313", {2, 2, 2, 1, 5}}};
    for (const auto& [model, kinds] : cases) {
        const PeripheralKinds& k = Chip(model).m.kinds;
        ASSERT_FALSE(k.compconf.empty());
        EXPECT_EQ(std::vector<int>({k.int0, k.int1, k.compconf[0], k.adcconf, k.eeconf}), kinds) << model;
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

TEST(OnChipPeripherals, EachEepromLayoutWritesThroughItsTimedPairAndReadsBack) {
    // EEMWE/EEMPE (bit 2), then EEWE/EEPE (bit 1) polled until done, then EERE (bit 0).
    const struct {
        const char* model;
        int address;
        uint8_t value;
        bool timed;  // 3400 us at 4 MHz are 13600 cycles of the polling loop
    } cases[] = {{"ATmega32", 0x155, 0x5A, true}, {"ATmega328P", 0x307, 0xC3, false}, {"ATtiny2313", 0x7F, 0x3C, false}};
    for (const auto& c : cases) {
        Chip chip(c.model);
        const int eecr = chip.at("EECR"), eedr = chip.at("EEDR");
        std::vector<uint16_t> words = {ldi(16, c.address & 0xFF),
                                       outd(chip.at(c.address > 0xFF ? "EEARL" : "EEAR"), 16)};
        if (c.address > 0xFF) words.insert(words.end(), {ldi(16, c.address >> 8), outd(chip.at("EEARH"), 16)});
        words.insert(words.end(), {ldi(16, c.value), outd(eedr, 16), sbi(eecr, 2), sbi(eecr, 1), sbic(eecr, 1),
                                   rjmp(-2), ldi(16, 0), outd(eedr, 16), sbi(eecr, 0), ind(22, eedr), kSleep});
        chip.program(words);
        const uint64_t start = chip.m.totalcycles;
        ASSERT_TRUE(chip.runtosleep()) << c.model;
        EXPECT_EQ(chip.m.eeprommem[c.address], c.value) << c.model;
        EXPECT_EQ(chip.reg(22), c.value) << c.model << ": read back";
        if (c.timed) {
            EXPECT_GT(chip.m.totalcycles - start, 13600u);
            EXPECT_LT(chip.m.totalcycles - start, 13650u);
        }
    }
}

TEST(OnChipPeripherals, Int0CountsTheEdgesItsSenseControlSelects) {
    // The vector jumps to INC r24, RETI at 0x10; main at 0x20: sense control in MCUCR, INT0
    // enabled, SEI, loop. PD2 is INT0 on both chips.
    const struct {
        const char* model;
        int vector;  // two-word vectors on the ATmega32, one-word on the ATtiny2313
        const char* maskregister;
        int sense;
        std::vector<std::pair<bool, int>> levels;  // PD2, then the count
    } cases[] = {
        {"ATmega32", 2, "GICR", 0x02, {{true, 0}, {false, 1}, {false, 1}, {true, 1}, {false, 2}}},  // falling
        {"ATtiny2313", 1, "GIMSK", 0x03, {{true, 1}, {true, 1}, {false, 1}, {true, 2}}},             // rising
    };
    for (const auto& c : cases) {
        Chip chip(c.model);
        std::vector<uint16_t> image(0x30, kNop);
        image[0] = rjmp(0x1F);
        image[c.vector] = rjmp(0x10 - c.vector - 1);
        image[0x10] = inc(24);
        image[0x11] = kReti;
        const uint16_t main[] = {ldi(16, c.sense), outd(chip.at("MCUCR"), 16), ldi(16, 0x40),
                                 outd(chip.at(c.maskregister), 16), kSei, rjmp(-1)};
        std::copy(std::begin(main), std::end(main), image.begin() + 0x20);
        chip.load(image);
        chip.step(8);
        int row = 0;
        for (const auto& [high, count] : c.levels) {
            if (high)
                setinput(chip.m, kPortD, 0x04);
            else
                clearinput(chip.m, kPortD, 0x04);
            chip.step(6);
            EXPECT_EQ(chip.reg(24), count) << c.model << ", level " << row++;
        }
    }
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

TEST(OnChipPeripherals, Attiny2313ComparatorOnItsPortPins) {
    // Comparator kind 2: AIN0 PB0 (channel 0) against AIN1 PB1 (channel 1), driven digitally;
    // equal inputs keep the output.
    Chip chip("ATtiny2313");
    chip.program({kNop, kNop, kNop, kNop, kNop, kNop, kNop});
    for (const auto& [input, output] : {std::pair{0x01, true}, {0x03, true}, {0x02, false}}) {
        putinput(chip.m, kPortB, static_cast<uint8_t>(input));
        chip.step(2);
        EXPECT_EQ(bool(chip.cell("ACSR") & kAco), output) << "PB " << input;
    }
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

// The Microcontroller View on the ATmega32 over the core's own pin model.
class ViewTest : public ::testing::Test {
protected:
    void SetUp() override { view.rebuild(PinFilters{}); }
    uint8_t& ddr(char port) { return chip.m.datamem[chip.m.roles.ddr[port - 'A']]; }
    uint8_t& portreg(char port) { return chip.m.datamem[chip.m.roles.port[port - 'A']]; }

    Chip chip{"ATmega32"};
    Machine& m = chip.m;
    std::unique_ptr<PinAccess> pins = makecorepins(chip.m);
    MicrocontrollerView view{chip.m, *pins};
    static constexpr int kPb0 = 0, kPb2 = 2, kVcc = 9, kPd2 = 15, kPa0 = 39, kPa7 = 32;
};

TEST_F(ViewTest, PinTableFromTheModel) {
    const auto& p = view.pins();
    ASSERT_EQ(p.size(), 40u);
    EXPECT_EQ(p[kPb0].port, kPortCodeA + 1);
    EXPECT_EQ(p[kPb0].mask, 1);
    EXPECT_EQ(p[kPb0].type, 1);
    EXPECT_EQ(p[kVcc].type, 0);
    EXPECT_EQ(p[kVcc].name, "VCC_");
    EXPECT_EQ(p[kPa0].channel, 0);
    EXPECT_EQ(p[kPa0].type, 2);
    EXPECT_EQ(p[kPa7].mask, 0x80);
    EXPECT_EQ(view.title(), "Microcontroller View - ATmega32");
    EXPECT_EQ(view.shown()[kVcc].button, PinButton::None);
    EXPECT_EQ(view.shown()[kVcc].level, PinLevel::None);
}

TEST_F(ViewTest, ToggleDrivesAnInputAndTheLevelFollows) {
    EXPECT_EQ(view.shown()[kPd2].leveltext, "OFF");
    view.leftclick(kPd2);
    EXPECT_EQ(getinput(m, kPortD), 0x04);
    EXPECT_EQ(view.shown()[kPd2].leveltext, "ON");
    EXPECT_EQ(view.shown()[kPd2].level, PinLevel::On);
    view.leftclick(kPd2);
    EXPECT_EQ(view.shown()[kPd2].leveltext, "OFF");
}

TEST_F(ViewTest, AnOutputDisablesItsButtonAndShowsThePortBit) {
    ddr('B') = 0x01;
    portreg('B') = 0x01;
    ASSERT_TRUE(view.refresh());
    EXPECT_FALSE(view.shown()[kPb0].enabled);
    EXPECT_EQ(view.shown()[kPb0].leveltext, "ON");
    view.leftclick(kPb0);
    EXPECT_EQ(getinput(m, kPortB), 0) << "a disabled button does nothing";
    EXPECT_EQ(pins->direction(kPortB), 0x01);
    EXPECT_TRUE(view.shown()[kPb0 + 1].enabled);
}

TEST_F(ViewTest, RightClickSwitchesAnalogUseOfTypeTwoPinsOnly) {
    view.rightclick(kPb0);
    EXPECT_EQ(view.shown()[kPb0].button, PinButton::Toggle);
    view.rightclick(kPa0);
    EXPECT_TRUE(analogmode(m, 0));
    EXPECT_EQ(view.shown()[kPa0].button, PinButton::Analog);
    EXPECT_EQ(std::string(buttoncaption(view.shown()[kPa0].button)), "A");
    EXPECT_EQ(view.shown()[kPa0].level, PinLevel::Analog);
    // An analog pin keeps its button even when the program drives it.
    ddr('A') = 0x01;
    view.refresh();
    EXPECT_TRUE(view.shown()[kPa0].enabled);
    view.rightclick(kPa0);
    EXPECT_FALSE(analogmode(m, 0));
    EXPECT_FALSE(view.shown()[kPa0].enabled);
}

TEST_F(ViewTest, AllAnalogTouchesTypeTwoPinsOnly) {
    view.setallanalog(true);
    EXPECT_TRUE(view.allanalog());
    for (int channel = 0; channel < 8; ++channel) EXPECT_TRUE(analogmode(m, channel)) << channel;
    EXPECT_TRUE(analogmode(m, 8) && analogmode(m, 9)) << "AIN0 and AIN1 pins are type 2 on this model";
    EXPECT_EQ(view.shown()[kPb0].button, PinButton::Toggle);
    view.setallanalog(false);
    EXPECT_FALSE(view.allanalog());
    for (int channel = 0; channel < kAdcChannelCount; ++channel) EXPECT_FALSE(analogmode(m, channel));
}

TEST_F(ViewTest, AnalogPanelSliderAndPrompt) {
    view.rightclick(kPa0);
    view.leftclick(kPa0);
    ASSERT_EQ(view.panelchannel(), 0);
    EXPECT_EQ(view.panelcaption(), "ADC0");
    view.sliderchanged(300, false);
    EXPECT_EQ(analoginput(m, 0), 300);
    EXPECT_EQ(view.shown()[kPa0].leveltext, "300");
    view.continuousslider = false;
    view.sliderchanged(400, false);
    EXPECT_EQ(analoginput(m, 0), 300) << "applied only on release";
    view.sliderchanged(400, true);
    EXPECT_EQ(analoginput(m, 0), 400);
    EXPECT_EQ(view.analogprompt(), "Enter new analog value [0-1023].");
    EXPECT_TRUE(view.enteranalog("1023"));
    EXPECT_EQ(analoginput(m, 0), 1023);
    for (const char* bad : {"1024", "-1", "abc", "", "5.5"}) EXPECT_FALSE(view.enteranalog(bad)) << bad;
    EXPECT_EQ(analoginput(m, 0), 1023);
    view.usevoltage = true;
    view.refresh();
    EXPECT_EQ(view.shown()[kPa0].leveltext, "5.00V");
    EXPECT_TRUE(view.enteranalog("2.5V"));
    EXPECT_EQ(analoginput(m, 0), 512);
    EXPECT_EQ(view.panelvalue(), "2.50V");
    EXPECT_FALSE(view.enteranalog("5.1"));
    view.closepanel();
    EXPECT_FALSE(view.panelchannel());
}

TEST_F(ViewTest, WhileRunningOnlyAChangeRepaints) {
    m.simulationrunning = true;
    EXPECT_TRUE(view.refresh()) << "the first look takes the copies";
    EXPECT_FALSE(view.refresh());
    EXPECT_FALSE(view.refresh());
    portreg('C') = 0xFF;  // PORTC on inputs changes no level
    EXPECT_FALSE(view.refresh());
    ddr('C') = 0x01;
    EXPECT_TRUE(view.refresh());
    EXPECT_EQ(view.shown()[21].leveltext, "ON") << "PC0: the pin model is evaluated first";
    EXPECT_FALSE(view.refresh());
    setanalogmode(m, 3, true);
    EXPECT_TRUE(view.refresh()) << "PA3 turns analog";
    EXPECT_FALSE(view.refresh());
    setanaloginput(m, 3, 7);
    EXPECT_TRUE(view.refresh()) << "its value changes";
    m.simulationrunning = false;
    EXPECT_TRUE(view.refresh()) << "when stopped every refresh paints";
}

TEST_F(ViewTest, FiltersRebuildTheNames) {
    PinFilters filters{};
    filters[static_cast<int>(PinFunctionGroup::Adc)] = true;
    view.rebuild(filters);
    EXPECT_EQ(view.pins()[kPa0].name, "_PA0");
    EXPECT_EQ(view.pins()[kPb2].name, "PB2/INT2/AIN0_");
}

TEST_F(ViewTest, AProgramReadsWhatTheViewDrives) {
    view.leftclick(kPd2);
    view.rightclick(kPa0);  // analog use of PA0 with a value typed in, converted by the program
    view.leftclick(kPa0);
    ASSERT_TRUE(view.enteranalog("512"));
    chip.program({ind(16, chip.at("PIND")), ldi(17, 0xC0), outd(chip.at("ADCSRA"), 17), sbic(chip.at("ADCSRA"), 6),
                  rjmp(-2), ind(20, chip.at("ADCL")), ind(21, chip.at("ADCH")), kSleep});
    ASSERT_TRUE(chip.runtosleep());
    EXPECT_EQ(chip.reg(16), 0x04);
    EXPECT_EQ(chip.reg(21) * 256 + chip.reg(20), 512);
    EXPECT_EQ(pins->direction(kPortCodeA + 4), 0);  // the ATmega32 has no port E
}

TEST(PinNames, DisplayFormWithTheSideMarkAndGroupsRemovingWholeTokens) {
    const std::vector<std::string> groups = {"Pcint", "Adc", "Ain", "ExternalSram", "Interrupt", "Usart", "Spi"};
    for (const TableRow& row : tablerows("tables.txt", "Pin names")) {
        PinFilters filters{};
        for (size_t g = 0; g < groups.size(); ++g) filters[g] = row[0] == "all" || row[0] == groups[g];
        EXPECT_EQ(pindisplayname(row[2], row.flag(1), filters), row[3]) << row.where;
    }
    EXPECT_FALSE(ingroup(PinFunctionGroup::Interrupt, "INT"));
    EXPECT_FALSE(ingroup(PinFunctionGroup::ExternalSram, "A"));
}

}  // namespace
}  // namespace velmora::test
