#include "shell/mainwindowmenus.h"

#include "core/memory.h"
#include "core/runcontrol.h"
#include "shell/settingnames.h"
#include "shell/windowregistry.h"

namespace velmora {

namespace {

using namespace settingnames;
namespace w = windows;

MenuItemDef command(const char* control, const char* caption) {
    return {control, caption, MenuItemKind::Command, "", 0, 0, ToolGuard::None};
}
MenuItemDef checkedcommand(const char* control, const char* caption) {
    MenuItemDef item = command(control, caption);
    item.checkable = true;
    return item;
}
MenuItemDef onoff(const char* control, const char* caption, const char* setting) {
    return {control, caption, MenuItemKind::Switch, setting, 0, 0, ToolGuard::None};
}
MenuItemDef rate(int n) {
    return {"menuspeed" + std::to_string(n), kRateCaptions[n], MenuItemKind::Rate, "", n, 0, ToolGuard::None};
}
MenuItemDef tool(const char* control, const char* caption, int window, ToolGuard guard = ToolGuard::None) {
    return {control, caption, MenuItemKind::Tool, "", 0, window, guard};
}

std::vector<MenuDef> buildmenus() {
    std::vector<MenuDef> menus;
    menus.push_back({"menu1", "&File",
                     {command("menuclear", "Clea&r Memory"), command("menuload", "&Load Program"),
                      command("menusave", "Save Memory")}});
    menus.push_back({"menu2", "&Simulation",
                     {command("menustart", "&1 Start"), command("menustep", "&2 Step"),
                      command("menustop", "&3 Stop"), checkedcommand("menugdb", "&4 GDB Server")}});
    menus.push_back({"menu3", "&Rate", {rate(1), rate(2), rate(3), rate(4), rate(5), rate(6)}});
    menus.push_back({"menu4", "&Tools",
                     {
                         tool("menubasic", "BASIC &Compiler", w::kBasicCompiler),
                         tool("menuperipheraldevices", "Microcontroller &View", 0, ToolGuard::SimulationModule),
                         tool("menualternative", "Alternative Registers Viewer", w::kAlternativeRegisters),
                         tool("menumemory", "Program &Memory Editor", w::kProgramMemoryEditor),
                         tool("menueeprom", "&EEPROM Memory Editor", w::kEepromMemoryEditor, ToolGuard::Eeprom),
                         tool("menustack", "&Stack SRAM Space Viewer", w::kStackViewer, ToolGuard::Sram),
                         tool("menuassembler", "&Assembler", w::kAssembler),
                         tool("menudisassembler", "&Disassembler", w::kDisassembler, ToolGuard::Program),
                         tool("menubreakpointsmanager", "&Breakpoints Manager", w::kBreakpointsManager,
                              ToolGuard::Program),
                         tool("menuspecialbreak", "Special Breakpoints", w::kSpecialBreakpoints),
                         tool("menuledboard", "8 x LED Board", w::kLedBoard),
                         tool("menukeypad", "Keypad Matrix", w::kKeypad),
                         tool("menulcd", "LCD M&odule", w::kLcd),
                         tool("menuglcd", "Graphical 128x64 LCD Module", w::kGraphicalLcd),
                         tool("menustepper", "Stepper Motor Phase Simulation", w::kStepper),
                         tool("menui2ceeprom", "I2C EEPROM", w::kI2cEeprom),
                         tool("menuuart", "Hardware &UART Simulation Interface", w::kHardwareUart, ToolGuard::Uart),
                         tool("menuterminal", "PC's Serial Port &Terminal", w::kSerialTerminal),
                         tool("menusoftuart", "Soft&ware UART Simulation Interface", w::kSoftwareUart),
                         tool("menuoscilloscope", "Oscillosco&pe", w::kOscilloscope),
                         tool("menusiggen", "Signal &Generator", w::kSignalGenerator),
                         tool("menu7segment", "7-Segme&nt LED Displays Panel", w::kSevenSegment),
                         tool("menuexternal", "E&xternal Modules", w::kExternalModules),
                         tool("menuwatch", "Watch Variables", w::kWatchVariables),
                     }});
    menus.push_back({"menu5", "&Options",
                     {
                         command("menuselect", "Select Microcontroller"),
                         command("menuclock", "Change Clock Frequency"),
                         onoff("menusavepositions", "Save Positions", kSavePositions),
                         onoff("menuiofirst", "List I/O Registers First", kListIoFirst),
                         onoff("menuontop", "Save Always On Top", kSaveAlwaysOnTop),
                         command("menuautostart", "Auto Start Options"),
                         command("menuresetstatistics", "Reset Simulation Statistics"),
                         command("menuwritetime", "Change EEPROM Write Time"),
                         command("menuconversiontime", "Change A/D Conversion Time"),
                         command("menuuarttime", "Change UART Transmit/Receive Time"),
                         command("menuunprogrammed", "Change FLASH/EEPROM Unprogrammed Value"),
                         onoff("menucompact", "Compact Microcontroller View", kCompactView),
                         onoff("menuinfinite", "Infinite Loop Stops Simulation", kInfiniteLoopStop),
                         onoff("menutracking", "Basic Program Tracking", kBasicProgramTracking),
                         onoff("menuconfirm", "Show Confirmation Boxes", kShowConfirmations),
                         onoff("menuusage", "Show Data Memory Usage Information", kShowMemoryUsage),
                         onoff("menupreserve", "Preserve Input States on Simulation Start", kPreserveInputStates),
                         onoff("menuusevoltage", "Use Voltage for Analog Inputs", kUseVoltageForAnalogInputs),
                         onoff("menuslidermode", "Continuous Analog Input Slider Update", kAnalogSliderMode),
                         command("menuultimaterefresh", "Change Ultimate Rate Refresh Interval"),
                         command("menueditorsetup", "Editor Setup"),
                         command("menucolors", "Change Color Theme"),
                     }});
    menus.push_back({"menu6", "&Help",
                     {command("menuhelp", "Help Topics"), command("menuupdates", "Check For Updates"),
                      command("menubugreport", "Bug Report Interface"), command("menuabout", "About")}});
    menus.push_back({"menustep2", "STEP", {}});
    menus.push_back({"menustep3", "Run To Next BASIC Statement", {}});
    return menus;
}

}  // namespace

const std::vector<MenuDef>& mainmenus() {
    static const std::vector<MenuDef> menus = buildmenus();
    return menus;
}

const MenuItemDef* findmenuitem(const std::string& control) {
    for (const MenuDef& menu : mainmenus())
        for (const MenuItemDef& item : menu.items)
            if (item.control == control) return &item;
    return nullptr;
}

std::optional<std::string> toolrefusal(ToolGuard guard, const Machine& m) {
    switch (guard) {
    case ToolGuard::None: return std::nullopt;
    case ToolGuard::SimulationModule:
        if (m.kinds.simconf == 2) return "Simulation module not available for the selected microcontroller model.";
        return std::nullopt;
    case ToolGuard::Eeprom:
        if (m.eepromsize < 1) return "EEPROM data memory not available for the selected device.";
        return std::nullopt;
    case ToolGuard::Sram:
        if (m.sramsize < 1) return "SRAM data memory not available for the selected device.";
        return std::nullopt;
    case ToolGuard::Program:
        if (m.programbytes == 0) return "No program loaded.";
        return std::nullopt;
    case ToolGuard::Uart:
        if (!hasusart(m)) return "Hardware UART not available for the selected device.";
        return std::nullopt;
    }
    return std::nullopt;
}

std::map<std::string, MenuItemState> menustates(const MenuContext& c) {
    std::map<std::string, MenuItemState> states;
    for (const MenuDef& menu : mainmenus()) {
        states[menu.control] = MenuItemState{c.menusenabled, false, true};
        for (const MenuItemDef& item : menu.items) {
            MenuItemState& s = states[item.control];
            switch (item.kind) {
            case MenuItemKind::Switch: {
                const auto it = c.switches.find(item.setting);
                s.checked = it != c.switches.end() && it->second;
                break;
            }
            case MenuItemKind::Rate: s.checked = item.rate == c.rate; break;
            case MenuItemKind::Tool: {
                const auto it = c.toolavailable.find(item.control);
                s.enabled = it != c.toolavailable.end() && it->second;
                break;
            }
            case MenuItemKind::Command: break;
            }
        }
    }
    states["menustart"].enabled = c.startenabled;
    states["menustop"].enabled = c.stopenabled;
    states["menustep"].enabled = c.stepenabled;
    states["menugdb"].checked = c.gdblistening;
    // The two top-level step commands exist only while single-stepping.
    const bool statement = c.stepenabled && c.hassourcelines;
    states["menustep2"] = MenuItemState{c.menusenabled && c.stepenabled, false, c.stepenabled};
    states["menustep3"] = MenuItemState{c.menusenabled && statement, false, statement};
    return states;
}

}  // namespace velmora
