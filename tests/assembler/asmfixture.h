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

// Splits at "\n" and drops a "\r" before it, as the file reader does; a text without a
// final newline still gives its last line.
inline std::vector<std::string> sourcelines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        if (line.ends_with('\r')) line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

inline AsmContext assemble(const std::string& source, const AsmModel& model = smallmodel()) {
    AsmContext ctx;
    asmassemblelines(ctx, sourcelines(source), model);
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

}  // namespace velmora::test
