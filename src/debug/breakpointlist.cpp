#include "debug/breakpointlist.h"

#include <algorithm>
#include <cctype>
#include <optional>

#include "core/hextext.h"
#include "core/textcase.h"

namespace velmora {

std::optional<std::string> rowaddress(const std::string& rowtext) {
    if (rowtext.size() < 6) return std::nullopt;
    const std::string address = uppercase(rowtext.substr(0, 6));
    if (!std::all_of(address.begin(), address.end(), [](char c) { return std::isxdigit(static_cast<unsigned char>(c)); }))
        return std::nullopt;
    return address;
}

bool BreakpointList::contains(const std::string& address) const {
    return !address.empty() && std::find(entries_.begin(), entries_.end(), address) != entries_.end();
}

BreakpointList::Toggle BreakpointList::toggle(const std::string& rowtext) {
    const std::optional<std::string> address = rowaddress(rowtext);
    if (!address) return Toggle::Ignored;
    Toggle result = Toggle::Full;
    if (auto at = std::find(entries_.begin(), entries_.end(), *address); at != entries_.end()) {
        at->clear();
        result = Toggle::Cleared;
    } else if (auto empty = std::find(entries_.begin(), entries_.end(), ""); empty != entries_.end()) {
        *empty = *address;
        result = Toggle::Set;
    }
    sortandapply();
    return result;
}

void BreakpointList::clear() {
    entries_.fill("");
    sortandapply();
}

void BreakpointList::sortandapply() {
    constexpr int64_t kEmpty = 100000000;  // sorts behind every address
    std::array<int64_t, kBreakpointCount> values{};
    for (size_t i = 0; i < values.size(); ++i)
        values[i] = entries_[i].empty() ? kEmpty : std::stoll(entries_[i], nullptr, 16);
    std::sort(values.begin(), values.end());
    std::vector<int32_t> words;
    for (size_t i = 0; i < values.size(); ++i) {
        entries_[i] = values[i] == kEmpty ? "" : hex6(static_cast<uint32_t>(values[i]));
        if (values[i] != kEmpty) words.push_back(static_cast<int32_t>(values[i]));
    }
    setbreakpoints(m_, words);
}

}  // namespace velmora
