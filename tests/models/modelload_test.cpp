// The model file loader: every section, its messages and the tables it leaves in the machine.

#include <gtest/gtest.h>

#include <algorithm>

#include "core/hextext.h"
#include "core/memory.h"
#include "models/modelfixture.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

constexpr int io(int address) { return address + 32; }

const InterruptEntry* interruptnamed(const Machine& m, const std::string& name) {
    for (const InterruptEntry& e : m.interrupttable)
        if (e.name == name) return &e;
    return nullptr;
}

TEST(ModelLoad, MissingFileEndsTheProgram) {
    TempDir dir;
    LoadedModel model;
    model.result = modelload(dir.path(), "ATmega99", {}, model.m, model.definitions);
    EXPECT_FALSE(model.result.ok);
    EXPECT_EQ(model.result.message, "File 'ATmega99.cfg' could not be found.\nThe program will now end.");
    model.result = modelload(dir.path() + "/no-such-folder", "ATmega99", {}, model.m, model.definitions);
    EXPECT_EQ(model.result.message, "File 'ATmega99.cfg' could not be found.\nThe program will now end.");
}

TEST(ModelLoad, FileIsTheLowerCaseNameEvenWhenStoredInOtherCase) {
    TempDir dir;
    dir.write("ATMINI8.CFG", ModelText{}.text());
    LoadedModel model;
    model.result = modelload(dir.path(), "ATmini8", {}, model.m, model.definitions);
    EXPECT_TRUE(model.result.ok) << model.result.message;
    EXPECT_EQ(model.m.modelname, "ATmini8");
}

TEST(ModelLoad, SizesAndMemories) {
    TempDir dir;
    LoadedModel model;
    model.m.programbytes = 100;
    ModelOptions options;
    options.unprogrammed = 0;
    loadtext(model, dir, ModelText{}.text(), options);
    ASSERT_TRUE(model.result.ok) << model.result.message;
    const Machine& m = model.m;
    EXPECT_EQ(m.flashsize, 8192);
    EXPECT_EQ(m.flashwords, 4096);
    EXPECT_EQ(m.pcbits, 12);
    EXPECT_FALSE(m.threebytepc);
    EXPECT_EQ(m.progmem.size(), 8196u);
    EXPECT_TRUE(std::all_of(m.progmem.begin(), m.progmem.end(), [](uint8_t b) { return b == 0; }));
    EXPECT_EQ(m.sramsize, 1024);
    EXPECT_EQ(m.dataspacesize, 1024 + 96);
    EXPECT_FALSE(m.eightbitpointers);
    EXPECT_EQ(m.eepromsize, 512);
    EXPECT_EQ(m.eeprommem.size(), 512u);
    EXPECT_EQ(m.pincount, 8);
    EXPECT_EQ(m.programbytes, 0);

    LoadedModel erased;
    loadtext(erased, dir, ModelText{}.text());
    EXPECT_TRUE(std::all_of(erased.m.eeprommem.begin(), erased.m.eeprommem.end(), [](uint8_t b) { return b == 255; }));
}

TEST(ModelLoad, ExtendedIoStandsBetweenIoAndSram) {
    ModelText text;
    text.keys = "pins: 8\nflash: 262144\nextendedio: 160\nsram: 8192\neeprom: 4096\n";
    text.registers = "C6,UDR0,00,FF\n";
    const LoadedModel model = loadmodel(text.text());
    ASSERT_TRUE(model.result.ok) << model.result.message;
    EXPECT_EQ(model.m.dataspacesize, 96 + 160 + 8192);
    EXPECT_TRUE(model.m.threebytepc);
    EXPECT_EQ(model.m.datamask[96 + 159], 0);  // extended I/O the model leaves out
    EXPECT_EQ(model.m.datamask[96 + 160], 255);  // first SRAM cell
    EXPECT_EQ(model.m.datamask[0xC6], 0xFF);
}

TEST(ModelLoad, KeysGivePeripheralKindsAndMissingKeysZero) {
    const LoadedModel model = loadmodel(ModelText{}.text());
    const PeripheralKinds& k = model.m.kinds;
    EXPECT_EQ(k.simconf, 1);
    EXPECT_EQ(k.instsetconf, 3);
    EXPECT_EQ(k.int0, 2);
    EXPECT_EQ(k.int1, 2);
    EXPECT_EQ(k.compconf, (std::vector<int>{2, 1, 6, 7}));
    EXPECT_EQ(k.adcconf, 2);
    EXPECT_EQ(k.eeconf, 2);
    EXPECT_EQ(k.uartconf, 2);

    ModelText sparse;
    sparse.keys = "flash: 1024\nsram: 64\ncompconf: 3,1,2,3,5\nintconf: 4\nuartconf: 8 (shared UCSRC)\n";
    const LoadedModel other = loadmodel(sparse.text());
    ASSERT_TRUE(other.result.ok) << other.result.message;
    EXPECT_EQ(other.m.kinds.simconf, 0);
    EXPECT_EQ(other.m.kinds.adcconf, 0);
    EXPECT_EQ(other.m.kinds.int0, 4);
    EXPECT_EQ(other.m.kinds.int1, 0);
    EXPECT_EQ(other.m.kinds.uartconf, 8);
    EXPECT_EQ(other.m.kinds.compconf, (std::vector<int>{3, 1, 2, 3, 5}));
    EXPECT_EQ(other.m.eepromsize, 0);
    EXPECT_TRUE(other.m.eeprommem.empty());
    EXPECT_EQ(other.m.pincount, 0);
}

TEST(ModelLoad, KeysMatchOnTheirLeadingCharactersOnly) {
    ModelText text;
    text.keys = "flash:8192\n flash: 4096\nFlash: 2048\nsram: 64\nflash: 1024 bytes\n";
    const LoadedModel model = loadmodel(text.text());
    EXPECT_EQ(model.m.flashsize, 1024);
}

TEST(ModelLoad, SectionOneMasksAndNamedRegisterTable) {
    const LoadedModel model = loadmodel(ModelText{}.text());
    const Machine& m = model.m;
    EXPECT_EQ(m.datamask[0x20], 0xA5);  // "XXXX": a mask, no register
    EXPECT_EQ(m.datamask[io(0x3B)], 0xC3);
    EXPECT_EQ(m.datamask[io(0x16)], 0x00);
    EXPECT_EQ(m.datamask[io(0x01)], 0);   // not in the file
    EXPECT_EQ(m.datamask[96], 255);       // SRAM
    EXPECT_EQ(m.datamask[96 + 1023], 255);
    ASSERT_EQ(m.namedregisters.size(), 26u);
    EXPECT_EQ(m.namedregisters.front().text, "$024   ADCL");
    EXPECT_EQ(m.namedregisters.back().text, "$05F   SREG");
    EXPECT_EQ(m.namedregisters.back().name, "SREG");
    EXPECT_EQ(m.namedregisters.back().address, 0x5F);
    EXPECT_EQ(registeraddress(m, "XXXX"), -1);
    // The load leaves the machine cleaned: reset values stand in the data space.
    EXPECT_EQ(m.datamem[io(0x0B)], 0x20);
    EXPECT_EQ(m.pc, 0);
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
    EXPECT_EQ(model.m.datamask[0x41], 0x22);
    EXPECT_EQ(model.m.datamem[0x41], 0x11 & 0xFF);
    EXPECT_EQ(model.m.datamask[0x43], 0x3C);
    EXPECT_EQ(model.m.datamask[0x5E], 0);
}

TEST(ModelLoad, ListIoFirstReversesTheTable) {
    ModelOptions options;
    options.listiofirst = true;
    const LoadedModel model = loadmodel(ModelText{}.text(), options);
    ASSERT_EQ(model.m.namedregisters.size(), 26u);
    EXPECT_EQ(model.m.namedregisters.front().name, "SREG");
    EXPECT_EQ(model.m.namedregisters.back().name, "ADCL");
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
            EXPECT_EQ(table[2 + level].text, "Stack Level " + std::to_string(level));
            EXPECT_EQ(table[2 + level].name, "");
            EXPECT_EQ(table[2 + level].address, 10000 + level);
            EXPECT_EQ(table[2 + level].reset, 0);
        }
        EXPECT_EQ(model.m.dataspacesize, 96);
        EXPECT_TRUE(model.m.eightbitpointers);
    }
    const LoadedModel withsram = loadmodel(ModelText{}.text());
    EXPECT_EQ(registeraddress(withsram.m, ""), -1);
}

TEST(ModelLoad, SectionThreeSkipsPortRegistersAndUnknownRegisters) {
    const LoadedModel model = loadmodel(ModelText{}.text());
    const auto& names = model.m.bitnames;
    // Described registers get their bit names and, in row 8, their name.
    EXPECT_EQ(names[io(0x3F)][0], "SREG_C");
    EXPECT_EQ(names[io(0x3F)][1], "SREG_Z");
    EXPECT_EQ(names[io(0x3F)][2], "2");
    EXPECT_EQ(names[io(0x3F)][7], "SREG_I");
    EXPECT_EQ(names[io(0x3F)][8], "SREG");
    EXPECT_EQ(names[io(0x3B)][6], "INT0");
    EXPECT_EQ(names[io(0x3A)][7], "INTF1");
    EXPECT_EQ(names[io(0x1C)][3], "EERIE");
    // PORTB, DDRB and PINB keep digit bit names, whatever their headers bring.
    for (int address : {io(0x18), io(0x17), io(0x16)})
        for (int bit = 0; bit < 8; ++bit) EXPECT_EQ(names[address][bit], std::to_string(bit)) << address;
    EXPECT_EQ(names[io(0x18)][8], "PORTB");
    // Unnamed addresses keep the default: the I/O address in the I/O range.
    EXPECT_EQ(names[io(0x01)][8], "$001");
    EXPECT_EQ(names[0x10][8], "$010");
    EXPECT_EQ(names[0x200][8], "$200");

    const ModelDefinitions& d = model.definitions;
    const auto has = [](const std::vector<std::string>& lines, const std::string& line) {
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    };
    EXPECT_FALSE(has(d.definitiontext, ".equ PB3 = 3"));
    EXPECT_FALSE(has(d.definitiontext, ".equ TOIE0 = 0"));
    EXPECT_FALSE(has(d.definitiontext, ".equ DDB0 = 0"));
    EXPECT_FALSE(has(d.definitiontext, ".equ PINB0 = 0"));
    EXPECT_FALSE(has(d.bitdefinitions, "; PORTB - Port B Data Register"));
    EXPECT_FALSE(has(d.bitdefinitions, "; TIMSK - Timer/Counter Interrupt Mask Register"));
    EXPECT_TRUE(has(d.bitdefinitions, "; GICR - General Interrupt Control Register"));
    EXPECT_FALSE(has(d.definitiontext, "; GICR - General Interrupt Control Register"));
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
    EXPECT_EQ(sreg[4], "FIRST");
    EXPECT_EQ(sreg[5], "SECOND");
    EXPECT_EQ(sreg[6], "6");
    EXPECT_EQ(sreg[1], "1");
    EXPECT_EQ(model.m.bitnames[0x5F - 1][0], "0");
    EXPECT_EQ(model.definitions.definitiontext.front(), ".equ ORPHAN = 1");
    EXPECT_EQ(std::count(model.definitions.definitiontext.begin(), model.definitions.definitiontext.end(),
                         ".equ AFTER = 0"),
              0);
}

TEST(ModelLoad, SectionFourInterruptTable) {
    const LoadedModel model = loadmodel(ModelText{}.text());
    ASSERT_TRUE(model.result.ok);
    EXPECT_TRUE(model.result.warnings.empty());
    const Machine& m = model.m;
    ASSERT_EQ(m.interrupttable.size(), 5u);
    EXPECT_EQ(m.interrupttable[0].name, "RESET");
    EXPECT_EQ(m.interrupttable[0].enableaddress, 0);
    EXPECT_EQ(m.interrupttable[0].enablemask, 1);
    EXPECT_EQ(m.interrupttable[0].flagaddress, 0);
    EXPECT_EQ(m.interrupttable[0].flagmask, 1);

    const InterruptEntry* int1 = interruptnamed(m, "INT1");
    ASSERT_NE(int1, nullptr);
    EXPECT_EQ(int1->vector, 2);
    EXPECT_EQ(int1->description, "External Interrupt Request 1");
    EXPECT_EQ(int1->enableaddress, io(0x3B));
    EXPECT_EQ(int1->enablemask, 0x80);
    EXPECT_EQ(int1->flagaddress, io(0x3A));
    EXPECT_EQ(int1->flagmask, 0x80);
    EXPECT_EQ(int1->polarity, 1);
    EXPECT_EQ(interruptnamed(m, "ERDY")->vector, 0x0F);
    EXPECT_EQ(interruptnamed(m, "ERDY")->polarity, 0);
    EXPECT_EQ(interruptnamed(m, "SPMR")->polarity, 0);
    EXPECT_EQ(interruptnamed(m, "SPMR")->flagaddress, io(0x37));

    EXPECT_EQ(m.int0flagaddress, io(0x3A));
    EXPECT_EQ(m.int0flagmask, 0x40);
    EXPECT_EQ(m.int1flagaddress, io(0x3A));
    EXPECT_EQ(m.int1flagmask, 0x80);
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
    const std::string timer = "Error in interrupt definition " + std::to_string(linenumberof(file, "TIMER,")) + ".";
    const std::string adc = "Error in interrupt definition " + std::to_string(linenumberof(file, "ADC,")) + ".";
    const std::string novec = "Error in interrupt definition " + std::to_string(linenumberof(file, "NOVEC,")) + ".";
    EXPECT_EQ(model.result.warnings, (std::vector<std::string>{timer, timer, adc, adc, novec}));

    const InterruptEntry* t = interruptnamed(model.m, "TIMER");
    ASSERT_NE(t, nullptr);  // the loader goes on with address 0
    EXPECT_EQ(t->enableaddress, 0);
    EXPECT_EQ(t->enablemask, 1);
    EXPECT_EQ(t->flagaddress, 0);
    EXPECT_EQ(interruptnamed(model.m, "NOVEC"), nullptr);
    EXPECT_EQ(interruptnamed(model.m, "EXTRA")->flagmask, 0x80);
    EXPECT_EQ(model.m.interrupttable.size(), 4u);
}

TEST(ModelLoad, SectionFivePinsAndAdcChannels) {
    const LoadedModel model = loadmodel(ModelText{}.text());
    const Machine& m = model.m;
    ASSERT_EQ(m.pins.size(), 8u);
    EXPECT_EQ(m.pins[0].caption, "PB5 (SCK)");
    EXPECT_EQ(m.pins[0].portcode, 6);
    EXPECT_EQ(m.pins[0].bit, 5);
    EXPECT_EQ(m.pins[0].adcchannel, -1);
    EXPECT_EQ(m.pins[0].type, 1);
    EXPECT_EQ(m.pins[3].portcode, 0);
    EXPECT_EQ(m.pins[3].bit, -1);
    EXPECT_EQ(m.pins[3].type, 0);
    EXPECT_EQ(m.pins[4].portcode, 8);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(m.pins[i].secondhalf, i >= 4) << i;

    EXPECT_TRUE(m.adcchannels[0].exists);
    EXPECT_EQ(m.adcchannels[0].portcode, 7);
    EXPECT_EQ(m.adcchannels[0].bitmask, 1);
    EXPECT_EQ(m.adcchannels[0].pinindex, 2);
    EXPECT_TRUE(m.adcchannels[6].exists);
    EXPECT_EQ(m.adcchannels[6].portcode, 0);
    EXPECT_EQ(m.adcchannels[6].bitmask, 0);
    EXPECT_EQ(m.adcchannels[6].pinindex, 5);
    EXPECT_EQ(std::count_if(m.adcchannels.begin(), m.adcchannels.end(), [](const AdcChannel& c) { return c.exists; }),
              2);
}

TEST(ModelLoad, SectionFiveLimits) {
    ModelText text;
    text.pins.clear();
    for (int pin = 1; pin <= 90; ++pin) text.pins += std::to_string(pin) + ",P" + std::to_string(pin) + ",g,7,x,1\n";
    text.pins +=
        "91,odd\n";
    const LoadedModel model = loadmodel(text.text());
    EXPECT_EQ(model.m.pins.size(), 80u);
    EXPECT_EQ(model.m.pins[79].portcode, 11);
    EXPECT_FALSE(model.m.pins[39].secondhalf);
    EXPECT_TRUE(model.m.pins[40].secondhalf);

    text.pins =
        "1,A,h,9,16,7\n"   // no port h, no bit 9, no channel 16, no type 7
        "2,B,x,x,15,2\n"
        "3,C\n"            // too few fields
        "4,D,A,0,x,1\n";   // port letters in either case
    const LoadedModel other = loadmodel(text.text());
    ASSERT_EQ(other.m.pins.size(), 4u);
    EXPECT_EQ(other.m.pins[0].portcode, 0);
    EXPECT_EQ(other.m.pins[0].bit, -1);
    EXPECT_EQ(other.m.pins[0].adcchannel, -1);
    EXPECT_EQ(other.m.pins[0].type, 0);
    EXPECT_TRUE(other.m.adcchannels[15].exists);
    EXPECT_EQ(other.m.adcchannels[15].pinindex, 1);
    EXPECT_EQ(other.m.pins[2].caption, "C");
    EXPECT_EQ(other.m.pins[2].portcode, 0);
    EXPECT_EQ(other.m.pins[3].portcode, 5);
    EXPECT_EQ(other.m.pins[3].bit, 0);
}

TEST(ModelLoad, RolesAreBoundFromSectionTwoAndSideEffectsMarked) {
    const LoadedModel model = loadmodel(ModelText{}.text());
    const RegisterRoles& r = model.m.roles;
    EXPECT_TRUE(r.portexists[1]);
    EXPECT_TRUE(r.portexists[3]);
    EXPECT_FALSE(r.portexists[0]);
    EXPECT_FALSE(r.portexists[2]);
    EXPECT_EQ(r.port[1], io(0x18));
    EXPECT_EQ(r.pin[3], io(0x10));
    EXPECT_EQ(r.ddr[3], io(0x11));
    EXPECT_EQ(r.udr, io(0x0C));
    EXPECT_EQ(r.ucsra, io(0x0B));
    EXPECT_EQ(r.ucsrc, 0);
    EXPECT_EQ(r.eearl, io(0x1E));
    EXPECT_EQ(r.adcsra, io(0x06));
    EXPECT_EQ(r.acsr, io(0x08));
    EXPECT_EQ(r.mcucr, io(0x35));
    EXPECT_EQ(r.spl, io(0x3D));
    EXPECT_TRUE(model.m.sideeffects[io(0x16)] & kEffectRead);  // PINB
    EXPECT_TRUE(model.m.sideeffects[io(0x0C)] & kEffectWrite); // UDR
    EXPECT_TRUE(model.m.sideeffects[io(0x04)] & kEffectRead);  // ADCL
    EXPECT_EQ(model.m.sideeffects[io(0x18)], kEffectWrite | kEffectWake);  // PORTB wakes the pins
    EXPECT_EQ(model.m.sideeffects[io(0x3D)], kEffectNone);                 // SPL is plain
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
    EXPECT_TRUE(model.m.namedregisters.empty());
    EXPECT_TRUE(model.m.interrupttable.empty());
    EXPECT_TRUE(model.m.pins.empty());
    EXPECT_FALSE(model.m.adcchannels[0].exists);
    EXPECT_EQ(model.m.int0flagaddress, 0);
    EXPECT_EQ(model.m.kinds.uartconf, 0);
    EXPECT_FALSE(model.m.roles.portexists[1]);
    EXPECT_TRUE(model.definitions.definitiontext.empty());
    EXPECT_EQ(model.m.bitnames[io(0x3F)][8], "$03F");
    EXPECT_EQ(model.m.modelname, "ATbare");
}

TEST(ModelLoad, HeadCommentsBlankLinesAndCarriageReturns) {
    ModelText text;
    text.lead = "flash: 4\n5F,LEAD,00,FF\n\n";  // before the first header: ignored
    text.registers = "; a comment\n\n" + text.registers;
    text.definitions = "; comment\n" + text.definitions;
    std::string file = text.text();
    std::string crlf;
    for (char c : file) crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
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

struct CorruptCase {
    const char* keys;
    const char* code;
};

TEST(ModelLoad, CorruptedSizesEndTheProgram) {
    const CorruptCase cases[] = {
        {"flash: 1024\nsram: -5\n", "0/-5"},
        {"flash: 1024\nextendedio: 160\nsram: 65281\n", "0/65281"},
        {"flash: 1024\nsram: 99999999999999999999\n", "0/9223372036854775807"},
        {"flash: 99999999999\nsram: 64\n", "flash: 99999999999"},
        {"flash: -2\nsram: 64\n", "flash: -2"},
        {"flash: 1024\nextendedio: 70000\nsram: 64\n", "extendedio: 70000"},
        {"flash: 1024\nsram: 64\neeprom: 100000\n", "eeprom: 100000"},
    };
    for (const auto& c : cases) {
        ModelText text;
        text.keys = c.keys;
        const LoadedModel model = loadmodel(text.text(), {}, "ATbad");
        EXPECT_FALSE(model.result.ok) << c.keys;
        EXPECT_EQ(model.result.message,
                  std::string("File 'ATbad.cfg' corrupted.\nError code: ") + c.code + "\nThe program will now end.");
        EXPECT_EQ(model.m.dataspacesize, 96);
        EXPECT_TRUE(model.m.namedregisters.empty());
    }
    // The largest data space that fits is fine.
    ModelText largest;
    largest.keys = "flash: 1024\nextendedio: 160\nsram: 65280\n";
    const LoadedModel model = loadmodel(largest.text());
    EXPECT_TRUE(model.result.ok) << model.result.message;
    EXPECT_EQ(model.m.dataspacesize, 65536);
}

}  // namespace
}  // namespace velmora::test
