#pragma once
// The pin legend of the Microcontroller View (F12): which alternative pin functions are
// hidden, each choice stored in the settings at once.

#include <array>

#include "core/events.h"
#include "models/pinnames.h"

namespace velmora {

inline constexpr char kLegendTitle[] = "Microcontroller View";
inline constexpr char kLegendLine1[] = "Select pin functions to be removed";
inline constexpr char kLegendLine2[] = "from the display for a more clear view:";

struct LegendBox {
    PinFunctionGroup group;
    const char* caption;
    const char* setting;
};
const std::array<LegendBox, kPinFunctionGroups>& legendboxes();

PinFilters readpinfilters(SettingsAccess& settings);
void writepinfilter(SettingsAccess& settings, PinFunctionGroup group, bool remove);

}  // namespace velmora
