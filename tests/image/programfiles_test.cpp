// Loading a file into program memory: the message, what is left alone, files that are no
// program at all, and the images of the AVR tool chain (data/make.sh), each loaded into a
// machine of its chip's flash size and compared with the plain bytes avr-objcopy made of it.
//
// The ELF reader against binutils-avr: the debugging test's program (built with avr-gcc -g
// -Og) gives the bytes avr-objcopy wrote to its HEX files and the functions and objects
// avr-readelf lists; every damage to it gives its message.
//
// The Intel HEX reader: each error code from a minimal bad file, the record types, line
// counting, and input that is cut short, binary or very large (cases in data/tables.txt).
// Checksums are worked out by hand. The writer of "Save Memory": record layout checked against
// avr-objcopy's own records, and the 64 KiB address records (the round trip through the
// reader is ToolchainImages').

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <vector>

#include "core/memorysettings.h"
#include "core/numbers.h"
#include "image/elfreader.h"
#include "image/hexload.h"
#include "image/hexreader.h"
#include "image/hexwriter.h"
#include "image/programcommands.h"
#include "support/sectiontable.h"
#include "support/simfixture.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

std::string datafile(const std::string& name) { return std::string(VELMORA_TEST_DATA_DIR) + "/" + name; }

class HexLoadTest : public ::testing::Test {
protected:
    TempFolder folder;
    Machine m;
    RecordingMessenger messenger;

    void SetUp() override { configurebaremachine(m, 256, 128, 64); }

    bool load(const std::string& text) {
        const auto path = folder / "program.hex";
        writefile(path, text);
        return hexload(m, path.string(), messenger);
    }
};

TEST_F(HexLoadTest, TheErrorMessageNamesTheLineAndTheFault) {
    // progmem has four spare bytes behind the flash; a record may not reach them.
    EXPECT_FALSE(load(":0100000055AA\r\n; note\r\n:0101000055A9\r\n"));
    EXPECT_EQ(messenger.messages, std::vector<std::string>{"Input program file in Intel Hex Format contains "
                                                           "errors.\nLine number 3: Address out of range."});
    EXPECT_EQ(m.progmem[256], 0xFF);
}

TEST_F(HexLoadTest, ASuccessIsSilentAndTouchesOnlyProgramMemory) {
    m.eeprommem[0] = 0x12;
    m.datamem[100] = 0x34;
    m.pc = 7;
    m.programbytes = 1;
    EXPECT_TRUE(load(":020000000C94" "5E\r\n:00000001FF\r\n"));
    EXPECT_TRUE(messenger.messages.empty());
    EXPECT_EQ(std::vector<int>({m.progmem[0], m.progmem[1], m.programbytes, m.eeprommem[0], m.datamem[100], m.pc}),
              std::vector<int>({0x0C, 0x94, 2, 0x12, 0x34, 7}));
}

TEST_F(HexLoadTest, WhatIsNoPlainFileCannotBeOpened) {
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::filesystem::create_directory(folder / "folder.hex");
    for (const char* name : {"missing.hex", "pipe", "folder.hex"}) {
        messenger.messages.clear();
        EXPECT_FALSE(hexload(m, (folder / name).string(), messenger)) << name;
        EXPECT_EQ(messenger.messages, std::vector<std::string>{kCannotOpenText}) << name;
    }
}

TEST_F(HexLoadTest, TruncatedAtAnyByte) {
    // Cut after every byte of a real image: a cut at the end of a record loads, a cut inside a
    // record is an error on that record's line; the lines before it are in memory either way.
    const std::string whole = readfile(datafile("small.hex"));
    configurebaremachine(m, 8192, 128, 64);
    for (size_t length = 1; length < whole.size(); ++length) {
        const std::string cut = whole.substr(0, length);
        fillunprogrammed(m);
        m.programbytes = 0;
        messenger.messages.clear();
        const bool wholerecords = cut.back() == '\n' || cut.back() == '\r' || whole[length] == '\r';
        EXPECT_EQ(load(cut), wholerecords) << length;
        const size_t newlines = static_cast<size_t>(std::count(cut.begin(), cut.end(), '\n'));
        if (!wholerecords) {
            ASSERT_EQ(messenger.messages.size(), 1u);
            EXPECT_NE(messenger.messages[0].find("Line number " + std::to_string(newlines + 1) + ":"),
                      std::string::npos)
                << length << ": " << messenger.messages[0];
        }
        if (newlines >= 1) { EXPECT_EQ(m.progmem[0], 0x17) << length; }
    }
}

TEST_F(HexLoadTest, TenMegabytesOfRecords) {
    // 10 MB of valid records rewriting the same 4 KiB: read to the end, nothing lost.
    configurebaremachine(m, 8192, 128, 64);
    std::string text;
    text.reserve(11u << 20);
    const std::string record = ":10000000000102030405060708090A0B0C0D0E0F78\r\n";
    while (text.size() < (10u << 20)) text += record;
    text += ":01000100AA54\r\n";  // the last record still counts
    EXPECT_TRUE(load(text)) << messenger.messages.at(0);
    EXPECT_EQ(std::vector<int>({m.progmem[0], m.progmem[1], m.programbytes}), std::vector<int>({0x00, 0xAA, 16}));
}

TEST(UnprogrammedValue, FromTheSetting) {
    for (const TableRow& row : tablerows("tables.txt", "Unprogrammed value")) {
        MemorySettings settings;
        settings.putsetting("Unprogrammed Bit Value", row[0]);
        EXPECT_EQ(unprogrammedvalue(settings), row.number(1)) << row.where;
    }
    MemorySettings fresh;
    EXPECT_EQ(unprogrammedvalue(fresh), 0xFF);
    EXPECT_EQ(fresh.getsetting("Unprogrammed Bit Value", "none"), "1") << "the first read stores the default";
}

// Each image is loaded into a machine of the flash size of the chip it was built for.
TEST(ToolchainImages, LoadTheBytesThatAvrObjcopyReadsAndSaveThemAgain) {
    for (const auto& [name, flashsize] : {std::pair{"small", 8192}, {"big", 131072}, {"holes", 131072}}) {
        SCOPED_TRACE(name);
        TempFolder folder;
        Machine first, second;
        configurebaremachine(first, flashsize, 1024, 512);
        configurebaremachine(second, flashsize, 1024, 512);
        RecordingMessenger messenger;
        MemorySettings settings;
        ProgramCommands load(first, messenger, settings, {}, "/");
        ProgramCommands reload(second, messenger, settings, {}, "/");
        auto chosen = [](std::string path) { return [path](const std::string&) { return path; }; };
        ASSERT_EQ(load.menuload(chosen(datafile(std::string(name) + ".hex"))), CommandResult::Done)
            << messenger.messages.at(0);

        // The reference runs from byte 0 to the last byte of the image, gaps filled with 0xFF.
        const std::string reference = readfile(datafile(std::string(name) + ".bin"));
        ASSERT_FALSE(reference.empty());
        EXPECT_EQ(first.programbytes, static_cast<int>(reference.size()));
        std::vector<uint8_t> expected(reference.begin(), reference.end());
        expected.resize(first.progmem.size(), 0xFF);
        EXPECT_TRUE(first.progmem == expected);

        ASSERT_EQ(load.menusave(chosen((folder / "saved").string())), CommandResult::Done);
        ASSERT_EQ(reload.menuload(chosen((folder / "saved.hex").string())), CommandResult::Done);
        EXPECT_TRUE(first.progmem == second.progmem);
        // The saved image ends at the last programmed byte, rounded up to a whole word.
        const auto last = std::ranges::find_if(first.progmem.rbegin(), first.progmem.rend(),
                                               [](uint8_t b) { return b != 0xFF; });
        const int end = static_cast<int>(first.progmem.rend() - last);
        EXPECT_EQ(second.programbytes, end + end % 2);
    }
}

TEST(ToolchainImagesCheck, TheBigImagesPass64KiBAndDoNotFitASmallerChip) {
    // Otherwise the tests above would not reach the extended address records.
    EXPECT_GT(readfile(datafile("big.bin")).size(), 65536u);
    EXPECT_NE(readfile(datafile("big.hex")).find(":020000021000EC"), std::string::npos);
    EXPECT_NE(readfile(datafile("holes.hex")).find(":020000021000EC"), std::string::npos);

    Machine m;
    configurebaremachine(m, 65536, 1024, 512);
    RecordingMessenger messenger;
    EXPECT_FALSE(hexload(m, datafile("big.hex"), messenger));
    // 16 bytes a record: the first record past 64 KiB follows 4096 data records and a
    // segment record, and avr-objcopy starts the file with no address record.
    EXPECT_EQ(messenger.messages, std::vector<std::string>{"Input program file in Intel Hex Format contains "
                                                           "errors.\nLine number 4098: Address out of range."});
}

const std::string kFolder = datafile("../../firmware/elf/");

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

uint32_t get32(const std::vector<uint8_t>& f, size_t at) {
    return f[at] | (f[at + 1] << 8) | (f[at + 2] << 16) | (static_cast<uint32_t>(f[at + 3]) << 24);
}

// One step of a damage of data/tables.txt [ELF damage]: "OP BASE+OFFSET [VALUE]".
void damage(std::vector<uint8_t>& f, const std::string& step) {
    std::istringstream words(step);
    std::string op, place, value;
    words >> op >> place >> value;
    const std::string base = place.substr(0, place.find('+'));
    const uint32_t shoff = get32(f, 32);
    size_t symtab = shoff;  // the section header of type 2; its link names the string table
    while (base.ends_with("tab") && get32(f, symtab + 4) != 2) symtab += 40;
    const size_t at = std::stoul(place.substr(place.find('+') + 1), nullptr, 0) +
                      (base == "ph" ? get32(f, 28) : base == "sh" ? shoff : base == "symtab" ? symtab
                       : base == "strtab" ? shoff + 40 * get32(f, symtab + 24) : 0);
    const int bytes = op == "put8" ? 1 : op == "put16" ? 2 : op == "put32" ? 4 : 0;
    for (int i = 0; i < bytes; ++i) f.at(at + i) = (std::stoul(value, nullptr, 0) >> (8 * i)) & 0xFF;
    if (op == "resize") f.resize(at);
    if (op == "text") f.assign(value.begin(), value.end());
}

TEST(ElfReader, EveryDamageGivesItsMessage) {
    const std::vector<uint8_t> good = filebytes(kFolder + "debugged.elf");
    for (const TableRow& row : tablerows("tables.txt", "ELF damage")) {
        std::vector<uint8_t> file = good;
        for (size_t at = 0, end = 0; end != std::string::npos; at = end + 2) {
            end = row[1].find("; ", at);
            damage(file, row[1].substr(at, end == std::string::npos ? end : end - at));
        }
        const ElfReadResult result = readelf(file);
        EXPECT_FALSE(result.program) << row.where;
        EXPECT_EQ(result.error, row[2]) << row.where;
    }
    // Without section headers the program still loads, only nameless.
    std::vector<uint8_t> stripped = good;
    damage(stripped, "put16 file+48 0");
    const ElfReadResult result = readelf(stripped);
    ASSERT_TRUE(result.program) << result.error;
    EXPECT_TRUE(result.program->symbols.empty());
    EXPECT_EQ(result.program->flash, readelf(good).program->flash);
}

struct Loaded {
    HexReadResult result;
    std::vector<uint8_t> memory;
    int highest = 0;
};

Loaded read(const std::string& text, size_t size = 256, int highest = 0) {
    Loaded loaded;
    loaded.memory.assign(size, 0xFF);
    loaded.highest = highest;
    std::istringstream in(text);
    loaded.result = readintelhex(in, loaded.memory, loaded.highest);
    return loaded;
}

TEST(HexReader, EveryErrorCodeFromAMinimalFile) {
    for (const TableRow& row : tablerows("tables.txt", "Reader errors")) {
        const Loaded loaded = read(row[1] + "\r\n:00000001FF\r\n");
        EXPECT_EQ(loaded.result.error, row.number(2)) << row.where;
        EXPECT_EQ(loaded.result.line, 1) << row.where;
    }
}

TEST(HexReader, TailsOfTheErrorMessages) {
    for (const TableRow& row : tablerows("tables.txt", "Reader error tails"))
        EXPECT_EQ(hexerrortail(static_cast<int>(row.number(0))), row[1]) << row.where;
    for (int code = 1; code <= 13; ++code) EXPECT_TRUE(hexerrortail(code).starts_with(": ")) << code;
}

// Inputs that load, or stop at an error, with the bytes that stand afterwards.
TEST(HexReader, RecordsLineEndsAddressesAndTheBytesThatStay) {
    for (const TableRow& row : tablerows("tables.txt", "Reader records")) {
        const Loaded loaded = read(row[1], static_cast<size_t>(row.number(6)));
        EXPECT_EQ(loaded.result.error, row.number(2)) << row.where;
        if (row.number(3) >= 0) { EXPECT_EQ(loaded.result.line, row.number(3)) << row.where; }
        if (row.number(4) >= 0) { EXPECT_EQ(loaded.highest, row.number(4)) << row.where; }
        std::istringstream bytes(row[5]);
        for (std::string byte; bytes >> byte;) {
            const int value = std::stoi(byte.substr(byte.find('=') + 1), nullptr, 16);
            EXPECT_EQ(loaded.memory.at(std::stoul(byte, nullptr, 16)), value) << row.where << " @" << byte;
        }
    }
    const Loaded blanks = read(":0100000055AA" + std::string(10u << 20, ' ') + "\n");  // trailing blanks of any length
    EXPECT_TRUE(blanks.result.ok());
    EXPECT_EQ(blanks.memory[0], 0x55);
}

TEST(HexReader, HighestOnlyRises) {
    const Loaded loaded = read(":0100000055AA\n", 256, 100);
    EXPECT_TRUE(loaded.result.ok());
    EXPECT_EQ(loaded.highest, 100);
}

TEST(HexReader, BinaryAndHugeInputIsAnErrorNotACrash) {
    const auto noise = [](size_t size, uint32_t seed) {  // a deterministic stream of bytes of every value
        std::string text(size, '\0');
        for (char& c : text) c = static_cast<char>((seed = seed * 1664525u + 1013904223u) >> 24);
        return text;
    };
    for (uint32_t seed = 1; seed <= 50; ++seed) {
        std::string text = noise(4096, seed);
        if (seed % 2 == 0) text[0] = ':';  // make the first record look like one
        const Loaded loaded = read(text);
        EXPECT_FALSE(loaded.result.ok()) << seed;
        EXPECT_GE(loaded.result.line, 1) << seed;
    }
    EXPECT_FALSE(read(noise(10u << 20, 7)).result.ok());
    const Loaded record = read(":" + std::string(10u << 20, '0'));  // ten megabytes in one line
    EXPECT_EQ(record.result.error, kHexLength);
    EXPECT_EQ(record.result.line, 1);
    EXPECT_EQ(read(std::string(10u << 20, 'x')).result.error, kHexNoColon);
}

std::vector<std::string> crlflines(const std::string& text) {
    std::vector<std::string> lines;
    for (size_t at = 0; at < text.size();) {
        const size_t end = text.find("\r\n", at);
        if (end == std::string::npos) break;
        lines.push_back(text.substr(at, end - at));
        at = end + 2;
    }
    return lines;
}

// Every record that avr-objcopy wrote is rebuilt from its own fields: same text, same checksum.
TEST(HexWriter, RecordsMatchThoseOfAvrObjcopy) {
    for (const char* name : {"small.hex", "big.hex", "holes.hex"}) {
        const std::string text = readfile(datafile(name));
        const std::vector<std::string> lines = crlflines(text);
        ASSERT_GT(lines.size(), 2u) << name;
        for (const std::string& line : lines) {
            const int type = hexfield(line.substr(7, 2), 2);
            const int address = hexfield(line.substr(3, 4), 4);
            std::vector<uint8_t> data;
            for (size_t at = 9; at + 2 < line.size(); at += 2)
                data.push_back(static_cast<uint8_t>(hexfield(line.substr(at, 2), 2)));
            EXPECT_EQ(hexrecord(type, static_cast<uint16_t>(address), data), line + "\r\n") << name;
        }
    }
}

TEST(HexWriter, SixteenByteRecordsAndAShorterLastOne) {
    for (const TableRow& row : tablerows("tables.txt", "Writer records")) {
        std::vector<uint8_t> image;
        std::istringstream bytes(row[0]);
        for (std::string byte; bytes >> byte;) {
            const int first = std::stoi(byte.substr(0, 2), nullptr, 16);
            const int last = std::stoi(byte.substr(byte.size() - 2), nullptr, 16);
            for (int value = first; value <= last; ++value) image.push_back(static_cast<uint8_t>(value));
        }
        EXPECT_EQ(writeintelhex(image), row[1]) << row.where;
    }
}

TEST(HexWriter, AnAddressRecordBeforeEach64KiBlock) {
    const std::vector<uint8_t> image(2 * 65536 + 32, 0x00);
    const std::vector<std::string> lines = crlflines(writeintelhex(image));
    std::vector<std::string> addressrecords;
    for (const std::string& line : lines)
        if (line.substr(7, 2) == "04") addressrecords.push_back(line);
    EXPECT_EQ(addressrecords, (std::vector<std::string>{":020000040000FA", ":020000040001F9", ":020000040002F8"}));
    EXPECT_EQ(lines[4097], ":020000040001F9");
    EXPECT_EQ(lines[4098], ":10000000" + std::string(32, '0') + "F0");
}

}  // namespace
}  // namespace velmora::test
