#pragma once
// Where a window opens and whether it stays on top, by window number. Positions are kept in
// twips, 15 to a pixel, so the stored defaults mean what they always meant.

#include <optional>

#include "core/events.h"

namespace velmora {

inline constexpr int kTwipsPerPixel = 15;

struct PixelPoint {
    int x = 0;
    int y = 0;
};

// The saved place of a window in pixels when "Save Positions" is on (a negative stored value
// gives the default); nothing when it is off, and the window is centred instead.
std::optional<PixelPoint> startposition(SettingsAccess& settings, int window);

// Replaces the unusable coordinates (negative or too large) of every window in the store by
// their defaults.
void validatepositions(SettingsAccess& settings);

// Stores a window's place, given in pixels.
void saveposition(SettingsAccess& settings, int window, PixelPoint place);

// The window's Always On Top box as saved, when "Save Always On Top" is on; off otherwise.
bool startontop(SettingsAccess& settings, int window);
void saveontop(SettingsAccess& settings, int window, bool ontop);

}  // namespace velmora
