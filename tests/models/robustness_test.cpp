// Malformed model files: the loader gives its documented result or loads what it can, and
// always leaves a machine whose tables fit its memories.

#include <gtest/gtest.h>

#include <random>

#include "models/modelfixture.h"
#include "support/sectiontable.h"

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
    std::vector<std::pair<std::string, std::string>> cases = {
        {"very long line", "\n***** Section 0 *****\nflash: 1024\n" + std::string(100000, '9') + "\nsram: " +
                               std::string(5000, '9')}};
    for (const TableRow& row : tablerows("tables.txt", "Damaged files")) cases.emplace_back(row.where, row[1]);
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
