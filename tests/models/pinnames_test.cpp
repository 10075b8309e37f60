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

TEST(PinNames, DisplayFormWithTheSideMarkAndGroupsRemovingWholeTokens) {
    using G = PinFunctionGroup;
    PinFilters all{};
    all.fill(true);
    const struct {
        PinFilters filters;
        bool left;
        const char* caption;
        const char* expected;
    } cases[] = {
        {{}, false, "PB0 (XCK/T0)", "PB0/XCK/T0_"},
        {{}, true, "PA0 (ADC0)", "_PA0/ADC0"},
        {{}, false, "VCC", "VCC_"},
        {{}, true, "\\RESET", "_\\RESET"},
        {only(G::Adc), false, "PF1 (ADC1/ADC10)", "PF1_"},
        {only(G::Adc), false, "PF1 (ADC1/ADC1X/XADC1)", "PF1/ADC1X/XADC1_"},
        {only(G::Adc), false, "PF1 (ADC15/ADC16)", "PF1/ADC16_"},
        {only(G::Adc), false, "PF1 (ADC01)", "PF1/ADC01_"},
        {only(G::Pcint), false, "PB5 (PCINT5/\\RESET/ADC0/dW)", "PB5/\\RESET/ADC0/dW_"},
        {only(G::Pcint), false, "PJ0 (PCINT35/PCINT36)", "PJ0/PCINT36_"},
        {only(G::Ain), false, "PB2 (INT2/AIN0)", "PB2/INT2_"},
        {only(G::Ain), false, "PX (AIN5/AIN6)", "PX/AIN6_"},
        {only(G::ExternalSram), false, "PA0 (AD0)", "PA0_"},
        {only(G::ExternalSram), false, "PC0 (A8)", "PC0_"},
        {only(G::ExternalSram), false, "PC7 (A15/A16/A7/AD8)", "PC7/A16/A7/AD8_"},
        {only(G::ExternalSram), false, "PG2 (ALE/\\RD/\\WR)", "PG2_"},
        {only(G::Interrupt), false, "PD2 (INT0/INT8/PCINT2)", "PD2/INT8/PCINT2_"},
        {only(G::Usart), false, "PD0 (RXD/RXD0/RXD1/RXD2)", "PD0/RXD2_"},
        {only(G::Usart), false, "PE1 (TXD0/PDO)", "PE1/PDO_"},
        {only(G::Spi), false, "PB4 (\\SS/SS/MOSI/MISO/SCK)", "PB4/SS_"},
        {all, true, "PB1 (MISO/AIN1/OC0B/INT0/PCINT1)", "_PB1/OC0B"},  // groups combine
        {all, false, "PA3 (ADC3)", "PA3_"},                               // and leave the port name
    };
    for (const auto& c : cases) EXPECT_EQ(pindisplayname(c.caption, c.left, c.filters), c.expected) << c.caption;
    EXPECT_FALSE(ingroup(G::Interrupt, "INT"));
    EXPECT_FALSE(ingroup(G::ExternalSram, "A"));
}

}  // namespace
}  // namespace velmora::test
