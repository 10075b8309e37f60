#pragma once
// The assembler editor's settings group ("A Font Name", "A Keyword Color", ...) as the
// window applies them to its source editor and listing viewer.

#include "shell/settingnames.h"
#include "shell/sourcewindowsettings.h"

namespace velmora {

using AsmEditorSettings = EditorSettings;

// Reads the group, writing the defaults of names not stored yet.
inline AsmEditorSettings readasmeditorsettings(SettingsAccess& settings) {
    return readeditorsettings(settings, settingnames::kAssemblerEditor);
}

}  // namespace velmora
