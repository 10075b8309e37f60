#include "shell/basiccompilermenus.h"

#include "shell/settingnames.h"

namespace velmora {

const std::vector<WindowMenu>& basiccompilermenus() {
    static const std::vector<WindowMenu> menus = {
        {"menu1",
         "File",
         {{"menunew", "New"},
          {"menuopen", "Open"},
          {"menusave", "Save"},
          {"menusaveas", "Save As"},
          {"menuprint", "Print"}}},
        editmenu("menu2"),
        {"menu3",
         "Tools",
         {{"menucompile", "&Compile"},
          {"menucompileassemble", "Compile && &Assemble"},
          {"menucompileassembleload", "Compile && Assemble && &Load"}}},
        {"menu4",
         "Options",
         {{"menuvariables", "Show System Variables"},
          {"menubitnames", "Show System Bit Names"},
          {"menuinterrupts", "Show System Interrupt Names"},
          {"menucompatible", "Generate AVR Assembler Compatible Listing", true},
          {"menuarbitrary", settingnames::kAllowArbitraryBitNames, true}}},
    };
    return menus;
}

}  // namespace velmora
