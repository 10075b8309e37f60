// Loading a file into program memory: the message, what is left alone, files that are no
// program at all, and the images of the AVR tool chain (data/make.sh), each loaded into a
// machine of its chip's flash size and compared with the plain bytes avr-objcopy made of it.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <string>

#include "core/memorysettings.h"
#include "image/hexload.h"
#include "image/programcommands.h"
#include "support/simfixture.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

std::string datafile(const std::string& name) { return std::string(VELMORA_TEST_DATA_DIR) + "/" + name; }

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
    // progmem has four spare bytes behind the flash; a record may not reach them.
    EXPECT_FALSE(load(":0100000055AA\r\n; note\r\n:0101000055A9\r\n"));
    EXPECT_EQ(messenger.messages, std::vector<std::string>{"Input program file in Intel Hex Format contains "
                                                           "errors.\nLine number 3: Address out of range."});
    EXPECT_EQ(m.progmem[256], 0xFF);
}

TEST_F(HexLoadTest, ASuccessIsSilentAndTouchesOnlyProgramMemory) {
    m.eeprommem[0] = 0x12;
    m.datamem[100] = 0x34;
    m.pc = 7;
    m.programbytes = 1;
    EXPECT_TRUE(load(":020000000C94" "5E\r\n:00000001FF\r\n"));
    EXPECT_TRUE(messenger.messages.empty());
    EXPECT_EQ(std::vector<int>({m.progmem[0], m.progmem[1], m.programbytes, m.eeprommem[0], m.datamem[100], m.pc}),
              std::vector<int>({0x0C, 0x94, 2, 0x12, 0x34, 7}));
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
    const std::string whole = readfile(datafile("small.hex"));
    configurebaremachine(m, 8192, 128, 64);
    for (size_t length = 1; length < whole.size(); ++length) {
        const std::string cut = whole.substr(0, length);
        fillunprogrammed(m);
        m.programbytes = 0;
        messenger.messages.clear();
        const bool wholerecords = cut.back() == '\n' || cut.back() == '\r' || whole[length] == '\r';
        EXPECT_EQ(load(cut), wholerecords) << length;
        const size_t newlines = static_cast<size_t>(std::count(cut.begin(), cut.end(), '\n'));
        if (!wholerecords) {
            ASSERT_EQ(messenger.messages.size(), 1u);
            EXPECT_NE(messenger.messages[0].find("Line number " + std::to_string(newlines + 1) + ":"),
                      std::string::npos)
                << length << ": " << messenger.messages[0];
        }
        if (newlines >= 1) { EXPECT_EQ(m.progmem[0], 0x17) << length; }
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
    EXPECT_EQ(std::vector<int>({m.progmem[0], m.progmem[1], m.programbytes}), std::vector<int>({0x00, 0xAA, 16}));
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

struct ToolchainImage {
    const char* name;
    int flashsize;  // of the chip it was built for
};

class ToolchainImages : public ::testing::TestWithParam<ToolchainImage> {};

TEST_P(ToolchainImages, LoadTheBytesThatAvrObjcopyReadsAndSaveThemAgain) {
    const ToolchainImage image = GetParam();
    TempFolder folder;
    Machine first, second;
    configurebaremachine(first, image.flashsize, 1024, 512);
    configurebaremachine(second, image.flashsize, 1024, 512);
    RecordingMessenger messenger;
    MemorySettings settings;
    ProgramCommands load(first, messenger, settings, {}, "/");
    ProgramCommands reload(second, messenger, settings, {}, "/");
    auto chosen = [](std::string path) { return [path](const std::string&) { return path; }; };
    ASSERT_EQ(load.menuload(chosen(datafile(std::string(image.name) + ".hex"))), CommandResult::Done)
        << messenger.messages.at(0);

    // The reference runs from byte 0 to the last byte of the image, gaps filled with 0xFF.
    const std::string reference = readfile(datafile(std::string(image.name) + ".bin"));
    ASSERT_FALSE(reference.empty());
    EXPECT_EQ(first.programbytes, static_cast<int>(reference.size()));
    std::vector<uint8_t> expected(reference.begin(), reference.end());
    expected.resize(first.progmem.size(), 0xFF);
    EXPECT_TRUE(first.progmem == expected);

    ASSERT_EQ(load.menusave(chosen((folder / "saved").string())), CommandResult::Done);
    ASSERT_EQ(reload.menuload(chosen((folder / "saved.hex").string())), CommandResult::Done);
    EXPECT_TRUE(first.progmem == second.progmem);
    // The saved image ends at the last programmed byte, rounded up to a whole word.
    const auto last = std::find_if(first.progmem.rbegin(), first.progmem.rend(), [](uint8_t b) { return b != 0xFF; });
    const int end = static_cast<int>(first.progmem.rend() - last);
    EXPECT_EQ(second.programbytes, end + end % 2);
}

INSTANTIATE_TEST_SUITE_P(Images, ToolchainImages,
                         ::testing::Values(ToolchainImage{"small", 8192}, ToolchainImage{"big", 131072},
                                           ToolchainImage{"holes", 131072}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(ToolchainImagesCheck, TheBigImagesPass64KiBAndDoNotFitASmallerChip) {
    // Otherwise the tests above would not reach the extended address records.
    EXPECT_GT(readfile(datafile("big.bin")).size(), 65536u);
    EXPECT_NE(readfile(datafile("big.hex")).find(":020000021000EC"), std::string::npos);
    EXPECT_NE(readfile(datafile("holes.hex")).find(":020000021000EC"), std::string::npos);

    Machine m;
    configurebaremachine(m, 65536, 1024, 512);
    RecordingMessenger messenger;
    EXPECT_FALSE(hexload(m, datafile("big.hex"), messenger));
    // 16 bytes a record: the first record past 64 KiB follows 4096 data records and a
    // segment record, and avr-objcopy starts the file with no address record.
    EXPECT_EQ(messenger.messages, std::vector<std::string>{"Input program file in Intel Hex Format contains "
                                                           "errors.\nLine number 4098: Address out of range."});
}

}  // namespace
}  // namespace velmora::test
