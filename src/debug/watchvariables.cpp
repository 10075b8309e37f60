#include "debug/watchvariables.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/hextext.h"
#include "core/numbers.h"
#include "core/textcase.h"
#include "debug/memorytext.h"
#include "debug/sourcemap.h"

namespace velmora {

namespace {

constexpr char kFileTag[] = "file1|";
constexpr int32_t kHighestWatchAddress = 511;  // the same for every model

std::string readtext(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

bool exists(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

std::optional<WatchKind> kindoftype(const std::string& type) {
    if (type == "Bit") return WatchKind::Bit;
    if (type == "Byte") return WatchKind::Byte;
    if (type == "Word") return WatchKind::Word;
    if (type == "Long") return WatchKind::Long;
    return std::nullopt;
}

// Reads a whole decimal field of watch.dat; nothing for anything else.
std::optional<int32_t> decimalfield(const std::string& text) {
    if (text.empty() || text.size() > 9 || !std::all_of(text.begin(), text.end(), ::isdigit)) return std::nullopt;
    return static_cast<int32_t>(std::stol(text));
}

// The entry a Dim row and the address comment behind it declare, arrays expanded.
void adddeclared(std::vector<WatchEntry>& entries, const std::string& dim, WatchKind kind, const std::string& comment) {
    const size_t at = dim.find("Dim");
    std::string name = dim.substr(std::min(at + 4, dim.size()));
    name = name.substr(0, name.find(' '));
    const size_t is = comment.find(" is ");
    if (is == std::string::npos) return;
    std::string field = comment.substr(std::min(is + 6, comment.size()));
    int32_t bit = 0;
    if (const size_t comma = field.find(','); comma != std::string::npos) {
        bit = static_cast<int32_t>(lenientdecimal(field.substr(comma + 1))) & 7;
        field.resize(comma);
    }
    std::string digits;
    for (char c : field) {
        if (!std::isxdigit(static_cast<unsigned char>(c)) || digits.size() == 4) break;
        digits += c;
    }
    const int32_t address = digits.empty() ? 0 : static_cast<int32_t>(std::stol(digits, nullptr, 16));
    const size_t open = name.find('(');
    if (open == std::string::npos) {
        entries.push_back({name, kind, address, kind == WatchKind::Bit ? bit : 0});
        return;
    }
    const int64_t length = std::clamp<int64_t>(lenientdecimal(name.substr(open + 1)), 1, 256);
    const std::string base = name.substr(0, open);
    for (int64_t k = 0; k < length; ++k)
        entries.push_back({base + "(" + std::to_string(k) + ")", kind,
                           address + static_cast<int32_t>(k) * static_cast<int32_t>(kind), 0});
}

}  // namespace

std::vector<WatchEntry> basicwatchentries(const std::string& listing) {
    static const std::pair<const char*, WatchKind> kTypes[] = {
        {"As Bit", WatchKind::Bit}, {"As Byte", WatchKind::Byte}, {"As Word", WatchKind::Word}, {"As Long", WatchKind::Long}};
    std::vector<WatchEntry> entries;
    std::istringstream rows(listing);
    std::string row, dim;
    WatchKind kind = WatchKind::Byte;
    bool declared = false;
    while (std::getline(rows, row)) {
        if (!row.empty() && row.back() == '\r') row.pop_back();
        if (declared) {
            // Without the address comment right behind it, the declaration is dropped.
            declared = false;
            if (row.find("The address") != std::string::npos) adddeclared(entries, dim, kind, row);
            continue;
        }
        if (row.find("Dim") == std::string::npos) continue;
        for (const auto& [type, code] : kTypes) {
            if (row.find(type) == std::string::npos) continue;
            dim = row;
            kind = code;
            declared = true;
            break;
        }
    }
    return entries;
}

std::vector<WatchEntry> loadbasicwatch(const std::string& programpath) {
    return basicwatchentries(basiclistingbeside(programpath));
}

uint32_t watchvalue(const Machine& m, const WatchEntry& entry) {
    const auto byte = [&](int32_t address) -> uint32_t {
        return address >= 0 && static_cast<size_t>(address) < m.datamem.size() ? m.datamem[static_cast<size_t>(address)] : 0;
    };
    if (entry.kind == WatchKind::Bit) return (byte(entry.address) >> (entry.bit & 7)) & 1;
    uint32_t value = 0;
    for (int k = static_cast<int>(entry.kind) - 1; k >= 0; --k) value = value << 8 | byte(entry.address + k);
    return value;
}

WatchVariables::WatchVariables(Machine& m, SettingsAccess& settings, Questions& questions, std::string watchfile)
    : m_(m), settings_(settings), questions_(questions), watchfile_(std::move(watchfile)) {}

void WatchVariables::readsettings() {
    hex_ = settings_.getsetting(kWatchHexValues, "OFF") == "ON";
    confirm_ = settings_.getsetting(kWatchConfirmDelete, "ON") == "ON";
}

void WatchVariables::programloaded(const std::string& programpath) {
    list_.clear();
    user_.clear();
    scroll_ = 0;
    program_ = lowercase(programpath);
    list_ = loadbasicwatch(programpath);
    if (program_.empty()) return;
    loadfile();
    list_.insert(list_.end(), user_.begin(), user_.end());
}

void WatchVariables::loadfile() {
    if (!exists(watchfile_)) return;
    std::string line = readtext(watchfile_);
    line = line.substr(0, line.find_first_of("\r\n"));
    std::vector<WatchEntry> entries;
    bool good = line.starts_with(kFileTag);
    std::string rest = good ? line.substr(sizeof kFileTag - 1) : "";
    const size_t bar = rest.find('|');
    good = good && bar != std::string::npos && rest.substr(0, bar) == program_;
    if (good) {
        rest = rest.substr(bar + 1);
        std::vector<std::string> fields;
        for (size_t start = 0, comma; (comma = rest.find(',', start)) != std::string::npos; start = comma + 1)
            fields.push_back(rest.substr(start, comma - start));
        good = !fields.empty() && fields.size() % 4 == 0;
        for (size_t i = 0; good && i < fields.size(); i += 4) {
            const auto kind = decimalfield(fields[i + 1]), address = decimalfield(fields[i + 2]),
                       bit = decimalfield(fields[i + 3]);
            good = kind && address && bit && (*kind == 0 || *kind == 1 || *kind == 2 || *kind == 4) && *bit <= 7;
            if (good) entries.push_back({fields[i], static_cast<WatchKind>(*kind), *address, *bit});
        }
    }
    // A damaged or foreign file is deleted silently.
    if (!good) {
        std::remove(watchfile_.c_str());
        return;
    }
    user_ = std::move(entries);
}

void WatchVariables::savefile() const {
    std::remove(watchfile_.c_str());
    std::string line = std::string(kFileTag) + program_ + "|";
    for (const WatchEntry& entry : user_)
        line += entry.name + "," + std::to_string(static_cast<int32_t>(entry.kind)) + "," +
                std::to_string(entry.address) + "," + std::to_string(entry.bit) + ",";
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(watchfile_).parent_path(), error);
    std::ofstream(watchfile_, std::ios::binary) << line << "\r\n";
}

std::string WatchVariables::row(const WatchEntry& entry) const {
    const uint32_t value = watchvalue(m_, entry);
    std::string text = entry.name + " (" + cprefixhex(static_cast<uint32_t>(entry.address), 3);
    if (entry.kind == WatchKind::Bit) return text + "." + std::to_string(entry.bit) + ") = \t" + (hex_ ? "0x" : "") + std::to_string(value);
    text += ") = \t";
    if (!hex_) return text + std::to_string(value);
    return text + cprefixhex(value, 2 * static_cast<int>(entry.kind));
}

std::string WatchVariables::text() const {
    std::string text;
    for (size_t i = static_cast<size_t>(scroll_); i < list_.size(); ++i) text += row(list_[i]) + "\r\n";
    return text;
}

void WatchVariables::setscroll(int first) {
    scroll_ = std::clamp(first, 0, std::max(0, static_cast<int>(list_.size()) - 1));
}

void WatchVariables::sethexvalues(bool on) {
    hex_ = on;
    settings_.putsetting(kWatchHexValues, on ? "ON" : "OFF");
}

void WatchVariables::setconfirmdelete(bool on) {
    confirm_ = on;
    settings_.putsetting(kWatchConfirmDelete, on ? "ON" : "OFF");
}

std::optional<std::string> WatchVariables::addrefusal() const {
    if (!hasprogram()) return std::string("No program loaded.");
    return std::nullopt;
}

std::optional<std::string> WatchVariables::editrefusal() const {
    if (!hasprogram()) return std::string("No program loaded.");
    if (list_.empty()) return std::string("No variables defined.");
    return std::nullopt;
}

std::optional<WatchVariables::Refusal> WatchVariables::add(const std::string& name, const std::string& type,
                                                           const std::string& address, const std::string& bit) {
    if (name.empty()) return Refusal{"You must enter variable name.", 0};
    const std::string lower = lowercase(name);
    if (std::any_of(list_.begin(), list_.end(), [&](const WatchEntry& e) { return e.name == lower; }))
        return Refusal{"Duplicate variable name.", 0};
    const std::optional<WatchKind> kind = kindoftype(type);
    if (!kind) return Refusal{"You must specify variable type.", 1};
    const std::optional<uint32_t> location = paddedhex(address, 4);
    if (!location || *location > static_cast<uint32_t>(kHighestWatchAddress))
        return Refusal{"Variable address out of range.", 2};
    int32_t bitnumber = 0;
    if (*kind == WatchKind::Bit) {
        if (bit.size() != 1 || bit[0] < '0' || bit[0] > '7') return Refusal{"Incorrect bit selection.", 3};
        bitnumber = bit[0] - '0';
    }
    const WatchEntry entry{lower, *kind, static_cast<int32_t>(*location), bitnumber};
    user_.push_back(entry);
    list_.push_back(entry);
    savefile();
    return std::nullopt;
}

std::optional<std::string> WatchVariables::change(size_t index, const std::string& decimal, const std::string& hex,
                                                  bool& clearfields) {
    clearfields = false;
    if (index >= list_.size() || (decimal.empty() && hex.empty())) return std::nullopt;
    if (!decimal.empty() && !hex.empty()) {
        clearfields = true;
        return std::nullopt;
    }
    const WatchEntry& entry = list_[index];
    const char* const kOutOfRange = "New variable value out of range.";
    int64_t value = 0;
    if (!decimal.empty()) {
        value = lenientdecimal(decimal);
    } else {
        const std::optional<uint32_t> read = paddedhex(hex, 8);
        if (!read) return kOutOfRange;
        value = *read;
    }
    static const std::pair<WatchKind, int64_t> kLimits[] = {
        {WatchKind::Bit, 1}, {WatchKind::Byte, 255}, {WatchKind::Word, 65535}, {WatchKind::Long, 4294967295LL}};
    for (const auto& [kind, limit] : kLimits)
        if (entry.kind == kind && (value < 0 || value > limit)) return kOutOfRange;
    const auto store = [&](int32_t address, uint8_t byte) {
        if (address >= 0 && static_cast<size_t>(address) < m_.datamem.size()) m_.datamem[static_cast<size_t>(address)] = byte;
    };
    if (entry.kind == WatchKind::Bit) {
        const size_t at = static_cast<size_t>(entry.address);
        if (at < m_.datamem.size()) {
            const uint8_t mask = static_cast<uint8_t>(1 << (entry.bit & 7));
            m_.datamem[at] = static_cast<uint8_t>(value ? m_.datamem[at] | mask : m_.datamem[at] & ~mask);
        }
        return std::nullopt;
    }
    for (int k = 0; k < static_cast<int>(entry.kind); ++k)
        store(entry.address + k, static_cast<uint8_t>(static_cast<uint64_t>(value) >> (8 * k)));
    return std::nullopt;
}

void WatchVariables::deleterow(int row) {
    const size_t index = static_cast<size_t>(scroll_ + row);
    if (row < 0 || index >= list_.size()) return;
    const std::string name = list_[index].name;
    if (confirm_ && !questions_.askyesno("Do you want to delete variable '" + name + "'?")) return;
    list_.erase(list_.begin() + static_cast<std::ptrdiff_t>(index));
    user_.erase(std::remove_if(user_.begin(), user_.end(), [&](const WatchEntry& e) { return e.name == name; }),
                user_.end());
    savefile();
}

}  // namespace velmora
