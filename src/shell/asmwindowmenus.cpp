#include "shell/asmwindowmenus.h"

namespace velmora {

const std::vector<AsmMenu>& asmwindowmenus() {
    static const std::vector<AsmMenu> menus = {
        {"menu1",
         "File",
         {{"menunew", "New"},
          {"menuopen", "Open"},
          {"menusave", "Save"},
          {"menusaveas", "Save As"},
          {"menuprint", "Print Source"},
          {"menuprint2", "Print Listing"}}},
        editmenu("menu2"),
        {"menu3",
         "Tools",
         {{"menuassemble", "Assemble"},
          {"menuassembleload", "Assemble && Load"},
          {"menuavrassembler", "Assemble With AVR Assembler"}}},
        {"menu4", "Options", {{"menueeprom", "EEPROM Memory Editor"}}},
        {"menu5", "Go To Next Error", {}},
    };
    return menus;
}

}  // namespace velmora
