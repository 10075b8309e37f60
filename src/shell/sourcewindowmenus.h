#pragma once
// A source window's menus as data: control names and captions, in menu order. The view
// builds its menu bar from such a table and sends the control name back when an item is
// chosen. Captions use the toolkit's convention: "&" marks the access key, "&&" stands for
// "&" itself. The Edit menu's first four items are the text control's own.

#include <string>
#include <vector>

namespace velmora {

struct WindowMenuItem {
    std::string control;
    std::string caption;
    bool checkable = false;  // an option with a check mark
};

// A top-level menu; a top-level command (Go To Next Error) has no items.
struct WindowMenu {
    std::string control;
    std::string caption;
    std::vector<WindowMenuItem> items;
};

// The Edit menu both source windows share.
WindowMenu editmenu(const std::string& control);

// The Edit items that the text control carries out by itself.
bool editcontrolcommand(const std::string& control);

}  // namespace velmora
