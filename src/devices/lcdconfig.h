#pragma once
// The character LCD module's wiring and options, as its settings keep them: module type,
// data port and interface, the RS, E and R/W lines, the colour scheme and the busy delays.

#include <array>
#include <cstdint>
#include <string>

#include "core/events.h"
#include "devices/canvas.h"
#include "devices/pinwire.h"

namespace velmora {

inline constexpr int kPortCodeB = kPortCodeA + 1;

// Data lines: all eight bits, the high nibble, or the low nibble of the port.
inline constexpr int kLcdInterface8 = 8, kLcdInterfaceHigh = 4, kLcdInterfaceLow = 0;

struct LcdConfig {
    int lines = 2;
    int chars = 16;
    int dataport = kPortCodeB;
    int interface = kLcdInterfaceHigh;
    PinWire rs{kPortCodeB, 3};
    PinWire e{kPortCodeB, 2};
    PinWire rw{0, 0};  // not connected: reads as write
    int colorscheme = 0;
    int busyinit = 1640;  // microseconds
    int busycmd = 42;
    int busydata = 46;
    bool operator==(const LcdConfig&) const = default;
};

// The seven module types, the only legal pairs of rows and characters.
struct LcdType {
    int lines;
    int chars;
    const char* caption;  // "2 lines, 16 characters"
};
extern const std::array<LcdType, 7> kLcdTypes;
// Index into kLcdTypes, or -1 when the pair is not a module type.
int lcdtypeindex(int lines, int chars);

struct LcdColors {
    const char* name;
    uint32_t background, lit, dark;
};
extern const std::array<LcdColors, 4> kLcdColorSchemes;

// Busy delays are whole microseconds in this range.
inline constexpr int kLcdMinDelay = 20, kLcdMaxDelay = 5000;
// A delay typed or given as text; false (and `delay` unchanged) for anything else.
bool parselcddelay(const std::string& text, int& delay);

// Reads the settings; a value out of its range gives its default (and a type that is not one
// of the seven gives 2 x 16).
LcdConfig loadlcdconfig(SettingsAccess& settings);
void savelcdconfig(SettingsAccess& settings, const LcdConfig& config);

}  // namespace velmora
