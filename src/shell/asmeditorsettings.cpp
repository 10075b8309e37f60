#include "shell/asmeditorsettings.h"

#include "shell/settingnames.h"
#include "shell/settingswitches.h"
#include "shell/settingvalues.h"

namespace velmora {

using namespace settingnames;

EditorColor editorcolor(int32_t stored) {
    const auto value = static_cast<uint32_t>(stored) & 0xFFFFFFu;
    return {static_cast<int>(value & 0xFF), static_cast<int>((value >> 8) & 0xFF), static_cast<int>(value >> 16)};
}

AsmEditorSettings readasmeditorsettings(SettingsAccess& settings) {
    const auto name = [](const char* pattern) { return settingname(pattern, kAssemblerEditor); };
    const auto text = [&](const char* pattern) { return readsetting(settings, name(pattern)); };
    const auto number = [&](const char* pattern) { return settinginteger(text(pattern)); };
    const auto color = [&](const char* pattern) { return editorcolor(number(pattern)); };
    const auto on = [&](const char* pattern) { return readswitch(settings, name(pattern)); };

    AsmEditorSettings s;
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
    return s;
}

}  // namespace velmora
