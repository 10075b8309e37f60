#include "shell/sourcewindowsettings.h"

#include <cstring>

#include "shell/settingnames.h"
#include "shell/settingswitches.h"
#include "shell/settingvalues.h"

namespace velmora {

using namespace settingnames;

EditorColor editorcolor(int32_t stored) {
    const auto value = static_cast<uint32_t>(stored) & 0xFFFFFFu;
    return {static_cast<int>(value & 0xFF), static_cast<int>((value >> 8) & 0xFF), static_cast<int>(value >> 16)};
}

EditorSettings readeditorsettings(SettingsAccess& settings, const char* prefix) {
    const auto name = [prefix](const char* pattern) { return settingname(pattern, prefix); };
    const auto text = [&](const char* pattern) { return readsetting(settings, name(pattern)); };
    const auto number = [&](const char* pattern) { return settinginteger(text(pattern)); };
    const auto color = [&](const char* pattern) { return editorcolor(number(pattern)); };
    const auto on = [&](const char* pattern) { return readswitch(settings, name(pattern)); };

    EditorSettings s;
    s.fontname = text(kEditorFontName);
    s.fontsize = number(kEditorFontSize);
    s.coloring = on(kEditorColoringEnabled);
    s.background = color(kEditorBackgroundColor);
    s.text = color(kEditorTextColor);
    s.keyword = color(kEditorKeywordColor);
    s.comment = color(kEditorCommentColor);
    s.error = color(kEditorErrorColor);
    s.linenumberbackground = color(kEditorLineNumbersBackgroundColor);
    s.linenumbertext = color(kEditorLineNumbersTextColor);
    s.linenumbers = on(kEditorLineNumbersEnabled);
    s.tabsize = number(kEditorTabSize);
    s.wheelstep = number(kEditorScrollWheelStep);
    s.undolevels = number(kEditorUndoLevelsNumber);
    const bool basic = std::strcmp(prefix, kBasicEditor) == 0;
    s.string = basic ? color(kEditorStringColor) : s.text;
    s.asmcode = basic ? color(kEditorAsmColor) : s.text;
    return s;
}

}  // namespace velmora
