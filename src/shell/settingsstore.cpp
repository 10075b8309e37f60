#include "shell/settingsstore.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <system_error>
#include <vector>

#include "shell/settingsfile.h"
#include "shell/settingvalues.h"

namespace velmora {

namespace fs = std::filesystem;

namespace {

// Far above any real settings file; a larger file is somebody else's and is left alone.
constexpr std::uintmax_t kLargestFile = 16u << 20;

enum class FileState {
    Missing,     // first start: created on the first write
    Readable,
    Damaged,     // some lines unreadable: the rest is used, a copy is kept before rewriting
    Unreadable,  // cannot be read at all: defaults only, and the file is never replaced
};

bool nonempty(const char* text) { return text != nullptr && *text != '\0'; }

StoredSetting* find(std::vector<StoredSetting>& values, const std::string& name) {
    auto it = std::find_if(values.begin(), values.end(),
                           [&](const StoredSetting& s) { return samesettingname(s.name, name); });
    return it == values.end() ? nullptr : &*it;
}

// What a reader sees: the text up to a NUL, no longer than the read buffer.
std::string readback(const std::string& value) {
    return value.substr(0, std::min(value.find('\0'), kSettingReadLength));
}

// Replaces `target` by `text` through a temporary file in the same folder.
bool writeatomically(const fs::path& target, const std::string& text) {
    std::error_code error;
    if (target.has_parent_path()) fs::create_directories(target.parent_path(), error);
    fs::path temporary = target;
    temporary += ".tmp." + std::to_string(::getpid());
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        out << text;
        out.close();
        if (!out) {
            fs::remove(temporary, error);
            return false;
        }
    }
    fs::rename(temporary, target, error);
    if (error) fs::remove(temporary, error);
    return !error;
}

}  // namespace

struct SettingsStore::Contents {
    FileState state = FileState::Missing;
    std::vector<StoredSetting> values;
};

fs::path usersettingspath(const EnvironmentLookup& environment) {
    if (const char* file = environment("VELMORA_SETTINGS"); nonempty(file)) return fs::path(file);
    // A relative XDG_CONFIG_HOME is invalid and ignored, as the XDG rules say.
    if (const char* config = environment("XDG_CONFIG_HOME"); nonempty(config) && fs::path(config).is_absolute())
        return fs::path(config) / "velmora" / "settings";
    if (const char* home = environment("HOME"); nonempty(home))
        return fs::path(home) / ".config" / "velmora" / "settings";
    return {};
}

fs::path usersettingspath() {
    fs::path path = usersettingspath([](const char* name) { return std::getenv(name); });
    if (path.empty()) {
        if (const passwd* account = ::getpwuid(::getuid()); account != nullptr && nonempty(account->pw_dir))
            path = fs::path(account->pw_dir) / ".config" / "velmora" / "settings";
    }
    return path;
}

fs::path userdatafolder(const EnvironmentLookup& environment) {
    if (const char* data = environment("XDG_DATA_HOME"); nonempty(data) && fs::path(data).is_absolute())
        return fs::path(data) / "velmora";
    if (const char* home = environment("HOME"); nonempty(home)) return fs::path(home) / ".local" / "share" / "velmora";
    return {};
}

fs::path userdatafolder() { return userdatafolder([](const char* name) { return std::getenv(name); }); }

SettingsStore::SettingsStore() : path_(usersettingspath()) {}

SettingsStore::SettingsStore(fs::path file) : path_(std::move(file)) {}

fs::path SettingsStore::damagedcopypath() const {
    fs::path copy = path_;
    copy += ".damaged";
    return copy;
}

SettingsStore::Contents SettingsStore::load() const {
    Contents contents;
    if (path_.empty()) {
        contents.state = FileState::Unreadable;
        return contents;
    }
    std::error_code error;
    const fs::file_status status = fs::status(path_, error);
    if (status.type() == fs::file_type::not_found) return contents;
    // Only a plain file is ours to read: a folder or a pipe in its place is not touched.
    const std::uintmax_t size = error ? 0 : fs::file_size(path_, error);
    if (error || status.type() != fs::file_type::regular || size > kLargestFile) {
        contents.state = FileState::Unreadable;
        return contents;
    }
    std::ifstream in(path_, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    if (!in || in.bad()) {
        contents.state = FileState::Unreadable;
        return contents;
    }
    SettingsText parsed = parsesettingstext(text.str());
    contents.values = std::move(parsed.values);
    contents.state = parsed.damaged ? FileState::Damaged : FileState::Readable;
    return contents;
}

void SettingsStore::save(const Contents& contents) const {
    if (contents.state == FileState::Unreadable) return;
    std::error_code error;
    // Rewrite the file a link points at, so a linked settings file stays linked.
    fs::path target = path_;
    if (fs::is_symlink(path_, error)) {
        target = fs::weakly_canonical(path_, error);
        if (error) return;
    }
    if (contents.state == FileState::Damaged) {
        fs::copy_file(target, damagedcopypath(), fs::copy_options::overwrite_existing, error);
        if (error) return;
    }
    writeatomically(target, formatsettingstext(contents.values));
}

void SettingsStore::store(const std::string& name, const std::string& value, bool isnumber) {
    Contents contents = load();
    if (contents.state == FileState::Unreadable) return;
    if (StoredSetting* existing = find(contents.values, name)) {
        existing->value = value;
        existing->isnumber = isnumber;
    } else {
        contents.values.push_back({name, value, isnumber});
    }
    save(contents);
}

std::string SettingsStore::readorcreate(const std::string& name, const std::string& created, bool isnumber) {
    Contents contents = load();
    if (StoredSetting* existing = find(contents.values, name)) return readback(existing->value);
    if (contents.state != FileState::Unreadable) {
        contents.values.push_back({name, created, isnumber});
        save(contents);
    }
    return created;
}

std::string SettingsStore::getsetting(const std::string& name, const std::string& defaultvalue) {
    return readorcreate(name, defaultvalue, false);
}

void SettingsStore::putsetting(const std::string& name, const std::string& value) { store(name, value, false); }

int32_t SettingsStore::getsettingdword(const std::string& name, int32_t defaultvalue) {
    return settinginteger(readorcreate(name, settingtext(defaultvalue), true));
}

void SettingsStore::putsettingdword(const std::string& name, int32_t value) {
    store(name, settingtext(value), true);
}

std::string SettingsStore::dumpsettings() const {
    const Contents contents = load();
    std::string text;
    for (size_t i = 0; i < contents.values.size(); ++i) {
        const StoredSetting& s = contents.values[i];
        text += std::to_string(i) + '\t' + escapesettingtext(s.name) + '\t' + escapesettingtext(s.value) + '\n';
    }
    return text;
}

}  // namespace velmora
