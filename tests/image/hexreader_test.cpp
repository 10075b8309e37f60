// The Intel HEX reader: each error code from a minimal bad file, the record types, line
// counting, and input that is cut short, binary or very large. Checksums in the literals
// are worked out by hand.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "image/hexreader.h"

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
    const struct {
        const char* why;
        std::string text;
        int error;
    } cases[] = {
        {"no colon", "0100000055AA", 1},
        {"ten characters", ":000000010", 2},
        {"wrong checksum", ":00000001FE", 3},
        {"lower-case checksum", ":0100000055aa", 3},
        {"type 03", ":00000003FD", 4},
        {"type 0A", ":0000000AF6", 4},
        {"04 with an address", ":020001040001F8", 5},
        {"04 with two digits", ":0100000400FB", 5},
        {"04 with a lower-case digit", ":02000004000aF0", 5},
        {"lower-case count", ":0a000000" + std::string(20, '0') + "F6", 6},
        {"count that is no number", ":G10000000000", 6},
        {"lower-case address", ":01000a0055A0", 7},
        {"fewer bytes than counted", ":0200000055A9", 10},
        {"lower-case data byte", ":01000000ab54", 11},
        {"beyond 256 bytes of memory", ":0101000055A9", 12},
        {"02 not ending in 0", ":020000021001EB", 13},
        {"02 with an address", ":020001021000EB", 13},
    };
    for (const auto& c : cases) {
        const Loaded loaded = read(c.text + "\r\n:00000001FF\r\n");
        EXPECT_EQ(loaded.result.error, c.error) << c.why;
        EXPECT_EQ(loaded.result.line, 1) << c.why;
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
    struct Case {
        std::string why, text;
        int error, line, highest;
        std::vector<std::pair<size_t, uint8_t>> bytes;
        size_t size = 256;
    };
    const std::string twobytes = ":010000007788\n:010001007787\n";
    std::vector<Case> cases = {
        {"odd counts and addresses load as they are", ":03000100AABBCCCB\n", kHexOk, -1, 4,
         {{0, 0xFF}, {1, 0xAA}, {3, 0xCC}}},
        {"comments and empty lines count for line numbers", "; a comment\n\n   \n:0100000055AA\n;\nnot a record\n",
         kHexNoColon, 6, -1, {{0, 0x55}}},
        {"the end record stops reading", ":0100000055AA\n:00000001FF\n:0100010066\x01\ngarbage\n", kHexOk, -1, -1,
         {{1, 0xFF}}},
        {"a file without end record loads to its end", ":0100000055AA\n:010001006698", kHexOk, -1, 2, {{1, 0x66}}},
        // Type 05 is accepted and ignored; a data record without data is skipped whatever its count.
        {"records that carry nothing", ":0400000500000000F7\n:10000000F0\n:00000001FF\n", kHexOk, -1, 0, {}},
        // Bytes 254 and 255 fit, the third does not.
        {"bytes before an error stay", ":0300FE00010203F9\n", kHexOutOfRange, -1, 256, {{254, 0x01}, {255, 0x02}}},
        {"trailing blanks of any length", ":0100000055AA" + std::string(10u << 20, ' ') + "\n", kHexOk, -1, -1,
         {{0, 0x55}}},
        // The extended addresses add up and stay in force on the next record.
        {"segment 1000 is byte 65536", ":020000021000EC\n" + twobytes, kHexOk, -1, 65538,
         {{65536, 0x77}, {65537, 0x77}}, 262144},
        {"linear 0001 is byte 65536", ":020000040001F9\n" + twobytes, kHexOk, -1, 65538,
         {{65536, 0x77}, {65537, 0x77}}, 262144},
        {"segment and linear at once", ":020000021000EC\n:020000040001F9\n" + twobytes, kHexOk, -1, 131074,
         {{131072, 0x77}, {131073, 0x77}}, 262144},
        {"replaced by a later one", ":020000021000EC\n:020000020000FC\n" + twobytes, kHexOk, -1, 2,
         {{0, 0x77}, {1, 0x77}}, 262144},
    };
    for (const char* end : {"\n", "\r\n", "\r", " \t \r\n", "   \n"})
        cases.push_back({"line end " + ::testing::PrintToString(end),
                         std::string(":0100000055AA") + end + ":0100010066" + "98" + end + "bad", kHexNoColon, 3, -1,
                         {{0, 0x55}, {1, 0x66}}});
    for (const auto& c : cases) {
        const Loaded loaded = read(c.text, c.size);
        EXPECT_EQ(loaded.result.error, c.error) << c.why;
        if (c.line >= 0) { EXPECT_EQ(loaded.result.line, c.line) << c.why; }
        if (c.highest >= 0) { EXPECT_EQ(loaded.highest, c.highest) << c.why; }
        for (const auto& [address, value] : c.bytes) EXPECT_EQ(loaded.memory[address], value) << c.why << " @" << address;
    }
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
