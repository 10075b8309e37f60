// Intel HEX images: program memory and EEPROM read through the one reader.

#include <sstream>
#include <string>
#include <vector>

#include "fuzztargets.h"
#include "image/hexload.h"
#include "image/hexreader.h"

namespace velmora::fuzz {

int fuzz_hex(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    // An ATmega32's program memory, then its EEPROM.
    for (const size_t capacity : {size_t{32768}, size_t{1024}}) {
        std::vector<uint8_t> memory(capacity, 0xFF);
        std::istringstream in(text);
        int highest = 0;
        const HexReadResult result = readintelhex(in, memory, highest);
        if (highest < 0 || static_cast<size_t>(highest) > capacity) invariantbroken();
        if (result.ok() != (result.error == kHexOk)) invariantbroken();
        if (!result.ok() && hexloaderror(result.error, result.line).empty()) invariantbroken();
    }
    return 0;
}

}  // namespace velmora::fuzz
