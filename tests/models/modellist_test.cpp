// The list of models: which files, their names, descriptions, order and the default.

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "models/modelfixture.h"
#include "support/sectiontable.h"

namespace velmora::test {
namespace {

std::vector<std::string> namesof(const ModelList& list) {
    std::vector<std::string> names;
    for (const ModelEntry& e : list.models) names.push_back(e.name);
    return names;
}

TEST(ModelList, NameOfAModelFile) {
    for (const TableRow& row : tablerows("tables.txt", "Model file names"))
        EXPECT_EQ(modelnameoffile(row[0]), row[1]) << row.where;
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
    for (const TableRow& row : tablerows("tables.txt", "Model list order")) {
        TempDir dir;
        std::istringstream files(row[0]);
        for (std::string file; files >> file;) dir.write(file, "\n");
        const ModelList list = modellist(dir.path());
        std::string names;
        for (const std::string& name : namesof(list)) names += (names.empty() ? "" : " ") + name;
        EXPECT_EQ(names, row[1]) << row.where;
        EXPECT_EQ(list.defaultindex, row.number(2)) << row.where;
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
