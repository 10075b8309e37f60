// The ELF reader against binutils-avr: the debugging test's program (built with avr-gcc -g
// -Og) gives the bytes avr-objcopy wrote to its HEX files and the functions and objects
// avr-readelf lists; every damage to it gives its message.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "image/elfreader.h"
#include "image/hexreader.h"

namespace velmora::test {
namespace {

const std::string kFolder = VELMORA_TEST_DATA_DIR "/../../firmware/elf/";

std::vector<uint8_t> filebytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in) << path;
    return {std::istreambuf_iterator<char>(in), {}};
}

// The bytes a HEX file gives, up to the highest it writes.
std::vector<uint8_t> hexbytes(const std::string& path) {
    std::vector<uint8_t> memory(65536, 0xFF);
    std::ifstream in(path);
    int highest = 0;
    EXPECT_TRUE(readintelhex(in, memory, highest).ok()) << path;
    memory.resize(highest);
    return memory;
}

TEST(ElfReader, GivesWhatBinutilsReadFromTheSameFile) {
    const ElfReadResult result = readelf(filebytes(kFolder + "debugged.elf"));
    ASSERT_TRUE(result.program) << result.error;
    const ElfProgram& program = *result.program;
    EXPECT_EQ(program.flash, hexbytes(kFolder + "debugged.hex")) << "text and the data's start values";
    EXPECT_EQ(program.eeprom, hexbytes(kFolder + "debugged.eep.hex"));
    EXPECT_TRUE(std::all_of(program.flashloaded.begin(), program.flashloaded.end(), [](bool b) { return b; }));

    std::vector<std::string> listed;
    for (const ElfSymbol& s : program.symbols) {
        char line[128];
        std::snprintf(line, sizeof line, "%08x %u %s %s", s.address, s.size,
                      s.kind == ElfSymbol::Kind::Function ? "FUNC" : "OBJECT", s.name.c_str());
        listed.push_back(line);
    }
    std::sort(listed.begin(), listed.end());
    std::vector<std::string> expected;
    std::ifstream in(kFolder + "debugged.symbols");
    for (std::string line; std::getline(in, line);) expected.push_back(line);
    EXPECT_EQ(listed, expected);
}

// Little-endian fields of the file, as the ELF format lays them out.
void put16(std::vector<uint8_t>& f, size_t at, uint16_t v) {
    f[at] = v & 0xFF;
    f[at + 1] = v >> 8;
}
void put32(std::vector<uint8_t>& f, size_t at, uint32_t v) {
    for (int i = 0; i < 4; ++i) f[at + i] = (v >> (8 * i)) & 0xFF;
}
uint32_t get32(const std::vector<uint8_t>& f, size_t at) {
    return f[at] | (f[at + 1] << 8) | (f[at + 2] << 16) | (static_cast<uint32_t>(f[at + 3]) << 24);
}

// The section header of the symbol table (type 2); its link names the string table.
size_t symbols(const std::vector<uint8_t>& f, uint32_t shoff) {
    size_t header = shoff;
    while (get32(f, header + 4) != 2) header += 40;
    return header;
}

TEST(ElfReader, EveryDamageGivesItsMessage) {
    const std::vector<uint8_t> good = filebytes(kFolder + "debugged.elf");
    const uint32_t phoff = get32(good, 28), shoff = get32(good, 32);
    const struct {
        const char* why;
        void (*damage)(std::vector<uint8_t>&, uint32_t phoff, uint32_t shoff);
        const char* message;
    } rows[] = {
        {"empty", [](auto& f, auto, auto) { f.clear(); }, "This is not an ELF file."},
        {"a text file", [](auto& f, auto, auto) { f = {'h', 'e', 'l', 'l', 'o'}; }, "This is not an ELF file."},
        {"header cut", [](auto& f, auto, auto) { f.resize(40); }, "The file is cut short: its ELF header is incomplete."},
        {"64-bit class", [](auto& f, auto, auto) { f[4] = 2; }, "This is not a 32-bit ELF file, as AVR programs are."},
        {"big-endian", [](auto& f, auto, auto) { f[5] = 2; }, "This is not a little-endian ELF file, as AVR programs are."},
        {"ARM machine", [](auto& f, auto, auto) { put16(f, 18, 40); }, "This is not a program for the AVR (ELF machine 40)."},
        {"object file", [](auto& f, auto, auto) { put16(f, 16, 1); }, "This is not a linked program (an object file or a library?)."},
        {"program headers cut", [](auto& f, auto ph, auto) { f.resize(ph + 40); },
         "The file is cut short: its program headers are missing."},
        {"odd program header size", [](auto& f, auto, auto) { put16(f, 42, 28); }, "Its program headers are malformed."},
        {"segment past the end", [](auto& f, auto ph, auto) { put32(f, ph + 16, 0x100000); },
         "The file is cut short: a segment's bytes are missing."},
        {"segment in the data space", [](auto& f, auto ph, auto) { put32(f, ph + 12, 0x800100); },
         "A segment loads at 0x800100, neither in program memory nor in EEPROM."},
        {"segment across the flash end", [](auto& f, auto ph, auto) { put32(f, ph + 12, 0x7FFF00); },
         "A segment loads at 0x7FFF00, neither in program memory nor in EEPROM."},
        {"nothing loads", [](auto& f, auto ph, auto) { for (int i = 0; i < 4; ++i) put32(f, ph + 32 * i, 6); },
         "No segment loads anything: there is no program in it."},
        {"section headers cut", [](auto& f, auto, auto sh) { f.resize(sh + 100); },
         "The file is cut short: its section headers are missing."},
        {"odd section header size", [](auto& f, auto, auto) { put16(f, 46, 36); }, "Its section headers are malformed."},
        {"symbol names in no table", [](auto& f, auto, auto sh) { put32(f, symbols(f, sh) + 24, 99); },
         "Its symbol table is malformed."},
        {"symbol name past its table",
         [](auto& f, auto, auto sh) { put32(f, sh + 40 * get32(f, symbols(f, sh) + 24) + 20, 4); },
         "A symbol's name lies outside its string table."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        std::vector<uint8_t> file = good;
        row.damage(file, phoff, shoff);
        const ElfReadResult result = readelf(file);
        EXPECT_FALSE(result.program);
        EXPECT_EQ(result.error, row.message);
    }
    // Without section headers the program still loads, only nameless.
    std::vector<uint8_t> stripped = good;
    put16(stripped, 48, 0);
    const ElfReadResult result = readelf(stripped);
    ASSERT_TRUE(result.program) << result.error;
    EXPECT_TRUE(result.program->symbols.empty());
    EXPECT_EQ(result.program->flash, readelf(good).program->flash);
}

}  // namespace
}  // namespace velmora::test
