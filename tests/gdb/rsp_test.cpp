// GDB's packet framing: frames written out with their checksums worked out by hand (the sum of
// the characters between '$' and '#', modulo 256), read back across any split of the bytes.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "gdb/rsp.h"

namespace velmora::test {
namespace {

using Kind = RspEvent::Kind;

TEST(Rsp, ReadsEveryKindOfEventWhereverTheBytesAreSplit) {
    const struct {
        const char* why;
        std::string wire;
        std::vector<RspEvent> events;
    } rows[] = {
        {"a packet", "$g#67", {{Kind::Packet, "g"}}},
        {"ack, then a packet", "+$m0,4#fd", {{Kind::Ack, ""}, {Kind::Packet, "m0,4"}}},
        {"upper-case checksum digits", "$OK#9A", {{Kind::Packet, "OK"}}},
        {"a wrong checksum", "$g#66", {{Kind::BadChecksum, ""}}},
        {"a checksum that is no number", "$g#x7$g#67", {{Kind::BadChecksum, ""}, {Kind::Packet, "g"}}},
        {"Ctrl-C and a nak", "\x03-", {{Kind::Interrupt, ""}, {Kind::Nak, ""}}},
        {"noise between packets", "zz$g#67\n", {{Kind::Packet, "g"}}},
        {"an escaped '}' in binary data", "$X800100,2:}]A#34", {{Kind::Packet, "X800100,2:}A"}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        for (size_t split = 0; split <= row.wire.size(); ++split) {
            RspReader reader;
            std::vector<RspEvent> events;
            reader.feed(row.wire.data(), split, events);
            reader.feed(row.wire.data() + split, row.wire.size() - split, events);
            EXPECT_EQ(events, row.events) << "split at " << split;
        }
    }
}

TEST(Rsp, AnOverlongPacketIsDroppedWhole) {
    RspReader reader;
    std::vector<RspEvent> events;
    const std::string wire = "$" + std::string(RspReader::kPacketLimit + 10, 'a') + "#00$g#67";
    reader.feed(wire.data(), wire.size(), events);
    EXPECT_EQ(events, (std::vector<RspEvent>{{Kind::Packet, "g"}}));
}

TEST(Rsp, FramesEscapeWhatTheClientWouldReadAsFraming) {
    EXPECT_EQ(rspframe("OK"), "$OK#9a");
    EXPECT_EQ(rspframe(""), "$#00");
    EXPECT_EQ(rspframe("a#b"), std::string("$a}\x03" "b#43"));
}

TEST(Rsp, HexTextBothWays) {
    const uint8_t bytes[] = {0x00, 0x7f, 0xab, 0xff};
    EXPECT_EQ(hexbytes(bytes, 4), "007fabff");
    EXPECT_EQ(bytesofhex("007FabfF"), (std::vector<uint8_t>{0x00, 0x7f, 0xab, 0xff}));
    for (const char* bad : {"0", "0g", "abc"}) EXPECT_FALSE(bytesofhex(bad)) << bad;
    EXPECT_EQ(hexnumber("810000"), 0x810000u);
    for (const char* bad : {"", "123456789", "12z"}) EXPECT_FALSE(hexnumber(bad)) << bad;
}

}  // namespace
}  // namespace velmora::test
