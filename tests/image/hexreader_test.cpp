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
    EXPECT_EQ(hexerrortail(1), ": The record does not begin with ':' simbol.");
    EXPECT_EQ(hexerrortail(8), ": Field 'number of bytes' in the record must contain an even value.");
    EXPECT_EQ(hexerrortail(9), ": Field 'address' in the record must contain an even value.");
    EXPECT_EQ(hexerrortail(12), ": Address out of range.");
    EXPECT_EQ(hexerrortail(13), ": Invalid '02 type' record.");
    for (int code = 1; code <= 13; ++code) EXPECT_TRUE(hexerrortail(code).starts_with(": ")) << code;
}

// Inputs that load, or stop at an error, with the bytes that stand afterwards.
TEST(HexReader, RecordsLineEndsAndTheBytesThatStay) {
    const struct {
        const char* why;
        std::string text;
        int error, line, highest;
        std::vector<std::pair<size_t, uint8_t>> bytes;
    } cases[] = {
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
    };
    for (const auto& c : cases) {
        const Loaded loaded = read(c.text);
        EXPECT_EQ(loaded.result.error, c.error) << c.why;
        if (c.line >= 0) { EXPECT_EQ(loaded.result.line, c.line) << c.why; }
        if (c.highest >= 0) { EXPECT_EQ(loaded.highest, c.highest) << c.why; }
        for (const auto& [address, value] : c.bytes) EXPECT_EQ(loaded.memory[address], value) << c.why << " @" << address;
    }
}

TEST(HexReader, LineEndsOfEveryKindAndTrailingBlanks) {
    for (const char* end : {"\n", "\r\n", "\r", " \t \r\n", "   \n"}) {
        const std::string text = std::string(":0100000055AA") + end + ":0100010066" + "98" + end + "bad";
        const Loaded loaded = read(text);
        EXPECT_EQ(loaded.memory[0], 0x55);
        EXPECT_EQ(loaded.memory[1], 0x66);
        EXPECT_EQ(loaded.result.line, 3) << "line end " << ::testing::PrintToString(end);
    }
}

TEST(HexReader, ExtendedAddressesAddUpAndStayInForce) {
    const struct {
        const char* why;
        std::string records;
        size_t address;
    } cases[] = {
        {"segment 1000 is byte 65536", ":020000021000EC\n", 65536},
        {"linear 0001 is byte 65536", ":020000040001F9\n", 65536},
        {"both at once", ":020000021000EC\n:020000040001F9\n", 131072},
        {"replaced by a later one", ":020000021000EC\n:020000020000FC\n", 0},
    };
    for (const auto& c : cases) {
        const Loaded loaded = read(c.records + ":010000007788\n:010001007787\n", 262144);
        ASSERT_TRUE(loaded.result.ok()) << c.why;
        EXPECT_EQ(loaded.memory[c.address], 0x77) << c.why;
        EXPECT_EQ(loaded.memory[c.address + 1], 0x77) << c.why << ": still in force on the next record";
        EXPECT_EQ(loaded.highest, static_cast<int>(c.address + 2)) << c.why;
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

// A deterministic stream of bytes of every value.
std::string noise(size_t size, uint32_t seed) {
    std::string text(size, '\0');
    for (char& c : text) {
        seed = seed * 1664525u + 1013904223u;
        c = static_cast<char>(seed >> 24);
    }
    return text;
}

TEST(HexReader, BinaryNoiseIsAnErrorNotACrash) {
    for (uint32_t seed = 1; seed <= 50; ++seed) {
        std::string text = noise(4096, seed);
        if (seed % 2 == 0) text[0] = ':';  // make the first record look like one
        const Loaded loaded = read(text);
        EXPECT_FALSE(loaded.result.ok()) << seed;
        EXPECT_GE(loaded.result.line, 1) << seed;
    }
}

TEST(HexReader, TenMegabytesInOneLine) {
    const Loaded record = read(":" + std::string(10u << 20, '0'));
    EXPECT_EQ(record.result.error, kHexLength);
    EXPECT_EQ(record.result.line, 1);
    const Loaded text = read(std::string(10u << 20, 'x'));
    EXPECT_EQ(text.result.error, kHexNoColon);
}

TEST(HexReader, TenMegabytesOfNoise) {
    const Loaded loaded = read(noise(10u << 20, 7));
    EXPECT_FALSE(loaded.result.ok());
}

}  // namespace
}  // namespace velmora::test
