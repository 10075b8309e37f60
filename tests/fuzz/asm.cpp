// Assembler sources: both passes, then the listing and the HEX text as the Assemble command
// writes them, all in memory. The HEX text must read back through the program's own reader.

#include <sstream>
#include <string>
#include <vector>

#include "assembler/asmassemble.h"
#include "assembler/asmcontext.h"
#include "assembler/asmhexfile.h"
#include "assembler/asmlisting.h"
#include "fuzzsupport.h"
#include "fuzztargets.h"
#include "image/hexreader.h"

namespace velmora::fuzz {

int fuzz_asm(const uint8_t* data, size_t size) {
    const Chip& chip = atmega32();
    AsmContext ctx;
    asmassemblelines(ctx, textlines(data, size), chip.assembler);
    const std::string listing = asmlistingtext(ctx);
    const int last = asmbuildimage(ctx);
    const std::string hex = asmhextext(ctx, last);
    if (listing.empty() || hex.empty()) invariantbroken();

    std::vector<uint8_t> memory(static_cast<size_t>(chip.assembler.flashsize), 0xFF);
    std::istringstream in(hex);
    int highest = 0;
    if (!readintelhex(in, memory, highest).ok()) invariantbroken();
    return 0;
}

}  // namespace velmora::fuzz
