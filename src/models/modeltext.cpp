#include "models/modeltext.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <limits>

namespace velmora::models {

std::string trim(std::string_view text) {
    const size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    const size_t last = text.find_last_not_of(" \t");
    return std::string(text.substr(first, last - first + 1));
}

bool isblankline(std::string_view text) { return text.find_first_not_of(" \t") == std::string_view::npos; }

std::vector<std::string> splitfields(std::string_view text, char separator) {
    std::vector<std::string> fields;
    size_t start = 0;
    for (;;) {
        const size_t end = text.find(separator, start);
        if (end == std::string_view::npos) break;
        fields.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    fields.emplace_back(text.substr(start));
    return fields;
}

std::string fieldat(const std::vector<std::string>& fields, size_t index) {
    return index < fields.size() ? fields[index] : std::string();
}

int clamptoint(int64_t value) {
    return static_cast<int>(std::clamp<int64_t>(value, std::numeric_limits<int>::min(),
                                                std::numeric_limits<int>::max()));
}

}  // namespace velmora::models
