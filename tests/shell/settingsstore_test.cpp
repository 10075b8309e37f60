// The per-user settings store: read-writes-default, what a read gives back, names, numbers,
// and a file that is missing, damaged or not ours to read.

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <map>
#include <string>

#include "shell/settingsstore.h"
#include "support/sectiontable.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

namespace fs = std::filesystem;

class SettingsStoreTest : public ::testing::Test {
protected:
    TempFolder folder;
    fs::path file = folder / "velmora" / "settings";
    SettingsStore store{file};
};

TEST_F(SettingsStoreTest, AFirstReadWritesTheDefaultBack) {
    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(store.getsetting("Clock Frequency", "4"), "4");
    EXPECT_TRUE(fs::exists(file)) << "the folder and the file are made on demand";
    // The stored default now wins over another default, also in a second store on the file.
    EXPECT_EQ(store.getsetting("Clock Frequency", "8"), "4");
    SettingsStore again(file);
    EXPECT_EQ(again.getsetting("Clock Frequency", "16"), "4");
    EXPECT_EQ(again.getsettingdword("Simulation Duration 0", 7), 7);
    EXPECT_EQ(store.getsettingdword("Simulation Duration 0", 9), 7);
}

TEST_F(SettingsStoreTest, AnEmptyValueReadsBackEmptyNotAsTheDefault) {
    store.putsetting("Auto Start Hex File", "");
    EXPECT_EQ(store.getsetting("Auto Start Hex File", "/default.hex"), "");
}

TEST_F(SettingsStoreTest, NamesIgnoreLetterCaseAndMayHoldSlashesAndBlanks) {
    store.putsetting("UART Transmit/Receive Time", "2000");
    EXPECT_EQ(store.getsetting("uart transmit/receive TIME", "1000"), "2000");
    store.putsetting("UART TRANSMIT/RECEIVE TIME", "3000");
    // One value, still under the spelling of its first write.
    EXPECT_EQ(store.dumpsettings(), "0\tUART Transmit/Receive Time\t3000\n");
}

TEST_F(SettingsStoreTest, AReadIsCutAt255CharactersButTheValueIsKeptWhole) {
    const std::string longvalue = std::string(254, 'a') + "bcd";
    store.putsetting("Alternative SFR List1", longvalue);
    EXPECT_EQ(store.getsetting("Alternative SFR List1", ""), longvalue.substr(0, 255));
    EXPECT_NE(store.dumpsettings().find(longvalue), std::string::npos);
    // A default longer than the buffer comes back whole from the read that stores it.
    EXPECT_EQ(store.getsetting("Last Path", longvalue), longvalue);
}

TEST_F(SettingsStoreTest, AReadStopsAtANulCharacter) {
    store.putsetting("Color Theme", std::string("Dark\0tail", 9));
    EXPECT_EQ(store.getsetting("Color Theme", ""), "Dark");
}

TEST_F(SettingsStoreTest, NumbersAndTextsReadEachOther) {
    store.putsettingdword("Simulation Duration -1", -1234);
    EXPECT_EQ(store.getsettingdword("Simulation Duration -1", 0), -1234);
    EXPECT_EQ(store.getsetting("Simulation Duration -1", ""), "-1234");

    for (const TableRow& row : tablerows("shelltables.txt", "lenient")) {
        store.putsetting("Message Duration", row[0]);
        EXPECT_EQ(store.getsettingdword("Message Duration", 4), row.number(1)) << row.where;
    }
}

TEST_F(SettingsStoreTest, AnyCharacterSurvivesTheFile) {
    const std::string name = "odd\tname\\with\nbreaks";
    const std::string value = std::string("line1\r\nline2\ttab\\back\x01\x7f\xc3\xa9 end");
    store.putsetting(name, value);
    SettingsStore again(file);
    EXPECT_EQ(again.getsetting(name, "missing"), value);
    // One value, one line in the file and in the dump.
    EXPECT_EQ(again.dumpsettings().find('\n'), again.dumpsettings().size() - 1);
}

TEST_F(SettingsStoreTest, TheDumpListsIndexNameAndValueInFileOrder) {
    store.putsetting("Save Positions", "ON");
    store.putsettingdword("Window1 Left", 3000);
    store.getsetting("Color Theme", "Original Lite");
    EXPECT_EQ(store.dumpsettings(),
              "0\tSave Positions\tON\n"
              "1\tWindow1 Left\t3000\n"
              "2\tColor Theme\tOriginal Lite\n");
}

TEST_F(SettingsStoreTest, WritesLeaveNoTemporaryFilesBehind) {
    for (int i = 0; i < 20; ++i) store.putsettingdword("Window" + std::to_string(i) + " Top", i);
    int files = 0;
    for (const auto& entry : fs::directory_iterator(file.parent_path())) {
        ++files;
        EXPECT_EQ(entry.path().filename(), "settings");
    }
    EXPECT_EQ(files, 1);
}

TEST_F(SettingsStoreTest, GarbageGivesDefaultsAndIsKeptBeforeItIsReplaced) {
    fs::create_directories(file.parent_path());
    std::string garbage;
    for (int i = 0; i < 4096; ++i) garbage += static_cast<char>((i * 7919) & 0xFF);
    writefile(file, garbage);

    EXPECT_EQ(store.getsetting("Clock Frequency", "4"), "4");
    EXPECT_EQ(readfile(store.damagedcopypath()), garbage);
    // From now on the file is a good one again and keeps the new value.
    EXPECT_EQ(SettingsStore(file).getsetting("Clock Frequency", "8"), "4");
}

TEST_F(SettingsStoreTest, TheReadableLinesOfADamagedFileAreKept) {
    fs::create_directories(file.parent_path());
    const std::string damaged = "s\tSave Positions\tOFF\nthis line is not a value\nn\tSimulation Rate\tsix\n";
    writefile(file, damaged);
    EXPECT_EQ(store.getsetting("Save Positions", "ON"), "OFF");
    EXPECT_EQ(store.getsetting("Simulation Rate", "4"), "4");
    EXPECT_EQ(readfile(store.damagedcopypath()), damaged);
}

TEST_F(SettingsStoreTest, WhatIsNotASettingsFileGivesDefaultsAndIsLeftAlone) {
    const struct {
        const char* what;
        void (*make)(const fs::path&);
    } cases[] = {
        {"a folder", [](const fs::path& p) { fs::create_directories(p / "inside"); }},
        {"a pipe", [](const fs::path& p) { ASSERT_EQ(::mkfifo(p.c_str(), 0600), 0); }},
        {"a huge file",
         [](const fs::path& p) {
             writefile(p, "s\tClock Frequency\t8\n");
             fs::resize_file(p, 64u << 20);
         }},
    };
    for (const auto& c : cases) {
        fs::remove_all(file);
        fs::create_directories(file.parent_path());
        c.make(file);
        const fs::file_type type = fs::status(file).type();
        const auto size = type == fs::file_type::regular ? fs::file_size(file) : 0;
        EXPECT_EQ(store.getsetting("Clock Frequency", "4"), "4") << c.what;
        store.putsetting("Clock Frequency", "16");
        EXPECT_EQ(store.getsettingdword("Simulation Rate", 3), 3) << c.what;
        EXPECT_EQ(store.dumpsettings(), "") << c.what;
        EXPECT_EQ(fs::status(file).type(), type) << c.what;
        if (type == fs::file_type::regular) {
            EXPECT_EQ(fs::file_size(file), size) << c.what;
        }
        EXPECT_FALSE(fs::exists(store.damagedcopypath())) << c.what;
    }
}

TEST_F(SettingsStoreTest, AFileThatCannotBeReadIsNeverReplaced) {
    if (::geteuid() == 0) GTEST_SKIP() << "file permissions do not bind the superuser";
    store.putsetting("Clock Frequency", "8");
    const std::string before = readfile(file);
    fs::permissions(file, fs::perms::none);
    EXPECT_EQ(store.getsetting("Clock Frequency", "4"), "4");
    store.putsetting("Clock Frequency", "16");
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(readfile(file), before);
}

TEST_F(SettingsStoreTest, ANotWritableFolderLosesWritesWithoutComplaint) {
    if (::geteuid() == 0) GTEST_SKIP() << "file permissions do not bind the superuser";
    store.putsetting("Clock Frequency", "8");
    fs::permissions(file.parent_path(), fs::perms::owner_read | fs::perms::owner_exec);
    store.putsetting("Clock Frequency", "16");
    EXPECT_EQ(store.getsetting("Simulation Rate", "4"), "4");
    fs::permissions(file.parent_path(), fs::perms::owner_all);
    EXPECT_EQ(store.getsetting("Clock Frequency", "4"), "8");
}

TEST_F(SettingsStoreTest, ALinkedFileIsRewrittenWhereItLives) {
    const fs::path real = folder / "dotfiles-settings";
    fs::create_directories(file.parent_path());
    writefile(real, "");
    fs::create_symlink(real, file);
    store.putsetting("Color Theme", "Dark");
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_NE(readfile(real).find("Dark"), std::string::npos);
}

TEST_F(SettingsStoreTest, AStoreWithoutAFileGivesDefaults) {
    SettingsStore nowhere{fs::path()};
    EXPECT_EQ(nowhere.getsetting("Clock Frequency", "4"), "4");
    nowhere.putsetting("Clock Frequency", "8");
    EXPECT_EQ(nowhere.getsetting("Clock Frequency", "4"), "4");
}

// The settings file and the user data folder from the environment, in its order of precedence.
TEST(SettingsPath, EnvironmentOrder) {
    for (const TableRow& c : tablerows("shelltables.txt", "environment")) {
        std::map<std::string, std::string> environment;
        for (size_t i = 2; i < c.cells.size(); ++i)
            environment[c[i].substr(0, c[i].find('='))] = c[i].substr(c[i].find('=') + 1);
        auto lookup = [&](const char* name) -> const char* {
            auto it = environment.find(name);
            return it == environment.end() ? nullptr : it->second.c_str();
        };
        EXPECT_EQ(c[0] == "data" ? userdatafolder(lookup) : usersettingspath(lookup), fs::path(c[1])) << c.where;
    }
}

TEST(SettingsPath, TheDefaultStoreFollowsVelmoraSettings) {
    TempFolder folder;
    const char* before = std::getenv("VELMORA_SETTINGS");
    const std::string saved = before ? before : "";
    ::setenv("VELMORA_SETTINGS", (folder / "chosen").c_str(), 1);
    SettingsStore store;
    store.putsetting("Clock Frequency", "10");
    EXPECT_TRUE(fs::exists(folder / "chosen"));
    if (before)
        ::setenv("VELMORA_SETTINGS", saved.c_str(), 1);
    else
        ::unsetenv("VELMORA_SETTINGS");
}

}  // namespace
}  // namespace velmora::test
