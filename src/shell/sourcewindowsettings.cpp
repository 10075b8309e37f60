#include "shell/sourcewindowsettings.h"

#include <cstring>

#include "shell/settingnames.h"
#include "shell/settingswitches.h"

namespace velmora {

using namespace settingnames;

EditorColor editorcolor(int32_t stored) {
    const auto value = static_cast<uint32_t>(stored) & 0xFFFFFFu;
    return {static_cast<int>(value & 0xFF), static_cast<int>((value >> 8) & 0xFF), static_cast<int>(value >> 16)};
}

namespace {
// What the text control can draw and keep; beyond these a hand-edited value is ignored.
constexpr NumberRange kFontSizeRange{1, 144};
constexpr NumberRange kColorRange{0, 0xFFFFFF};
constexpr NumberRange kTabSizeRange{1, 64};
constexpr NumberRange kWheelStepRange{1, 1000};
constexpr NumberRange kUndoLevelsRange{0, 10000};
}  // namespace

EditorSettings readeditorsettings(SettingsAccess& settings, const char* prefix) {
    const auto name = [prefix](const char* pattern) { return settingname(pattern, prefix); };
    const auto text = [&](const char* pattern) { return readsetting(settings, name(pattern)); };
    const auto number = [&](const char* pattern, NumberRange range) { return readnumber(settings, name(pattern), range); };
    const auto color = [&](const char* pattern) { return editorcolor(number(pattern, kColorRange)); };
    const auto on = [&](const char* pattern) { return readswitch(settings, name(pattern)); };

    EditorSettings s;
    s.fontname = text(kEditorFontName);
    s.fontsize = number(kEditorFontSize, kFontSizeRange);
    s.coloring = on(kEditorColoringEnabled);
    s.background = color(kEditorBackgroundColor);
    s.text = color(kEditorTextColor);
    s.keyword = color(kEditorKeywordColor);
    s.comment = color(kEditorCommentColor);
    s.error = color(kEditorErrorColor);
    s.linenumberbackground = color(kEditorLineNumbersBackgroundColor);
    s.linenumbertext = color(kEditorLineNumbersTextColor);
    s.linenumbers = on(kEditorLineNumbersEnabled);
    s.tabsize = number(kEditorTabSize, kTabSizeRange);
    s.wheelstep = number(kEditorScrollWheelStep, kWheelStepRange);
    s.undolevels = number(kEditorUndoLevelsNumber, kUndoLevelsRange);
    const bool basic = std::strcmp(prefix, kBasicEditor) == 0;
    s.string = basic ? color(kEditorStringColor) : s.text;
    s.asmcode = basic ? color(kEditorAsmColor) : s.text;
    return s;
}

}  // namespace velmora
