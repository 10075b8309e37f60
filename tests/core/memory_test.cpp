// Loads, stores and program memory reads through the pointer registers, and the side
// effects of the two data paths.

#include <gtest/gtest.h>

#include "core/encode.h"
#include "core/memory.h"
#include "core/programcase.h"

namespace velmora::test {
namespace {

// st X,r5 / X+ / -X: the low nibble selects the mode.
uint16_t stx(int r, int mode) { return static_cast<uint16_t>(0x9200 | ((r & 31) << 4) | mode); }
constexpr int XL = 26, XH = 27, ZL = 30, ZH = 31;

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
