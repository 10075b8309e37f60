#pragma once
// The named colour themes of the application's own windows: fifteen colours each, c1 to
// c15, used by role (headings, check boxes, value fields, bit lamps, labels).

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "core/events.h"

namespace velmora {

using ThemeColors = std::array<uint32_t, 15>;  // 0xRRGGBB, c1 first

// Colour roles by their number: color(theme, 8) is c8.
inline uint32_t themecolor(const ThemeColors& colors, int number) { return colors[number - 1]; }

inline constexpr int kHeadingBack = 2, kHeadingText = 3, kCheckBack = 4, kCheckText = 5, kValueBack = 6,
                     kValueText = 7, kLampOn = 8, kLampOff = 9, kSecondaryBack = 10, kSecondaryText = 11,
                     kHighlightBack = 12, kHighlightText = 13, kLabelBack = 14, kLabelText = 15;

struct NamedTheme {
    const char* name;
    ThemeColors colors;
};
std::span<const NamedTheme> themetable();

inline constexpr char kDefaultTheme[] = "Original Lite";

struct Theme {
    std::string name;
    bool border = true;
    ThemeColors colors{};
};

// "Original Lite" with frames: the colours before any setting was read.
Theme defaulttheme();

// Reads "Color Theme" and "Color Theme Border" and fills the colours. A name that is not in
// the table paints as "Original Lite"; an empty name keeps `current`'s colours.
Theme themeload(SettingsAccess& settings, const Theme& current);

}  // namespace velmora
