#pragma once
// The per-user settings store: one small text file of named values. Every operation reads
// the file, does its work and, when something changed, replaces the file as a whole, so no
// handle stays open and a crash leaves either the old or the new file, never half of one.

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>

#include "core/events.h"

namespace velmora {

// A read hands back at most this many characters of a value; the stored value stays whole.
inline constexpr size_t kSettingReadLength = 255;

// Where the per-user file lives: VELMORA_SETTINGS, else $XDG_CONFIG_HOME/velmora/settings,
// else $HOME/.config/velmora/settings. Empty when none of them is known.
using EnvironmentLookup = std::function<const char*(const char*)>;
std::filesystem::path usersettingspath(const EnvironmentLookup& environment);
// The same from this process's environment, falling back on the account's home directory.
std::filesystem::path usersettingspath();

// Where the program writes files of its own at run time ("lcdlog.txt"): $XDG_DATA_HOME/velmora,
// else $HOME/.local/share/velmora. Empty when neither is known.
std::filesystem::path userdatafolder(const EnvironmentLookup& environment);
std::filesystem::path userdatafolder();

class SettingsStore : public SettingsAccess {
public:
    SettingsStore();  // the per-user file
    explicit SettingsStore(std::filesystem::path file);

    const std::filesystem::path& path() const { return path_; }

    // A value that does not exist is created with the default, which is returned.
    std::string getsetting(const std::string& name, const std::string& defaultvalue) override;
    void putsetting(const std::string& name, const std::string& value) override;
    int32_t getsettingdword(const std::string& name, int32_t defaultvalue) override;
    void putsettingdword(const std::string& name, int32_t value) override;

    // All values, one a line: index, tab, name, tab, value (control characters escaped).
    std::string dumpsettings() const;

    // A damaged file is copied here before it is first rewritten.
    std::filesystem::path damagedcopypath() const;

private:
    struct Contents;
    Contents load() const;
    void save(const Contents& contents) const;
    void store(const std::string& name, const std::string& value, bool isnumber);
    // The readable text of a value; a missing one is created from `created` first.
    std::string readorcreate(const std::string& name, const std::string& created, bool isnumber);

    std::filesystem::path path_;
};

}  // namespace velmora
