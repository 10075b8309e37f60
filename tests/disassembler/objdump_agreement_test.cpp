// Every 16-bit word against avr-objdump's reading of it (data/objdump_words.txt.gz,
// made by data/make_golden.sh with the fixed second word 5A3C behind each word).
//
// objdump's text is first brought into our notation: mnemonics upper case, no blank
// after a comma, registers 26..31 as XL..ZH, the ADIW/SBIW pair and the MOVW pairs
// written out, immediates as "$" and two digits, the ADIW/SBIW constant in decimal,
// I/O addresses as "$" and three digits (the machine here names no registers), LDS/STS
// addresses as "$" and four digits, CALL/JMP byte addresses halved to word addresses,
// relative offsets ".+N" halved to signed word counts, ".word" as UNRECOGNIZED.
//
// Where the two readings must differ, a class below says why; every other word must read
// the same after the normalisation.

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "disassembler/disasminstruction.h"
#include "unnamedbitnames.h"

namespace velmora::test {
namespace {

constexpr uint16_t kSecondWord = 0x5A3C;

std::vector<std::string> readgolden() {
    const std::string command = std::string("gzip -dc '") + VELMORA_TEST_DATA_DIR + "/objdump_words.txt.gz'";
    std::vector<std::string> lines;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr) return lines;
    std::string line;
    for (int c; (c = std::fgetc(pipe)) != EOF;) {
        if (c != '\n') {
            line += static_cast<char>(c);
        } else {
            lines.push_back(line);
            line.clear();
        }
    }
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

// One operand of objdump's text in our notation, by the instruction it belongs to.
std::string operand(const std::string& mnemonic, const std::string& text) {
    if (text.size() > 1 && text[0] == 'r' && std::isdigit(static_cast<unsigned char>(text[1]))) {
        const int n = std::stoi(text.substr(1));
        if (mnemonic == "ADIW" || mnemonic == "SBIW") return reg(n + 1) + ":" + reg(n);
        if (mnemonic == "MOVW") return "R" + std::to_string(n + 1) + ":R" + std::to_string(n);
        return reg(n);
    }
    if (text.rfind(".+", 0) == 0 || text.rfind(".-", 0) == 0) {
        const int bytes = std::stoi(text.substr(2));
        return std::to_string((text[1] == '-' ? -bytes : bytes) / 2);
    }
    if (text.rfind("0x", 0) == 0) {
        const unsigned value = std::stoul(text.substr(2), nullptr, 16);
        if (mnemonic == "ADIW" || mnemonic == "SBIW") return std::to_string(value);
        if (mnemonic == "IN" || mnemonic == "OUT" || mnemonic == "SBI" || mnemonic == "CBI" || mnemonic == "SBIC" ||
            mnemonic == "SBIS")
            return "$" + hex(value, 3);
        if (mnemonic == "LDS" || mnemonic == "STS") return "$" + hex(value, 4);
        if (mnemonic == "CALL" || mnemonic == "JMP") return "$" + hex(value / 2, value / 2 > 0xFFFF ? 6 : 4);
        return "$" + hex(value, 2);
    }
    return text;  // bit numbers, pointer forms
}

std::string normalise(const std::string& objdump) {
    if (objdump.rfind(".word", 0) == 0) return "UNRECOGNIZED";
    std::istringstream in(objdump);
    std::string mnemonic, rest;
    in >> mnemonic;
    for (char& c : mnemonic) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    std::getline(in, rest);
    std::string text = mnemonic;
    std::istringstream operands(rest);
    char separator = ' ';
    for (std::string piece; std::getline(operands, piece, ',');) {
        piece.erase(0, piece.find_first_not_of(' '));
        text += separator + operand(mnemonic, piece);
        separator = ',';
    }
    return text;
}

int d5(uint16_t w) { return (w >> 4) & 31; }
int r5(uint16_t w) { return (w & 15) | ((w >> 5) & 16); }

// A set of words on which our chain and objdump must read differently, with the
// reading our chain gives instead of objdump's (normalised) one.
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

TEST(ObjdumpAgreement, EveryWordReadsAsObjdumpReadsItOrAsItsClassSays) {
    const std::vector<std::string> golden = readgolden();
    ASSERT_EQ(golden.size(), 65536u) << "cannot read objdump_words.txt.gz (gzip needed)";
    const BitNameTable unnamed = unnamedbitnames();
    Disassembler disassembler(unnamed);

    std::vector<int> classwords(disagreements().size(), 0);
    int mismatches = 0;
    for (unsigned w = 0; w < 65536; ++w) {
        const uint16_t word = static_cast<uint16_t>(w);
        const std::string ours = disassembler.disasminstruction(word, kSecondWord);
        const std::string theirs = normalise(golden[w]);
        std::string expected = theirs;
        for (size_t c = 0; c < disagreements().size(); ++c) {
            if (!disagreements()[c].applies(word)) continue;
            ++classwords[c];
            EXPECT_NE(ours, theirs) << hex(w, 4) << " is listed as a disagreement but reads alike";
            expected = disagreements()[c].ours(word, theirs);
        }
        if (ours != expected && ++mismatches <= 20)
            ADD_FAILURE() << hex(w, 4) << ": ours \"" << ours << "\", objdump \"" << golden[w] << "\" -> \"" << expected
                          << "\"";
        const std::string objdumpmnemonic = golden[w].substr(0, golden[w].find(' '));
        const bool objdumptwoword = objdumpmnemonic == "call" || objdumpmnemonic == "jmp" ||
                                    objdumpmnemonic == "lds" || objdumpmnemonic == "sts";
        EXPECT_EQ(disassembler.secondword(), objdumptwoword) << hex(w, 4);
    }
    EXPECT_EQ(mismatches, 0);
    for (size_t c = 0; c < disagreements().size(); ++c)
        EXPECT_EQ(classwords[c], disagreements()[c].words) << disagreements()[c].reason;
}

TEST(ObjdumpAgreement, NormalisationOfSampleTexts) {
    EXPECT_EQ(normalise("adiw r26, 0x3f"), "ADIW XH:XL,63");
    EXPECT_EQ(normalise("movw r30, r2"), "MOVW R31:R30,R3:R2");
    EXPECT_EQ(normalise("call 0x7eb478"), "CALL $3F5A3C");
    EXPECT_EQ(normalise("jmp 0xb478"), "JMP $5A3C");
    EXPECT_EQ(normalise("breq .-2"), "BREQ -1");
    EXPECT_EQ(normalise("rjmp .+4094"), "RJMP 2047");
    EXPECT_EQ(normalise("sbi 0x1f, 7"), "SBI $01F,7");
    EXPECT_EQ(normalise("std Y+63, r31"), "STD Y+63,ZH");
    EXPECT_EQ(normalise("ldi r16, 0xFF"), "LDI R16,$FF");
    EXPECT_EQ(normalise(".word 0xffff"), "UNRECOGNIZED");
}

}  // namespace
}  // namespace velmora::test
