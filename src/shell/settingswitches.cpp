#include "shell/settingswitches.h"

#include <cctype>

#include "shell/settingnames.h"
#include "shell/settingvalues.h"

namespace velmora {

namespace {
std::string tabledefault(std::string_view name) {
    const SettingInfo* info = findsetting(name);
    return info && info->defaultvalue ? *info->defaultvalue : std::string();
}

bool equalsnocase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (std::toupper(static_cast<unsigned char>(a[i])) != std::toupper(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}
}  // namespace

std::string readsetting(SettingsAccess& settings, std::string_view name) {
    return settings.getsetting(std::string(name), tabledefault(name));
}

bool isswitchon(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    return equalsnocase(text, "ON") || text == "1" || text == "-1";
}

bool readswitch(SettingsAccess& settings, std::string_view name) { return isswitchon(readsetting(settings, name)); }

void writeswitch(SettingsAccess& settings, std::string_view name, bool on) {
    const std::string style = tabledefault(name);
    std::string text;
    if (equalsnocase(style, "ON") || equalsnocase(style, "OFF"))
        text = on ? "ON" : "OFF";
    else if (style == "-1")
        text = on ? "-1" : "0";
    else
        text = on ? "1" : "0";
    settings.putsetting(std::string(name), text);
}

}  // namespace velmora
