#include "shell/pinlegend.h"

#include "shell/settingnames.h"

namespace velmora {

using namespace settingnames;

const std::array<LegendBox, kPinFunctionGroups>& legendboxes() {
    static const std::array<LegendBox, kPinFunctionGroups> boxes = {{
        {PinFunctionGroup::Pcint, "PCINTx - Pin change interrupt", kRemovePcintx},
        {PinFunctionGroup::Adc, "ADCx - Analog input for ADC", kRemoveAdcx},
        {PinFunctionGroup::Ain, "AINx - Analog input for AC", kRemoveAinx},
        {PinFunctionGroup::ExternalSram, "Ax, ADx - External SRAM interface", kRemoveAdx},
        {PinFunctionGroup::Interrupt, "INTx - External interrupt", kRemoveIntx},
        {PinFunctionGroup::Usart, "RXDx,TXDx - USART interface", kRemoveRxdx},
        {PinFunctionGroup::Spi, "MOSI,MISO,SCK - SPI interface", kRemoveMosix},
    }};
    return boxes;
}

PinFilters readpinfilters(SettingsAccess& settings) {
    PinFilters filters{};
    for (const LegendBox& box : legendboxes())
        filters[static_cast<int>(box.group)] = settings.getsetting(box.setting, "0") == "1";
    return filters;
}

void writepinfilter(SettingsAccess& settings, PinFunctionGroup group, bool remove) {
    for (const LegendBox& box : legendboxes())
        if (box.group == group) settings.putsetting(box.setting, remove ? "1" : "0");
}

}  // namespace velmora
