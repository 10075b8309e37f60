#pragma once
// The text form of the settings file. One value a line: its kind ("s" text, "n" 32-bit
// number), a tab, the name, a tab, the value. Backslash escapes keep tabs, line breaks and
// other control characters inside one line, so any name and any value survive a round trip.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

struct StoredSetting {
    std::string name;
    std::string value;  // numbers as their decimal text
    bool isnumber = false;
};

struct SettingsText {
    std::vector<StoredSetting> values;  // in file order, one entry per name
    bool damaged = false;               // some line could not be read
};

// Reads every line that makes sense; the rest marks the text as damaged. A name that
// appears twice (in any letter case) keeps its first place and its last value.
SettingsText parsesettingstext(std::string_view text);

std::string formatsettingstext(const std::vector<StoredSetting>& values);

// Names compare without regard to letter case.
bool samesettingname(std::string_view a, std::string_view b);

// Escapes "\", tab, CR, LF and other control characters; the inverse fails on a bad escape.
std::string escapesettingtext(std::string_view text);
bool unescapesettingtext(std::string_view text, std::string& out);

}  // namespace velmora
