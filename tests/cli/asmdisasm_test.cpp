// velmora-cli asm: the built program writes the listing and HEX file beside the source as
// the Assembler window does, reports the error rows and count, and exits 3 on errors.
// velmora-cli disasm: a HEX file from avr-gcc listed in each layout, and clear errors.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "inprocess.h"
#include "support/childprocess.h"
#include "support/tempfolder.h"
#include "support/textlines.h"

namespace velmora::test {
namespace {

TEST(CliAsm, AGoodSourceLeavesItsListingAndHexFile) {
    ASSERT_TRUE(std::filesystem::exists(VELMORA_CLI_PATH)) << VELMORA_CLI_PATH << " is not built";
    TempFolder folder;
    writefile(folder / "blink.v1.asm",
              "START: LDI R16,low(RAMEND)\r\n"
              "        LDI R17,high(RAMEND)\r\n"
              "        OUT PORTB,R16\r\n"
              "        RJMP START\r\n");
    const ChildRun r = runcli({"asm", "--model", "atmega328p", (folder / "blink.v1.asm").string()});
    EXPECT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(r.out, "Number of errors = 0\n");
    EXPECT_EQ(r.err, "");
    // RAMEND of an ATmega328P is $8FF; PORTB is I/O address 5. Words checked with avr-as.
    EXPECT_EQ(readfile(folder / "blink.hex"),
              ":020000040000FA\r\n:080000000FEF18E005B9FCCF79\r\n:00000001FF\r\n");
    const std::string listing = readfile(folder / "blink.lst");
    EXPECT_NE(listing.find("0003    000002  B905            OUT PORTB,R16\r\n"), std::string::npos) << listing;
    EXPECT_TRUE(listing.ends_with("Number of errors = 0\r\n"));
}

// The rows and the report the errors give are a row of data/conventions.txt.
TEST(CliAsm, ErrorsLeaveNoOutputs) {
    TempFolder folder;
    writefile(folder / "bad.asm", " NOP\n LDI R15,256\nX: NOP\nX: NOP\n");
    writefile(folder / "bad.lst", "stale");
    EXPECT_EQ(runcli({"asm", "--model", "ATmega8", (folder / "bad.asm").string()}).code, 3);
    EXPECT_FALSE(std::filesystem::exists(folder / "bad.lst"));
    EXPECT_FALSE(std::filesystem::exists(folder / "bad.hex"));
}

TEST(CliAsm, TheModelDecidesThePredefinedSymbols) {
    TempFolder folder;
    writefile(folder / "m.asm", " LDI R16,high(RAMEND)\n");
    runcli({"asm", "--model", "atmega8", (folder / "m.asm").string()});
    EXPECT_EQ(readfile(folder / "m.hex"), ":020000040000FA\r\n:0200000004E01A\r\n:00000001FF\r\n");
    runcli({"asm", "--model", "atmega328p", (folder / "m.asm").string()});
    EXPECT_EQ(readfile(folder / "m.hex"), ":020000040000FA\r\n:0200000008E016\r\n:00000001FF\r\n");
}

using Result = test::CliResult;
Result cli(const std::vector<std::string>& args) { return test::runinprocess(args); }

// The HEX files of the image tests, beside this folder's own (absent) data folder.
const std::string kImageData =
    (std::filesystem::path(VELMORA_TEST_DATA_DIR).parent_path().parent_path() / "image" / "data").string() + "/";

TEST(CliDisasm, PlainLayoutListsEveryWordOfTheImageInOrder) {
    // small.bin is avr-objcopy's binary of the same program as small.hex.
    std::ifstream bin(kImageData + "small.bin", std::ios::binary);
    const std::string image((std::istreambuf_iterator<char>(bin)), {});
    ASSERT_EQ(image.size() % 2, 0u);

    const Result r = cli({"disasm", "--model", "ATmega8", "--layout", "plain", kImageData + "small.hex"});
    ASSERT_EQ(r.code, 0) << r.err;
    const auto rows = textlines(r.out);
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
    EXPECT_EQ(textlines(normal.out)[2], "Address Opcode  Instruction");
    // Without opcodes the listing assembles again, so its heading is a comment.
    EXPECT_EQ(textlines(bare.out)[2], ";Label  Instruction");
    // The reset vector jumps to a label; every other vector to the shared bad-interrupt label.
    EXPECT_NE(normal.out.find(":\tRJMP L1"), std::string::npos) << normal.out;
    EXPECT_NE(bare.out.find(":\tRJMP L1"), std::string::npos) << bare.out;
}

}  // namespace
}  // namespace velmora::test
