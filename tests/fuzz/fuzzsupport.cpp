#include "fuzzsupport.h"

#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <memory>

namespace velmora::fuzz {

const Chip& atmega32() {
    static const std::unique_ptr<Chip> chip = [] {
        auto c = std::make_unique<Chip>();
        const ModelLoadResult loaded = modelload(std::string(VELMORA_SOURCE_DATA_DIR) + "/models", "ATmega32",
                                                 ModelOptions{}, c->machine, c->definitions);
        if (!loaded.ok) {
            std::fprintf(stderr, "the ATmega32 model did not load: %s\n", loaded.message.c_str());
            std::abort();
        }
        c->assembler = asmmodelof(c->machine, c->definitions);
        c->basic = basicmodelof(c->machine, c->definitions, "4.0 MHz", 4);
        return c;
    }();
    return *chip;
}

std::vector<std::string> textlines(const uint8_t* data, size_t size) {
    std::vector<std::string> lines;
    std::string line;
    for (size_t i = 0; i < size; ++i) {
        const char c = static_cast<char>(data[i]);
        if (c != '\n') {
            line += c;
            continue;
        }
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(std::move(line));
        line.clear();
    }
    if (!line.empty()) lines.push_back(std::move(line));
    return lines;
}

const std::filesystem::path& scratchfolder() {
    // Never destroyed, so that the clean-up at exit can still read it.
    static const std::filesystem::path* folder = [] {
        std::string pattern = (std::filesystem::temp_directory_path() / "velmora-fuzz-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) std::abort();
        auto* made = new std::filesystem::path(pattern);
        std::atexit([] {
            std::error_code ignored;
            std::filesystem::remove_all(scratchfolder(), ignored);
        });
        return made;
    }();
    return *folder;
}

}  // namespace velmora::fuzz
