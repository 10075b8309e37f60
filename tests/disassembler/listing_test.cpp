// Listings in the three layouts, worked out by hand (data/listings.txt), the label rules on
// single words, and the round trip of the listing without opcodes through avra.

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "core/machine.h"
#include "core/testmachine.h"
#include "disassembler/disasmlabels.h"
#include "disassembler/disasmlisting.h"
#include "support/datafile.h"
#include "support/sectiontable.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

const std::string kAddressHeader =
    "-----------------------------------\r\nAVR DISASSEMBLER LISTING\r\nAddress Opcode  Instruction\r\n"
    "-----------------------------------\r\n";
const std::string kLabelHeader =
    ";-----------------------------------\r\n;AVR DISASSEMBLER LISTING\r\n;Label  Instruction\r\n"
    ";-----------------------------------\r\n";

Machine loaded(const std::vector<uint16_t>& words, int bytes = -1) {
    Machine m;
    configurebaremachine(m);  // names SREG, SPH and SPL; every other I/O address stays numeric
    loadwords(m, words);
    m.programbytes = bytes < 0 ? static_cast<int>(words.size()) * 2 : bytes;
    return m;
}

TEST(Listing, HandWorkedListings) {
    struct Case {
        std::string name;
        ListingLayout layout;
        Machine m;
        std::string expected;
    };
    std::vector<Case> cases;
    for (const DataRow& row : datarows("listings.txt")) {
        if (!row.text.starts_with("= ")) {
            ASSERT_FALSE(cases.empty()) << "line " << row.line << " belongs to no case";
            cases.back().expected += row.text + "\r\n";
            continue;
        }
        std::istringstream in(row.text.substr(2));
        std::string name, layout, bytes;
        in >> name >> layout >> bytes;
        std::vector<uint16_t> words;
        for (std::string word; in >> word;) words.push_back(static_cast<uint16_t>(std::stoi(word, nullptr, 16)));
        const ListingLayout l = layout == "Normal"  ? ListingLayout::Normal
                                : layout == "Plain" ? ListingLayout::Plain
                                                    : ListingLayout::WithoutOpcodes;
        cases.push_back({name + " " + layout + " (line " + std::to_string(row.line) + ")", l,
                         loaded(words, bytes == "-" ? -1 : std::stoi(bytes)),
                         l == ListingLayout::WithoutOpcodes ? kLabelHeader : kAddressHeader});
    }
    EXPECT_GE(cases.size(), 10u);
    for (const Case& c : cases) EXPECT_EQ(disasmfile(c.m, c.layout), c.expected) << c.name;
}

TEST(Listing, PlainFlagOverridesTheSettingButUnknownWordsFollowIt) {
    const Machine m = loaded({0xCFFF, 0xFFFF});
    EXPECT_EQ(disasmlisting(m, true, true),
              kAddressHeader + "000000  CFFF    RJMP -1\r\n000001  FFFF    .DW $FFFF ;UNRECOGNIZED\r\n");
    EXPECT_EQ(disasmlisting(m, false, true), disasmfile(m, ListingLayout::WithoutOpcodes));
    EXPECT_EQ(disasmlisting(m, false, false), disasmfile(m, ListingLayout::Normal));
}

TEST(Listing, AProgramLargerThanMemoryStopsAtItsEnd) {
    const std::string plain = disasmfile(loaded({0xCFFF}, 1 << 30), ListingLayout::Plain);
    EXPECT_NE(plain.find("003FFF  FFFF    UNRECOGNIZED\r\n"), std::string::npos);
    EXPECT_EQ(plain.find("004000"), std::string::npos);
}

TEST(Listing, ProgressReportsBothPassesPerWordButSkipsSecondWords) {
    std::vector<std::pair<int, int>> calls;
    disasmlisting(loaded({0x0000, 0x940C, 0x0000, 0x0000}), false, false,
                  [&](int pass, int index) { calls.emplace_back(pass, index); });
    EXPECT_EQ(calls, (std::vector<std::pair<int, int>>{{1, 0}, {1, 1}, {1, 3}, {2, 0}, {2, 1}, {2, 3}}));
    EXPECT_EQ(progresspasstext(2), "Performing pass 2.");
    EXPECT_EQ(progresslinetext(0), "Line 1");
}

TEST(LabelScan, OnlyBranchesJumpsAndCallsInsideTheProgramTakeLabels) {
    DisasmLabels labels(8);
    for (const TableRow& row : tablerows("tables.txt", "Label scan")) {
        std::string text = row[3];
        disasmlabelscan(labels, static_cast<int>(row.number(0)), static_cast<uint16_t>(std::stoi(row[1], nullptr, 16)),
                        static_cast<uint16_t>(std::stoi(row[2], nullptr, 16)), text);
        EXPECT_EQ(text, row[4]) << row.where;
    }
    EXPECT_EQ(labels.labelcount, 3);
    const std::pair<int, const char*> names[] = {{5, "L1"}, {0, "L2"}, {3, "L3"}, {-1, ""}, {8, ""}};
    for (const auto& [word, name] : names) EXPECT_EQ(labels.at(word), name) << word;
}

// data/make_roundtrip.sh assembled roundtrip_source.asm with avra, and assembled our listing of
// that image (roundtrip_listing.asm, checked here to be what we write) with avra again.
TEST(RoundTrip, ListingWithoutOpcodesReassemblesToTheSameImage) {
    const std::string data = VELMORA_TEST_DATA_DIR;
    const std::string image = readfile(data + "/roundtrip_source.bin");
    ASSERT_GT(image.size(), 100u);
    Machine m = loaded({}, static_cast<int>(image.size()));
    ASSERT_LE(image.size(), m.progmem.size());
    std::copy(image.begin(), image.end(), m.progmem.begin());

    const std::string listing = disasmfile(m, ListingLayout::WithoutOpcodes);
    if (listing != readfile(data + "/roundtrip_listing.asm")) {
        const auto actual = std::filesystem::temp_directory_path() / "roundtrip_listing.asm";
        writefile(actual, listing);
        ADD_FAILURE() << "the listing differs from roundtrip_listing.asm; ours is in " << actual
                      << "; if the change is meant, copy it over and run make_roundtrip.sh";
    }
    EXPECT_EQ(readfile(data + "/roundtrip_reassembled.bin"), image);
    // The listing holds every form and label the round trip is for.
    for (const char* row : {"L4:\tJMP L1\r\n", "\tCALL L2\r\n", "\t.DW $FFFF ;UNRECOGNIZED\r\n",
                            "\t.DW $0001 ;UNRECOGNIZED\r\n", "\tLDD R8,Y+63\r\n", "\tMOVW R7:R6,R9:R8\r\n",
                            "\tIN XH,SPH\r\n", "\tSBI $01F,7\r\n", "L2:\tRJMP L2\r\n", "\tLDI ZL,$FF\r\n"})
        EXPECT_NE(listing.find(row), std::string::npos) << row;
}

}  // namespace
}  // namespace velmora::test
