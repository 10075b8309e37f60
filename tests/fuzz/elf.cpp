// ELF programs: segments, EEPROM and symbols through the one reader.

#include "fuzztargets.h"
#include "image/elfreader.h"

namespace velmora::fuzz {

int fuzz_elf(const uint8_t* data, size_t size) {
    const ElfReadResult result = readelf({data, size});
    if (result.program.has_value() == !result.error.empty()) invariantbroken();
    if (const auto& program = result.program) {
        if (program->flash.size() != program->flashloaded.size()) invariantbroken();
        if (program->eeprom.size() != program->eepromloaded.size() || program->eeprom.size() > 0x10000)
            invariantbroken();
        for (const ElfSymbol& symbol : program->symbols)
            if (symbol.name.empty()) invariantbroken();
    }
    return 0;
}

}  // namespace velmora::fuzz
