#pragma once
// The LCD Module window without its drawing: the module wired to the machine while the window
// is open, its settings, the setup panel with its labels and the dialogs they open, the
// "ERROR" indicator, the F12 trace, the cursor blink and the panel painted into a Canvas.
// The view shows `canvas()` and the texts, and forwards clicks, keys and the blink timer.

#include <string>
#include <vector>

#include "core/events.h"
#include "devices/canvas.h"
#include "devices/lcdmodule.h"
#include "devices/wiringdialogs.h"

namespace velmora {

// The labels of the setup panel, in the order the panel shows them.
enum class LcdSetupItem { Type, DataLines, Interface, Rs, E, Rw, Colors, Delays };
inline constexpr int kLcdSetupItems = 8;

inline constexpr int kLcdTraceKey = 123;  // F12
inline constexpr int kLcdBlinkMilliseconds = 500;

class LcdWindow {
public:
    LcdWindow(Machine& m, SettingsAccess& settings, Messenger& messenger, WiringDialogs& dialogs);
    ~LcdWindow();
    LcdWindow(const LcdWindow&) = delete;
    LcdWindow& operator=(const LcdWindow&) = delete;

    struct Paths {
        std::string program;  // the loaded program, "" for none
        std::string trace;    // "lcdlog.txt" in the user data folder
        std::string data;     // the data directory with the character ROM
    };
    // Reads the settings and the character ROM, offers the import from the BASIC program
    // beside the loaded one, initialises the module and wires it to the machine. Trace lines
    // go to the trace file once F12 turns tracing on.
    void open(const Paths& paths);
    // Saves every setting and takes the module off the pins.
    void close();

    LcdModule& module() { return lcd_; }
    const LcdConfig& config() const { return lcd_.config; }

    // Setup: the button reads "Setup" and opens the panel, then "Apply!" and closes it.
    bool setupopen() const { return setupopen_; }
    std::string setupcaption() const { return setupopen_ ? "Apply!" : "Setup"; }
    void clicksetup() { setupopen_ = !setupopen_; }
    std::string setuplabel(LcdSetupItem item) const;
    // Opens the option or pin dialog (or the delay prompts) of a label and applies the answer.
    void clicksetupitem(LcdSetupItem item);

    // The "ERROR" indicator: a byte came while the module was busy. A click explains and hides it.
    bool errorshown() const { return lcd_.error; }
    void clickerror();

    void keypress(int keycode);
    // The 500 ms timer: the cursor routine, whether or not the simulation runs.
    void blinktick();

    // Brings the panel up to date with the module; true when it changed since the last call.
    bool paint();
    const Canvas& canvas() const { return canvas_; }

private:
    void applytype(int index);
    void reshape();
    void setdelays();
    void save();

    Machine& m_;
    SettingsAccess& settings_;
    Messenger& messenger_;
    WiringDialogs& dialogs_;
    LcdModule lcd_;
    Canvas canvas_;
    bool setupopen_ = false;
    bool attached_ = false;
    // Each executed byte is a repaint, which steps the blink at once; the cells are painted
    // when the view next asks, so a burst of bytes costs one painting.
    bool cellsdirty_ = false;
    bool dirty_ = false;
    bool errorshown_ = false;
};

}  // namespace velmora
