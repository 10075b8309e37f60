#pragma once
// The window numbers, and the table of which windows are open. Settings names ("Window12
// Left", "On Top 4"), the run loop's hooks and auto start all identify a window by its number.

#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace velmora {

namespace windows {
inline constexpr int kMain = 1;
inline constexpr int kProgramMemoryEditor = 4;
inline constexpr int kEepromMemoryEditor = 6;
inline constexpr int kStackViewer = 7;
inline constexpr int kDisassembler = 9;
inline constexpr int kBreakpointsManager = 11;
inline constexpr int kDataMemoryUsage = 13;
inline constexpr int kBasicCompiler = 16;
inline constexpr int kAssembler = 17;
inline constexpr int kLcd = 20;
inline constexpr int kSerialTerminal = 21;
inline constexpr int kHardwareUart = 23;
inline constexpr int kSoftwareUart = 29;
inline constexpr int kOscilloscope = 30;
inline constexpr int kSignalGenerator = 31;
inline constexpr int kSevenSegment = 32;
inline constexpr int kExternalModules = 35;
inline constexpr int kGraphicalLcd = 36;
inline constexpr int kLedBoard = 37;
inline constexpr int kKeypad = 38;
inline constexpr int kWatchVariables = 39;
inline constexpr int kAlternativeRegisters = 42;
inline constexpr int kSpecialBreakpoints = 43;
inline constexpr int kStepper = 45;
inline constexpr int kI2cEeprom = 46;
}  // namespace windows

// One Microcontroller View window per package drawing.
struct PackageLayout {
    int pins = 0;
    bool compact = false;
    int window = 0;
};
// The fourteen layouts: every package in the normal drawing, and those up to 40 pins compact.
std::span<const PackageLayout> packagelayouts();
// The window of the drawing for a pin count; Compact View falls back to the normal drawing
// where there is no compact one. 0 when no drawing fits the pin count.
int packagewindow(int pins, bool compactview);
bool ismicrocontrollerview(int window);

// What the main window can do with a window it knows how to make.
struct WindowActions {
    std::function<void()> open;    // create it, or bring it forward
    std::function<void()> unload;  // close it; it saves its own settings
};

class WindowRegistry {
public:
    // A window's views call these when they load and unload.
    void setopen(int window, bool open);
    bool isopen(int window) const;
    // True when any Microcontroller View drawing is open.
    bool microcontrollerviewopen() const;
    std::vector<int> openwindows() const;  // ascending numbers

    void registerwindow(int window, WindowActions actions);
    bool canopen(int window) const;
    // Does nothing for a window nobody registered.
    void open(int window);
    // Unloads one window; it saves its own settings.
    void unload(int window);
    // Unloads every open window but the main one, each storing its own settings.
    void unloadall();

private:
    std::map<int, bool> open_;
    std::map<int, WindowActions> actions_;
};

}  // namespace velmora
