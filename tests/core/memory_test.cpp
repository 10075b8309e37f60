// Loads, stores and program memory reads through the pointer registers, and the side
// effects of the two data paths.

#include <gtest/gtest.h>

#include "core/encode.h"
#include "core/memory.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

// ld r5,X / X+ / -X ; st X,r5 / X+ / -X — the low nibble selects the mode.
uint16_t ldx(int d, int mode) { return static_cast<uint16_t>(0x9000 | ((d & 31) << 4) | mode); }
uint16_t stx(int r, int mode) { return static_cast<uint16_t>(0x9200 | ((r & 31) << 4) | mode); }

void setx(Sim& sim, int value) {
    sim.reg(26) = static_cast<uint8_t>(value & 0xFF);
    sim.reg(27) = static_cast<uint8_t>(value >> 8);
}
int getx(Sim& sim) { return sim.reg(26) | (sim.reg(27) << 8); }

TEST(Pointers, LoadModesAndTwoCycles) {
    struct {
        int mode, xbefore, address, xafter;
    } cases[] = {{12, 0x100, 0x100, 0x100}, {13, 0x100, 0x100, 0x101}, {14, 0x100, 0x0FF, 0x0FF}};
    for (const auto& c : cases) {
        Sim sim;
        sim.load({ldx(5, c.mode)});
        setx(sim, c.xbefore);
        sim.m.datamem[c.address] = 0x77;
        sim.step();
        EXPECT_EQ(sim.reg(5), 0x77) << c.mode;
        EXPECT_EQ(getx(sim), c.xafter) << c.mode;
        EXPECT_EQ(instructioncycles(sim.m), 2u);
    }
}

TEST(Pointers, StoreModes) {
    Sim sim;
    sim.load({stx(5, 13), stx(6, 14)});
    setx(sim, 0x200);
    sim.reg(5) = 0x11;
    sim.reg(6) = 0x22;
    sim.step(2);
    EXPECT_EQ(sim.m.datamem[0x200], 0x22);  // -X stepped back onto the same cell
    EXPECT_EQ(getx(sim), 0x200);
}

TEST(Pointers, LoadIntoPointerLowIncrementsTheLoadedValue) {
    Sim sim;
    sim.load({ldx(26, 13)});  // ld r26,X+
    setx(sim, 0x100);
    sim.m.datamem[0x100] = 0x40;
    sim.step();
    EXPECT_EQ(sim.reg(26), 0x41);
    EXPECT_EQ(sim.reg(27), 0x01);
}

TEST(Pointers, EightBitPointerWrapsInTheLowRegister) {
    Sim sim(2048, 128, 0);  // 224-byte data space
    ASSERT_TRUE(sim.m.eightbitpointers);
    sim.load({stx(5, 13)});
    sim.reg(26) = 0xFF;
    sim.reg(27) = 0x12;
    sim.step();
    EXPECT_EQ(sim.reg(26), 0x00);
    EXPECT_EQ(sim.reg(27), 0x12);
}

TEST(Pointers, LddUsesDisplacementWithoutWrap) {
    Sim sim;
    sim.load({ldd(4, true, 63), ldd(4, false, 2, true)});
    sim.reg(28) = 0xF0;
    sim.reg(29) = 0x01;
    sim.m.datamem[0x1F0 + 63] = 0x5A;
    sim.reg(30) = 0x00;
    sim.reg(31) = 0x03;
    sim.step(2);
    EXPECT_EQ(sim.reg(4), 0x5A);
    EXPECT_EQ(sim.m.datamem[0x302], 0x5A);
}

TEST(Pointers, LdsStsUseTheSecondWordAndStepTwice) {
    Sim sim;
    sim.load({0x9050, 0x0123, 0x9260, 0x0456});  // lds r5,$0123 ; sts $0456,r6
    sim.m.datamem[0x123] = 0x99;
    sim.reg(6) = 0x42;
    sim.step();
    EXPECT_EQ(sim.reg(5), 0x99);
    EXPECT_EQ(sim.m.pc, 2);
    EXPECT_EQ(instructioncycles(sim.m), 2u);
    sim.step();
    EXPECT_EQ(sim.m.datamem[0x456], 0x42);
}

TEST(DataPaths, OutOfRangeReadsZeroAndWritesAreDropped) {
    Sim sim;
    sim.load({stx(5, 12), ldx(6, 12)});
    setx(sim, sim.m.dataspacesize);
    sim.reg(5) = 0x12;
    sim.reg(6) = 0x34;
    sim.step(2);
    EXPECT_EQ(sim.reg(6), 0);
}

TEST(DataPaths, StoreToAGeneralRegisterIsMasked) {
    Sim sim;
    sim.load({stx(5, 12)});
    setx(sim, 3);
    sim.reg(5) = 0x12;
    sim.step();
    EXPECT_EQ(sim.reg(3), 0);  // a bare model gives R0..R31 write mask 0
}

// A machine with PORTB/PINB and one interrupt whose flags live in a polarity-1 register.
struct PortMachine : Sim {
    static constexpr int kPortB = 0x18 + 32, kPinB = 0x16 + 32, kFlags = 0x1A + 32;
    PortMachine() {
        m.roles.port[1] = kPortB;
        m.roles.pin[1] = kPinB;
        m.roles.portexists[1] = true;
        m.datamask[kPortB] = 0xFF;
        m.datamask[kPinB] = 0x00;
        m.datamask[kFlags] = 0xFF;
        m.interrupttable.push_back({"INT0", 2, "", 0, 1, kFlags, 0x40, 1});
        m.interrupttable.push_back({"INT1", 4, "", 0, 1, kFlags, 0x80, 1});
        marksideeffects(m);
    }
};

TEST(DataPaths, WritingOnesToPinTogglesThePort) {
    PortMachine sim;
    sim.load({ri(0xE000, 16, 0xFF), out(0x16, 16)});
    sim.m.datamem[PortMachine::kPortB] = 0x0F;
    sim.step(2);
    EXPECT_EQ(sim.m.datamem[PortMachine::kPortB], 0xF0);
    EXPECT_EQ(sim.m.datamem[PortMachine::kPinB], 0x00);
}

TEST(DataPaths, WritingOneClearsAFlagAndZeroKeepsIt) {
    PortMachine sim;
    sim.load({ri(0xE000, 16, 0x40), out(0x1A, 16)});
    sim.m.datamem[PortMachine::kFlags] = 0xC0;
    sim.step(2);
    EXPECT_EQ(sim.m.datamem[PortMachine::kFlags], 0x80);
}

TEST(DataPaths, SbiOnAFlagRegisterClearsEverySetFlag) {
    PortMachine sim;
    sim.load({iobit(0x9A00, 0x1A, 0)});  // sbi $1A,0
    sim.m.datamem[PortMachine::kFlags] = 0xC0;
    sim.step();
    EXPECT_EQ(sim.m.datamem[PortMachine::kFlags], 0x01);
    EXPECT_EQ(instructioncycles(sim.m), 2u);
}

TEST(ProgramMemory, LpmFormsAndLimits) {
    Sim sim(1024, 256, 0);
    sim.load({kLpm, static_cast<uint16_t>(0x9005 | (7 << 4)), kElpm});
    sim.m.progmem[0x100] = 0xAB;
    sim.m.progmem[0x101] = 0xCD;
    sim.reg(30) = 0x00;
    sim.reg(31) = 0x01;
    sim.step();
    EXPECT_EQ(sim.reg(0), 0xAB);
    EXPECT_EQ(instructioncycles(sim.m), 3u);
    sim.step();  // lpm r7,Z+
    EXPECT_EQ(sim.reg(7), 0xAB);
    EXPECT_EQ(sim.reg(30), 0x01);
    sim.reg(30) = 0x00;
    sim.reg(31) = 0x04;  // Z = flashsize: past the end
    sim.reg(0) = 0x5C;
    sim.step();
    EXPECT_EQ(sim.reg(0), 0x5C);
}

TEST(ProgramMemory, ZPlusWrapsAtSixteenBits) {
    Sim sim;
    sim.load({static_cast<uint16_t>(0x9005 | (7 << 4))});
    sim.reg(30) = 0xFF;
    sim.reg(31) = 0xFF;
    sim.step();
    EXPECT_EQ(sim.reg(30), 0);
    EXPECT_EQ(sim.reg(31), 0);
}

TEST(InOut, ReachIoThroughTheDataPath) {
    Sim sim;
    sim.load({ri(0xE000, 16, 0x12), out(0x3E, 16), in(5, 0x3E)});
    sim.step(3);
    EXPECT_EQ(sim.m.datamem[kSphAddress], 0x12);
    EXPECT_EQ(sim.reg(5), 0x12);
}

}  // namespace
}  // namespace velmora::test
