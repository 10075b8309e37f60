// Program images made by the AVR tool chain (tests/image/data/make.sh): each loads into a
// machine of its chip's flash size and matches the plain bytes that avr-objcopy made from it.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "core/machine.h"
#include "core/testmachine.h"
#include "core/memorysettings.h"
#include "image/hexload.h"
#include "image/programcommands.h"
#include "support/simfixture.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

std::string datafile(const std::string& name) { return std::string(VELMORA_TEST_DATA_DIR) + "/" + name; }

struct ToolchainImage {
    const char* name;
    int flashsize;  // of the chip it was built for
};

class ToolchainImages : public ::testing::TestWithParam<ToolchainImage> {};

TEST_P(ToolchainImages, LoadTheBytesThatAvrObjcopyReads) {
    const ToolchainImage image = GetParam();
    Machine m;
    configurebaremachine(m, image.flashsize, 1024, 512);
    RecordingMessenger messenger;
    ASSERT_TRUE(hexload(m, datafile(std::string(image.name) + ".hex"), messenger)) << messenger.messages.at(0);
    EXPECT_TRUE(messenger.messages.empty());

    const std::string reference = readfile(datafile(std::string(image.name) + ".bin"));
    ASSERT_FALSE(reference.empty());
    // The reference runs from byte 0 to the last byte of the image, gaps filled with 0xFF.
    EXPECT_EQ(m.programbytes, static_cast<int>(reference.size()));
    size_t differences = 0;
    for (size_t i = 0; i < reference.size(); ++i)
        differences += m.progmem[i] != static_cast<uint8_t>(reference[i]);
    EXPECT_EQ(differences, 0u);
    for (size_t i = reference.size(); i < m.progmem.size(); ++i) ASSERT_EQ(m.progmem[i], 0xFF) << i;
}

TEST_P(ToolchainImages, LoadSaveLoadGivesTheSameMemory) {
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

    ASSERT_EQ(load.menuload(chosen(datafile(std::string(image.name) + ".hex"))), CommandResult::Done);
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

TEST(ToolchainImagesCheck, TheBigImagesReallyPass64KiB) {
    // Otherwise the tests above would not reach the extended address records.
    EXPECT_GT(readfile(datafile("big.bin")).size(), 65536u);
    EXPECT_NE(readfile(datafile("big.hex")).find(":020000021000EC"), std::string::npos);
    EXPECT_NE(readfile(datafile("holes.hex")).find(":020000021000EC"), std::string::npos);
}

TEST(ToolchainImagesCheck, AnImageTooBigForTheChipIsAddressOutOfRange) {
    Machine m;
    configurebaremachine(m, 65536, 1024, 512);
    RecordingMessenger messenger;
    EXPECT_FALSE(hexload(m, datafile("big.hex"), messenger));
    ASSERT_EQ(messenger.messages.size(), 1u);
    // 16 bytes a record: the first record past 64 KiB follows 4096 data records and a
    // segment record, and avr-objcopy starts the file with no address record.
    EXPECT_EQ(messenger.messages[0],
              "Input program file in Intel Hex Format contains errors.\nLine number 4098: Address out of range.");
}

}  // namespace
}  // namespace velmora::test
