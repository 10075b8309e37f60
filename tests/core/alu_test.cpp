// Arithmetic and logic instructions: results and flags, each expectation worked out by
// hand from the instruction set's flag definitions (C 01, Z 02, N 04, V 08, S 10, H 20, T 40, I 80).

#include <gtest/gtest.h>

#include "core/encode.h"
#include "support/simfixture.h"

namespace velmora::test {
namespace {

struct AluCase {
    const char* name;
    uint16_t word;
    int d, dvalue, r, rvalue;
    uint8_t sregin;
    int expectd;  // value of register d afterwards
    uint8_t expectsreg;
};

void PrintTo(const AluCase& c, std::ostream* os) { *os << c.name; }

class Alu : public ::testing::TestWithParam<AluCase> {};

TEST_P(Alu, ResultAndFlags) {
    const AluCase& c = GetParam();
    Sim sim;
    sim.load({c.word});
    sim.reg(c.r) = static_cast<uint8_t>(c.rvalue);
    sim.reg(c.d) = static_cast<uint8_t>(c.dvalue);
    sim.setsreg(c.sregin);
    sim.step();
    EXPECT_EQ(sim.reg(c.d), c.expectd);
    EXPECT_EQ(sim.sreg(), c.expectsreg) << std::hex << "sreg " << int(sim.sreg());
    EXPECT_EQ(instructioncycles(sim.m), 1u);
    EXPECT_EQ(sim.m.pc, 1);
}

constexpr uint16_t ADD = 0x0C00, ADC = 0x1C00, SUB = 0x1800, SBC = 0x0800, CP = 0x1400, CPC = 0x0400,
                   AND = 0x2000, OR = 0x2800, EOR = 0x2400, MOV = 0x2C00;

INSTANTIATE_TEST_SUITE_P(
    AddSubtract, Alu,
    ::testing::Values(
        AluCase{"add_half_carry", rr(ADD, 1, 2), 1, 0x0F, 2, 0x01, 0, 0x10, 0x20},
        AluCase{"add_overflow_to_zero", rr(ADD, 1, 2), 1, 0x80, 2, 0x80, 0, 0x00, 0x1B},
        AluCase{"add_signed_overflow", rr(ADD, 1, 2), 1, 0x7F, 2, 0x01, 0, 0x80, 0x2C},
        AluCase{"adc_carry_in", rr(ADC, 1, 2), 1, 0xFF, 2, 0x00, 0x01, 0x00, 0x23},
        AluCase{"sub_half_borrow", rr(SUB, 3, 4), 3, 0x10, 4, 0x01, 0, 0x0F, 0x20},
        AluCase{"sub_borrow", rr(SUB, 3, 4), 3, 0x00, 4, 0x01, 0, 0xFF, 0x35},
        AluCase{"sub_signed_overflow", rr(SUB, 3, 4), 3, 0x80, 4, 0x01, 0, 0x7F, 0x38},
        AluCase{"cp_equal_sets_z_keeps_register", rr(CP, 3, 4), 3, 0x55, 4, 0x55, 0, 0x55, 0x02},
        AluCase{"cpc_zero_keeps_clear_z", rr(CPC, 3, 4), 3, 0x05, 4, 0x05, 0x00, 0x05, 0x00},
        AluCase{"cpc_zero_keeps_set_z", rr(CPC, 3, 4), 3, 0x05, 4, 0x05, 0x02, 0x05, 0x02},
        AluCase{"sbc_nonzero_clears_z", rr(SBC, 3, 4), 3, 0x05, 4, 0x05, 0x03, 0xFF, 0x35},
        AluCase{"sbc_zero_leaves_z_clear", rr(SBC, 3, 4), 3, 0x06, 4, 0x05, 0x01, 0x00, 0x00},
        AluCase{"subi", ri(0x5000, 16, 0x20), 16, 0x20, 16, 0x20, 0, 0x00, 0x02},
        AluCase{"sbci_borrow_chain", ri(0x4000, 17, 0x00), 17, 0x00, 17, 0x00, 0x01, 0xFF, 0x35},
        AluCase{"cpi_less", ri(0x3000, 18, 0x10), 18, 0x05, 18, 0x05, 0, 0x05, 0x15}));

INSTANTIATE_TEST_SUITE_P(
    Logic, Alu,
    ::testing::Values(
        AluCase{"and_clears_v", rr(AND, 5, 6), 5, 0xF0, 6, 0x3C, 0x08, 0x30, 0x00},
        AluCase{"andi_negative", ri(0x7000, 16, 0xFF), 16, 0x80, 16, 0x80, 0, 0x80, 0x14},
        AluCase{"or", rr(OR, 5, 6), 5, 0x01, 6, 0x80, 0, 0x81, 0x14},
        AluCase{"ori", ri(0x6000, 20, 0x0F), 20, 0xF0, 20, 0xF0, 0, 0xFF, 0x14},
        AluCase{"eor_different_registers", rr(EOR, 5, 6), 5, 0xFF, 6, 0xFF, 0, 0x00, 0x02},
        AluCase{"clr_keeps_c_h_t_i", rr(EOR, 7, 7), 7, 0x42, 7, 0x42, 0xFF, 0x00, 0xE3},
        AluCase{"tst_writes_back", rr(AND, 9, 9), 9, 0x80, 9, 0x80, 0x08, 0x80, 0x14},
        AluCase{"com", r1(0x9400, 10), 10, 0x0F, 10, 0x0F, 0, 0xF0, 0x15},
        AluCase{"neg_one", r1(0x9401, 10), 10, 0x01, 10, 0x01, 0, 0xFF, 0x35},
        AluCase{"neg_0x80_overflows", r1(0x9401, 10), 10, 0x80, 10, 0x80, 0, 0x80, 0x0D},
        AluCase{"neg_zero", r1(0x9401, 10), 10, 0x00, 10, 0x00, 0x01, 0x00, 0x02},
        AluCase{"mov_no_flags", rr(MOV, 11, 12), 11, 0x00, 12, 0x99, 0x5A, 0x99, 0x5A},
        AluCase{"ldi", ri(0xE000, 31, 0xA5), 31, 0x00, 31, 0x00, 0x00, 0xA5, 0x00},
        AluCase{"swap", r1(0x9402, 13), 13, 0x12, 13, 0x12, 0x3F, 0x21, 0x3F}));

INSTANTIATE_TEST_SUITE_P(
    IncDecShift, Alu,
    ::testing::Values(
        AluCase{"inc_overflow_keeps_c_h", r1(0x9403, 14), 14, 0x7F, 14, 0x7F, 0x21, 0x80, 0x2D},
        AluCase{"inc_wraps_to_zero", r1(0x9403, 14), 14, 0xFF, 14, 0xFF, 0x00, 0x00, 0x02},
        AluCase{"dec_overflow", r1(0x940A, 14), 14, 0x80, 14, 0x80, 0x00, 0x7F, 0x18},
        AluCase{"dec_to_zero", r1(0x940A, 14), 14, 0x01, 14, 0x01, 0x01, 0x00, 0x03},
        AluCase{"asr_keeps_sign", r1(0x9405, 15), 15, 0x81, 15, 0x81, 0, 0xC0, 0x15},
        AluCase{"lsr_to_zero", r1(0x9406, 15), 15, 0x01, 15, 0x01, 0, 0x00, 0x1B},
        AluCase{"ror_carry_in", r1(0x9407, 15), 15, 0x02, 15, 0x02, 0x01, 0x81, 0x0C},
        AluCase{"lsl_half_carry_from_bit3", rr(ADD, 5, 5), 5, 0x88, 5, 0x88, 0, 0x10, 0x39},
        AluCase{"rol_carry_in_no_h_from_carry", rr(ADC, 5, 5), 5, 0x40, 5, 0x40, 0x01, 0x81, 0x0C}));

struct WordCase {
    const char* name;
    uint16_t word;
    int low, value;
    uint8_t sregin;
    int expect;
    uint8_t expectsreg;
};
void PrintTo(const WordCase& c, std::ostream* os) { *os << c.name; }

class WordArithmetic : public ::testing::TestWithParam<WordCase> {};

TEST_P(WordArithmetic, PairResultFlagsTwoCycles) {
    const WordCase& c = GetParam();
    Sim sim;
    sim.load({c.word});
    sim.reg(c.low) = static_cast<uint8_t>(c.value & 0xFF);
    sim.reg(c.low + 1) = static_cast<uint8_t>(c.value >> 8);
    sim.setsreg(c.sregin);
    sim.step();
    EXPECT_EQ(sim.reg(c.low) | (sim.reg(c.low + 1) << 8), c.expect);
    EXPECT_EQ(sim.sreg(), c.expectsreg) << std::hex << int(sim.sreg());
    EXPECT_EQ(instructioncycles(sim.m), 2u);
}

INSTANTIATE_TEST_SUITE_P(
    AdiwSbiw, WordArithmetic,
    ::testing::Values(WordCase{"adiw_wraps", wk(0x9600, 24, 1), 24, 0xFFFF, 0, 0x0000, 0x03},
                      WordCase{"adiw_signed_overflow_keeps_h", wk(0x9600, 26, 1), 26, 0x7FFF, 0x20, 0x8000, 0x2C},
                      WordCase{"adiw_63", wk(0x9600, 30, 63), 30, 0x0100, 0, 0x013F, 0x00},
                      WordCase{"sbiw_borrow", wk(0x9700, 28, 1), 28, 0x0000, 0, 0xFFFF, 0x15},
                      WordCase{"sbiw_signed_overflow", wk(0x9700, 24, 1), 24, 0x8000, 0, 0x7FFF, 0x18},
                      WordCase{"sbiw_to_zero", wk(0x9700, 24, 32), 24, 0x0020, 0, 0x0000, 0x02}));

struct MulCase {
    const char* name;
    uint16_t word;
    int d, dvalue, r, rvalue;
    int product;  // R1:R0 afterwards
    uint8_t expectsreg;
};
void PrintTo(const MulCase& c, std::ostream* os) { *os << c.name; }

class Multiply : public ::testing::TestWithParam<MulCase> {};

TEST_P(Multiply, ProductInR1R0TwoCycles) {
    const MulCase& c = GetParam();
    Sim sim;
    sim.load({c.word});
    sim.reg(c.d) = static_cast<uint8_t>(c.dvalue);
    sim.reg(c.r) = static_cast<uint8_t>(c.rvalue);
    sim.step();
    EXPECT_EQ(sim.reg(0) | (sim.reg(1) << 8), c.product);
    EXPECT_EQ(sim.sreg(), c.expectsreg);
    EXPECT_EQ(instructioncycles(sim.m), 2u);
}

INSTANTIATE_TEST_SUITE_P(
    Products, Multiply,
    ::testing::Values(
        MulCase{"mul_max", rr(0x9C00, 2, 3), 2, 0xFF, 3, 0xFF, 0xFE01, 0x01},
        MulCase{"mul_zero", rr(0x9C00, 2, 3), 2, 0x00, 3, 0x12, 0x0000, 0x02},
        MulCase{"muls_minus_one_squared", 0x0201, 16, 0xFF, 17, 0xFF, 0x0001, 0x00},
        MulCase{"muls_negative", 0x0201, 16, 0x80, 17, 0x7F, 0xC080, 0x01},
        MulCase{"mulsu_negative", 0x0301, 16, 0xFF, 17, 0x02, 0xFFFE, 0x01},
        MulCase{"fmul_half_squared", 0x0309, 16, 0x80, 17, 0x80, 0x8000, 0x00},
        MulCase{"fmul_carry_from_product", 0x0309, 16, 0xFF, 17, 0xFF, 0xFC02, 0x01},
        MulCase{"fmuls_minus_one_squared", 0x0381, 16, 0x80, 17, 0x80, 0x8000, 0x00},
        MulCase{"fmulsu_negative", 0x0389, 16, 0xC0, 17, 0x80, 0xC000, 0x01}));

TEST(BitInstructions, BstBldBsetBclr) {
    Sim sim;
    // bst r5,3 ; bld r6,0 ; bset 7 ; bclr 6
    sim.load({static_cast<uint16_t>(0xFA00 | (5 << 4) | 3), static_cast<uint16_t>(0xF800 | (6 << 4) | 0), 0x9478,
              0x94E8});
    sim.reg(5) = 0x08;
    sim.reg(6) = 0x10;
    sim.step();
    EXPECT_EQ(sim.sreg(), 0x40);
    sim.step();
    EXPECT_EQ(sim.reg(6), 0x11);
    sim.step();
    EXPECT_EQ(sim.sreg(), 0xC0);
    sim.step();
    EXPECT_EQ(sim.sreg(), 0x80);
}

TEST(BitInstructions, ClcWordClearsCarryOnly) {
    Sim sim;
    sim.load({0x9488});
    sim.setsreg(0xFF);
    sim.step();
    EXPECT_EQ(sim.sreg(), 0xFE);
}

TEST(Moves, MovwCopiesAPair) {
    Sim sim;
    sim.load({0x0101});  // movw r1:r0, r3:r2
    sim.reg(2) = 0x34;
    sim.reg(3) = 0x12;
    sim.step();
    EXPECT_EQ(sim.reg(0), 0x34);
    EXPECT_EQ(sim.reg(1), 0x12);
    EXPECT_EQ(instructioncycles(sim.m), 1u);
}

}  // namespace
}  // namespace velmora::test
