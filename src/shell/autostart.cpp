#include "shell/autostart.h"

#include "core/memory.h"
#include "shell/settingnames.h"
#include "shell/settingswitches.h"

namespace velmora {

using namespace settingnames;
namespace w = windows;

const std::vector<AutoStartWindow>& autostartwindows() {
    static const std::vector<AutoStartWindow> table = {
        {w::kProgramMemoryEditor, kAutoStartProgram, AutoStartNeed::Nothing},
        {w::kEepromMemoryEditor, kAutoStartEeprom, AutoStartNeed::Eeprom},
        {w::kStackViewer, kAutoStartStack, AutoStartNeed::Nothing},
        {kMicrocontrollerViewFlag, kAutoStartView, AutoStartNeed::Nothing},
        {w::kAlternativeRegisters, kAutoStartAlternative, AutoStartNeed::Nothing},
        {w::kBreakpointsManager, kAutoStartBreak, AutoStartNeed::Program},
        {w::kSpecialBreakpoints, kAutoStartSpecial, AutoStartNeed::Nothing},
        {w::kAssembler, kAutoStartAssembler, AutoStartNeed::Nothing},
        {w::kBasicCompiler, kAutoStartCompiler, AutoStartNeed::Nothing},
        {w::kLedBoard, kAutoStartLed, AutoStartNeed::Nothing},
        {w::kKeypad, kAutoStartKeypad, AutoStartNeed::Nothing},
        {w::kLcd, kAutoStartLcd, AutoStartNeed::Nothing},
        {w::kGraphicalLcd, kAutoStartGlcd, AutoStartNeed::Nothing},
        {w::kStepper, kAutoStartStep, AutoStartNeed::Nothing},
        {w::kI2cEeprom, kAutoStartI2c, AutoStartNeed::Nothing},
        {w::kHardwareUart, kAutoStartUart, AutoStartNeed::Uart},
        {w::kSerialTerminal, kAutoStartTerminal, AutoStartNeed::Nothing},
        {w::kSoftwareUart, kAutoStartSoft, AutoStartNeed::Nothing},
        {w::kOscilloscope, kAutoStartOscope, AutoStartNeed::Nothing},
        {w::kSignalGenerator, kAutoStartSiggen, AutoStartNeed::Nothing},
        {w::kSevenSegment, kAutoStartSegment, AutoStartNeed::Nothing},
        {w::kWatchVariables, kAutoStartWatch, AutoStartNeed::Nothing},
    };
    return table;
}

bool autostartneedmet(AutoStartNeed need, const Machine& m) {
    switch (need) {
    case AutoStartNeed::Nothing: return true;
    case AutoStartNeed::Eeprom: return m.eepromsize >= 1;
    case AutoStartNeed::Program: return m.programbytes > 0;
    case AutoStartNeed::Uart: return hasusart(m);
    }
    return false;
}

void rememberautostart(SettingsAccess& settings, const WindowRegistry& registry, const std::string& programpath) {
    if (!readswitch(settings, kAutoStartRemember)) return;
    for (const AutoStartWindow& entry : autostartwindows()) {
        const bool open = entry.window == kMicrocontrollerViewFlag ? registry.microcontrollerviewopen()
                                                                    : registry.isopen(entry.window);
        writeswitch(settings, entry.flag, open);
    }
    settings.putsetting(kAutoStartHexFile, programpath);
}

}  // namespace velmora
