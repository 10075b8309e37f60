#include "shell/windowplacement.h"

#include "shell/settingnames.h"
#include "shell/settingswitches.h"
#include "shell/settingvalues.h"

namespace velmora {

using namespace settingnames;

namespace {
// A coordinate that is not used (negative, or beyond every screen) is replaced by the default
// in the store too, so it is gone for good.
WindowPlace validatedplace(SettingsAccess& settings, int window) {
    const WindowPlace place = readwindowplace(settings, window);
    const auto repair = [&](const char* pattern, int32_t valid) {
        const std::string name = settingname(pattern, window);
        if (rangednumber(settings.getsetting(name, settingtext(valid)), -1, {0, kWindowTwipsHigh}) < 0)
            settings.putsetting(name, settingtext(valid));
    };
    repair(kWindowLeft, place.left);
    repair(kWindowTop, place.top);
    return place;
}
}  // namespace

void validatepositions(SettingsAccess& settings) {
    for (int window : positionedwindows()) validatedplace(settings, window);
}

std::optional<PixelPoint> startposition(SettingsAccess& settings, int window) {
    // The place is validated in either case; it is only used when positions are kept.
    const WindowPlace place = validatedplace(settings, window);
    if (!readswitch(settings, kSavePositions)) return std::nullopt;
    return PixelPoint{place.left / kTwipsPerPixel, place.top / kTwipsPerPixel};
}

void saveposition(SettingsAccess& settings, int window, PixelPoint place) {
    settings.putsetting(settingname(kWindowLeft, window), settingtext(static_cast<int32_t>(place.x * kTwipsPerPixel)));
    settings.putsetting(settingname(kWindowTop, window), settingtext(static_cast<int32_t>(place.y * kTwipsPerPixel)));
}

bool startontop(SettingsAccess& settings, int window) {
    const bool saved = settings.getsetting(settingname(kOnTop, window), "0") == "1";
    return readswitch(settings, kSaveAlwaysOnTop) && saved;
}

void saveontop(SettingsAccess& settings, int window, bool ontop) {
    settings.putsetting(settingname(kOnTop, window), ontop ? "1" : "0");
}

}  // namespace velmora
