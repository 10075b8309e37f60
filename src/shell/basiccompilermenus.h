#pragma once
// The BASIC Compiler window's menus as data: control names and captions, in menu order.
// Captions use the toolkit's convention: "&" marks the access key, "&&" is a literal "&".

#include <vector>

#include "shell/sourcewindowmenus.h"

namespace velmora {

const std::vector<WindowMenu>& basiccompilermenus();

}  // namespace velmora
