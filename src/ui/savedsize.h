#pragma once
// A window's saved width and height ("Window# Width", "Window# Height"), kept in twips like
// its place and only while "Save Positions" is on. A missing or unusable value gives 0.

#include <QSize>

#include "shell/settingnames.h"
#include "shell/settingswitches.h"
#include "shell/settingvalues.h"
#include "shell/windowplacement.h"

namespace velmora {

inline int savedlength(SettingsAccess& settings, const char* pattern, int window) {
    if (!readswitch(settings, settingnames::kSavePositions)) return 0;
    return rangednumber(settings.getsetting(settingname(pattern, window), ""), 0, {1, kWindowTwipsHigh}) /
           kTwipsPerPixel;
}

inline void savelength(SettingsAccess& settings, const char* pattern, int window, int pixels) {
    if (!readswitch(settings, settingnames::kSavePositions)) return;
    settings.putsetting(settingname(pattern, window), settingtext(static_cast<int32_t>(pixels * kTwipsPerPixel)));
}

// A window whose width and height are both the user's: its saved size, or an empty size.
inline QSize savedsize(SettingsAccess& settings, int window) {
    const int width = savedlength(settings, settingnames::kWindowWidth, window);
    const int height = savedlength(settings, settingnames::kWindowHeight, window);
    return width > 0 && height > 0 ? QSize(width, height) : QSize();
}

inline void savesize(SettingsAccess& settings, int window, QSize size) {
    savelength(settings, settingnames::kWindowWidth, window, size.width());
    savelength(settings, settingnames::kWindowHeight, window, size.height());
}

}  // namespace velmora
