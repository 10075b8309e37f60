// Program words of any value through the three listing layouts. The first byte chooses the
// unprogrammed fill and whether the last word stands alone; the rest are the words.

#include <string>
#include <vector>

#include "core/machine.h"
#include "core/testmachine.h"
#include "disassembler/disasmlisting.h"
#include "fuzztargets.h"

namespace velmora::fuzz {

int fuzz_disasm(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const uint8_t options = data[0];
    std::vector<uint16_t> words;
    for (size_t i = 1; i + 1 < size; i += 2) words.push_back(static_cast<uint16_t>(data[i] | (data[i + 1] << 8)));

    Machine m;
    configurebaremachine(m, 8192, 1024, 512);
    if (words.size() > static_cast<size_t>(m.flashsize / 2)) words.resize(static_cast<size_t>(m.flashsize / 2));
    m.unprogrammed = (options & 1) ? 0xFF : 0x00;
    loadwords(m, words);
    // An odd byte count ends the program in the middle of a word, as a HEX file can.
    m.programbytes = static_cast<int>(words.size()) * 2 - ((options & 2) && !words.empty() ? 1 : 0);
    for (const ListingLayout layout : {ListingLayout::Normal, ListingLayout::WithoutOpcodes, ListingLayout::Plain}) {
        const std::string text = disasmfile(m, layout);
        if (text.empty()) invariantbroken();
    }
    return 0;
}

}  // namespace velmora::fuzz
