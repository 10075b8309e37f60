// Loads, stores and program memory reads through the pointer registers, and the side
// effects of the two data paths.

#include <gtest/gtest.h>

#include "core/encode.h"
#include "core/memory.h"
#include "core/programcase.h"

namespace velmora::test {
namespace {

// ld r5,X / X+ / -X ; st X,r5 / X+ / -X — the low nibble selects the mode.
uint16_t ldx(int d, int mode) { return static_cast<uint16_t>(0x9000 | ((d & 31) << 4) | mode); }
uint16_t stx(int r, int mode) { return static_cast<uint16_t>(0x9200 | ((r & 31) << 4) | mode); }
constexpr int XL = 26, XH = 27, YL = 28, YH = 29, ZL = 30, ZH = 31;

// On the default bare machine: 32 Ki flash, a data space of 96 + 2048 bytes (ends at $85F),
// R0..R31 with write mask 0 for the data path.
TEST(DataPaths, PointersDirectAddressesAndTheirLimits) {
    const ProgramCase cases[] = {
        {"ld r5,X", {ldx(5, 12)}, {{XL, 0x00}, {XH, 0x01}, {0x100, 0x77}}, 1, {{5, 0x77}, {XL, 0x00}, {XH, 0x01}}, 1, 2},
        {"ld r5,X+", {ldx(5, 13)}, {{XL, 0x00}, {XH, 0x01}, {0x100, 0x77}}, 1, {{5, 0x77}, {XL, 0x01}, {XH, 0x01}}, 1, 2},
        {"ld r5,-X", {ldx(5, 14)}, {{XL, 0x00}, {XH, 0x01}, {0x0FF, 0x77}}, 1, {{5, 0x77}, {XL, 0xFF}, {XH, 0x00}}, 1, 2},
        {"st X+ then st -X onto the same cell", {stx(5, 13), stx(6, 14)}, {{XL, 0x00}, {XH, 0x02}, {5, 0x11}, {6, 0x22}},
         2, {{0x200, 0x22}, {XL, 0x00}, {XH, 0x02}}},
        {"ld r26,X+ increments the loaded value", {ldx(XL, 13)}, {{XL, 0x00}, {XH, 0x01}, {0x100, 0x40}}, 1,
         {{XL, 0x41}, {XH, 0x01}}},
        {"ldd Y+63 and std Z+2 without wrap", {ldd(4, true, 63), ldd(4, false, 2, true)},
         {{YL, 0xF0}, {YH, 0x01}, {0x1F0 + 63, 0x5A}, {ZL, 0x00}, {ZH, 0x03}}, 2, {{4, 0x5A}, {0x302, 0x5A}}},
        {"lds r5,$0123 takes the second word", {0x9050, 0x0123}, {{0x123, 0x99}}, 1, {{5, 0x99}}, 2, 2},
        {"sts $0456,r6", {0x9260, 0x0456}, {{6, 0x42}}, 1, {{0x456, 0x42}}, 2, 2},
        {"out of range: reads zero, writes dropped", {stx(5, 12), ldx(6, 12)},
         {{XL, 0x60}, {XH, 0x08}, {5, 0x12}, {6, 0x34}}, 2, {{6, 0}}},
        {"a store to a general register is masked", {stx(5, 12)}, {{XL, 3}, {XH, 0}, {5, 0x12}}, 1, {{3, 0}}},
        {"in and out reach I/O through the data path", {ri(0xE000, 16, 0x12), out(0x3E, 16), in(5, 0x3E)}, {}, 3,
         {{kSphAddress, 0x12}, {5, 0x12}}},
        {"lpm r7,Z+ wraps Z at sixteen bits", {static_cast<uint16_t>(0x9005 | (7 << 4))}, {{ZL, 0xFF}, {ZH, 0xFF}}, 1,
         {{ZL, 0}, {ZH, 0}}},
    };
    for (const ProgramCase& c : cases) {
        Sim sim;
        runprogram(sim, c);
    }
}

TEST(DataPaths, EightBitPointerWrapsInTheLowRegister) {
    Sim sim(2048, 128, 0);  // 224-byte data space
    ASSERT_TRUE(sim.m.eightbitpointers);
    runprogram(sim, {"st X+ at $FF", {stx(5, 13)}, {{XL, 0xFF}, {XH, 0x12}}, 1, {{XL, 0x00}, {XH, 0x12}}});
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

TEST(DataPaths, SideEffectsOfPinAndFlagRegisters) {
    using P = PortMachine;
    const ProgramCase cases[] = {
        {"ones written to PIN toggle the port", {ri(0xE000, 16, 0xFF), out(0x16, 16)}, {{P::kPortB, 0x0F}}, 2,
         {{P::kPortB, 0xF0}, {P::kPinB, 0x00}}},
        {"a one clears its flag, a zero keeps it", {ri(0xE000, 16, 0x40), out(0x1A, 16)}, {{P::kFlags, 0xC0}}, 2,
         {{P::kFlags, 0x80}}},
        {"sbi on a flag register clears every set flag", {iobit(0x9A00, 0x1A, 0)}, {{P::kFlags, 0xC0}}, 1,
         {{P::kFlags, 0x01}}, 1, 2},
    };
    for (const ProgramCase& c : cases) {
        PortMachine sim;
        runprogram(sim, c);
    }
}

TEST(ProgramMemory, LpmFormsAndLimits) {
    Sim sim(1024, 256, 0);
    sim.load({kLpm, static_cast<uint16_t>(0x9005 | (7 << 4)), kElpm});
    sim.m.progmem[0x100] = 0xAB;
    sim.m.progmem[0x101] = 0xCD;
    sim.reg(ZL) = 0x00;
    sim.reg(ZH) = 0x01;
    sim.step();
    EXPECT_EQ(sim.reg(0), 0xAB);
    EXPECT_EQ(instructioncycles(sim.m), 3u);
    sim.step();  // lpm r7,Z+
    EXPECT_EQ(sim.reg(7), 0xAB);
    EXPECT_EQ(sim.reg(ZL), 0x01);
    sim.reg(ZL) = 0x00;
    sim.reg(ZH) = 0x04;  // Z = flashsize: past the end
    sim.reg(0) = 0x5C;
    sim.step();
    EXPECT_EQ(sim.reg(0), 0x5C);
}

}  // namespace
}  // namespace velmora::test
