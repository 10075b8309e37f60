// Pin names of the Microcontroller View: the display form and the removal of functions by
// whole token.

#include <gtest/gtest.h>

#include "models/pinnames.h"

namespace velmora::test {
namespace {

PinFilters only(PinFunctionGroup group) {
    PinFilters filters{};
    filters[static_cast<int>(group)] = true;
    return filters;
}

TEST(PinNames, DisplayFormWithTheSideMark) {
    const PinFilters none{};
    EXPECT_EQ(pindisplayname("PB0 (XCK/T0)", false, none), "PB0/XCK/T0_");
    EXPECT_EQ(pindisplayname("PA0 (ADC0)", true, none), "_PA0/ADC0");
    EXPECT_EQ(pindisplayname("VCC", false, none), "VCC_");
    EXPECT_EQ(pindisplayname("\\RESET", true, none), "_\\RESET");
}

struct FilterCase {
    PinFunctionGroup group;
    const char* caption;
    const char* expected;
};

TEST(PinNames, EachGroupRemovesWholeTokensOnly) {
    const FilterCase cases[] = {
        {PinFunctionGroup::Adc, "PF1 (ADC1/ADC10)", "PF1_"},
        {PinFunctionGroup::Adc, "PF1 (ADC1/ADC1X/XADC1)", "PF1/ADC1X/XADC1_"},
        {PinFunctionGroup::Adc, "PF1 (ADC15/ADC16)", "PF1/ADC16_"},
        {PinFunctionGroup::Adc, "PF1 (ADC01)", "PF1/ADC01_"},
        {PinFunctionGroup::Pcint, "PB5 (PCINT5/\\RESET/ADC0/dW)", "PB5/\\RESET/ADC0/dW_"},
        {PinFunctionGroup::Pcint, "PJ0 (PCINT35/PCINT36)", "PJ0/PCINT36_"},
        {PinFunctionGroup::Ain, "PB2 (INT2/AIN0)", "PB2/INT2_"},
        {PinFunctionGroup::Ain, "PX (AIN5/AIN6)", "PX/AIN6_"},
        {PinFunctionGroup::ExternalSram, "PA0 (AD0)", "PA0_"},
        {PinFunctionGroup::ExternalSram, "PC0 (A8)", "PC0_"},
        {PinFunctionGroup::ExternalSram, "PC7 (A15/A16/A7/AD8)", "PC7/A16/A7/AD8_"},
        {PinFunctionGroup::ExternalSram, "PG2 (ALE/\\RD/\\WR)", "PG2_"},
        {PinFunctionGroup::Interrupt, "PD2 (INT0/INT8/PCINT2)", "PD2/INT8/PCINT2_"},
        {PinFunctionGroup::Usart, "PD0 (RXD/RXD0/RXD1/RXD2)", "PD0/RXD2_"},
        {PinFunctionGroup::Usart, "PE1 (TXD0/PDO)", "PE1/PDO_"},
        {PinFunctionGroup::Spi, "PB4 (\\SS/SS/MOSI/MISO/SCK)", "PB4/SS_"},
    };
    for (const FilterCase& c : cases)
        EXPECT_EQ(pindisplayname(c.caption, false, only(c.group)), c.expected) << c.caption;
}

TEST(PinNames, GroupsCombineAndLeaveThePortName) {
    PinFilters all{};
    all.fill(true);
    EXPECT_EQ(pindisplayname("PB1 (MISO/AIN1/OC0B/INT0/PCINT1)", true, all), "_PB1/OC0B");
    EXPECT_EQ(pindisplayname("PA3 (ADC3)", false, all), "PA3_");
    EXPECT_FALSE(ingroup(PinFunctionGroup::Interrupt, "INT"));
    EXPECT_FALSE(ingroup(PinFunctionGroup::ExternalSram, "A"));
}

}  // namespace
}  // namespace velmora::test
