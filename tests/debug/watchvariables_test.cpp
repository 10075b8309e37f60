// What the listing of a compiled BASIC program gives: the address-to-line map (rows in the
// listing's format: line, address, opcode in 24 characters, then the source) and the files that
// must stand beside the program; Watch Variables: entries with the values the program wrote,
// the rows in both number formats, and the hand-added entries with their checks, their file,
// the value change and the delete.

#include <filesystem>
#include <fstream>
#include <sstream>

#include "basic/basicfile.h"
#include "debug/sourcemap.h"
#include "debug/watchvariables.h"
#include "memoryfixture.h"
#include "support/scriptedquestions.h"
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
    const struct {
        const char* name;
        WatchKind kind;
        uint32_t value;
    } expected[] = {
        {"flag", WatchKind::Bit, 1},   {"b", WatchKind::Byte, 200},    {"w", WatchKind::Word, 60000},
        {"l", WatchKind::Long, 4000000000u}, {"a(0)", WatchKind::Word, 1}, {"a(1)", WatchKind::Word, 515},
        {"a(2)", WatchKind::Word, 65535}, {"t(0)", WatchKind::Byte, 0}, {"t(1)", WatchKind::Byte, 7},
    };
    const std::vector<WatchEntry>& entries = f.watch.entries();
    ASSERT_EQ(entries.size(), std::size(expected));
    for (size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(entries[i].name, expected[i].name);
        EXPECT_EQ(entries[i].kind, expected[i].kind) << expected[i].name;
        EXPECT_EQ(watchvalue(f.chip.m, entries[i]), expected[i].value) << expected[i].name;
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
    const struct {
        WatchEntry entry;
        const char* decimal;
        const char* hex;
    } rows[] = {
        {{"f", WatchKind::Bit, 0x61, 3}, "f (0x061.3) = \t1", "f (0x061.3) = \t0x1"},
        {{"b", WatchKind::Byte, 0x62, 0}, "b (0x062) = \t18", "b (0x062) = \t0x12"},
        {{"w", WatchKind::Word, 0x62, 0}, "w (0x062) = \t13330", "w (0x062) = \t0x3412"},
        // 0xFF341208 = 255 * 16777216 + 52 * 65536 + 18 * 256 + 8
        {{"l", WatchKind::Long, 0x61, 0}, "l (0x061) = \t4281602568", "l (0x061) = \t0xFF341208"},
    };
    for (const auto& row : rows) {
        f.watch.sethexvalues(false);
        EXPECT_EQ(f.watch.row(row.entry), row.decimal);
        f.watch.sethexvalues(true);
        EXPECT_EQ(f.watch.row(row.entry), row.hex);
    }
    EXPECT_EQ(f.chip.settings.getsetting(kWatchHexValues, ""), "ON");
}

TEST(WatchVariables, AddedEntriesAreCheckedKeptAndForgotten) {
    WatchFixture f;
    EXPECT_EQ(f.watch.addrefusal(), "No program loaded.");
    const std::string program = (f.files / "one.hex").string();
    f.watch.programloaded(program);
    const struct {
        const char *name, *type, *address, *bit, *message;
        int field;
    } adds[] = {
        {"", "Byte", "60", "", "You must enter variable name.", 0},
        {"Count", "Byte", "60", "", "", -1},
        {"COUNT", "Word", "62", "", "Duplicate variable name.", 0},
        {"w", "", "62", "", "You must specify variable type.", 1},
        {"w", "Word", "200", "", "Variable address out of range.", 2},
        {"w", "Word", "xyz", "", "Variable address out of range.", 2},
        {"w", "Word", "1ff", "", "", -1},
        {"f", "Bit", "61", "(none)", "Incorrect bit selection.", 3},
        {"f", "Bit", "61", "3", "", -1},
    };
    for (const auto& add : adds) {
        const auto refusal = f.watch.add(add.name, add.type, add.address, add.bit);
        EXPECT_EQ(refusal ? refusal->message : "", add.message) << add.name << " " << add.address;
        EXPECT_EQ(refusal ? refusal->field : -1, add.field) << add.name;
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
    const struct {
        size_t entry;
        const char *decimal, *hex, *message;
        uint32_t value;  // the entry's value afterwards
    } changes[] = {
        {0, "1", "", "", 1},     {0, "2", "", "New variable value out of range.", 1},
        {1, "256", "", "New variable value out of range.", 0}, {1, "", "fe", "", 254},
        {2, "65535", "", "", 65535}, {2, "", "10000", "New variable value out of range.", 65535},
        {3, "", "DEADBEEF", "", 0xDEADBEEF}, {3, "-1", "", "New variable value out of range.", 0xDEADBEEF},
        {1, "", "", "", 254},  // nothing given: nothing done
    };
    for (const auto& change : changes) {
        bool clear = true;
        const auto message = f.watch.change(change.entry, change.decimal, change.hex, clear);
        EXPECT_EQ(message.value_or(""), change.message) << change.decimal << change.hex;
        EXPECT_EQ(watchvalue(f.chip.m, f.watch.entries()[change.entry]), change.value) << change.decimal << change.hex;
        EXPECT_FALSE(clear);
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
