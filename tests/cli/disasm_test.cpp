// velmora-cli disasm: a HEX file from avr-gcc listed in each layout, and clear errors.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "cli/commands.h"
#include "inprocess.h"

namespace velmora {
namespace {

using Result = test::CliResult;
Result cli(const std::vector<std::string>& args) { return test::runinprocess(args); }

// The HEX files of the image tests, beside this folder's own (absent) data folder.
const std::string kImageData =
    (std::filesystem::path(VELMORA_TEST_DATA_DIR).parent_path().parent_path() / "image" / "data").string() + "/";

std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> rows;
    std::istringstream in(text);
    for (std::string row; std::getline(in, row);) {
        if (!row.empty() && row.back() == '\r') row.pop_back();
        rows.push_back(row);
    }
    return rows;
}

TEST(CliDisasm, PlainLayoutListsEveryWordOfTheImageInOrder) {
    // small.bin is avr-objcopy's binary of the same program as small.hex.
    std::ifstream bin(kImageData + "small.bin", std::ios::binary);
    const std::string image((std::istreambuf_iterator<char>(bin)), {});
    ASSERT_EQ(image.size() % 2, 0u);

    const Result r = cli({"disasm", "--model", "ATmega8", "--layout", "plain", kImageData + "small.hex"});
    ASSERT_EQ(r.code, 0) << r.err;
    const auto rows = lines(r.out);
    ASSERT_EQ(rows.size(), 4 + image.size() / 2);
    EXPECT_EQ(rows[1], "AVR DISASSEMBLER LISTING");
    for (size_t w = 0; w < image.size() / 2; ++w) {
        const unsigned word = static_cast<uint8_t>(image[2 * w]) | static_cast<uint8_t>(image[2 * w + 1]) << 8;
        char expected[32];
        std::snprintf(expected, sizeof expected, "%06zX  %04X    ", w, word);
        EXPECT_EQ(rows[4 + w].substr(0, 16), expected) << "row " << w;
        EXPECT_EQ(rows[4 + w].find('\t'), std::string::npos) << "the plain layout has no label column";
    }
    // The ATmega8 vector table avr-gcc writes is one RJMP per vector.
    EXPECT_EQ(rows[4].substr(16, 5), "RJMP ");
}

TEST(CliDisasm, LayoutsDifferAsTheirHeadingsSay) {
    const std::string hex = kImageData + "small.hex";
    const Result normal = cli({"disasm", "--model", "ATmega8", hex});
    const Result bare = cli({"disasm", "--model", "ATmega8", "--layout", "noopcodes", hex});
    ASSERT_EQ(normal.code, 0);
    ASSERT_EQ(bare.code, 0);
    EXPECT_EQ(lines(normal.out)[2], "Address Opcode  Instruction");
    // Without opcodes the listing assembles again, so its heading is a comment.
    EXPECT_EQ(lines(bare.out)[2], ";Label  Instruction");
    // The reset vector jumps to a label; every other vector to the shared bad-interrupt label.
    EXPECT_NE(normal.out.find(":\tRJMP L1"), std::string::npos) << normal.out;
    EXPECT_NE(bare.out.find(":\tRJMP L1"), std::string::npos) << bare.out;
}

}  // namespace
}  // namespace velmora
