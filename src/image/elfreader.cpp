#include "image/elfreader.h"

#include <cstdio>

namespace velmora {

namespace {

constexpr size_t kHeaderSize = 52, kSegmentSize = 32, kSectionSize = 40, kSymbolSize = 16;
constexpr uint16_t kMachineAvr = 83, kTypeExecutable = 2;
constexpr uint32_t kSegmentLoad = 1, kSectionSymbols = 2;
constexpr uint8_t kSymbolObject = 1, kSymbolFunction = 2;
constexpr uint32_t kEepromEnd = kElfEepromOffset + 0x10000;

// The file's bytes, read little-endian; every read is checked by its caller's range test.
struct Bytes {
    std::span<const uint8_t> file;
    uint16_t half(size_t at) const { return static_cast<uint16_t>(file[at] | (file[at + 1] << 8)); }
    uint32_t word(size_t at) const {
        return static_cast<uint32_t>(file[at]) | (static_cast<uint32_t>(file[at + 1]) << 8) |
               (static_cast<uint32_t>(file[at + 2]) << 16) | (static_cast<uint32_t>(file[at + 3]) << 24);
    }
    // Whether `count` entries of `size` bytes from `offset` lie inside the file.
    bool holds(uint64_t offset, uint64_t count, uint64_t size) const {
        return offset <= file.size() && count * size <= file.size() - offset;
    }
};

std::string hex(uint32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%06X", value);
    return text;
}

ElfReadResult failure(std::string text) { return {std::nullopt, std::move(text)}; }

// Copies a segment's bytes into `memory` at `address`, growing it as far as they reach.
void place(std::vector<uint8_t>& memory, std::vector<bool>& loaded, uint32_t address,
           std::span<const uint8_t> bytes) {
    const size_t end = static_cast<size_t>(address) + bytes.size();
    if (memory.size() < end) {
        memory.resize(end, 0xFF);
        loaded.resize(end, false);
    }
    for (size_t i = 0; i < bytes.size(); ++i) {
        memory[address + i] = bytes[i];
        loaded[address + i] = true;
    }
}

// The string at `at` of a string table, or nothing when it does not end inside the table.
std::optional<std::string> tablestring(const Bytes& b, uint32_t table, uint32_t size, uint32_t at) {
    for (uint32_t i = at; i < size; ++i)
        if (b.file[table + i] == 0)
            return std::string(reinterpret_cast<const char*>(b.file.data() + table + at), i - at);
    return std::nullopt;
}

std::optional<std::string> readsymbols(const Bytes& b, std::vector<ElfSymbol>& symbols) {
    const uint32_t shoff = b.word(32);
    const uint16_t shentsize = b.half(46), shnum = b.half(48);
    if (shnum == 0) return std::nullopt;  // stripped of its sections: no names, still a program
    if (shentsize != kSectionSize) return "Its section headers are malformed.";
    if (!b.holds(shoff, shnum, kSectionSize)) return "The file is cut short: its section headers are missing.";
    for (uint16_t i = 0; i < shnum; ++i) {
        const size_t header = shoff + static_cast<size_t>(i) * kSectionSize;
        if (b.word(header + 4) != kSectionSymbols) continue;
        const uint32_t offset = b.word(header + 16), size = b.word(header + 20), link = b.word(header + 24);
        if (b.word(header + 36) != kSymbolSize || link >= shnum) return "Its symbol table is malformed.";
        if (!b.holds(offset, size / kSymbolSize, kSymbolSize)) return "The file is cut short: its symbols are missing.";
        const size_t strings = shoff + static_cast<size_t>(link) * kSectionSize;
        const uint32_t stroffset = b.word(strings + 16), strsize = b.word(strings + 20);
        if (!b.holds(stroffset, strsize, 1)) return "The file is cut short: its symbol names are missing.";
        for (uint32_t s = 0; s + kSymbolSize <= size; s += kSymbolSize) {
            const size_t entry = offset + s;
            const uint8_t type = b.file[entry + 12] & 15;
            if (type != kSymbolObject && type != kSymbolFunction) continue;
            const std::optional<std::string> name = tablestring(b, stroffset, strsize, b.word(entry));
            if (!name) return "A symbol's name lies outside its string table.";
            if (name->empty()) continue;
            symbols.push_back({*name, b.word(entry + 4), b.word(entry + 8),
                               type == kSymbolFunction ? ElfSymbol::Kind::Function : ElfSymbol::Kind::Object});
        }
    }
    return std::nullopt;
}

}  // namespace

bool lookslikeelf(std::span<const uint8_t> file) {
    return file.size() >= 4 && file[0] == 0x7F && file[1] == 'E' && file[2] == 'L' && file[3] == 'F';
}

ElfReadResult readelf(std::span<const uint8_t> file) {
    const Bytes b{file};
    if (!lookslikeelf(file)) return failure("This is not an ELF file.");
    if (file.size() < kHeaderSize) return failure("The file is cut short: its ELF header is incomplete.");
    if (file[4] != 1) return failure("This is not a 32-bit ELF file, as AVR programs are.");
    if (file[5] != 1) return failure("This is not a little-endian ELF file, as AVR programs are.");
    if (b.half(18) != kMachineAvr)
        return failure("This is not a program for the AVR (ELF machine " + std::to_string(b.half(18)) + ").");
    if (b.half(16) != kTypeExecutable) return failure("This is not a linked program (an object file or a library?).");

    const uint32_t phoff = b.word(28);
    const uint16_t phentsize = b.half(42), phnum = b.half(44);
    if (phnum > 0 && phentsize != kSegmentSize) return failure("Its program headers are malformed.");
    if (!b.holds(phoff, phnum, kSegmentSize)) return failure("The file is cut short: its program headers are missing.");

    ElfProgram program;
    bool anything = false;
    for (uint16_t i = 0; i < phnum; ++i) {
        const size_t header = phoff + static_cast<size_t>(i) * kSegmentSize;
        if (b.word(header) != kSegmentLoad) continue;
        const uint32_t offset = b.word(header + 4), address = b.word(header + 12), size = b.word(header + 16);
        if (size == 0) continue;  // .bss and .noinit: nothing to load
        if (!b.holds(offset, size, 1)) return failure("The file is cut short: a segment's bytes are missing.");
        const std::span<const uint8_t> bytes = file.subspan(offset, size);
        const uint64_t end = static_cast<uint64_t>(address) + size;
        if (end <= kElfDataOffset) {
            place(program.flash, program.flashloaded, address, bytes);
        } else if (address >= kElfEepromOffset && end <= kEepromEnd) {
            place(program.eeprom, program.eepromloaded, address - kElfEepromOffset, bytes);
        } else {
            return failure("A segment loads at " + hex(address) + ", neither in program memory nor in EEPROM.");
        }
        anything = true;
    }
    if (!anything) return failure("No segment loads anything: there is no program in it.");
    if (const std::optional<std::string> fault = readsymbols(b, program.symbols)) return failure(*fault);
    return {std::move(program), {}};
}

}  // namespace velmora
