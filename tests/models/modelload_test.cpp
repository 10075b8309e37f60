// The model file loader: every section, its messages and the tables it leaves in the machine;
// malformed files give the documented result or load what they can, and always leave a
// machine whose tables fit its memories.
// data/loads.txt holds loads of data/atmini8.cfg, whole or with sections replaced, and what
// the machine holds afterwards, worked out by hand from the file; the procedures are here.
//
// The list of models: which files, their names, descriptions, order and the default.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <sstream>

#include "core/memory.h"
#include "models/modelfixture.h"
#include "support/sectiontable.h"
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

// A word that is a number in any notation, whole.
std::optional<long> numberof(const std::string& word) {
    size_t used = 0;
    try {
        const long value = std::stol(word, &used, 0);
        if (used == word.size()) return value;
    } catch (const std::exception&) {
    }
    return std::nullopt;
}

// Numbers as numbers, whatever their notation; everything else as it stands, trailing blanks
// aside.
std::string normal(const std::string& text) {
    std::string out;
    for (size_t at = 0; at < text.size();) {
        const size_t end = std::min(text.find(' ', at), text.size());
        const std::string word = text.substr(at, end - at);
        const std::optional<long> number = numberof(word);
        out += (number ? std::to_string(*number) : word) + (end < text.size() ? " " : "");
        at = end + 1;
    }
    return out.substr(0, out.find_last_not_of(' ') + 1);
}

// A memory's size and fill, -1 if mixed.
std::string uniform(const std::vector<uint8_t>& memory) {
    const bool same = !memory.empty() && std::ranges::count(memory, memory[0]) == long(memory.size());
    return std::to_string(memory.size()) + (memory.empty() ? "" : " " + std::to_string(same ? int(memory[0]) : -1));
}

// The values a query of data/loads.txt names, as text: "m FIELD..." (sizes, kinds and flags),
// "mask|mem ADDRESS...", "progmem|eeprom" (size and fill, -1 if mixed), "bitname ADDRESS ROW",
// "bitnames ADDRESS", "effects ADDRESS",
// "registercount", "registernames", "registername I", "register I" (text|name|address|reset;
// a negative I counts from the end), "address NAME", "definitioncount", "bitdefinitioncount",
// "definition I", "has definitiontext|bitdefinitions TEXT", "interrupts", "description I",
// "pins", "pinentries", "channels", "channel C", "portexists", "roles", "compconf", "warnings".
std::string query(const LoadedModel& model, const std::string& what) {
    const Machine& m = model.m;
    const ModelDefinitions& d = model.definitions;
    std::istringstream in(what);
    std::string key, rest;
    in >> key;
    std::getline(in >> std::ws, rest);
    std::istringstream args(rest);
    std::vector<long> numbers;
    for (std::string a; args >> a && numberof(a);) numbers.push_back(*numberof(a));
    const auto at = [](const auto& list, long i) -> const auto& { return list.at(i < 0 ? list.size() + i : i); };
    std::ostringstream out;
    const auto join = [&out](const auto& list, const auto& show, const char* gap) {
        for (size_t i = 0; i < list.size(); ++i) out << (i ? gap : "") << show(list[i]);
    };
    const auto text = [](const auto& v) { return v; };
    const std::map<std::string, std::function<long()>> fields = {
        {"flashsize", [&] { return m.flashsize; }},          {"flashwords", [&] { return m.flashwords; }},
        {"pcbits", [&] { return m.pcbits; }},                {"threebytepc", [&] { return m.threebytepc; }},
        {"sramsize", [&] { return m.sramsize; }},            {"dataspacesize", [&] { return m.dataspacesize; }},
        {"eightbitpointers", [&] { return m.eightbitpointers; }}, {"eepromsize", [&] { return m.eepromsize; }},
        {"pincount", [&] { return m.pincount; }},            {"programbytes", [&] { return m.programbytes; }},
        {"pc", [&] { return m.pc; }},                        {"int0flagaddress", [&] { return m.int0flagaddress; }},
        {"int0flagmask", [&] { return m.int0flagmask; }},    {"int1flagaddress", [&] { return m.int1flagaddress; }},
        {"int1flagmask", [&] { return m.int1flagmask; }},    {"simconf", [&] { return m.kinds.simconf; }},
        {"instsetconf", [&] { return m.kinds.instsetconf; }}, {"int0", [&] { return m.kinds.int0; }},
        {"int1", [&] { return m.kinds.int1; }},              {"adcconf", [&] { return m.kinds.adcconf; }},
        {"eeconf", [&] { return m.kinds.eeconf; }},          {"uartconf", [&] { return m.kinds.uartconf; }},
    };
    const auto number = [&numbers](size_t i) { return numbers.at(i); };
    const std::map<std::string, std::function<void()>> queries = {
        {"m", [&] {
             std::istringstream names(rest);
             for (std::string name; names >> name;) out << fields.at(name)() << " ";
         }},
        {"mask", [&] { for (long a : numbers) out << int(m.datamask.at(a)) << " "; }},
        {"mem", [&] { for (long a : numbers) out << int(m.datamem.at(a)) << " "; }},
        {"progmem", [&] { out << uniform(m.progmem); }},
        {"eeprom", [&] { out << uniform(m.eeprommem); }},
        {"bitname", [&] { out << m.bitnames.at(number(0)).at(number(1)); }},
        {"bitnames", [&] { for (int row = 0; row < 8; ++row) out << m.bitnames.at(number(0))[row] << " "; }},
        {"effects", [&] {
             const int e = m.sideeffects.at(number(0));
             const char* names[] = {"read", "write", "wake", "clearflag", "interrupt"};
             for (int bit = 0; bit < 5; ++bit) out << (e & (1 << bit) ? std::string(names[bit]) + " " : "");
             out << (e == 0 ? "none" : "");
         }},
        {"registercount", [&] { out << m.namedregisters.size(); }},
        {"registernames", [&] { join(m.namedregisters, [](const NamedRegister& r) { return r.name; }, " "); }},
        {"registername", [&] { out << at(m.namedregisters, number(0)).name; }},
        {"register", [&] {
             const NamedRegister& r = at(m.namedregisters, number(0));
             out << r.text << "|" << r.name << "|" << r.address << "|" << int(r.reset);
         }},
        {"address", [&] { out << registeraddress(m, rest); }},
        {"definitioncount", [&] { out << d.definitiontext.size(); }},
        {"bitdefinitioncount", [&] { out << d.bitdefinitions.size(); }},
        {"definition", [&] { out << at(d.definitiontext, number(0)); }},
        {"has", [&] {
             std::istringstream parts(rest);
             std::string list, needle;
             parts >> list;
             std::getline(parts >> std::ws, needle);
             const std::vector<std::string>& lines = list == "definitiontext" ? d.definitiontext : d.bitdefinitions;
             out << (std::ranges::find(lines, needle) != lines.end() ? "yes" : "no");
         }},
        {"interrupts", [&] { join(m.interrupttable, show, "; "); }},
        {"description", [&] { out << at(m.interrupttable, number(0)).description; }},
        {"pins", [&] {
             join(m.pins, [](const PackagePin& p) {
                 return p.caption + "|" + std::to_string(p.portcode) + " " + std::to_string(p.bit) + " " +
                        std::to_string(p.adcchannel) + " " + std::to_string(p.type) + " " +
                        std::to_string(p.secondhalf);
             }, "; ");
         }},
        {"pinentries", [&] { out << m.pins.size(); }},
        {"channels", [&] {  // "CHANNEL PORT MASK PIN"
             for (int c = 0; c < kAdcChannelCount; ++c) {
                 const AdcChannel& a = m.adcchannels[c];
                 if (a.exists) out << c << " " << a.portcode << " " << int(a.bitmask) << " " << a.pinindex << "; ";
             }
         }},
        {"channel", [&] { out << m.adcchannels.at(number(0)).exists << " " << m.adcchannels.at(number(0)).pinindex; }},
        {"portexists", [&] { for (int p = 0; p < 4; ++p) out << m.roles.portexists[p] << " "; }},  // A to D
        {"roles", [&] {
             const RegisterRoles& r = m.roles;
             const int addresses[] = {r.port[1], r.pin[3], r.ddr[3], r.udr,  r.ucsra, r.ucsrc,
                                      r.eearl,   r.adcsra, r.acsr,  r.mcucr, r.spl};
             for (int a : addresses) out << a << " ";
         }},
        {"compconf", [&] { join(m.kinds.compconf, [](int k) { return std::to_string(k); }, " "); }},
        {"warnings", [&] { join(model.result.warnings, text, "; "); }}};
    if (queries.contains(key))
        queries.at(key)();
    else
        ADD_FAILURE() << "unknown query " << what;
    return out.str();
}

TEST(ModelLoad, SectionsAndTheTablesTheyLeave) {
    for (const auto& [name, lines] : tablesections("loads.txt")) {
        SCOPED_TRACE("loads.txt [" + name + "]");
        ModelText text;
        ModelOptions options;
        bool crlf = false;
        std::vector<TableRow> queries;
        for (const TableRow& row : tablerows("loads.txt", name)) {
            std::map<std::string, std::string*> sections = {
                {"lead", &text.lead}, {"keys", &text.keys}, {"registers", &text.registers},
                {"definitions", &text.definitions}, {"bits", &text.bits}, {"interrupts", &text.interrupts},
                {"pins", &text.pins}};
            if (row[0].starts_with("<+ "))
                *sections.at(row[0].substr(3)) = row[1] + *sections.at(row[0].substr(3));
            else if (row[0].starts_with("< "))
                *sections.at(row[0].substr(2)) = row[1];
            else if (row[0] == "% iofirst")
                options.listiofirst = row.flag(1);
            else if (row[0] == "% unprogrammed")
                options.unprogrammed = static_cast<uint8_t>(row.number(1));
            else if (row[0] == "% crlf")
                crlf = row.flag(1);
            else
                queries.push_back(row);
        }
        std::string file = text.text();
        if (crlf) {
            file.clear();
            for (char c : text.text()) file += c == '\n' ? std::string("\r\n") : std::string(1, c);
        }
        const LoadedModel model = loadmodel(file, options);
        ASSERT_TRUE(model.result.ok) << model.result.message;
        for (const TableRow& row : queries) EXPECT_EQ(normal(query(model, row[0])), normal(row[1])) << row.where;
    }
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

}

TEST(ModelLoad, ALoadReplacesEverythingOfThePreviousModel) {
    TempDir dir;
    LoadedModel model;
    loadtext(model, dir, ModelText{}.text());
    ModelText bare;
    bare.keys = "flash: 2048\nsram: 128\n";
    bare.registers = bare.definitions = bare.bits = bare.interrupts = bare.pins = "";
    model.m.programbytes = 100;
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
    EXPECT_EQ(m.programbytes, 0);
}

TEST(ModelLoad, CorruptedSizesEndTheProgram) {
    for (const TableRow& row : tablerows("tables.txt", "Corrupted sizes")) {
        ModelText text;
        text.keys = row[0];
        const LoadedModel model = loadmodel(text.text(), {}, "ATbad");
        const bool fits = row[1].empty();
        EXPECT_EQ(model.result.ok, fits) << row.where;
        EXPECT_EQ(model.result.message, fits ? "" : "File 'ATbad.cfg' corrupted.\nError code: " + row[1] +
                                                        "\nThe program will now end.")
            << row.where;
        EXPECT_EQ(model.m.dataspacesize, fits ? 65536 : 96) << row.where;
        if (!fits) { EXPECT_TRUE(model.m.namedregisters.empty()) << row.where; }
    }
}

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
    std::vector<std::string> pieces;
    for (const TableRow& row : tablerows("tables.txt", "Garbage pieces")) pieces.push_back(row[0]);
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

// The names of the entries, or of their files, a blank between two.
std::string joined(const std::vector<ModelEntry>& models, std::string ModelEntry::*field = &ModelEntry::name) {
    std::string names;
    for (const ModelEntry& e : models) names += (names.empty() ? "" : " ") + e.*field;
    return names;
}

TEST(ModelList, NameOfAModelFile) {
    for (const TableRow& row : tablerows("tables.txt", "Model file names"))
        EXPECT_EQ(modelnameoffile(row[0]), row[1]) << row.where;
}

TEST(ModelList, OrderIsByNameThenByTheNumberOfTheFamilyWithATmega32OrTheLastAsDefault) {
    for (const TableRow& row : tablerows("tables.txt", "Model list order")) {
        TempDir dir;
        std::istringstream files(row[0]);
        for (std::string file; files >> file && file != "-";) {
            if (file.ends_with('/'))
                std::filesystem::create_directory(dir.path() + "/" + file);
            else
                dir.write(file, "\n");
        }
        const ModelList list = modellist(dir.path() + (row[0] == "-" ? "/missing" : ""));
        EXPECT_EQ(joined(list.models), row[1]) << row.where;
        EXPECT_EQ(list.defaultindex, row.number(2)) << row.where;
        if (row.cells.size() > 3) {
            EXPECT_EQ(joined(list.models, &ModelEntry::filename), row[3]) << row.where;
            EXPECT_EQ(list.error, row[4]) << row.where;
        }
    }
}

TEST(ModelList, SortKeepsTheByteOrderBetweenFamilies) {
    for (const TableRow& row : tablerows("tables.txt", "Sorted names")) {
        std::vector<ModelEntry> models;
        std::istringstream names(row[0]);
        for (std::string name; names >> name;) models.push_back({name, "", ""});
        sortmodels(models);
        EXPECT_EQ(joined(models), row[1]) << row.where;
    }
}

TEST(ModelList, DescriptionIsLinesThreeFourSixAndSevenInUpperCase) {
    TempDir dir;
    dir.write("atmega8.cfg", ModelText{}.text());
    dir.write("attiny4.cfg", "\r\n***** Section 0 *****\r\npins: 6\r\n");
    const ModelList list = modellist(dir.path());
    ASSERT_EQ(list.models.size(), 2u);
    EXPECT_EQ(list.models[0].description, "PINS: 8, FLASH: 8192, SRAM: 1024, EEPROM: 512");
    EXPECT_EQ(list.models[1].description, "PINS: 6, , , ");
}

}  // namespace
}  // namespace velmora::test
