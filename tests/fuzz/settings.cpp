// The settings file: its reader and writer, the store over a real file, and every reader of
// values the desktop program runs at start, fed whatever the file holds.

#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "core/machine.h"
#include "core/memorysettings.h"
#include "core/peripheraltimes.h"
#include "devices/lcdconfig.h"
#include "fuzzsupport.h"
#include "fuzztargets.h"
#include "shell/messagepolicy.h"
#include "shell/settingnames.h"
#include "shell/settingsfile.h"
#include "shell/settingsstore.h"
#include "shell/shelloptions.h"
#include "shell/sourcewindowsettings.h"
#include "shell/themes.h"
#include "shell/windowplacement.h"

namespace velmora::fuzz {

namespace {

// The Confirmation window's side of the message policy: the duration it is handed must be
// one a timer can hold.
struct CheckedDisplay : MessageDisplay {
    void modalbox(const std::string&, const std::string&, MessageKind) override {}
    void confirmation(const std::vector<std::string>&, int seconds) override {
        if (seconds < kMessageDurationLow || seconds > kMessageDurationHigh) invariantbroken();
    }
};

bool samevalues(const std::vector<StoredSetting>& a, const std::vector<StoredSetting>& b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (a[i].name != b[i].name || a[i].value != b[i].value || a[i].isnumber != b[i].isnumber) return false;
    return true;
}

void readatstart(SettingsAccess& settings) {
    const ShellOptions options = readshelloptions(settings, "/nonexistent");
    if (options.rate < 1 || options.rate > 6) invariantbroken();
    if (options.ultimatetimer < kUltimateTimerLow || options.ultimatetimer > kUltimateTimerHigh) invariantbroken();
    Machine m;
    applyoptions(m, options);
    readperipheraltimes(m, settings);
    validatepositions(settings);
    for (const int window : positionedwindows())
        if (const auto place = startposition(settings, window))
            if (place->x < 0 || place->y < 0 || place->x > kWindowTwipsHigh / kTwipsPerPixel ||
                place->y > kWindowTwipsHigh / kTwipsPerPixel)
                invariantbroken();
    for (const char* prefix : {settingnames::kBasicEditor, settingnames::kAssemblerEditor}) {
        const EditorSettings editor = readeditorsettings(settings, prefix);
        if (editor.fontsize < 1 || editor.tabsize < 1) invariantbroken();
    }
    (void)themeload(settings, defaulttheme());
    (void)loadlcdconfig(settings);
    CheckedDisplay display;
    MessagePolicy policy(settings, display);
    policy.show("Velmora", MessageKind::Information);
}

}  // namespace

int fuzz_settings(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const SettingsText parsed = parsesettingstext(text);

    // What the writer makes of it reads back the same and whole.
    const SettingsText again = parsesettingstext(formatsettingstext(parsed.values));
    if (again.damaged || !samevalues(parsed.values, again.values)) invariantbroken();

    MemorySettings memory;
    for (const StoredSetting& s : parsed.values) memory.putsetting(s.name, s.value);
    readatstart(memory);

    // The store itself on the file as it was found.
    const std::filesystem::path path = scratchfolder() / "settings";
    {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out.write(text.data(), static_cast<std::streamsize>(text.size()));
    }
    SettingsStore store(path);
    (void)store.dumpsettings();
    (void)store.getsetting(settingnames::kMessageDuration, "4");
    return 0;
}

}  // namespace velmora::fuzz
