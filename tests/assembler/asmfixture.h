#pragma once
// Assembling source text in memory for the tests, with a small hand-made model: an
// ATmega8-like chip of 8 KiB flash (4096 words) and 1 KiB SRAM.

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "assembler/asmassemble.h"
#include "assembler/asmcontext.h"
#include "core/numbers.h"
#include "support/sectiontable.h"
#include "support/textlines.h"

namespace velmora::test {

inline AsmModel smallmodel() {
    AsmModel model;
    model.flashsize = 8192;
    model.sramsize = 1024;
    model.extendedio = 0;
    model.definitiontext = {
        ".equ UDR = $0C",
        ".equ PORTB = $18 ; Port B data",
        "\t.equ   DDRB\t=\t$17",
        ".EQU SPL = 0x3D",
        ".equ SREG_I = 7",
        "; a comment line",
        ".equ BROKEN",
        ".def NOTEQU = 5",
    };
    return model;
}

inline AsmContext assemble(const std::string& source, const AsmModel& model = smallmodel()) {
    AsmContext ctx;
    asmassemblelines(ctx, textlines(source), model);
    return ctx;
}

// The program words of an opcode text (memory order, low byte first).
inline std::vector<uint16_t> opcodewords(const std::string& opcode) {
    std::vector<uint16_t> words;
    for (size_t at = 0; at + 4 <= opcode.size(); at += 4)
        words.push_back(static_cast<uint16_t>(hexfield(opcode.substr(at, 2), 2) | (hexfield(opcode.substr(at + 2, 2), 2) << 8)));
    return words;
}

// One statement, indented, as the only line of a source.
struct OneLine {
    AsmContext ctx;
    const AsmLine& line() const { return ctx.lines.at(0); }
    std::vector<uint16_t> words() const { return opcodewords(line().opcode); }
};

inline OneLine assembleline(const std::string& statement, const AsmModel& model = smallmodel()) {
    return OneLine{assemble(" " + statement, model)};
}

// The 8-bit immediate that LDI R16,<text> loads, or -1 when the line has an error.
inline int ldivalue(const std::string& operand) {
    const OneLine one = assembleline("LDI R16," + operand);
    if (one.line().errorflag) return -1;
    const uint16_t w = one.words().at(0);
    return ((w >> 4) & 0xF0) | (w & 0x0F);
}

// The word that .DW <text> stores, or -1 when the line has an error.
inline int dwvalue(const std::string& operand) {
    const OneLine one = assembleline(".DW " + operand);
    if (one.line().errorflag) return -1;
    return one.words().at(0);
}

// The value of a symbol, -12345 when it is not defined.
inline int32_t symbol(const AsmContext& ctx, const std::string& name) {
    const int index = asmlookup(ctx, name);
    return index == 0 ? -12345 : asmsymbolvalue(ctx, index);
}

// Assembles every section of a data file of sources and checks what each line gives; the
// file's head tells the notation (data/sources.txt).
inline void checksources(const std::string& file) {
    for (const auto& [name, lines] : tablesections(file)) {
        SCOPED_TRACE(file + " [" + name + "]");
        AsmModel model = smallmodel();
        std::vector<std::string> source;
        std::vector<TableLine> expected;  // one a source line
        std::vector<TableLine> symbols;
        int errors = -1;
        for (const TableLine& l : lines) {
            std::istringstream words(l.text.substr(std::min<size_t>(2, l.text.size())));
            std::string key;
            int value = 0;
            if (l.text.starts_with("#")) continue;
            if (l.text.starts_with("$ ")) {
                symbols.push_back(l);
            } else if (l.text.starts_with("% ") && words >> key >> value) {
                if (key == "errors") errors = value;
                if (key == "flash") model.flashsize = value;
                for (int i = 0; key == "nops" && i < value; ++i) {
                    source.push_back(" NOP");
                    expected.push_back({l.line, ""});
                }
            } else {
                const size_t bar = l.text.rfind(" |");
                const std::string text = l.text.substr(0, bar);
                source.push_back(tableunescape(text.substr(0, text.find_last_not_of(" \t") + 1)));
                expected.push_back({l.line, bar == std::string::npos ? "" : l.text.substr(bar + 2)});
            }
        }
        while (!source.empty() && source.back().empty()) source.pop_back(), expected.pop_back();  // the gap
        AsmContext ctx;
        asmassemblelines(ctx, source, model);
        ASSERT_EQ(ctx.lines.size(), source.size());
        for (size_t i = 0; i < source.size(); ++i) {
            const AsmLine& line = ctx.lines[i];
            const std::string where = file + ":" + std::to_string(expected[i].line);
            std::istringstream words(expected[i].text);
            std::string error;
            for (std::string word; words >> word;) {
                const size_t colon = word.find(':');
                const std::string key = word.substr(0, colon);
                const std::string value = colon == std::string::npos ? "" : tableunescape(word.substr(colon + 1));
                if (word == "!") {
                    std::getline(words >> std::ws, error);
                } else if (word[0] == '@') {
                    EXPECT_EQ(line.location, std::stol(word.substr(1), nullptr, 0)) << where;
                } else if (key == "w") {
                    EXPECT_EQ(opcodewords(line.opcode + "0000").at(0), std::stoi(value, nullptr, 16)) << where;
                } else {
                    const std::string& actual = key == "op"   ? line.opcode
                                                : key == "mn" ? line.mnemonic
                                                : key == "a1" ? line.arg1
                                                              : line.arg2;
                    EXPECT_EQ(actual, value) << where << ": " << key;
                }
            }
            EXPECT_EQ(line.errorflag, !error.empty()) << where << ": " << line.errortext;
            EXPECT_EQ(line.errortext, error) << where;
        }
        if (errors >= 0) { EXPECT_EQ(ctx.asmerrors, errors); }
        for (const TableLine& l : symbols) {
            std::istringstream words(l.text.substr(2));
            std::string name, equals, value;
            words >> name >> equals >> value;
            const int32_t want = value == "none"    ? -12345
                                 : value == "nan16" ? kNotANumber16
                                                    : std::stoi(value, nullptr, 0);
            EXPECT_EQ(symbol(ctx, name), want) << file << ":" << l.line;
        }
    }
}

}  // namespace velmora::test
