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

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "core/instructiontext.h"
#include "core/machine.h"
#include "disassembler/disasminstruction.h"
#include "support/datafile.h"
#include "support/sectiontable.h"

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

}  // namespace
}  // namespace velmora::test
