#include "shell/settingsfile.h"

#include <algorithm>
#include <charconv>
#include <unordered_map>

#include "core/hextext.h"

namespace velmora {

namespace {

constexpr std::string_view kHeader =
    "# Velmora settings: kind (s text, n number), tab, name, tab, value; \\ escapes control characters.\n";

bool iscontrol(unsigned char c) { return c < 0x20 || c == 0x7F; }

char lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

std::string lowered(std::string_view text) {
    std::string out(text);
    for (char& c : out) c = lower(c);
    return out;
}

int hexvalue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

bool readnumber(std::string_view text, std::string& out) {
    int32_t value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return false;
    out = std::to_string(value);
    return true;
}

// One record line, or false when it is not one.
bool parseline(std::string_view line, StoredSetting& setting) {
    const size_t first = line.find('\t');
    if (first == std::string_view::npos) return false;
    const size_t second = line.find('\t', first + 1);
    if (second == std::string_view::npos || line.find('\t', second + 1) != std::string_view::npos) return false;
    const std::string_view kind = line.substr(0, first);
    if (kind != "s" && kind != "n") return false;
    if (!unescapesettingtext(line.substr(first + 1, second - first - 1), setting.name)) return false;
    const std::string_view value = line.substr(second + 1);
    setting.isnumber = kind == "n";
    if (setting.isnumber) return readnumber(value, setting.value);
    return unescapesettingtext(value, setting.value);
}

}  // namespace

bool samesettingname(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return lower(x) == lower(y); });
}

std::string escapesettingtext(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        switch (c) {
            case '\\': out += "\\\\"; break;
            case '\t': out += "\\t"; break;
            case '\n': out += "\\n"; break;
            case '\r': out += "\\r"; break;
            default:
                if (iscontrol(static_cast<unsigned char>(c)))
                    out += "\\x" + hex2(static_cast<unsigned char>(c));
                else
                    out += c;
        }
    }
    return out;
}

bool unescapesettingtext(std::string_view text, std::string& out) {
    out.clear();
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (iscontrol(static_cast<unsigned char>(c))) return false;
        if (c != '\\') {
            out += c;
            continue;
        }
        if (++i == text.size()) return false;
        switch (text[i]) {
            case '\\': out += '\\'; break;
            case 't': out += '\t'; break;
            case 'n': out += '\n'; break;
            case 'r': out += '\r'; break;
            case 'x': {
                if (i + 2 >= text.size()) return false;
                const int high = hexvalue(text[i + 1]), low = hexvalue(text[i + 2]);
                if (high < 0 || low < 0) return false;
                out += static_cast<char>(high * 16 + low);
                i += 2;
                break;
            }
            default: return false;
        }
    }
    return true;
}

SettingsText parsesettingstext(std::string_view text) {
    SettingsText result;
    std::unordered_map<std::string, size_t> places;  // lower-cased name -> index
    while (!text.empty()) {
        const size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);  // edited on another system
        if (line.empty() || line.front() == '#') continue;
        StoredSetting setting;
        if (!parseline(line, setting)) {
            result.damaged = true;
            continue;
        }
        const auto [place, added] = places.try_emplace(lowered(setting.name), result.values.size());
        if (added) {
            result.values.push_back(std::move(setting));
        } else {
            StoredSetting& same = result.values[place->second];
            same.value = std::move(setting.value);
            same.isnumber = setting.isnumber;
        }
    }
    return result;
}

std::string formatsettingstext(const std::vector<StoredSetting>& values) {
    std::string text(kHeader);
    for (const StoredSetting& s : values) {
        text += s.isnumber ? "n\t" : "s\t";
        text += escapesettingtext(s.name);
        text += '\t';
        text += s.isnumber ? s.value : escapesettingtext(s.value);
        text += '\n';
    }
    return text;
}

}  // namespace velmora
