#include "assembler/asmlisting.h"

#include <algorithm>

#include "core/hextext.h"

namespace velmora {

namespace {

constexpr const char* kRule = "---------------------------------------------";
constexpr const char* kEndOfRow = "\r\n";
constexpr int kFirstRowAfterHeader = 5;

// The last four digits of the line number, zero-padded.
std::string linenumbertext(int number) {
    std::string digits = std::to_string(number % 10000);
    return std::string(4 - digits.size(), '0') + digits;
}

// The word at `index` of a memory-order opcode, high byte first as people read it.
std::string wordtext(const std::string& opcode, size_t index) {
    const std::string digits = opcode.substr(index * 4, 4);
    if (digits.size() < 4) return digits;
    return digits.substr(2, 2) + digits.substr(0, 2);
}

}  // namespace

std::string asmlistingtext(AsmContext& ctx) {
    std::string text;
    for (const char* row : {kRule, "AVR ASSEMBLER LISTING", "Line    Address Opcode  Instruction", kRule}) {
        text += row;
        text += kEndOfRow;
    }
    ctx.asmlistline = kFirstRowAfterHeader;
    ctx.errorsourceline.clear();
    ctx.errorlistline.clear();

    for (size_t i = 0; i < ctx.lines.size(); ++i) {
        const AsmLine& line = ctx.lines[i];
        const int number = static_cast<int>(i) + 1;
        const std::string opcode = line.opcode.empty() ? std::string(4, ' ') : line.opcode;
        const size_t words = std::max<size_t>(1, (opcode.size() + 2) / 4);
        for (size_t w = 0; w < words; ++w) {
            text += linenumbertext(number) + "    " + hex6(static_cast<uint32_t>(line.location) + static_cast<uint32_t>(w)) +
                    "  " + (line.opcode.empty() ? opcode : wordtext(opcode, w));
            if (w == 0) text += "    " + line.text;
            text += kEndOfRow;
            ++ctx.asmlistline;
        }
        if (line.errorflag) {
            ctx.errorsourceline.push_back(number);
            ctx.errorlistline.push_back(ctx.asmlistline);
            text += asmerrorrow(number, line.errortext) + kEndOfRow;
            ++ctx.asmlistline;
        }
    }
    text += kRule;
    text += kEndOfRow;
    text += "Number of errors = " + std::to_string(ctx.asmerrors) + kEndOfRow;
    return text;
}

std::string asmerrorrow(int linenumber, const std::string& errortext) {
    return linenumbertext(linenumber) + " Error: " + errortext;
}

std::vector<std::string> asmerrorrows(const AsmContext& ctx) {
    std::vector<std::string> rows;
    for (size_t i = 0; i < ctx.lines.size(); ++i)
        if (ctx.lines[i].errorflag) rows.push_back(asmerrorrow(static_cast<int>(i) + 1, ctx.lines[i].errortext));
    return rows;
}

}  // namespace velmora
