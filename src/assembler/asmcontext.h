#pragma once
// The state of one assembly: the line table, the symbol table and the counters. Rebuilt
// from empty by asmreset at the start of every run; the window reads the error lists
// afterwards for Go To Next Error.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velmora {

// What asmevalexpr returns for text it cannot read, and the value of a label until its
// line has been sized.
inline constexpr int32_t kAsmInvalid = 1000000000;

struct AsmLine {
    std::string text;       // the source line after preprocessing; the listing prints it
    std::string errortext;  // the last error of the line
    bool errorflag = false; // a flagged line takes no further part in either pass
    int32_t location = 0;   // program words
    std::string mnemonic;   // upper case; empty when the line has no statement
    std::string arg1, arg2; // as written, trimmed
    int argcount = 0;
    std::string opcode;     // hexadecimal digits in memory byte order, four per word
};

struct AsmSymbol {
    std::string name;  // upper case
    int line = 0;      // the defining source line of a label, 0 for every other symbol
    int32_t value = 0;
};

struct AsmContext {
    std::vector<AsmLine> lines;      // lines[0] is source line 1
    std::vector<AsmSymbol> symbols;  // in order of insertion; lookups take the first match
    std::unordered_map<std::string, int> firstsymbol;  // name -> index of its first entry, for speed
    int asmerrors = 0;
    int32_t asmlocation = 0;
    int asmlistline = 0;
    std::vector<int> errorsourceline;
    std::vector<int> errorlistline;
    int32_t argvalue1 = 0, argvalue2 = 0;
    int flashsize = 0;               // bytes of program memory of the model
    std::vector<uint8_t> image;      // one element per byte of program memory
};

// Empties every table and sizes the image for `flashsize` bytes.
void asmreset(AsmContext& ctx, int flashsize);

// The 1-based index of the first symbol named `name` (any case), or 0.
int asmlookup(const AsmContext& ctx, std::string_view name);

// Value of the symbol at a 1-based index from asmlookup.
inline int32_t asmsymbolvalue(const AsmContext& ctx, int index) { return ctx.symbols[index - 1].value; }

// Appends a symbol and returns its 1-based index; a name already present keeps answering
// lookups with its first entry.
int asmaddsymbol(AsmContext& ctx, std::string_view name, int32_t value, int line = 0);

// One failed check: counts it, flags the line and makes `text` its error.
void asmerror(AsmContext& ctx, AsmLine& line, const char* text);

// The line that a 1-based line number names.
inline AsmLine& asmline(AsmContext& ctx, int number) { return ctx.lines[static_cast<size_t>(number - 1)]; }

// Number of program words of the model, for the branch wrap.
inline int asmflashwords(const AsmContext& ctx) { return ctx.flashsize / 2; }

}  // namespace velmora
