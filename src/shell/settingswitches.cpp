#include "shell/settingswitches.h"

#include <cctype>

#include "core/textcase.h"
#include "shell/settingnames.h"
#include "shell/settingvalues.h"

namespace velmora {

namespace {
std::string tabledefault(std::string_view name) {
    const SettingInfo* info = findsetting(name);
    return info && info->defaultvalue ? *info->defaultvalue : std::string();
}

}  // namespace

std::string readsetting(SettingsAccess& settings, std::string_view name) {
    return settings.getsetting(std::string(name), tabledefault(name));
}

int32_t readnumber(SettingsAccess& settings, std::string_view name, NumberRange range) {
    return readnumber(settings, name, settinginteger(tabledefault(name)), range);
}

bool isswitchon(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return sameignoringcase(text, "ON") || text == "1" || text == "-1";
}

bool readswitch(SettingsAccess& settings, std::string_view name) { return isswitchon(readsetting(settings, name)); }

void writeswitch(SettingsAccess& settings, std::string_view name, bool on) {
    const std::string style = tabledefault(name);
    std::string text;
    if (sameignoringcase(style, "ON") || sameignoringcase(style, "OFF"))
        text = on ? "ON" : "OFF";
    else if (style == "-1")
        text = on ? "-1" : "0";
    else
        text = on ? "1" : "0";
    settings.putsetting(std::string(name), text);
}

}  // namespace velmora
