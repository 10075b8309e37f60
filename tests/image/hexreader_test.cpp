// The Intel HEX reader: each error code from a minimal bad file, the record types, line
// counting, and input that is cut short, binary or very large (cases in data/tables.txt).
// Checksums are worked out by hand.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "image/hexreader.h"
#include "support/sectiontable.h"

namespace velmora::test {
namespace {

struct Loaded {
    HexReadResult result;
    std::vector<uint8_t> memory;
    int highest = 0;
};

Loaded read(const std::string& text, size_t size = 256) {
    Loaded loaded;
    loaded.memory.assign(size, 0xFF);
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
    const std::pair<int, const char*> cases[] = {
        {1, ": The record does not begin with ':' simbol."},
        {8, ": Field 'number of bytes' in the record must contain an even value."},
        {9, ": Field 'address' in the record must contain an even value."},
        {12, ": Address out of range."},
        {13, ": Invalid '02 type' record."},
    };
    for (const auto& [code, tail] : cases) EXPECT_EQ(hexerrortail(code), tail) << code;
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
    Loaded loaded;
    loaded.memory.assign(256, 0xFF);
    loaded.highest = 100;
    std::istringstream in(":0100000055AA\n");
    EXPECT_TRUE(readintelhex(in, loaded.memory, loaded.highest).ok());
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

}  // namespace
}  // namespace velmora::test
