// The model file loader: every section, its messages and the tables it leaves in the machine.
// Expected entries are worked out by hand from data/atmini8.cfg and written one line each.

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "core/memory.h"
#include "models/modelfixture.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

constexpr int io(int address) { return address + 32; }

// "NAME VECTOR ENABLE.MASK FLAG.MASK POLARITY", numbers in hex.
std::string show(const InterruptEntry& e) {
    std::ostringstream s;
    s << std::hex << std::uppercase << e.name << " " << e.vector << " " << e.enableaddress << "."
      << int(e.enablemask) << " " << e.flagaddress << "." << int(e.flagmask) << " " << e.polarity;
    return s.str();
}
std::vector<std::string> interrupts(const Machine& m) {
    std::vector<std::string> out;
    for (const InterruptEntry& e : m.interrupttable) out.push_back(show(e));
    return out;
}
// "CAPTION|PORT BIT CHANNEL TYPE HALF".
std::vector<std::string> pins(const Machine& m) {
    std::vector<std::string> out;
    for (const PackagePin& p : m.pins)
        out.push_back(p.caption + "|" + std::to_string(p.portcode) + " " + std::to_string(p.bit) + " " +
                      std::to_string(p.adcchannel) + " " + std::to_string(p.type) + " " + std::to_string(p.secondhalf));
    return out;
}
bool has(const std::vector<std::string>& lines, const std::string& line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

TEST(ModelLoad, FileIsFoundByItsLowerCaseNameOrTheProgramEnds) {
    TempDir dir;
    LoadedModel model;
    for (const std::string& folder : {dir.path(), dir.path() + "/no-such-folder"}) {
        model.result = modelload(folder, "ATmega99", {}, model.m, model.definitions);
        EXPECT_FALSE(model.result.ok);
        EXPECT_EQ(model.result.message, "File 'ATmega99.cfg' could not be found.\nThe program will now end.");
    }
    dir.write("ATMINI8.CFG", ModelText{}.text());  // stored in other case
    model.result = modelload(dir.path(), "ATmini8", {}, model.m, model.definitions);
    EXPECT_TRUE(model.result.ok) << model.result.message;
    EXPECT_EQ(model.m.modelname, "ATmini8");
}

TEST(ModelLoad, SizesAndMemories) {
    TempDir dir;
    LoadedModel model;
    model.m.programbytes = 100;
    loadtext(model, dir, ModelText{}.text(), {.listiofirst = false, .unprogrammed = 0});
    ASSERT_TRUE(model.result.ok) << model.result.message;
    const Machine& m = model.m;
    EXPECT_EQ(std::vector<int>({m.flashsize, m.flashwords, m.pcbits, m.threebytepc, m.sramsize, m.dataspacesize,
                                m.eightbitpointers, m.eepromsize, m.pincount, m.programbytes}),
              std::vector<int>({8192, 4096, 12, false, 1024, 1024 + 96, false, 512, 8, 0}));
    EXPECT_EQ(m.progmem, std::vector<uint8_t>(8196, 0));
    EXPECT_EQ(m.eeprommem, std::vector<uint8_t>(512, 0));
    loadtext(model, dir, ModelText{}.text());
    EXPECT_EQ(model.m.eeprommem, std::vector<uint8_t>(512, 255)) << "erased by default";

    ModelText text;  // extended I/O stands between I/O and SRAM
    text.keys = "pins: 8\nflash: 262144\nextendedio: 160\nsram: 8192\neeprom: 4096\n";
    text.registers = "C6,UDR0,00,FF\n";
    const LoadedModel big = loadmodel(text.text());
    ASSERT_TRUE(big.result.ok) << big.result.message;
    EXPECT_EQ(big.m.dataspacesize, 96 + 160 + 8192);
    EXPECT_TRUE(big.m.threebytepc);
    EXPECT_EQ(std::vector<int>({big.m.datamask[96 + 159], big.m.datamask[96 + 160], big.m.datamask[0xC6]}),
              std::vector<int>({0, 255, 0xFF}));  // left-out extended I/O, first SRAM cell, UDR0
}

TEST(ModelLoad, KeysGivePeripheralKindsAndMissingKeysZero) {
    const auto kinds = [](const PeripheralKinds& k) {
        return std::vector<int>({k.simconf, k.instsetconf, k.int0, k.int1, k.adcconf, k.eeconf, k.uartconf});
    };
    const LoadedModel model = loadmodel(ModelText{}.text());
    EXPECT_EQ(kinds(model.m.kinds), std::vector<int>({1, 3, 2, 2, 2, 2, 2}));
    EXPECT_EQ(model.m.kinds.compconf, (std::vector<int>{2, 1, 6, 7}));

    ModelText sparse;
    sparse.keys = "flash: 1024\nsram: 64\ncompconf: 3,1,2,3,5\nintconf: 4\nuartconf: 8 (shared UCSRC)\n";
    const LoadedModel other = loadmodel(sparse.text());
    ASSERT_TRUE(other.result.ok) << other.result.message;
    EXPECT_EQ(kinds(other.m.kinds), std::vector<int>({0, 0, 4, 0, 0, 0, 8}));
    EXPECT_EQ(other.m.kinds.compconf, (std::vector<int>{3, 1, 2, 3, 5}));
    EXPECT_EQ(other.m.eepromsize, 0);
    EXPECT_TRUE(other.m.eeprommem.empty());
    EXPECT_EQ(other.m.pincount, 0);

    ModelText leading;  // keys match on their leading characters only
    leading.keys = "flash:8192\n flash: 4096\nFlash: 2048\nsram: 64\nflash: 1024 bytes\n";
    EXPECT_EQ(loadmodel(leading.text()).m.flashsize, 1024);
}

TEST(ModelLoad, SectionOneMasksAndNamedRegisterTable) {
    const LoadedModel model = loadmodel(ModelText{}.text());
    const Machine& m = model.m;
    // "XXXX" is a mask and no register; $01 is not in the file; then the first and last SRAM cell.
    EXPECT_EQ(std::vector<int>({m.datamask[0x20], m.datamask[io(0x3B)], m.datamask[io(0x16)], m.datamask[io(0x01)],
                                m.datamask[96], m.datamask[96 + 1023]}),
              std::vector<int>({0xA5, 0xC3, 0x00, 0, 255, 255}));
    ASSERT_EQ(m.namedregisters.size(), 26u);
    EXPECT_EQ(m.namedregisters.front().text, "$024   ADCL");
    EXPECT_EQ(m.namedregisters.back().text, "$05F   SREG");
    EXPECT_EQ(m.namedregisters.back().name, "SREG");
    EXPECT_EQ(m.namedregisters.back().address, 0x5F);
    EXPECT_EQ(registeraddress(m, "XXXX"), -1);
    // The load leaves the machine cleaned: reset values stand in the data space.
    EXPECT_EQ(m.datamem[io(0x0B)], 0x20);
    EXPECT_EQ(m.pc, 0);

    ModelOptions iofirst;
    iofirst.listiofirst = true;
    const LoadedModel reversed = loadmodel(ModelText{}.text(), iofirst);
    ASSERT_EQ(reversed.m.namedregisters.size(), 26u);
    EXPECT_EQ(reversed.m.namedregisters.front().name, "SREG");
    EXPECT_EQ(reversed.m.namedregisters.back().name, "ADCL");
}

TEST(ModelLoad, UnreadableSectionOneLinesAreDropped) {
    ModelText text;
    text.registers =
        "5F,SREG,00,FF\n"
        "5e,SPH,00,07\n"     // lower-case digits are no digits
        "5D,SPL,0,FF\n"      // one digit
        "05D,SPL,00,FF\n"    // three digits
        "40,ONLY,00\n"       // three fields
        "41\tTABBED\t11\t22\n"
        "42, BLANKS ,00,FF\n"
        "FF,BEYOND,00,FF\n"  // past a data space of 96 + 64
        "43,,00,3C\n";       // no name: only a mask
    text.keys = "flash: 1024\nsram: 64\n";
    const LoadedModel model = loadmodel(text.text());
    ASSERT_TRUE(model.result.ok) << model.result.message;
    std::vector<std::string> names;
    for (const NamedRegister& r : model.m.namedregisters) names.push_back(r.name);
    EXPECT_EQ(names, (std::vector<std::string>{"SREG", "TABBED", "BLANKS"}));
    EXPECT_EQ(std::vector<int>({model.m.datamask[0x41], model.m.datamem[0x41], model.m.datamask[0x43],
                                model.m.datamask[0x5E]}),
              std::vector<int>({0x22, 0x11, 0x3C, 0}));
}

TEST(ModelLoad, HardwareStackModelsGetThreeStackEntriesLast) {
    ModelText text;
    text.keys = "pins: 20\nflash: 1024\nextendedio: 0\nsram: 0\neeprom: 64\n";
    text.registers = "38,PORTB,00,FF\n5F,SREG,00,FF\n";
    for (bool iofirst : {false, true}) {
        ModelOptions options;
        options.listiofirst = iofirst;
        const LoadedModel model = loadmodel(text.text(), options);
        ASSERT_TRUE(model.result.ok) << model.result.message;
        const auto& table = model.m.namedregisters;
        ASSERT_EQ(table.size(), 5u);
        EXPECT_EQ(table[0].name, iofirst ? "SREG" : "PORTB");
        for (int level = 0; level < 3; ++level) {
            const NamedRegister& r = table[2 + level];
            EXPECT_EQ(r.text + "|" + r.name + "|" + std::to_string(r.address) + "|" + std::to_string(r.reset),
                      "Stack Level " + std::to_string(level) + "||" + std::to_string(10000 + level) + "|0");
        }
        EXPECT_EQ(model.m.dataspacesize, 96);
        EXPECT_TRUE(model.m.eightbitpointers);
    }
    EXPECT_EQ(registeraddress(loadmodel(ModelText{}.text()).m, ""), -1);
}

TEST(ModelLoad, SectionThreeSkipsPortRegistersAndUnknownRegisters) {
    const LoadedModel model = loadmodel(ModelText{}.text());
    const auto& names = model.m.bitnames;
    // Described registers get their bit names and, in row 8, their name; PORTB, DDRB and PINB
    // keep digit bit names whatever their headers bring; unnamed addresses read as I/O addresses.
    const struct {
        int address, row;
        const char* name;
    } cells[] = {
        {io(0x3F), 0, "SREG_C"}, {io(0x3F), 1, "SREG_Z"}, {io(0x3F), 2, "2"},     {io(0x3F), 7, "SREG_I"},
        {io(0x3F), 8, "SREG"},   {io(0x3B), 6, "INT0"},   {io(0x3A), 7, "INTF1"}, {io(0x1C), 3, "EERIE"},
        {io(0x18), 8, "PORTB"},  {io(0x01), 8, "$001"},   {0x10, 8, "$010"},      {0x200, 8, "$200"},
    };
    for (const auto& c : cells) EXPECT_EQ(names[c.address][c.row], c.name) << c.address << "." << c.row;
    for (int address : {io(0x18), io(0x17), io(0x16)})
        for (int bit = 0; bit < 8; ++bit) EXPECT_EQ(names[address][bit], std::to_string(bit)) << address;

    const ModelDefinitions& d = model.definitions;
    for (const char* gone : {".equ PB3 = 3", ".equ TOIE0 = 0", ".equ DDB0 = 0", ".equ PINB0 = 0",
                             "; GICR - General Interrupt Control Register"})
        EXPECT_FALSE(has(d.definitiontext, gone)) << gone;
    EXPECT_FALSE(has(d.bitdefinitions, "; PORTB - Port B Data Register"));
    EXPECT_FALSE(has(d.bitdefinitions, "; TIMSK - Timer/Counter Interrupt Mask Register"));
    EXPECT_TRUE(has(d.bitdefinitions, "; GICR - General Interrupt Control Register"));
    // Definition text: Section 2 as it stands, then the surviving bit lines.
    ASSERT_EQ(d.definitiontext.size(), 26u + 3 + 2 + 2 + 4);
    EXPECT_EQ(d.definitiontext.front(), ".equ ADCL = $04");
    EXPECT_EQ(d.definitiontext[26], ".equ SREG_C = 0");
    EXPECT_EQ(d.definitiontext.back(), ".equ EERIE = 3");
    EXPECT_EQ(d.bitdefinitions.size(), 4u + 3 + 2 + 2 + 4);
}

TEST(ModelLoad, SectionThreeBitNamesTakeTheLastDigitAndStayInsideTheDataSpace) {
    ModelText text;
    text.keys = "flash: 1024\nsram: 0\n";
    text.registers = "3F,EEARH,00,01\n5F,SREG,00,FF\n";
    text.definitions = "";
    text.bits =
        ".equ ORPHAN = 1\n"  // before any header: no register to name
        ";SREG\n"
        ".equ FIRST=4\n"
        ".EQU SECOND = 5\n"
        ".equ NINE = 9\n"
        ".equ = 6\n"
        "; PORTBX is not a port register name\n"
        ".equ AFTER = 0\n";
    const LoadedModel model = loadmodel(text.text());
    ASSERT_TRUE(model.result.ok);
    const auto& sreg = model.m.bitnames[0x5F];
    EXPECT_EQ(std::vector<std::string>({sreg[1], sreg[4], sreg[5], sreg[6], model.m.bitnames[0x5F - 1][0]}),
              std::vector<std::string>({"1", "FIRST", "SECOND", "6", "0"}));
    EXPECT_EQ(model.definitions.definitiontext.front(), ".equ ORPHAN = 1");
    EXPECT_FALSE(has(model.definitions.definitiontext, ".equ AFTER = 0"));
}

TEST(ModelLoad, SectionFourInterruptTable) {
    const LoadedModel model = loadmodel(ModelText{}.text());
    ASSERT_TRUE(model.result.ok);
    EXPECT_TRUE(model.result.warnings.empty());
    const Machine& m = model.m;
    EXPECT_EQ(interrupts(m), (std::vector<std::string>{"RESET 0 0.1 0.1 1", "INT0 1 5B.40 5A.40 1",
                                                        "INT1 2 5B.80 5A.80 1", "ERDY F 3C.8 3C.2 0",
                                                        "SPMR 12 57.80 57.1 0"}));
    EXPECT_EQ(m.interrupttable[2].description, "External Interrupt Request 1");
    EXPECT_EQ(std::vector<int>({m.int0flagaddress, m.int0flagmask, m.int1flagaddress, m.int1flagmask}),
              std::vector<int>({io(0x3A), 0x40, io(0x3A), 0x80}));
    // A polarity-1 flag register takes the write path that clears flags with a 1.
    EXPECT_TRUE(m.sideeffects[io(0x3A)] & kEffectWrite);
}

TEST(ModelLoad, BadInterruptReferencesWarnWithTheFileLineNumber) {
    ModelText text;
    text.interrupts =
        "INT0,0001,External Interrupt Request 0,GICR.6,GIFR.6\n"
        "; comment lines count too\n"
        "TIMER,0006,Timer overflow,TIMSK.0,TIFR.0\n"
        "\n"
        "ADC,000E,ADC complete,ADCSRA.x,ADCSRA\n"
        "NOVEC,00E,Short vector,,\n"
        "EXTRA,0003,Rest ignored,GICR.7,GIFR.7,whatever,else\n";
    const std::string file = text.text();
    const LoadedModel model = loadmodel(file);
    ASSERT_TRUE(model.result.ok);
    const auto warning = [&](const char* needle) {
        return "Error in interrupt definition " + std::to_string(linenumberof(file, needle)) + ".";
    };
    EXPECT_EQ(model.result.warnings, (std::vector<std::string>{warning("TIMER,"), warning("TIMER,"), warning("ADC,"),
                                                               warning("ADC,"), warning("NOVEC,")}));
    // The loader goes on with address 0; a short vector drops the entry.
    EXPECT_EQ(interrupts(model.m), (std::vector<std::string>{"INT0 1 5B.40 5A.40 1", "TIMER 6 0.1 0.1 1",
                                                              "ADC E 0.1 0.1 1", "EXTRA 3 5B.80 5A.80 1"}));
}

TEST(ModelLoad, SectionFivePinsAndAdcChannels) {
    const LoadedModel model = loadmodel(ModelText{}.text());
    const Machine& m = model.m;
    EXPECT_EQ(pins(m), (std::vector<std::string>{"PB5 (SCK)|6 5 -1 1 0", "PB3 (MOSI/OC2)|6 3 -1 1 0",
                                                  "PC0 (ADC0)|7 0 0 2 0", "GND|0 -1 -1 0 0", "PD2 (INT0)|8 2 -1 1 1",
                                                  "ADC6|0 -1 6 2 1", "PB4 (MISO)|6 4 -1 1 1", "VCC|0 -1 -1 0 1"}));
    std::vector<std::string> channels;  // "CHANNEL PORT MASK PIN"
    for (int c = 0; c < kAdcChannelCount; ++c) {
        const AdcChannel& a = m.adcchannels[c];
        if (a.exists)
            channels.push_back(std::to_string(c) + " " + std::to_string(a.portcode) + " " +
                               std::to_string(a.bitmask) + " " + std::to_string(a.pinindex));
    }
    EXPECT_EQ(channels, (std::vector<std::string>{"0 7 1 2", "6 0 0 5"}));
}

TEST(ModelLoad, SectionFiveLimits) {
    ModelText text;
    text.pins.clear();
    for (int pin = 1; pin <= 90; ++pin) text.pins += std::to_string(pin) + ",P" + std::to_string(pin) + ",g,7,x,1\n";
    text.pins += "91,odd\n";
    const LoadedModel model = loadmodel(text.text());
    ASSERT_EQ(model.m.pins.size(), 80u);
    EXPECT_EQ(model.m.pins[79].portcode, 11);
    EXPECT_FALSE(model.m.pins[39].secondhalf);
    EXPECT_TRUE(model.m.pins[40].secondhalf);

    text.pins =
        "1,A,h,9,16,7\n"   // no port h, no bit 9, no channel 16, no type 7
        "2,B,x,x,15,2\n"
        "3,C\n"            // too few fields
        "4,D,A,0,x,1\n";   // port letters in either case
    const LoadedModel other = loadmodel(text.text());
    EXPECT_EQ(pins(other.m), (std::vector<std::string>{"A|0 -1 -1 0 0", "B|0 -1 15 2 0", "C|0 -1 -1 0 1",
                                                        "D|5 0 -1 1 1"}));
    EXPECT_TRUE(other.m.adcchannels[15].exists);
    EXPECT_EQ(other.m.adcchannels[15].pinindex, 1);
}

TEST(ModelLoad, RolesAreBoundFromSectionTwoAndSideEffectsMarked) {
    const LoadedModel model = loadmodel(ModelText{}.text());
    const RegisterRoles& r = model.m.roles;
    EXPECT_EQ(std::vector<bool>(r.portexists.begin(), r.portexists.begin() + 4),
              std::vector<bool>({false, true, false, true}));
    EXPECT_EQ(std::vector<int>({r.port[1], r.pin[3], r.ddr[3], r.udr, r.ucsra, r.ucsrc, r.eearl, r.adcsra, r.acsr,
                                r.mcucr, r.spl}),
              std::vector<int>({io(0x18), io(0x10), io(0x11), io(0x0C), io(0x0B), 0, io(0x1E), io(0x06), io(0x08),
                                io(0x35), io(0x3D)}));
    const auto& effects = model.m.sideeffects;
    EXPECT_TRUE(effects[io(0x16)] & kEffectRead);   // PINB
    EXPECT_TRUE(effects[io(0x0C)] & kEffectWrite);  // UDR
    EXPECT_TRUE(effects[io(0x04)] & kEffectRead);   // ADCL
    EXPECT_EQ(effects[io(0x18)], kEffectWrite | kEffectWake);  // PORTB wakes the pins
    EXPECT_EQ(effects[io(0x3D)], kEffectNone);                 // SPL is plain
}

TEST(ModelLoad, ALoadReplacesEverythingOfThePreviousModel) {
    TempDir dir;
    LoadedModel model;
    loadtext(model, dir, ModelText{}.text());
    ModelText bare;
    bare.keys = "flash: 2048\nsram: 128\n";
    bare.registers = bare.definitions = bare.bits = bare.interrupts = bare.pins = "";
    loadtext(model, dir, bare.text(), {}, "ATbare");
    ASSERT_TRUE(model.result.ok);
    const Machine& m = model.m;
    EXPECT_TRUE(m.namedregisters.empty() && m.interrupttable.empty() && m.pins.empty());
    EXPECT_FALSE(m.adcchannels[0].exists || m.roles.portexists[1]);
    EXPECT_EQ(m.int0flagaddress, 0);
    EXPECT_EQ(m.kinds.uartconf, 0);
    EXPECT_TRUE(model.definitions.definitiontext.empty());
    EXPECT_EQ(m.bitnames[io(0x3F)][8], "$03F");
    EXPECT_EQ(m.modelname, "ATbare");
}

TEST(ModelLoad, HeadCommentsBlankLinesAndCarriageReturns) {
    ModelText text;
    text.lead = "flash: 4\n5F,LEAD,00,FF\n\n";  // before the first header: ignored
    text.registers = "; a comment\n\n" + text.registers;
    text.definitions = "; comment\n" + text.definitions;
    std::string crlf;
    for (char c : text.text()) crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
    const LoadedModel model = loadmodel(crlf);
    ASSERT_TRUE(model.result.ok) << model.result.message;
    EXPECT_EQ(model.m.flashsize, 8192);
    EXPECT_EQ(registeraddress(model.m, "LEAD"), -1);
    EXPECT_EQ(model.m.namedregisters.size(), 26u);
    EXPECT_EQ(model.definitions.definitiontext.front(), ".equ ADCL = $04");
    EXPECT_EQ(model.m.bitnames[io(0x3F)][0], "SREG_C");
    EXPECT_TRUE(model.result.warnings.empty());
    EXPECT_EQ(model.m.pins.size(), 8u);
}

TEST(ModelLoad, CorruptedSizesEndTheProgram) {
    const struct {
        const char* keys;
        const char* code;  // "" for the largest data space that still fits
    } cases[] = {
        {"flash: 1024\nsram: -5\n", "0/-5"},
        {"flash: 1024\nextendedio: 160\nsram: 65281\n", "0/65281"},
        {"flash: 1024\nsram: 99999999999999999999\n", "0/9223372036854775807"},
        {"flash: 99999999999\nsram: 64\n", "flash: 99999999999"},
        {"flash: -2\nsram: 64\n", "flash: -2"},
        {"flash: 1024\nextendedio: 70000\nsram: 64\n", "extendedio: 70000"},
        {"flash: 1024\nsram: 64\neeprom: 100000\n", "eeprom: 100000"},
        {"flash: 1024\nextendedio: 160\nsram: 65280\n", ""},
    };
    for (const auto& c : cases) {
        ModelText text;
        text.keys = c.keys;
        const LoadedModel model = loadmodel(text.text(), {}, "ATbad");
        const bool fits = *c.code == 0;
        EXPECT_EQ(model.result.ok, fits) << c.keys;
        EXPECT_EQ(model.result.message, fits ? "" : std::string("File 'ATbad.cfg' corrupted.\nError code: ") + c.code +
                                                        "\nThe program will now end.");
        EXPECT_EQ(model.m.dataspacesize, fits ? 65536 : 96) << c.keys;
        if (!fits) { EXPECT_TRUE(model.m.namedregisters.empty()) << c.keys; }
    }
}

}  // namespace
}  // namespace velmora::test
