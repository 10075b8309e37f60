// Every 16-bit word through the disassembler against two independent readings: avr-objdump's
// (data/objdump_words.txt.gz, made by data/make_golden.sh with the fixed second word 5A3C behind
// each word and brought into our notation there) and the chain written out in its own
// alphabetical order from the instruction set manual (data/alphabetical_chain.txt).
// Where our reading and objdump's must differ, a class below says why; every other word must
// read the same.
//
// The alphabetical chain, aliases in their places, is walked literally for every word: the
// line that wins must be one the executor's chain has too (no alias ever wins), and its
// mnemonic must be the one our text shows. This is what lets the disassembler share the
// core's decoding and texts.
//
// Listings in the three layouts, worked out by hand (data/listings.txt), the label rules on
// single words, and the round trip of the listing without opcodes through avra.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "core/instructiontext.h"
#include "core/machine.h"
#include "core/testmachine.h"
#include "disassembler/disasminstruction.h"
#include "disassembler/disasmlabels.h"
#include "disassembler/disasmlisting.h"
#include "support/datafile.h"
#include "support/sectiontable.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

// The bit-name table of a machine whose model names no register: every I/O address reads
// as "$" and three digits, every bit as its number.
BitNameTable unnamedbitnames() {
    BitNameTable names(96);
    for (int a = 0; a < 96; ++a) names[a] = defaultbitnames(a);
    return names;
}

constexpr uint16_t kSecondWord = 0x5A3C;

std::vector<std::string> readgolden() {
    const std::string command = std::string("gzip -dc '") + VELMORA_TEST_DATA_DIR + "/objdump_words.txt.gz'";
    std::vector<std::string> lines;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) return lines;
    for (char buffer[256]; std::fgets(buffer, sizeof buffer, pipe) != nullptr;)
        lines.emplace_back(buffer, std::strcspn(buffer, "\n"));
    ::pclose(pipe);
    return lines;
}

std::string hex(unsigned value, int digits) {
    char text[16];
    std::snprintf(text, sizeof text, "%0*X", digits, value);
    return text;
}

std::string reg(int n) {
    static const char* const kPointerHalves[] = {"XL", "XH", "YL", "YH", "ZL", "ZH"};
    return n >= 26 ? kPointerHalves[n - 26] : "R" + std::to_string(n);
}

int d5(uint16_t w) { return (w >> 4) & 31; }
int r5(uint16_t w) { return (w & 15) | ((w >> 5) & 16); }

// A set of words on which our chain and objdump must read differently, with the
// reading our chain gives instead of objdump's.
struct Disagreement {
    const char* reason;
    std::function<bool(uint16_t)> applies;
    std::function<std::string(uint16_t, const std::string& objdump)> ours;
    int words;  // how many words the class holds
};

const std::vector<Disagreement>& disagreements() {
    static const std::vector<Disagreement> classes = {
        {"the SREG bit aliases CLC..CLI and SEC..SEI stand behind BCLR and BSET in the chain",
         [](uint16_t w) { return (w & 0xFF0F) == 0x9408 || (w & 0xFF0F) == 0x9488; },
         [](uint16_t w, const std::string&) {
             return std::string(w & 0x80 ? "BCLR " : "BSET ") + std::to_string((w >> 4) & 7);
         },
         16},
        {"LSL, ROL, TST and CLR are chain lines of their own for equal registers; objdump shows the base form",
         [](uint16_t w) {
             const int top6 = w >> 10;
             return (top6 == 3 || top6 == 7 || top6 == 8 || top6 == 9) && d5(w) == r5(w);
         },
         [](uint16_t w, const std::string&) {
             static const std::map<int, const char*> alias = {{3, "LSL "}, {7, "ROL "}, {8, "TST "}, {9, "CLR "}};
             return alias.at(w >> 10) + reg(d5(w));
         },
         128},
        {"XCH, LAS, LAC and LAT (XMEGA) have no line in the chain",
         [](uint16_t w) { return (w & 0xFE0C) == 0x9204; },
         [](uint16_t, const std::string&) { return std::string("UNRECOGNIZED"); }, 128},
        {"DES (XMEGA) has no line in the chain", [](uint16_t w) { return (w & 0xFF0F) == 0x940B; },
         [](uint16_t, const std::string&) { return std::string("UNRECOGNIZED"); }, 16},
        {"the chain knows SPM only in its bare form, not SPM Z+", [](uint16_t w) { return w == 0x95F8; },
         [](uint16_t, const std::string&) { return std::string("UNRECOGNIZED"); }, 1},
    };
    return classes;
}

// A line of data/alphabetical_chain.txt: MNEMONIC MASK VALUE ["same"|"differ"] ["alias"].
struct Line {
    std::string mnemonic;
    uint16_t mask = 0, value = 0;
    std::string regs;    // "same", "differ" or any
    bool alias = false;  // a second name for words an earlier line already takes
};

std::vector<Line> alphabeticalchain() {
    std::vector<Line> lines;
    for (const DataRow& row : datarows("alphabetical_chain.txt")) {
        std::istringstream words(row.text);
        Line line;
        std::string mask, value;
        words >> line.mnemonic >> mask >> value;
        line.mask = static_cast<uint16_t>(std::stoi(mask, nullptr, 16));
        line.value = static_cast<uint16_t>(std::stoi(value, nullptr, 16));
        for (std::string flag; words >> flag;)
            if (flag == "alias") line.alias = true; else line.regs = flag;
        lines.push_back(line);
    }
    return lines;
}

const Line* firstmatch(const std::vector<Line>& chain, uint16_t w) {
    const bool same = d5(w) == r5(w);
    for (const Line& line : chain)
        if ((w & line.mask) == line.value && !(line.regs == "same" && !same) && !(line.regs == "differ" && same))
            return &line;
    return nullptr;
}

TEST(EveryWord, ReadsAsObjdumpReadsItOrAsItsClassSaysAndAsTheAlphabeticalChainDecodesIt) {
    const std::vector<std::string> golden = readgolden();
    ASSERT_EQ(golden.size(), 65536u) << "cannot read objdump_words.txt.gz (gzip needed)";
    const BitNameTable unnamed = unnamedbitnames();
    Disassembler disassembler(unnamed);

    const std::vector<Line> chain = alphabeticalchain();
    std::vector<int> classwords(disagreements().size(), 0);
    int mismatches = 0, recognised = 0;
    for (unsigned w = 0; w < 65536; ++w) {
        const uint16_t word = static_cast<uint16_t>(w);
        const std::string ours = disassembler.disasminstruction(word, kSecondWord);
        const std::string& theirs = golden[w];
        std::string expected = theirs;
        for (size_t c = 0; c < disagreements().size(); ++c) {
            if (!disagreements()[c].applies(word)) continue;
            ++classwords[c];
            EXPECT_NE(ours, theirs) << hex(w, 4) << " is listed as a disagreement but reads alike";
            expected = disagreements()[c].ours(word, theirs);
        }
        if (ours != expected && ++mismatches <= 20)
            ADD_FAILURE() << hex(w, 4) << ": ours \"" << ours << "\", objdump \"" << theirs << "\", expected \""
                          << expected << "\"";
        const std::string objdumpmnemonic = theirs.substr(0, theirs.find(' '));
        const bool objdumptwoword = objdumpmnemonic == "CALL" || objdumpmnemonic == "JMP" ||
                                    objdumpmnemonic == "LDS" || objdumpmnemonic == "STS";
        EXPECT_EQ(disassembler.secondword(), objdumptwoword) << hex(w, 4);

        const Line* line = firstmatch(chain, word);
        if (line == nullptr) {
            EXPECT_EQ(ours, "UNRECOGNIZED") << hex(w, 4) << " is in no line of the alphabetical chain";
            continue;
        }
        ++recognised;
        EXPECT_FALSE(line->alias) << hex(w, 4) << " reaches the alias " << line->mnemonic;
        EXPECT_EQ(ours.substr(0, ours.find(' ')), line->mnemonic) << hex(w, 4);
    }
    EXPECT_EQ(mismatches, 0);
    // The chain leaves out the 1,554 words objdump leaves undecoded too, and the 145 of the
    // XMEGA and SPM Z+ classes above.
    EXPECT_EQ(recognised, 65536 - 1554 - 145);
    for (size_t c = 0; c < disagreements().size(); ++c)
        EXPECT_EQ(classwords[c], disagreements()[c].words) << disagreements()[c].reason;
}

TEST(DisassemblerChain, NamesComeFromTheTableAndTheSecondWordFromTheCaller) {
    BitNameTable names = unnamedbitnames();
    names[0x18 + 32][8] = "PORTB";
    names[0x0B + 32][8] = "UCSRA";
    names[0x0B + 32][5] = "UDRE";
    Disassembler d(names);
    EXPECT_FALSE(d.secondword()) << "before any word";
    for (const TableRow& row : tablerows("tables.txt", "Named words")) {
        const auto word = static_cast<uint16_t>(std::stoi(row[0], nullptr, 16));
        const auto next = static_cast<uint16_t>(std::stoi(row[1], nullptr, 16));
        EXPECT_EQ(d.disasminstruction(word, next), row[2]) << row.where;
        EXPECT_EQ(d.secondword(), row.flag(3)) << row.where;
    }
    names[0x18 + 32][8] = "PB";  // read at each call, not copied
    EXPECT_EQ(d.disasminstruction(0xBB08, 0), "OUT PB,R16");
}

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
