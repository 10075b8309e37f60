#pragma once
// A text split into lines as the file readers split it.

#include <sstream>
#include <string>
#include <vector>

namespace velmora::test {

// Splits at "\n" and drops a "\r" before it; a text without a final newline still gives its
// last line.
inline std::vector<std::string> textlines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        if (line.ends_with('\r')) line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

}  // namespace velmora::test
