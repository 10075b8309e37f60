#include "image/hexload.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "core/numbers.h"
#include "image/hexreader.h"

namespace velmora {

std::string hexloaderror(int code, int64_t line) {
    return std::string(kHexErrorHeading) + "\nLine number " + std::to_string(line) + hexerrortail(code);
}

bool hexload(Machine& m, const std::string& filename, Messenger& messenger) {
    // Only a plain file: a pipe or a device could block or never end.
    std::error_code error;
    std::ifstream in;
    if (std::filesystem::is_regular_file(filename, error)) in.open(filename, std::ios::binary);
    if (!in.is_open()) {
        messenger.show(kCannotOpenText, MessageKind::Critical);
        return false;
    }
    const HexReadResult result = readintelhex(in, loadableflash(m), m.programbytes);
    if (result.ok()) return true;
    messenger.show(hexloaderror(result.error, result.line), MessageKind::Critical);
    return false;
}

std::span<uint8_t> loadableflash(Machine& m) {
    const size_t flash = std::min(static_cast<size_t>(std::max(m.flashsize, 0)), m.progmem.size());
    return {m.progmem.data(), flash};
}

uint8_t unprogrammedvalue(SettingsAccess& settings) {
    return lenientdecimal(settings.getsetting("Unprogrammed Bit Value", "1")) == 0 ? 0x00 : 0xFF;
}

void fillunprogrammed(Machine& m) {
    std::fill(m.progmem.begin(), m.progmem.end(), m.unprogrammed);
    std::fill(m.eeprommem.begin(), m.eeprommem.end(), m.unprogrammed);
}

}  // namespace velmora
