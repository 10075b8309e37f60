// The list of models: which files, their names, descriptions, order and the default.

#include <gtest/gtest.h>

#include <filesystem>

#include "models/modelfixture.h"

namespace velmora::test {
namespace {

std::vector<std::string> namesof(const ModelList& list) {
    std::vector<std::string> names;
    for (const ModelEntry& e : list.models) names.push_back(e.name);
    return names;
}

TEST(ModelList, NameOfAModelFile) {
    const std::pair<const char*, const char*> cases[] = {
        {"atmega32.cfg", "ATmega32"},     {"at90s2313.cfg", "AT90S2313"}, {"atmega328p.cfg", "ATmega328P"},
        {"ATtiny13.cfg", "ATtiny13"},     {"AT90S8515.CFG", "AT90S8515"}, {"at90can128.cfg", "AT90can128"},
        {"atmega16a.cfg", "ATmega16a"},   {"attiny85p.cfg", "ATtiny85P"},
    };
    for (const auto& [file, name] : cases) EXPECT_EQ(modelnameoffile(file), name) << file;
}

TEST(ModelList, OnlyAtCfgFilesAreListed) {
    TempDir dir;
    const std::string text = ModelText{}.text();
    for (const char* file : {"atmega8.cfg", "ATtiny13.CFG", "mega16.cfg", "atmega16.txt", "atmega32.cfg.bak", "a.cfg"})
        dir.write(file, text);
    std::filesystem::create_directory(dir.path() + "/atfolder.cfg");
    const ModelList list = modellist(dir.path());
    EXPECT_EQ(namesof(list), (std::vector<std::string>{"ATmega8", "ATtiny13"}));
    EXPECT_EQ(list.models[1].filename, "ATtiny13.CFG");
    EXPECT_TRUE(list.error.empty());
}

TEST(ModelList, OrderIsByNameThenByTheNumberOfTheFamilyWithATmega32OrTheLastAsDefault) {
    const struct {
        std::vector<const char*> files;
        std::vector<std::string> names;
        int defaultindex;
    } cases[] = {
        {{"atmega16.cfg", "atmega8.cfg", "atmega32.cfg", "atmega128.cfg", "atmega8515.cfg", "attiny13.cfg",
          "attiny2313.cfg", "at90s2313.cfg", "at90s8515.cfg", "atmega162.cfg", "atmega16a.cfg", "atmega328p.cfg"},
         {"AT90S2313", "AT90S8515", "ATmega8", "ATmega16", "ATmega16a", "ATmega32", "ATmega128", "ATmega162",
          "ATmega328P", "ATmega8515", "ATtiny13", "ATtiny2313"},
         5},
        {{"atmega8.cfg", "attiny13.cfg", "atmega16.cfg"}, {"ATmega8", "ATmega16", "ATtiny13"}, 2},
    };
    for (const auto& c : cases) {
        TempDir dir;
        for (const char* file : c.files) dir.write(file, "\n");
        const ModelList list = modellist(dir.path());
        EXPECT_EQ(namesof(list), c.names);
        EXPECT_EQ(list.defaultindex, c.defaultindex) << c.files.size() << " files";
    }
}

TEST(ModelList, SortKeepsTheByteOrderBetweenFamilies) {
    std::vector<ModelEntry> models;
    for (const char* name : {"ATtiny2313", "ATmega8", "ATmega", "AT", "ATmega48", "ATmegaX", "ATmega4"})
        models.push_back({name, "", ""});
    sortmodels(models);
    std::vector<std::string> names;
    for (const ModelEntry& e : models) names.push_back(e.name);
    // "ATmega" has no number and "ATmegaX" reads as 0: both stay before the numbered ones.
    EXPECT_EQ(names, (std::vector<std::string>{"AT", "ATmega", "ATmegaX", "ATmega4", "ATmega8", "ATmega48",
                                               "ATtiny2313"}));
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

TEST(ModelList, NoModelFiles) {
    TempDir dir;
    dir.write("readme.txt", "");
    for (const std::string& folder : {dir.path(), dir.path() + "/missing"}) {
        const ModelList list = modellist(folder);
        EXPECT_TRUE(list.models.empty());
        EXPECT_EQ(list.defaultindex, -1);
        EXPECT_EQ(list.error, "No CFG files found.\nThe program will now end.");
    }
}

}  // namespace
}  // namespace velmora::test
