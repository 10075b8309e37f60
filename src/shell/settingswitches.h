#pragma once
// Reading and writing settings by name with the default of the table of names, and on-off
// settings as booleans. On-off values come in three spellings ("ON"/"OFF", "1"/"0",
// "-1"/"0"); a write keeps the spelling of the setting's default.

#include <string>
#include <string_view>

#include "core/events.h"
#include "shell/settingvalues.h"

namespace velmora {

// The value, or its table default (written back) when it does not exist yet.
std::string readsetting(SettingsAccess& settings, std::string_view name);

// A numeric setting with the default of the table of names, which it falls back on when the
// stored value lies outside `range`.
int32_t readnumber(SettingsAccess& settings, std::string_view name, NumberRange range);

// "ON", "1" and "-1" are on, in any letter case; everything else is off.
bool isswitchon(std::string_view text);
bool readswitch(SettingsAccess& settings, std::string_view name);
void writeswitch(SettingsAccess& settings, std::string_view name, bool on);

}  // namespace velmora
