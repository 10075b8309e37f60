#pragma once
// The Assembler window's menus as data: control names and captions, in menu order.

#include <string>
#include <vector>

#include "shell/sourcewindowmenus.h"

namespace velmora {

using AsmMenuItem = WindowMenuItem;
using AsmMenu = WindowMenu;

const std::vector<AsmMenu>& asmwindowmenus();

// The Edit items that the text control carries out by itself.
inline bool asmcontrolcommand(const std::string& control) { return editcontrolcommand(control); }

}  // namespace velmora
