#pragma once
// Everything the desktop program is made of, put together once: the settings, the message
// policy with its Qt display, the dialogs, the clock, the main window model and its window,
// and the Microcontroller View windows registered by their numbers.

#include <memory>
#include <string>

#include "models/pinaccess.h"
#include "shell/mainwindowmodel.h"
#include "shell/messagepolicy.h"
#include "ui/assemblerwindow.h"
#include "ui/alternativewindow.h"
#include "ui/basiccompilerwindow.h"
#include "ui/breakpointswindow.h"
#include "ui/datamemoryusagewindow.h"
#include "ui/eepromwindow.h"
#include "ui/lcdwindow.h"
#include "ui/mainwindow.h"
#include "ui/microcontrollerviewwindow.h"
#include "ui/programmemorywindow.h"
#include "ui/qtclock.h"
#include "ui/qtmessagedisplay.h"
#include "ui/qtuserinput.h"
#include "ui/specialbreakpointswindow.h"
#include "ui/stackwindow.h"
#include "ui/watchwindow.h"
#include "ui/wiringdialogs.h"

namespace velmora {

class DesktopSession {
public:
    // `input` answers prompts and file dialogs, `wiring` the device windows' dialogs; null
    // means the desktop's own dialogs.
    DesktopSession(SettingsAccess& settings, const std::string& datadirectory, UserInput* input = nullptr,
                   WiringDialogs* wiring = nullptr);
    ~DesktopSession();

    MainWindowModel& model() { return model_; }
    MainWindow& window() { return *window_; }
    QtMessageDisplay& display() { return display_; }
    // The open view window, or null.
    MicrocontrollerViewWindow* microcontrollerview() const;
    // The open Assembler window, or null.
    AssemblerWindowView* assembler() const { return assembler_.data(); }
    // The open BASIC Compiler window, or null.
    BasicCompilerWindowView* basiccompiler() const { return basic_.data(); }
    // The open LCD Module window, or null.
    LcdWindowView* lcd() const { return lcd_.data(); }
    // The open memory windows, or null.
    ProgramMemoryWindow* programmemory() const { return programmemory_.data(); }
    EepromWindow* eeprom() const { return eeprom_.data(); }
    StackWindow* stack() const { return stack_.data(); }
    AlternativeWindow* alternative() const { return alternative_.data(); }
    DataMemoryUsageWindow* memoryusage() const { return memoryusage_.data(); }
    // The open debugging windows, or null.
    BreakpointsWindow* breakpoints() const { return breakpoints_.data(); }
    SpecialBreakpointsWindow* specialbreakpoints() const { return special_.data(); }
    WatchWindow* watch() const { return watch_.data(); }

    // Start-up in its order; false when the program must end.
    bool start();
    // Loads a HEX file as Load Program does, as if it had been chosen in the dialog.
    void loadprogram(const std::string& path);

private:
    void registerviews();
    void registerassembler();
    void registerbasiccompiler();
    void registerlcd(WiringDialogs& dialogs);
    void registermemorytools();
    void registerdebugtools();
    // Brings a tool window forward when it is open; false when it is not.
    static bool raise(QWidget* window);

    SettingsAccess& settings_;
    QtMessageDisplay display_;
    MessagePolicy messenger_;
    QtUserInput qtinput_;
    UserInput& input_;
    QtAsmFileInput asmqtinput_;
    UserInput& asminput_;  // the same dialogs, for assembler sources
    QtBasicFileInput basicqtinput_;
    UserInput& basicinput_;  // the same dialogs, for BASIC sources
    QtWiringDialogs wiring_;
    QtClock clock_;
    MainWindowModel model_;
    std::unique_ptr<PinAccess> pins_;
    std::unique_ptr<MainWindow> window_;
    QPointer<MicrocontrollerViewWindow> view_;
    QPointer<AssemblerWindowView> assembler_;
    QPointer<BasicCompilerWindowView> basic_;
    QPointer<LcdWindowView> lcd_;
    QPointer<ProgramMemoryWindow> programmemory_;
    QPointer<EepromWindow> eeprom_;
    QPointer<StackWindow> stack_;
    QPointer<AlternativeWindow> alternative_;
    QPointer<DataMemoryUsageWindow> memoryusage_;
    QPointer<BreakpointsWindow> breakpoints_;
    QPointer<SpecialBreakpointsWindow> special_;
    QPointer<WatchWindow> watch_;
};

}  // namespace velmora
