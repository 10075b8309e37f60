#pragma once
// The Assembler window's menus as data: control names and captions, in menu order. The view
// builds its menu bar from this table and sends the control name back when an item is chosen.

#include <string>
#include <vector>

namespace velmora {

struct AsmMenuItem {
    std::string control;
    std::string caption;
};

// A top-level menu; Go To Next Error is a top-level command without items.
struct AsmMenu {
    std::string control;
    std::string caption;
    std::vector<AsmMenuItem> items;
};

const std::vector<AsmMenu>& asmwindowmenus();

// The Edit items that the text control carries out by itself.
bool asmcontrolcommand(const std::string& control);

}  // namespace velmora
