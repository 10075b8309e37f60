#include "debug/sourcemap.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/textcase.h"

namespace velmora {

namespace {

// A listing row: line number, address and opcode in its first 24 characters, the source text
// behind them; the address is six hexadecimal digits from the ninth character.
constexpr size_t kAddressAt = 8, kAddressDigits = 6, kSourceAt = 24;

bool isstatementrow(std::string_view source, int n) {
    if (source == "; End of program") return true;
    const std::string prefix = "; " + std::to_string(n) + ":";
    return source.substr(0, prefix.size()) == prefix;
}

int rowaddress(std::string_view row) {
    if (row.size() < kAddressAt + kAddressDigits) return -1;
    const std::string digits(row.substr(kAddressAt, kAddressDigits));
    char* end = nullptr;
    const long value = std::strtol(digits.c_str(), &end, 16);
    return end == digits.c_str() + digits.size() ? static_cast<int>(value) : -1;
}

}  // namespace

int SourceMap::lineat(int address) const {
    const auto it = std::lower_bound(addresses.begin(), addresses.end(), address);
    if (it == addresses.end() || *it != address) return 0;
    return lines[static_cast<size_t>(it - addresses.begin())];
}

SourceMap sourcemapfromlisting(std::string_view listing) {
    SourceMap map;
    int n = 1;
    size_t start = 0;
    while (start < listing.size()) {
        size_t end = listing.find('\n', start);
        if (end == std::string_view::npos) end = listing.size();
        std::string_view row = listing.substr(start, end - start);
        start = end + 1;
        if (!row.empty() && row.back() == '\r') row.remove_suffix(1);
        if (row.size() <= kSourceAt || !isstatementrow(row.substr(kSourceAt), n)) continue;
        const int address = rowaddress(row);
        if (address < 0) continue;
        if (map.empty() || address > map.addresses.back()) {
            map.addresses.push_back(address);
            map.lines.push_back(n);
        } else {
            map.addresses.back() = address;
            map.lines.back() = n;
        }
        ++n;
    }
    return map;
}

std::string basicsourcebeside(const std::string& programpath) {
    namespace fs = std::filesystem;
    // The compiler and the assembler name their files after the source: X.bas, X.asm, X.lst, X.hex.
    if (programpath.size() < 4 || lowercase(programpath.substr(programpath.size() - 4)) != ".hex") return "";
    const std::string stem = programpath.substr(0, programpath.size() - 4);
    std::error_code ignored;
    for (const char* extension : {".bas", ".asm", ".lst"})
        if (!fs::is_regular_file(stem + extension, ignored)) return "";
    return stem + ".bas";
}

std::string basiclistingbeside(const std::string& programpath) {
    const std::string basic = basicsourcebeside(programpath);
    if (basic.empty()) return "";
    std::ifstream file(basic.substr(0, basic.size() - 4) + ".lst", std::ios::binary);
    std::stringstream listing;
    listing << file.rdbuf();
    return listing.str();
}

SourceMap loadbasicstepbystep(const std::string& programpath) {
    const std::string listing = basiclistingbeside(programpath);
    return listing.empty() ? SourceMap{} : sourcemapfromlisting(listing);
}

}  // namespace velmora
