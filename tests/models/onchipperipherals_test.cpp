// The on-chip peripherals and the pin model on the shipped model files of the ATmega32,
// ATmega328P and ATtiny2313: bit positions as the data sheets give them, small programs
// that use the ports, INT0, the ADC, the EEPROM and the comparator as firmware would, and
// the Microcontroller View on the core's pin model with its pin names (data/tables.txt).

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
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
    for (const TableRow& row : tablerows("tables.txt", "Peripheral kinds")) {
        const PeripheralKinds& k = Chip(row[0]).m.kinds;
        ASSERT_FALSE(k.compconf.empty());
        std::ostringstream kinds;
        kinds << k.int0 << " " << k.int1 << " " << k.compconf[0] << " " << k.adcconf << " " << k.eeconf;
        EXPECT_EQ(kinds.str(), row[1]) << row.where;
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
    for (const TableRow& row : tablerows("tables.txt", "EEPROM write and read")) {
        Chip chip(row[0]);
        const int eecr = chip.at("EECR"), eedr = chip.at("EEDR"), address = static_cast<int>(row.number(1));
        const uint8_t value = static_cast<uint8_t>(row.number(2));
        std::vector<uint16_t> words = {ldi(16, address & 0xFF), outd(chip.at(address > 0xFF ? "EEARL" : "EEAR"), 16)};
        if (address > 0xFF) words.insert(words.end(), {ldi(16, address >> 8), outd(chip.at("EEARH"), 16)});
        words.insert(words.end(), {ldi(16, value), outd(eedr, 16), sbi(eecr, 2), sbi(eecr, 1), sbic(eecr, 1),
                                   rjmp(-2), ldi(16, 0), outd(eedr, 16), sbi(eecr, 0), ind(22, eedr), kSleep});
        chip.program(words);
        const uint64_t start = chip.m.totalcycles;
        ASSERT_TRUE(chip.runtosleep()) << row.where;
        EXPECT_EQ(chip.m.eeprommem[address], value) << row.where;
        EXPECT_EQ(chip.reg(22), value) << row.where << ": read back";
        if (row.flag(3)) {
            EXPECT_GT(chip.m.totalcycles - start, 13600u) << row.where;
            EXPECT_LT(chip.m.totalcycles - start, 13650u) << row.where;
        }
    }
}

TEST(OnChipPeripherals, Int0CountsTheEdgesItsSenseControlSelects) {
    // The vector jumps to INC r24, RETI at 0x10; main at 0x20: sense control in MCUCR, INT0
    // enabled, SEI, loop. PD2 is INT0 on both chips.
    for (const TableRow& row : tablerows("tables.txt", "INT0 edges")) {
        Chip chip(row[0]);
        const int vector = static_cast<int>(row.number(1));
        std::vector<uint16_t> image(0x30, kNop);
        image[0] = rjmp(0x1F);
        image[vector] = rjmp(0x10 - vector - 1);
        image[0x10] = inc(24);
        image[0x11] = kReti;
        const uint16_t main[] = {ldi(16, static_cast<int>(row.number(3))), outd(chip.at("MCUCR"), 16), ldi(16, 0x40),
                                 outd(chip.at(row[2]), 16), kSei, rjmp(-1)};
        std::copy(std::begin(main), std::end(main), image.begin() + 0x20);
        chip.load(image);
        chip.step(8);
        std::istringstream levels(row[4]);
        for (std::string level; levels >> level;) {
            if (level[0] == '1')
                setinput(chip.m, kPortD, 0x04);
            else
                clearinput(chip.m, kPortD, 0x04);
            chip.step(6);
            EXPECT_EQ(chip.reg(24), std::stoi(level.substr(2))) << row.where << ", level " << level;
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

// The function groups ticked: the one named, every one for "all", none for "".
PinFilters filtersof(const std::string& ticked) {
    const std::vector<std::string> groups = {"Pcint", "Adc", "Ain", "ExternalSram", "Interrupt", "Usart", "Spi"};
    PinFilters filters{};
    for (size_t g = 0; g < groups.size(); ++g) filters.at(g) = ticked == "all" || ticked == groups[g];
    return filters;
}

// The Microcontroller View on the ATmega32 over the core's own pin model.
class ViewTest : public ::testing::Test {
protected:
    void SetUp() override { view.rebuild(PinFilters{}); }
    uint8_t& portregister(const auto& addresses, const std::string& letter) {
        return chip.m.datamem[addresses.at(letter.at(0) - 'A')];
    }
    static std::string yesno(bool b) { return b ? "yes" : "no"; }
    std::string query(const std::string& what) {
        std::istringstream words(what);
        std::string key, field;
        int index = 0;
        words >> key;
        if (key == "pin" || key == "shown" || key == "analoginput") words >> index;
        words >> field;
        if (key == "pin") {
            const ViewPin& p = view.pins().at(index);
            const std::map<std::string, int> numbers = {
                {"port", p.port}, {"mask", p.mask}, {"type", p.type}, {"channel", p.channel}};
            return field == "name" ? p.name : std::to_string(numbers.at(field));
        }
        if (key == "shown") {
            const PinShown& s = view.shown().at(index);
            const char* levels[] = {"None", "On", "Off", "Analog"};
            return field == "button"    ? buttoncaption(s.button)
                   : field == "enabled" ? yesno(s.enabled)
                   : field == "level"   ? levels[static_cast<int>(s.level)]
                                        : s.leveltext;
        }
        const std::optional<int> panel = view.panelchannel();
        const std::map<std::string, std::function<std::string()>> views = {
            {"input", [&] { return std::to_string(getinput(chip.m, kPortCodeA + field.at(0) - 'A')); }},
            {"direction", [&] { return std::to_string(pins->direction(kPortCodeA + field.at(0) - 'A')); }},
            {"analoginput", [&] { return std::to_string(analoginput(chip.m, index)); }},
            {"title", [&] { return view.title(); }},
            {"allanalog", [&] { return yesno(view.allanalog()); }},
            {"panel", [&] { return panel ? std::to_string(*panel) : "none"; }},
            {"caption", [&] { return view.panelcaption(); }},
            {"panelvalue", [&] { return view.panelvalue(); }},
            {"prompt", [&] { return view.analogprompt(); }}};
        if (views.contains(key)) return views.at(key)();
        std::string channels;  // "analog"
        for (int c = 0; c < kAdcChannelCount; ++c)
            if (analogmode(chip.m, c)) channels += (channels.empty() ? "" : " ") + std::to_string(c);
        return channels;
    }
    void run(const std::string& section) {
        using Row = const TableRow&;
        const std::map<std::string, bool*> switches = {
            {"continuous", &view.continuousslider}, {"voltage", &view.usevoltage},
            {"running", &chip.m.simulationrunning}};
        const auto number = [](Row r, size_t i) { return static_cast<int>(r.number(i)); };
        const std::map<std::string, std::function<void(Row)>> steps = {
            {"left", [&](Row r) { view.leftclick(number(r, 1)); }},
            {"right", [&](Row r) { view.rightclick(number(r, 1)); }},
            {"allanalog", [&](Row r) { view.setallanalog(r.flag(1)); }},
            {"slider", [&](Row r) { view.sliderchanged(number(r, 1), r.flag(2)); }},
            {"set", [&](Row r) { *switches.at(r[1]) = r.flag(2); }},
            {"enter", [&](Row r) { EXPECT_EQ(yesno(view.enteranalog(r[1])), r[2]) << r.where; }},
            {"close", [&](Row) { view.closepanel(); }},
            {"ddr", [&](Row r) { portregister(chip.m.roles.ddr, r[1]) = static_cast<uint8_t>(r.number(2)); }},
            {"port", [&](Row r) { portregister(chip.m.roles.port, r[1]) = static_cast<uint8_t>(r.number(2)); }},
            {"refresh", [&](Row r) { EXPECT_EQ(yesno(view.refresh()), r[1]) << r.where; }},
            {"analogmode", [&](Row r) { setanalogmode(chip.m, number(r, 1), r.flag(2)); }},
            {"analoginput", [&](Row r) { setanaloginput(chip.m, number(r, 1), number(r, 2)); }},
            {"is", [&](Row r) { EXPECT_EQ(query(r[1]), r[2]) << r.where; }},
            {"filter", [&](Row r) { view.rebuild(filtersof(r[1])); }}};
        for (Row row : tablerows("view.txt", section)) {
            if (steps.contains(row[0]))
                steps.at(row[0])(row);
            else
                ADD_FAILURE() << row.where << ": unknown step " << row[0];
        }
    }

    Chip chip{"ATmega32"};
    std::unique_ptr<PinAccess> pins = makecorepins(chip.m);
    MicrocontrollerView view{chip.m, *pins};
};

TEST_F(ViewTest, PinTableFromTheModel) { run("pin table from the model"); }
TEST_F(ViewTest, ToggleDrivesAnInputAndTheLevelFollows) { run("toggle drives an input and the level follows"); }
TEST_F(ViewTest, AnOutputDisablesItsButton) { run("an output disables its button and shows the port bit"); }
TEST_F(ViewTest, RightClickSwitchesAnalogUse) { run("right click switches analog use of type two pins only"); }
TEST_F(ViewTest, AllAnalogTouchesTypeTwoPinsOnly) { run("all analog touches type two pins only"); }
TEST_F(ViewTest, AnalogPanelSliderAndPrompt) { run("analog panel, slider and prompt"); }
TEST_F(ViewTest, WhileRunningOnlyAChangeRepaints) { run("while running only a change repaints"); }
TEST_F(ViewTest, FiltersRebuildTheNames) { run("filters rebuild the names"); }

TEST_F(ViewTest, AProgramReadsWhatTheViewDrives) {
    view.leftclick(15);  // PD2
    view.rightclick(39);  // analog use of PA0 with a value typed in, converted by the program
    view.leftclick(39);
    ASSERT_TRUE(view.enteranalog("512"));
    chip.program({ind(16, chip.at("PIND")), ldi(17, 0xC0), outd(chip.at("ADCSRA"), 17), sbic(chip.at("ADCSRA"), 6),
                  rjmp(-2), ind(20, chip.at("ADCL")), ind(21, chip.at("ADCH")), kSleep});
    ASSERT_TRUE(chip.runtosleep());
    EXPECT_EQ(chip.reg(16), 0x04);
    EXPECT_EQ(chip.reg(21) * 256 + chip.reg(20), 512);
    EXPECT_EQ(pins->direction(kPortCodeA + 4), 0);  // the ATmega32 has no port E
}

TEST(PinNames, DisplayFormWithTheSideMarkAndGroupsRemovingWholeTokens) {
    for (const TableRow& row : tablerows("tables.txt", "Pin names"))
        EXPECT_EQ(pindisplayname(row[2], row.flag(1), filtersof(row[0])), row[3]) << row.where;
    EXPECT_FALSE(ingroup(PinFunctionGroup::Interrupt, "INT"));
    EXPECT_FALSE(ingroup(PinFunctionGroup::ExternalSram, "A"));
}

}  // namespace
}  // namespace velmora::test
