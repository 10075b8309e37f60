// The listing without opcodes goes back through an assembler to the same words.
// data/make_roundtrip.sh assembled roundtrip_source.asm with avra, and assembled our
// listing of that image (roundtrip_listing.asm, checked here to be what we write)
// with avra again; both images are committed.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "core/machine.h"
#include "core/testmachine.h"
#include "disassembler/disasmlisting.h"

namespace velmora::test {
namespace {

std::string readdata(const std::string& name) {
    std::ifstream in(std::string(VELMORA_TEST_DATA_DIR) + "/" + name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

TEST(RoundTrip, ListingWithoutOpcodesReassemblesToTheSameImage) {
    const std::string image = readdata("roundtrip_source.bin");
    ASSERT_GT(image.size(), 100u);
    Machine m;
    configurebaremachine(m);  // names SREG, SPH and SPL; every other I/O address stays numeric
    ASSERT_LE(image.size(), m.progmem.size());
    std::copy(image.begin(), image.end(), m.progmem.begin());
    m.programbytes = static_cast<int>(image.size());

    const std::string listing = disasmfile(m, ListingLayout::WithoutOpcodes);
    const std::string expected = readdata("roundtrip_listing.asm");
    if (listing != expected) {
        const auto actual = std::filesystem::temp_directory_path() / "roundtrip_listing.asm";
        std::ofstream(actual, std::ios::binary) << listing;
        ADD_FAILURE() << "the listing differs from roundtrip_listing.asm; ours is in " << actual
                      << "; if the change is meant, copy it over and run make_roundtrip.sh";
    }
    EXPECT_EQ(readdata("roundtrip_reassembled.bin"), image);
}

TEST(RoundTrip, ListingShowsEveryFormAndLabel) {
    // Spot checks that the committed listing exercises what the round trip is for.
    const std::string listing = readdata("roundtrip_listing.asm");
    for (const char* row : {"L4:\tJMP L1\r\n", "\tCALL L2\r\n", "\t.DW $FFFF ;UNRECOGNIZED\r\n",
                            "\t.DW $0001 ;UNRECOGNIZED\r\n", "\tLDD R8,Y+63\r\n", "\tMOVW R7:R6,R9:R8\r\n",
                            "\tIN XH,SPH\r\n", "\tSBI $01F,7\r\n", "L2:\tRJMP L2\r\n", "\tLDI ZL,$FF\r\n"})
        EXPECT_NE(listing.find(row), std::string::npos) << row;
}

}  // namespace
}  // namespace velmora::test
