#pragma once
// The assembler editor's settings group ("A Font Name", "A Keyword Color", ...) as the
// window applies them to its source editor and listing viewer.

#include <cstdint>
#include <string>

#include "core/events.h"

namespace velmora {

// A colour as stored: red + 256 x green + 65536 x blue.
struct EditorColor {
    int red = 0, green = 0, blue = 0;
};
EditorColor editorcolor(int32_t stored);

struct AsmEditorSettings {
    std::string fontname;
    int fontsize = 10;
    bool coloring = true;
    EditorColor background, text, keyword, comment, error, linenumberbackground, linenumbertext;
    bool linenumbers = true;
    int tabsize = 8;
    int wheelstep = 10;
    int undolevels = 10;
};

// Reads the group, writing the defaults of names not stored yet.
AsmEditorSettings readasmeditorsettings(SettingsAccess& settings);

}  // namespace velmora
