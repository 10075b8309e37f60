// The address-to-line map of a compiled BASIC program, from its listing: rows in the listing's
// format (line, address, opcode in 24 characters, then the source), and the files that must
// stand beside the program.

#include <gtest/gtest.h>

#include <fstream>

#include "debug/sourcemap.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

// A listing row: line number, six-digit word address, opcode, then the source text.
std::string row(int number, int address, const std::string& opcode, const std::string& source) {
    char head[32];
    std::snprintf(head, sizeof head, "%04d    %06X  %-4s    ", number, address, opcode.c_str());
    return head + source + "\r\n";
}

TEST(SourceMap, ListingRowsGiveTheMap) {
    const std::string header = "---------\r\nAVR ASSEMBLER LISTING\r\nLine    Address Opcode  Instruction\r\n";
    const struct {
        const char* name;
        std::string listing;
        std::vector<int> addresses, lines;
    } rows[] = {
        {"lines with code", header + row(1, 0, "", "; Begin") + row(2, 5, "", "; 1: a = 1") + row(3, 5, "E001", "\tLDI R16,1") +
                                row(4, 6, "", "; 2: b = 2") + row(5, 6, "E002", "\tLDI R16,2") +
                                row(6, 7, "", "; End of program") + row(7, 7, "CFFF", "\tRJMP L0001"),
         {5, 6, 7}, {1, 2, 3}},
        {"lines without code share the next address; the later line wins", header + row(1, 5, "", "; 1: ' comment") +
                                row(2, 5, "", "; 2: Dim a As Byte") + row(3, 5, "", "; 3: a = 1") +
                                row(4, 5, "E001", "\tLDI R16,1") + row(5, 6, "", "; End of program"),
         {5, 6}, {3, 4}},
        {"a line is looked for only after the one before it", header + row(1, 5, "", "; 2: too early") +
                                row(2, 6, "", "; 1: first") + row(3, 7, "", "; 3: skipped: 2 is still awaited") +
                                row(4, 8, "", "; 2: second"),
         {6, 8}, {1, 2}},
        {"an assembler listing has no line comments", header + row(1, 0, "", "; blink") + row(2, 0, "E0FF", "\tLDI R16,255"),
         {}, {}},
    };
    for (const auto& r : rows) {
        const SourceMap map = sourcemapfromlisting(r.listing);
        EXPECT_EQ(map.addresses, r.addresses) << r.name;
        EXPECT_EQ(map.lines, r.lines) << r.name;
    }
    const SourceMap map = sourcemapfromlisting(rows[0].listing);
    EXPECT_EQ(map.lineat(6), 2);
    EXPECT_EQ(map.lineat(4), 0) << "only a statement's first word";
    EXPECT_EQ(map.lineat(8), 0);
}

TEST(SourceMap, NeedsTheSourceTheCodeAndTheListingBesideAHexFile) {
    TempFolder folder;
    const std::string stem = (folder / "prog").string();
    std::ofstream(stem + ".lst", std::ios::binary) << row(1, 3, "", "; 1: End");
    const std::string program = stem + ".hex";
    EXPECT_TRUE(loadbasicstepbystep(program).empty()) << "no .bas, no .asm";
    std::ofstream(stem + ".bas") << "End\r\n";
    EXPECT_TRUE(loadbasicstepbystep(program).empty()) << "no .asm";
    std::ofstream(stem + ".asm") << "";
    EXPECT_EQ(basicsourcebeside(program), stem + ".bas");
    EXPECT_EQ(loadbasicstepbystep(program).lines, std::vector<int>{1});
    EXPECT_EQ(basicsourcebeside(stem + ".words"), "");
    EXPECT_EQ(basicsourcebeside(""), "");
}

}  // namespace
}  // namespace velmora::test
