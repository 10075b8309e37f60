#pragma once
// A source editor's settings group as its window applies it to the text control: the BASIC
// editor's "C Font Name", "C Keyword Color", ... or the assembler editor's "A ..." values.

#include <cstdint>
#include <string>

#include "core/events.h"

namespace velmora {

// A colour as stored: red + 256 x green + 65536 x blue.
struct EditorColor {
    int red = 0, green = 0, blue = 0;
};
EditorColor editorcolor(int32_t stored);

struct EditorSettings {
    std::string fontname;
    int fontsize = 10;
    bool coloring = true;
    EditorColor background, text, keyword, comment, error, linenumberbackground, linenumbertext;
    // Only the BASIC editor has these; the assembler editor leaves them at the text colour.
    EditorColor string, asmcode;
    bool linenumbers = true;
    int tabsize = 8;
    int wheelstep = 10;
    int undolevels = 10;
};

// Reads the group of an editor prefix ("C" or "A"), writing the defaults of names not
// stored yet.
EditorSettings readeditorsettings(SettingsAccess& settings, const char* prefix);

}  // namespace velmora
