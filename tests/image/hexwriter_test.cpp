// The writer of "Save Memory": record layout checked against avr-objcopy's own records,
// and the 64 KiB address records (the round trip through the reader is ToolchainImages').

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "core/numbers.h"
#include "image/hexreader.h"
#include "image/hexwriter.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

std::vector<std::string> crlflines(const std::string& text) {
    std::vector<std::string> lines;
    for (size_t at = 0; at < text.size();) {
        const size_t end = text.find("\r\n", at);
        if (end == std::string::npos) break;
        lines.push_back(text.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}

// Every record that avr-objcopy wrote is rebuilt from its own fields: same text, same checksum.
TEST(HexWriter, RecordsMatchThoseOfAvrObjcopy) {
    for (const char* name : {"small.hex", "big.hex", "holes.hex"}) {
        const std::string text = readfile(std::string(VELMORA_TEST_DATA_DIR) + "/" + name);
        const std::vector<std::string> lines = crlflines(text);
        ASSERT_GT(lines.size(), 2u) << name;
        for (const std::string& line : lines) {
            const int type = hexfield(line.substr(7, 2), 2);
            const int address = hexfield(line.substr(3, 4), 4);
            std::vector<uint8_t> data;
            for (size_t at = 9; at + 2 < line.size(); at += 2)
                data.push_back(static_cast<uint8_t>(hexfield(line.substr(at, 2), 2)));
            EXPECT_EQ(hexrecord(type, static_cast<uint16_t>(address), data), line + "\r\n") << name;
        }
    }
}

TEST(HexWriter, SixteenByteRecordsAndAShorterLastOne) {
    std::vector<uint8_t> forty(40);
    for (size_t i = 0; i < forty.size(); ++i) forty[i] = static_cast<uint8_t>(i);
    const std::pair<std::vector<uint8_t>, std::vector<std::string>> cases[] = {
        {{0x0C, 0x94, 0x34, 0x00, 0xFF}, {":020000040000FA", ":050000000C943400FF28", ":00000001FF"}},
        {forty,
         {":020000040000FA", ":10000000000102030405060708090A0B0C0D0E0F78",
          ":10001000101112131415161718191A1B1C1D1E1F68", ":080020002021222324252627BC", ":00000001FF"}},
    };
    for (const auto& [image, lines] : cases) EXPECT_EQ(crlflines(writeintelhex(image)), lines) << image.size();
}

TEST(HexWriter, AnAddressRecordBeforeEach64KiBlock) {
    const std::vector<uint8_t> image(2 * 65536 + 32, 0x00);
    const std::vector<std::string> lines = crlflines(writeintelhex(image));
    std::vector<std::string> addressrecords;
    for (const std::string& line : lines)
        if (line.substr(7, 2) == "04") addressrecords.push_back(line);
    EXPECT_EQ(addressrecords, (std::vector<std::string>{":020000040000FA", ":020000040001F9", ":020000040002F8"}));
    EXPECT_EQ(lines[4097], ":020000040001F9");
    EXPECT_EQ(lines[4098], ":10000000" + std::string(32, '0') + "F0");
}

}  // namespace
}  // namespace velmora::test
