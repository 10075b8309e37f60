#pragma once
// Tables kept as text under the folder's data/: one row a line, "#" lines and blank lines
// skipped, each row with its line number for the failure message.

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace velmora::test {

struct DataRow {
    int line;
    std::string text;
};

inline std::vector<DataRow> datarows(const std::string& name) {
    std::vector<DataRow> rows;
    std::ifstream in(std::string(VELMORA_TEST_DATA_DIR) + "/" + name);
    if (!in) ADD_FAILURE() << "no data file " << name;
    int number = 0;
    for (std::string text; std::getline(in, text);) {
        ++number;
        if (!text.empty() && text[0] != '#') rows.push_back({number, text});
    }
    if (rows.empty()) ADD_FAILURE() << name << " holds no rows";
    return rows;
}

// A cell's escapes undone: \n, \t, \r, \s (a blank), \\ and \xHH; any other escaped
// character stands for itself.
inline std::string unescapedcell(const std::string& text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        const char c = text[++i];
        if (c == 'x' && i + 2 < text.size()) {
            out += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else {
            out += c == 's' ? ' ' : c == 't' ? '\t' : c == 'r' ? '\r' : c == 'n' ? '\n' : c;
        }
    }
    return out;
}

}  // namespace velmora::test
