// What avr-gdb reads and writes, as (request -> reply) rows on a machine whose registers and
// memories hold known bytes: avr-gdb's register layout (R0-R31, SREG, SP, PC in bytes, all
// little-endian) and its address spaces (flash 0, data 0x800000, EEPROM 0x810000).

#include <gtest/gtest.h>

#include <string>

#include "gdb/gdbtarget.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

// R0-R31 hold their numbers, SREG $82, SP $08FF, PC word $12 (byte $24); flash starts
// 0C 94 34 00; data $100-$101 hold AB CD; EEPROM starts 5A.
struct Target : Sim {
    Target() : Sim(32768, 2048, 1024) {
        for (int r = 0; r < 32; ++r) m.datamem[r] = static_cast<uint8_t>(r);
        m.datamem[kSregAddress] = 0x82;
        m.datamem[kSplAddress] = 0xFF;
        m.datamem[kSphAddress] = 0x08;
        m.pc = 0x12;
        load({0x940C, 0x0034});
        m.datamem[0x100] = 0xAB;
        m.datamem[0x101] = 0xCD;
        m.eeprommem[0] = 0x5A;
    }
    GdbTarget gdb{m};
};

std::string registerfile() {
    std::string text;
    for (int r = 0; r < 32; ++r) text += (r < 16 ? "0" : "1") + std::string(1, "0123456789abcdef"[r % 16]);
    return text + "82" + "ff08" + "24000000";
}

TEST(GdbTarget, ReadsAndWritesAsAvrGdbAsks) {
    const struct {
        const char* request;
        std::string reply;
    } rows[] = {
        {"g", registerfile()},
        {"p0", "00"}, {"p1f", "1f"}, {"p20", "82"}, {"p21", "ff08"}, {"p22", "24000000"}, {"p23", "E01"},
        {"m0,4", "0c943400"}, {"m800100,2", "abcd"}, {"m810000,1", "5a"},
        {"m80085f,4", "00"},  // as far as the data space reaches (96 + 2048 bytes: $85F is the last)
        {"m900000,1", "E01"}, {"m0", "E01"}, {"m0,1001", "E01"},
        {"M800100,2:1234", "OK"}, {"m800100,2", "1234"},
        {"X800102,2:}A", "OK"}, {"m800102,2", "7d41"},
        {"M810001,1:77", "OK"}, {"m810000,2", "5a77"},
        {"M800100,2:12", "E01"}, {"M900000,1:00", "E01"},
        {"P10=99", "OK"}, {"p10", "99"},
        {"P21=fe07", "OK"}, {"p21", "fe07"},
        {"P22=30000000", "OK"}, {"p22", "30000000"},
        {"Z0,24,2", "OK"}, {"Z1,30,2", "OK"}, {"z0,24,2", "OK"}, {"Z0,23,2", "E01"}, {"Z2,800100,2", "OK"}, {"Z3,800010,1", "E01"}, {"Z4,100,1", "E01"}, {"Z5,0,1", ""},
        {"qSupported:multiprocess+;swbreak+", "PacketSize=3fff"}, {"qAttached", "1"}, {"Hg0", "OK"},
        {"qTStatus", ""}, {"", ""},
    };
    Target t;
    for (const auto& row : rows) {
        const std::optional<std::string> reply = t.gdb.answer(row.request);
        ASSERT_TRUE(reply) << row.request;
        EXPECT_EQ(*reply, row.reply) << row.request;
    }
    EXPECT_EQ(t.gdb.breakpoints(), (std::set<uint32_t>{0x30}));
    EXPECT_TRUE(t.m.breakpointsset);
    EXPECT_TRUE(t.m.breakat[0x18]) << "byte $30 is word $18";
    EXPECT_FALSE(t.m.breakat[0x12]);
    for (const char* server : {"c", "s", "vCont;c", "k", "D", "?"}) EXPECT_FALSE(t.gdb.answer(server)) << server;
}

TEST(GdbTarget, WritingAllRegistersSetsPcSpAndSreg) {
    Target t;
    std::string file = registerfile();
    file.replace(64, 2, "03");           // SREG
    file.replace(66, 4, "0001");         // SP $0100
    file.replace(70, 8, "10000000");     // PC byte $10: word 8
    ASSERT_EQ(t.gdb.answer("G" + file), "OK");
    EXPECT_EQ(t.m.datamem[kSregAddress], 0x03);
    EXPECT_EQ(t.m.datamem[kSplAddress] | (t.m.datamem[kSphAddress] << 8), 0x0100);
    EXPECT_EQ(t.m.pc, 8);
    EXPECT_EQ(t.gdb.answer("G00"), "E01");
}

}  // namespace
}  // namespace velmora::test
