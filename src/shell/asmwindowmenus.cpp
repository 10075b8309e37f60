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
        {"menu2",
         "Edit",
         {{"menuundo", "Undo"},
          {"menucopy", "Copy"},
          {"menucut", "Cut"},
          {"menupaste", "Paste"},
          {"menufind", "Find"},
          {"menufindnext", "Find Next"},
          {"menureplace", "Replace All"},
          {"menuformat", "Format Text"}}},
        {"menu3",
         "Tools",
         {{"menuassemble", "Assemble"},
          {"menuassembleload", "Assemble & Load"},
          {"menuavrassembler", "Assemble With AVR Assembler"}}},
        {"menu4", "Options", {{"menueeprom", "EEPROM Memory Editor"}}},
        {"menu5", "Go To Next Error", {}},
    };
    return menus;
}

bool asmcontrolcommand(const std::string& control) {
    return control == "menuundo" || control == "menucopy" || control == "menucut" || control == "menupaste";
}

}  // namespace velmora
