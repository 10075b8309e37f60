#pragma once
// The main window's menus as data: control names, captions, what kind of item each is, and
// the rules for which are enabled, checked and shown. The window builds its menu bar from
// this table and sends the control name back when an item is chosen.

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/machine.h"

namespace velmora {

enum class MenuItemKind {
    Command,  // does something when chosen
    Switch,   // an on-off setting with a check mark
    Rate,     // one of the six simulation rates, checked when current
    Tool,     // opens (or brings forward) a window
};

// A condition a tool's window needs from the loaded model or program.
enum class ToolGuard { None, SimulationModule, Eeprom, Sram, Program, Uart };

struct MenuItemDef {
    std::string control;
    std::string caption;
    MenuItemKind kind = MenuItemKind::Command;
    std::string setting;  // Switch: its setting's name
    int rate = 0;         // Rate: 1 to 6
    int window = 0;       // Tool: its window number; 0 for the Microcontroller View, whose window
                          // depends on the package
    ToolGuard guard = ToolGuard::None;
    bool checkable = false;  // Command: shows a check mark while what it switches is on
};

// A top-level menu; a top-level command has no items.
struct MenuDef {
    std::string control;
    std::string caption;
    std::vector<MenuItemDef> items;
};

const std::vector<MenuDef>& mainmenus();
// The item of a control name, or null.
const MenuItemDef* findmenuitem(const std::string& control);

// The refusal text of a guard when the machine does not meet it.
std::optional<std::string> toolrefusal(ToolGuard guard, const Machine& m);

// What the enabled, checked and visible states depend on.
struct MenuContext {
    bool menusenabled = true;  // off while a load or clear works
    bool startenabled = true, stopenabled = false, stepenabled = false;
    bool hassourcelines = false;
    int rate = 4;
    bool gdblistening = false;
    std::map<std::string, bool> switches;  // by setting name
    std::map<std::string, bool> toolavailable;  // by control name; a tool without a window is greyed
};

struct MenuItemState {
    bool enabled = true;
    bool checked = false;
    bool visible = true;
};

// The state of every menu and item, by control name.
std::map<std::string, MenuItemState> menustates(const MenuContext& context);

}  // namespace velmora
