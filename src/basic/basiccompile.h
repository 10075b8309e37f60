#pragma once
// The whole BASIC compile: source text in, assembler text out, with the report texts and
// the file the BASIC Compiler window and velmora-cli write.

#include <string>
#include <utility>
#include <vector>

#include "basic/basicmodel.h"
#include "basic/compilecontext.h"
#include "basic/linecleaner.h"

namespace velmora {

struct InstructionCount {
    std::string mnemonic;
    int count = 0;
};

struct BasicCompileResult {
    bool ok = false;
    std::string asmtext;   // lines joined by CR LF, ending in ".END"
    std::string error;     // the error box: "Error in line N: ..." or the memory box
    int errorline = 0;     // 0 when the compile succeeded
    std::vector<std::string> warnings;  // boxes that did not stop the compile
    int outputwords = 0;
    std::vector<int> memoryusage;       // per data address, MemoryUse
    std::vector<InstructionCount> statistics;  // every mnemonic, alphabetical
    int totalinstructions = 0;
    double definedclock = 0;  // the clock in MHz a CLOCK_FREQUENCY Define set, 0 when none
};

// The clock warning shown before compiling with a clock that is no whole number of MHz.
extern const char* const kFractionalClockWarning;

BasicCompileResult basiccompile(const std::string& source, const BasicModel& model, const CompileOptions& options);

// Splits, cleans and separates the comments of the source into `ctx.rows`.
void loadsource(CompileContext& ctx, const std::string& source, const KeywordSpelling& spelling);

// The cleaning keywords: the language's words and the model's register and bit names.
std::vector<std::string> basickeywordsfor(const BasicModel& model);

// The assembler text as an older assembler takes it: no ".END", no RAMEND.
std::string compatiblelisting(const std::string& asmtext, int datasize);

// Report lines joined by CR LF; `basepath` is the output path without ".asm".
std::string compilereport(int outputwords, int flashbytes, const std::string& basepath);

// Deletes an existing file first, then writes the text as one block. False with `failure`
// set when the file cannot be written.
bool writecompiledfile(const std::string& path, const std::string& text, std::string& failure);

}  // namespace velmora
