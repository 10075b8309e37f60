// Malformed model files: the loader gives its documented result or loads what it can, and
// always leaves a machine whose tables fit its memories.

#include <gtest/gtest.h>

#include <random>

#include "models/modelfixture.h"

namespace velmora::test {
namespace {

// Every table entry that a later step indexes with must lie inside the memories.
void expectconsistent(const Machine& m, const std::string& context) {
    const size_t data = static_cast<size_t>(m.dataspacesize);
    ASSERT_EQ(std::vector<size_t>({m.datamem.size(), m.datamask.size(), m.sideeffects.size(), m.bitnames.size(),
                                   m.progmem.size(), m.eeprommem.size()}),
              std::vector<size_t>({data, data, data, data, static_cast<size_t>(m.flashsize) + 4,
                                   static_cast<size_t>(m.eepromsize)}))
        << context;
    for (const NamedRegister& r : m.namedregisters)
        EXPECT_TRUE(r.address < m.dataspacesize || (r.address >= 10000 && r.address <= 10002)) << context;
    for (const InterruptEntry& e : m.interrupttable)
        EXPECT_TRUE(e.vector >= 0 && e.enableaddress < m.dataspacesize && e.flagaddress < m.dataspacesize &&
                    e.enablemask != 0 && e.flagmask != 0)
            << context << ": " << e.name;
    EXPECT_LE(m.pins.size(), 80u) << context;
    for (const PackagePin& p : m.pins)
        EXPECT_TRUE((p.portcode == 0 || (p.portcode >= 5 && p.portcode <= 11)) && p.bit >= -1 && p.bit <= 7 &&
                    p.adcchannel >= -1 && p.adcchannel <= 15)
            << context << ": " << p.caption;
    for (const AdcChannel& c : m.adcchannels)
        if (c.exists) { EXPECT_LT(static_cast<size_t>(c.pinindex), m.pins.size()) << context; }
}

TEST(ModelRobustness, HandMadeDamage) {
    const std::string header = "\n***** Section 0 *****\n";
    const std::pair<const char*, std::string> cases[] = {
        {"empty file", ""},
        {"no headers at all", "pins: 40\nflash: 32768\nsram: 2048\n"},
        {"no flash key", header + "sram: 64\n***** Section 1 *****\n5F,SREG,00,FF\n"},
        {"only a header", header},
        {"non-numeric values", header + "flash: lots\nsram: some\neeprom: x\nintconf: a,b\ncompconf: ,,\n"},
        {"empty values", header + "flash: \nsram: \nintconf: \ncompconf: \n"},
        {"sections before the keys",
         "***** Section 1 *****\n5F,SREG,00,FF\n***** Section 4 *****\nINT0,0001,x,SREG.7,SREG.1\n" + header +
             "flash: 1024\nsram: 64\n"},
        {"repeated sections", header + "flash: 1024\nsram: 64\n***** Section 1 *****\n5F,SREG,00,FF\n" + header +
                                  "sram: 32\n***** Section 1 *****\n7F,LATE,00,FF\n"},
        {"short lines everywhere",
         header + "flash: 64\nsram: 16\n***** Section 1 *****\n5F\n,\n***** Section 2 *****\n.equ\n.equ =\n"
                  "***** Section 3 *****\n;\n; \n.equ\n.equ =\n***** Section 4 *****\nX\n,\n,,,,\n"
                  "***** Section 5 *****\n,\n1\n,,,,,,,,\n"},
        {"binary garbage", std::string("\0\x01\xFF\xFE***** Section 0 *****\n\xC3\x28\n\x80", 24) + "\n"},
        {"very long line", header + "flash: 1024\n" + std::string(100000, '9') + "\nsram: " + std::string(5000, '9')},
        {"headers with stray blanks", "***** Section 0 ***** \n flash: 1024\n***** section 1 *****\n5F,A,00,FF\n"},
        {"section numbers out of range", "***** Section 6 *****\nflash: 1024\n***** Section -1 *****\n"},
        {"interrupts against a tiny data space",
         header + "flash: 64\nsram: 0\n***** Section 1 *****\n5F,SREG,00,FF\n***** Section 4 *****\n"
                  "A,0001,x,SREG.9,SREG.\nB,0002,x,.1,SREG.1.2\nC,FFFF,x,SREG.7,SREG.7\n"},
    };
    TempDir dir;
    for (const auto& [what, text] : cases) {
        LoadedModel model;
        loadtext(model, dir, text);
        expectconsistent(model.m, what);
        if (!model.result.ok) {
            EXPECT_NE(model.result.message.find("The program will now end."), std::string::npos) << what;
        }
    }
}

// Files put together from pieces of real lines and noise, with a fixed seed.
TEST(ModelRobustness, GeneratedGarbage) {
    const std::vector<std::string> pieces = {
        "***** Section 0 *****", "***** Section 1 *****", "***** Section 2 *****", "***** Section 3 *****",
        "***** Section 4 *****", "***** Section 5 *****", "flash: ", "sram: ", "extendedio: ", "eeprom: ",
        "pins: ", "intconf: ", "compconf: ", "uartconf: ", ".equ PORTB = ", ".equ UDR = ", "; PORTB x",
        "; SREG y", "; GIFR", ".equ B = ", "INT0,", "ERDY,", "SPMR,", "0001,", "GIFR.6", "SREG.", ",", ",,",
        "\t", " ", ";", "x", "XXXX", "5F", "3A", "FF", "00", "-", "$", "0x", "9999999999", "-7", "a", "g", "15",
        "16", "80", "\r", "\xFF", "=", ".",
    };
    std::mt19937 random(20261122);
    TempDir dir;
    for (int file = 0; file < 300; ++file) {
        std::string text;
        const int lines = static_cast<int>(random() % 60);
        for (int line = 0; line < lines; ++line) {
            const int parts = 1 + static_cast<int>(random() % 6);
            for (int part = 0; part < parts; ++part) {
                if (random() % 4 == 0)
                    text += std::to_string(static_cast<int>(random() % 70000) - 100);
                else
                    text += pieces[random() % pieces.size()];
            }
            text += '\n';
        }
        LoadedModel model;
        loadtext(model, dir, text);
        expectconsistent(model.m, "file " + std::to_string(file) + ":\n" + text);
        if (HasFailure()) break;
    }
}

}  // namespace
}  // namespace velmora::test
