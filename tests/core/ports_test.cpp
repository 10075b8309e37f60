// The pin model: levels from PORT, DDR and the input latches, analog channels, PINx reads and
// writes, the latch operations devices use, and what a reset keeps.

#include <gtest/gtest.h>

#include "core/encode.h"
#include "core/minichip.h"
#include "support/sectiontable.h"

namespace velmora::test {
namespace {

TEST(Ports, LevelIsPortOnOutputsAndTheLatchOnInputs) {
    for (const TableRow& row : tablerows("ports.txt", "levels")) {
        SCOPED_TRACE(row.where);
        const auto ddr = static_cast<uint8_t>(row.number(0)), input = static_cast<uint8_t>(row.number(2));
        MiniChip chip;
        chip.cell(MiniChip::kDdrc) = ddr;
        chip.cell(MiniChip::kPortc) = static_cast<uint8_t>(row.number(1));
        putinput(chip.m, kPortC, input);
        portstep(chip.m);
        EXPECT_EQ(getlevel(chip.m, kPortC), row.number(3));
        EXPECT_EQ(getreadvalue(chip.m, kPortC), row.number(3));
        // Bits of output pins are forgotten by the latch.
        EXPECT_EQ(getinput(chip.m, kPortC), input & ~ddr);
    }
}

TEST(Ports, AnOutputForgetsItsInputForGood) {
    MiniChip chip;
    setinput(chip.m, kPortD, 0x04);
    chip.load({ldi(16, 0x04), outd(MiniChip::kDdrd, 16), ldi(16, 0), outd(MiniChip::kDdrd, 16)});
    chip.step(2);
    EXPECT_EQ(getinput(chip.m, kPortD), 0);
    chip.step(2);
    EXPECT_EQ(getlevel(chip.m, kPortD), 0);  // back to input, the 1 is gone
}

TEST(Ports, LatchOperations) {
    MiniChip chip;
    Machine& m = chip.m;
    putinput(m, kPortB, 0x0F);
    clearinput(m, kPortB, 0x03);
    EXPECT_EQ(getinput(m, kPortB), 0x0C);
    setinput(m, kPortB, 0x81);
    EXPECT_EQ(getinput(m, kPortB), 0x8D);
    toggleinput(m, kPortB, 0x05);
    EXPECT_EQ(getinput(m, kPortB), 0x88);
    EXPECT_EQ(testinput(m, kPortB, 0x08), 1);
    EXPECT_EQ(testinput(m, kPortB, 0x07), 0);
    chip.cell(MiniChip::kDdrb) = 0x01;
    chip.cell(MiniChip::kPortb) = 0x01;
    portstep(m);
    EXPECT_EQ(testlevel(m, kPortB, 0x01), 1);
    EXPECT_EQ(testlevel(m, kPortB, 0x02), 0);
    EXPECT_EQ(testreadvalue(m, kPortB, 0x80), 1);
    EXPECT_EQ(isinput(m, kPortB, 0x01), 0);
    EXPECT_EQ(isinput(m, kPortB, 0x02), 1);
}

TEST(Ports, CodesOutsideTheExistingPortsYieldZeroAndChangeNothing) {
    MiniChip chip;
    Machine& m = chip.m;
    // 9 is port E, which this chip lacks; 4 and 12 are no port codes at all.
    for (int code : {0, 4, 9, 12, -1, 1000}) {
        setinput(m, code, 0xFF);
        putinput(m, code, 0xFF);
        toggleinput(m, code, 0xFF);
        EXPECT_EQ(getinput(m, code), 0) << code;
        EXPECT_EQ(testinput(m, code, 0xFF), 0);
        EXPECT_EQ(getlevel(m, code), 0);
        EXPECT_EQ(getreadvalue(m, code), 0);
        EXPECT_EQ(isinput(m, code, 0x01), 0);
        EXPECT_FALSE(portexists(m, code));
    }
    for (const PortState& p : m.ports) EXPECT_EQ(p.pininput, 0);
    EXPECT_TRUE(portexists(m, kPortA));
}

TEST(Ports, PinOfAPortTheModelLacksIsAPlainCell) {
    MiniChip chip;
    // PINE-like: a register whose port the model does not define.
    chip.m.roles.pin[4] = 0x21;
    chip.m.datamask[0x21] = 0xFF;
    marksideeffects(chip.m);
    datamemwrite(chip.m, 0x21, 0x5A);
    EXPECT_EQ(datamemread(chip.m, 0x21), 0x5A);
}

TEST(Ports, OnesWrittenToPinToggleThePortByOutOrSbiAndReadingGivesThePins) {
    MiniChip chip;
    chip.cell(MiniChip::kDdrb) = 0xF0;
    chip.cell(MiniChip::kPortb) = 0x30;
    setinput(chip.m, kPortB, 0x05);
    chip.load({ldi(16, 0xFF), outd(MiniChip::kPinb, 16), ind(17, MiniChip::kPinb)});
    chip.step(2);
    EXPECT_EQ(chip.cell(MiniChip::kPortb), 0xCF);
    EXPECT_EQ(chip.cell(MiniChip::kPinb), 0);
    chip.step();
    EXPECT_EQ(chip.reg(17), 0xC5);  // outputs high from PORTB, inputs from the latch
    EXPECT_EQ(chip.cell(MiniChip::kPinb), 0);
    chip.load({sbi(MiniChip::kPinb, 1)});  // SBI toggles its own bit only
    chip.m.pc = 0;
    chip.step();
    EXPECT_EQ(chip.cell(MiniChip::kPortb), 0xCD);
}

TEST(Ports, SbisSeesADeviceChangeMadeSinceTheLastStep) {
    MiniChip chip;
    // 0: SBIS PIND,2  1: RJMP 0  2: NOP
    chip.load({sbis(MiniChip::kPind, 2), rjmp(-2), kNop});
    chip.step(2);
    EXPECT_EQ(chip.m.pc, 0);
    setinput(chip.m, kPortD, 0x04);  // between steps, no port phase since
    chip.step();
    EXPECT_EQ(chip.m.pc, 2);
}

TEST(Ports, ChannelsFollowTheirDigitalPins) {
    for (const TableRow& row : tablerows("ports.txt", "channels")) {
        SCOPED_TRACE(row.where + ": " + row[0]);
        MiniChip chip;
        Machine& m = chip.m;
        chip.cell(MiniChip::kDdra) = row.flag(1) ? 0x08 : 0;
        chip.cell(MiniChip::kPorta) = row.flag(2) ? 0x08 : 0;
        if (row.flag(3)) setinput(m, kPortA, 0x08);
        setanalogmode(m, 3, row.flag(4));
        setanaloginput(m, 3, 300);
        portstep(m);
        EXPECT_EQ(analoginput(m, 3), row.number(5));
        EXPECT_EQ(testreadvalue(m, kPortA, 0x08), row.flag(6) ? 1 : 0);
    }
}

TEST(Ports, AnAnalogPinDropsItsDigitalInput) {
    MiniChip chip;
    setinput(chip.m, kPortA, 0x01);
    setanalogmode(chip.m, 0, true);
    portstep(chip.m);
    EXPECT_EQ(getinput(chip.m, kPortA), 0);
    EXPECT_EQ(getlevel(chip.m, kPortA), 0);
    // A PINx read also sees the analog pin as 0 though the output drives it.
    chip.cell(MiniChip::kDdra) = 0x01;
    chip.cell(MiniChip::kPorta) = 0x01;
    EXPECT_EQ(datamemread(chip.m, MiniChip::kPina), 0);
    EXPECT_EQ(getlevel(chip.m, kPortA), 0x01);
}

TEST(Ports, ChannelAccessOutOfRange) {
    MiniChip chip;
    Machine& m = chip.m;
    for (int channel : {-1, 16, 100}) {
        setanaloginput(m, channel, 500);
        setanalogmode(m, channel, true);
        EXPECT_EQ(analoginput(m, channel), 0);
        EXPECT_FALSE(analogmode(m, channel));
    }
    setanaloginput(m, 15, 2000);
    EXPECT_EQ(analoginput(m, 15), 1023);
    setanaloginput(m, 15, -5);
    EXPECT_EQ(analoginput(m, 15), 0);
}

TEST(Ports, AnalogText) {
    for (const TableRow& row : tablerows("ports.txt", "analog text"))
        EXPECT_EQ(analogtext(static_cast<int>(row.number(0)), row.flag(1)), row[2]) << row.where;
}

TEST(Ports, ResetClearsInputsUnlessPreserved) {
    for (bool preserve : {false, true}) {
        MiniChip chip;
        Machine& m = chip.m;
        m.preserveinputstates = preserve;
        putinput(m, kPortD, 0x0C);
        setanaloginput(m, 5, 700);
        setanalogmode(m, 5, true);
        clean(m);
        EXPECT_EQ(getinput(m, kPortD), preserve ? 0x0C : 0);
        EXPECT_EQ(analoginput(m, 5), preserve ? 700 : 0);
        EXPECT_EQ(analogmode(m, 5), preserve);
        // The levels are those of the reset state at once.
        EXPECT_EQ(getlevel(m, kPortD), preserve ? 0x0C : 0);
    }
}

TEST(Ports, PreservedLatchMeetsTheFirstInstructionExceptOnResetOutputs) {
    MiniChip chip;
    Machine& m = chip.m;
    // The model resets DDRD to $08: PD3 starts as an output.
    for (NamedRegister& r : m.namedregisters)
        if (r.name == "DDRD") r.reset = 0x08;
    m.preserveinputstates = true;
    putinput(m, kPortD, 0x0C);
    chip.load({ind(16, MiniChip::kPind)});
    clean(m);
    chip.step();
    EXPECT_EQ(chip.reg(16), 0x04);
}

TEST(Ports, InstallingTwiceRegistersOneReset) {
    MiniChip chip;
    const size_t hooks = chip.m.cleanhooks.size();
    installperipherals(chip.m);
    EXPECT_EQ(chip.m.cleanhooks.size(), hooks);
    const PeripheralPhases p = standardphases();
    EXPECT_TRUE(p.externalinterrupts && p.adcstep && p.comparatorstep && p.eepromstep && p.portstep);
}

}  // namespace
}  // namespace velmora::test
