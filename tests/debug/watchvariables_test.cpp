// What the listing of a compiled BASIC program gives: the address-to-line map (rows in the
// listing's format: line, address, opcode in 24 characters, then the source) and the files that
// must stand beside the program; Watch Variables: entries with the values the program wrote,
// the rows in both number formats, and the hand-added entries with their checks, their file,
// the value change and the delete.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>

#include "basic/basicfile.h"
#include "debug/sourcemap.h"
#include "debug/watchvariables.h"
#include "memoryfixture.h"
#include "support/scriptedquestions.h"
#include "support/sectiontable.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

// Compiles and assembles a BASIC program into a temporary folder (X.bas, X.asm, X.lst and
// X.hex side by side, as the BASIC Compiler window leaves them), loads it and runs it to SLEEP.
struct BasicProgram {
    TempFolder folder;
    std::string hex;
    BasicProgram(Chip& chip, const std::string& source) {
        const std::string bas = (folder / "prog.bas").string();
        std::ofstream(bas, std::ios::binary) << source;
        BasicFileRequest request;
        request.path = bas;
        request.modelname = "ATmega32";
        request.modeldir = std::string(VELMORA_SOURCE_DATA_DIR) + "/models";
        request.assemble = true;
        std::ostringstream out, err;
        EXPECT_TRUE(basiccompilefile(request, out, err).ok()) << err.str();
        hex = (folder / "prog.hex").string();
        chip.loadhex(hex);
        chip.runtosleep();
    }
};

WatchKind kindnamed(const std::string& name) {
    const std::map<std::string, WatchKind> kinds = {
        {"Bit", WatchKind::Bit}, {"Byte", WatchKind::Byte}, {"Word", WatchKind::Word}, {"Long", WatchKind::Long}};
    return kinds.at(name);
}

struct WatchFixture {
    Chip chip{"ATmega32"};
    ScriptedQuestions questions;
    TempFolder files;
    WatchVariables watch{chip.m, chip.settings, questions, (files / "watch.dat").string()};
};

TEST(WatchVariables, BasicDeclarationsShowWhatTheProgramWrote) {
    WatchFixture f;
    BasicProgram program(f.chip,
                         "Dim flag As Bit\r\nDim b As Byte\r\nDim w As Word\r\nDim l As Long\r\nDim a(3) As Word\r\n"
                         "Dim t(2) As Byte\r\nflag = 1\r\nb = 200\r\nw = 60000\r\nl = 4000000000\r\n"
                         "a(0) = 1\r\na(1) = 515\r\na(2) = 65535\r\nt(1) = 7\r\nASM: SLEEP\r\n");
    f.watch.programloaded(program.hex);
    const std::vector<TableRow> expected = tablerows("debugtables.txt", "watchdims");
    const std::vector<WatchEntry>& entries = f.watch.entries();
    ASSERT_EQ(entries.size(), expected.size());
    for (size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(entries[i].name, expected[i][0]) << expected[i].where;
        EXPECT_EQ(entries[i].kind, kindnamed(expected[i][1])) << expected[i].where;
        EXPECT_EQ(watchvalue(f.chip.m, entries[i]), static_cast<uint32_t>(expected[i].number(2))) << expected[i].where;
    }
    // Array elements follow each other at the element's size.
    EXPECT_EQ(entries[5].address, entries[4].address + 2);
    EXPECT_EQ(entries[6].address, entries[4].address + 4);
    EXPECT_EQ(entries[8].address, entries[7].address + 1);
}

TEST(WatchVariables, ListingRowsMakeEntries) {
    const std::pair<const char*, std::vector<WatchEntry>> cases[] = {
        {"0020    000005          ; 1: Dim a(3) As Word\r\n0021    000005          ;       The address of 'a' is 0x60\r\n",
         {{"a(0)", WatchKind::Word, 0x60, 0}, {"a(1)", WatchKind::Word, 0x62, 0}, {"a(2)", WatchKind::Word, 0x64, 0}}},
        {"; 1: Dim f As Bit\r\n;       The address of 'f' is 0x1F,3\r\n", {{"f", WatchKind::Bit, 0x1F, 3}}},
        {"; 1: Dim l As Long\r\n;       The address of 'l' is 0x100\r\n", {{"l", WatchKind::Long, 0x100, 0}}},
        // Without the address comment right behind it, a declaration leaves no entry.
        {"; 1: Dim x As Byte\r\n; 2: Halt\r\n;       The address of 'x' is 0x10\r\n", {}},
        {"; 1: Dim x As Integer\r\n;       The address of 'x' is 0x10\r\n", {}},
    };
    for (const auto& [listing, entries] : cases) EXPECT_EQ(basicwatchentries(listing), entries) << listing;
}

TEST(WatchVariables, RowsInDecimalAndHex) {
    WatchFixture f;
    f.chip.m.datamem[0x61] = 0x08;
    f.chip.m.datamem[0x62] = 0x12;
    f.chip.m.datamem[0x63] = 0x34;
    f.chip.m.datamem[0x64] = 0xFF;
    for (const TableRow& row : tablerows("debugtables.txt", "watchrows")) {
        const WatchEntry entry{row[0], kindnamed(row[1]), static_cast<int32_t>(row.number(2)),
                               static_cast<int32_t>(row.number(3))};
        f.watch.sethexvalues(false);
        EXPECT_EQ(f.watch.row(entry), row[4]) << row.where;
        f.watch.sethexvalues(true);
        EXPECT_EQ(f.watch.row(entry), row[5]) << row.where;
    }
    EXPECT_EQ(f.chip.settings.getsetting(kWatchHexValues, ""), "ON");
}

TEST(WatchVariables, AddedEntriesAreCheckedKeptAndForgotten) {
    WatchFixture f;
    EXPECT_EQ(f.watch.addrefusal(), "No program loaded.");
    const std::string program = (f.files / "one.hex").string();
    f.watch.programloaded(program);
    for (const TableRow& add : tablerows("debugtables.txt", "watchadds")) {
        const auto refusal = f.watch.add(add[0], add[1], add[2], add[3]);
        EXPECT_EQ(refusal ? refusal->message : "", add[4]) << add.where;
        EXPECT_EQ(refusal ? refusal->field : -1, add.number(5)) << add.where;
    }
    const std::vector<WatchEntry> added = {
        {"count", WatchKind::Byte, 0x60, 0}, {"w", WatchKind::Word, 0x1FF, 0}, {"f", WatchKind::Bit, 0x61, 3}};
    EXPECT_EQ(f.watch.entries(), added);

    // The same program again keeps them; a damaged file is dropped; another program loses them.
    f.watch.programloaded(program);
    EXPECT_EQ(f.watch.userentries(), added);
    f.watch.programloaded((f.files / "two.hex").string());
    EXPECT_TRUE(f.watch.entries().empty());
    EXPECT_FALSE(std::filesystem::exists(f.files / "watch.dat"));
    for (const char* content : {"file1|", "file2|x|a,1,2,3,", "file1|PROG|a,1,2,"}) {
        std::ofstream(f.files / "watch.dat") << content;
        f.watch.programloaded("prog");
        EXPECT_TRUE(f.watch.entries().empty()) << content;
        EXPECT_FALSE(std::filesystem::exists(f.files / "watch.dat")) << content;
    }
}

TEST(WatchVariables, ValuesChangeWithinTheirKindsRange) {
    WatchFixture f;
    f.watch.programloaded((f.files / "p.hex").string());
    for (const auto& [name, type, address] : {std::tuple{"f", "Bit", "60"}, {"b", "Byte", "61"}, {"w", "Word", "62"},
                                              {"l", "Long", "64"}})
        ASSERT_FALSE(f.watch.add(name, type, address, "5"));
    for (const TableRow& change : tablerows("debugtables.txt", "watchchanges")) {
        const size_t entry = static_cast<size_t>(change.number(0));
        bool clear = true;
        const auto message = f.watch.change(entry, change[1], change[2], clear);
        EXPECT_EQ(message.value_or(""), change[3]) << change.where;
        EXPECT_EQ(watchvalue(f.chip.m, f.watch.entries()[entry]), change.number(4)) << change.where;
        EXPECT_FALSE(clear) << change.where;
    }
    EXPECT_EQ(f.chip.m.datamem[0x60], 0x20);  // the Bit is bit 5 of its byte
    bool clear = false;
    EXPECT_FALSE(f.watch.change(1, "1", "1", clear));
    EXPECT_TRUE(clear);

    // Delete mode: the question, then the entry goes from the list and from the file.
    f.questions.yes = false;
    f.watch.deleterow(1);
    EXPECT_EQ(f.questions.questions.back(), "Do you want to delete variable 'b'?");
    EXPECT_EQ(f.watch.entries().size(), 4u);
    f.questions.yes = true;
    f.watch.deleterow(1);
    f.watch.programloaded((f.files / "p.hex").string());
    ASSERT_EQ(f.watch.entries().size(), 3u);
    EXPECT_EQ(f.watch.entries()[1].name, "w");
}

// A listing row: line number, six-digit word address, opcode, then the source text.
std::string row(int number, int address, const std::string& opcode, const std::string& source) {
    char head[32];
    std::snprintf(head, sizeof head, "%04d    %06X  %-4s    ", number, address, opcode.c_str());
    return head + source + "\r\n";
}

TEST(SourceMap, ListingRowsGiveTheMap) {
    const std::string header = "---------\r\nAVR ASSEMBLER LISTING\r\nLine    Address Opcode  Instruction\r\n";
    const auto numbers = [](const std::string& text) {
        std::istringstream in(text);
        return std::vector<int>(std::istream_iterator<int>(in), std::istream_iterator<int>());
    };
    std::string first;
    for (const TableRow& r : tablerows("debugtables.txt", "sourcemap")) {
        std::string listing = header;
        for (size_t i = 3; i < r.cells.size(); ++i) {
            std::istringstream cell(r[i]);
            std::string number, address, opcode, source;
            std::getline(cell, number, '/');
            std::getline(cell, address, '/');
            std::getline(cell, opcode, '/');
            std::getline(cell, source);
            std::replace(source.begin(), source.end(), '~', '\t');
            listing += row(std::stoi(number), std::stoi(address), opcode, source);
        }
        const SourceMap map = sourcemapfromlisting(listing);
        EXPECT_EQ(map.addresses, numbers(r[1])) << r.where;
        EXPECT_EQ(map.lines, numbers(r[2])) << r.where;
        if (first.empty()) first = listing;
    }
    const SourceMap map = sourcemapfromlisting(first);
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
