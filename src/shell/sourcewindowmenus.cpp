#include "shell/sourcewindowmenus.h"

namespace velmora {

WindowMenu editmenu(const std::string& control) {
    return {control,
            "Edit",
            {{"menuundo", "Undo"},
             {"menucopy", "Copy"},
             {"menucut", "Cut"},
             {"menupaste", "Paste"},
             {"menufind", "Find"},
             {"menufindnext", "Find Next"},
             {"menureplace", "Replace All"},
             {"menuformat", "Format Text"}}};
}

bool editcontrolcommand(const std::string& control) {
    return control == "menuundo" || control == "menucopy" || control == "menucut" || control == "menupaste";
}

}  // namespace velmora
