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

}  // namespace velmora::test
