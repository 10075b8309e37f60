// Loading a file into program memory: the message, what is left alone, and files that are
// no program at all.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <string>

#include "core/memorysettings.h"
#include "image/hexload.h"
#include "support/simfixture.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

class HexLoadTest : public ::testing::Test {
protected:
    TempFolder folder;
    Machine m;
    RecordingMessenger messenger;

    void SetUp() override { configurebaremachine(m, 256, 128, 64); }

    bool load(const std::string& text) {
        const auto path = folder / "program.hex";
        writefile(path, text);
        return hexload(m, path.string(), messenger);
    }
};

TEST_F(HexLoadTest, TheErrorMessageNamesTheLineAndTheFault) {
    EXPECT_FALSE(load(":0100000055AA\r\n; note\r\n:0101000055A9\r\n"));
    ASSERT_EQ(messenger.messages.size(), 1u);
    EXPECT_EQ(messenger.messages[0],
              "Input program file in Intel Hex Format contains errors.\nLine number 3: Address out of range.");
}

TEST_F(HexLoadTest, ASuccessIsSilentAndTouchesOnlyProgramMemory) {
    m.eeprommem[0] = 0x12;
    m.datamem[100] = 0x34;
    m.pc = 7;
    m.programbytes = 1;
    EXPECT_TRUE(load(":020000000C94" "5E\r\n:00000001FF\r\n"));
    EXPECT_TRUE(messenger.messages.empty());
    EXPECT_EQ(m.progmem[0], 0x0C);
    EXPECT_EQ(m.progmem[1], 0x94);
    EXPECT_EQ(m.programbytes, 2);
    EXPECT_EQ(m.eeprommem[0], 0x12);
    EXPECT_EQ(m.datamem[100], 0x34);
    EXPECT_EQ(m.pc, 7);
}

TEST_F(HexLoadTest, OnlyTheFlashSizeIsLoadable) {
    // progmem has four spare bytes behind the flash; a record may not reach them.
    EXPECT_FALSE(load(":01010000" "55A9\r\n"));
    EXPECT_EQ(m.progmem[256], 0xFF);
}

TEST_F(HexLoadTest, WhatIsNoPlainFileCannotBeOpened) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::filesystem::create_directory(folder / "folder.hex");
    for (const char* name : {"missing.hex", "pipe", "folder.hex"}) {
        messenger.messages.clear();
        EXPECT_FALSE(hexload(m, (folder / name).string(), messenger)) << name;
        EXPECT_EQ(messenger.messages, std::vector<std::string>{kCannotOpenText}) << name;
    }
}

TEST_F(HexLoadTest, TruncatedAtAnyByte) {
    // Cut after every byte of a real image: a cut at the end of a record loads, a cut inside a
    // record is an error on that record's line; the lines before it are in memory either way.
    const std::string whole = readfile(std::string(VELMORA_TEST_DATA_DIR) + "/small.hex");
    configurebaremachine(m, 8192, 128, 64);
    for (size_t length = 1; length < whole.size(); ++length) {
        const std::string cut = whole.substr(0, length);
        fillunprogrammed(m);
        m.programbytes = 0;
        messenger.messages.clear();
        const bool wholerecords = cut.back() == '\n' || cut.back() == '\r' || whole[length] == '\r';
        EXPECT_EQ(load(cut), wholerecords) << length;
        if (!wholerecords) {
            ASSERT_EQ(messenger.messages.size(), 1u);
            const size_t lines = static_cast<size_t>(std::count(cut.begin(), cut.end(), '\n')) + 1;
            EXPECT_NE(messenger.messages[0].find("Line number " + std::to_string(lines) + ":"), std::string::npos)
                << length << ": " << messenger.messages[0];
        }
        const size_t completerecords = static_cast<size_t>(std::count(cut.begin(), cut.end(), '\n'));
        if (completerecords >= 1) {
            EXPECT_EQ(m.progmem[0], 0x17) << length;
        }
    }
}

TEST_F(HexLoadTest, TenMegabytesOfRecords) {
    // 10 MB of valid records rewriting the same 4 KiB: read to the end, nothing lost.
    configurebaremachine(m, 8192, 128, 64);
    std::string text;
    text.reserve(11u << 20);
    const std::string record = ":10000000000102030405060708090A0B0C0D0E0F78\r\n";
    while (text.size() < (10u << 20)) text += record;
    text += ":01000100AA54\r\n";  // the last record still counts
    EXPECT_TRUE(load(text)) << messenger.messages.at(0);
    EXPECT_EQ(m.progmem[0], 0x00);
    EXPECT_EQ(m.progmem[1], 0xAA);
    EXPECT_EQ(m.programbytes, 16);
}

TEST_F(HexLoadTest, TenMegabytesOfBinary) {
    std::string text(10u << 20, '\0');
    uint32_t seed = 99;
    for (char& c : text) {
        seed = seed * 1664525u + 1013904223u;
        c = static_cast<char>(seed >> 24);
    }
    text[0] = ':';
    EXPECT_FALSE(load(text));
    EXPECT_EQ(messenger.messages.size(), 1u);
}

TEST(UnprogrammedValue, FromTheSetting) {
    const struct {
        const char* text;
        uint8_t value;
    } cases[] = {{"1", 0xFF}, {"0", 0x00}, {" 0 ", 0x00}, {"", 0x00}, {"7", 0xFF}, {"-1", 0xFF}};
    for (const auto& c : cases) {
        MemorySettings settings;
        settings.putsetting("Unprogrammed Bit Value", c.text);
        EXPECT_EQ(unprogrammedvalue(settings), c.value) << '"' << c.text << '"';
    }
    MemorySettings fresh;
    EXPECT_EQ(unprogrammedvalue(fresh), 0xFF);
    EXPECT_EQ(fresh.getsetting("Unprogrammed Bit Value", "none"), "1") << "the first read stores the default";
}

}  // namespace
}  // namespace velmora::test
