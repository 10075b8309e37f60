#include "core/textcase.h"

namespace velmora {

namespace {
char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
}  // namespace

std::string uppercase(std::string_view text) {
    std::string out(text);
    for (char& c : out) c = upper(c);
    return out;
}

std::string lowercase(std::string_view text) {
    std::string out(text);
    for (char& c : out) c = lower(c);
    return out;
}

bool sameignoringcase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (lower(a[i]) != lower(b[i])) return false;
    return true;
}

}  // namespace velmora
