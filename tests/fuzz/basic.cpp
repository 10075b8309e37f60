// BASIC sources: the compile as the BASIC Compiler window runs it, with either setting of
// official bit names (by the parity of the length), and the assembly of what a successful compile produced.

#include <string>

#include "assembler/asmassemble.h"
#include "assembler/asmcontext.h"
#include "basic/basiccompile.h"
#include "fuzzsupport.h"
#include "fuzztargets.h"

namespace velmora::fuzz {

int fuzz_basic(const uint8_t* data, size_t size) {
    const Chip& chip = atmega32();
    CompileOptions options;
    // Both settings get their share without a byte of the source spent on choosing.
    options.allowarbitrarybitnames = (size & 1) != 0;
    const std::string source(reinterpret_cast<const char*>(data), size);
    const BasicCompileResult result = basiccompile(source, chip.basic, options);
    if (!result.ok) {
        if (result.error.empty()) invariantbroken();
        return 0;
    }
    AsmContext ctx;
    asmassemblelines(ctx, textlines(reinterpret_cast<const uint8_t*>(result.asmtext.data()), result.asmtext.size()),
                     chip.assembler);
    return 0;
}

}  // namespace velmora::fuzz
