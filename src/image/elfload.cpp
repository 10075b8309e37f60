#include "image/elfload.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

#include "image/hexload.h"

namespace velmora {

namespace {

// Only a plain file: a pipe or a device could block or never end.
std::optional<std::vector<uint8_t>> readfile(const std::string& filename) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(filename, error)) return std::nullopt;
    std::ifstream in(filename, std::ios::binary);
    if (!in) return std::nullopt;
    std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(in), {}};
    if (in.bad()) return std::nullopt;
    return bytes;
}

void copyloaded(const std::vector<uint8_t>& from, const std::vector<bool>& loaded, std::vector<uint8_t>& to) {
    for (size_t i = 0; i < from.size(); ++i)
        if (loaded[i]) to[i] = from[i];
}

}  // namespace

bool elfload(Machine& m, const std::string& filename, Messenger& messenger, std::vector<ElfSymbol>* symbols) {
    const std::optional<std::vector<uint8_t>> bytes = readfile(filename);
    if (!bytes) {
        messenger.show(kCannotOpenText, MessageKind::Critical);
        return false;
    }
    ElfReadResult result = readelf(*bytes);
    const auto fail = [&](const std::string& why) {
        messenger.show(std::string(kElfErrorHeading) + "\n" + why, MessageKind::Critical);
        return false;
    };
    if (!result.program) return fail(result.error);
    const ElfProgram& program = *result.program;
    const size_t flash = loadableflash(m).size();
    if (program.flash.size() > flash)
        return fail("The program needs " + std::to_string(program.flash.size()) + " bytes of program memory; " +
                    m.modelname + " has " + std::to_string(flash) + ".");
    if (program.eeprom.size() > m.eeprommem.size())
        return fail("Its EEPROM data needs " + std::to_string(program.eeprom.size()) + " bytes; " + m.modelname +
                    " has " + std::to_string(m.eeprommem.size()) + ".");
    copyloaded(program.flash, program.flashloaded, m.progmem);
    copyloaded(program.eeprom, program.eepromloaded, m.eeprommem);
    m.programbytes = std::max(m.programbytes, static_cast<int>(program.flash.size()));
    if (symbols) *symbols = std::move(result.program->symbols);
    return true;
}

bool programload(Machine& m, const std::string& filename, Messenger& messenger, std::vector<ElfSymbol>* symbols) {
    std::error_code error;
    if (std::filesystem::is_regular_file(filename, error)) {
        std::ifstream in(filename, std::ios::binary);
        char start[4] = {};
        in.read(start, sizeof start);
        if (lookslikeelf({reinterpret_cast<const uint8_t*>(start), static_cast<size_t>(in.gcount())}))
            return elfload(m, filename, messenger, symbols);
    }
    if (symbols) symbols->clear();
    return hexload(m, filename, messenger);
}

}  // namespace velmora
