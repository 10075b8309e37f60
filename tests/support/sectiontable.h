#pragma once
// Case tables kept as text under a folder's data/, for the model, image, disassembler,
// assembler and device tests. A file holds sections headed "[NAME]"; a section's rows are
// its lines, "#" lines and blank lines skipped, cells split at " | " and trimmed. Inside a
// cell "\s" is a blank, "\t", "\r" and "\n" are themselves, "\xHH" is a byte, "\\" a
// backslash, and a cell of just "" is empty. Each row names its file and line for the
// failure message.

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "support/datafile.h"

namespace velmora::test {

struct TableLine {
    int line;
    std::string text;
};

struct TableRow {
    std::string where;  // "FILE:LINE"
    std::vector<std::string> cells;

    const std::string& operator[](size_t i) const {
        static const std::string none;
        if (i < cells.size()) return cells[i];
        ADD_FAILURE() << where << ": no cell " << i;
        return none;
    }
    // A cell as a number: decimal, 0x hex or a leading 0 octal, as std::stol reads them.
    long number(size_t i) const {
        try {
            return std::stol((*this)[i], nullptr, 0);
        } catch (const std::exception&) {
            ADD_FAILURE() << where << ": cell " << i << " '" << (*this)[i] << "' is no number";
            return 0;
        }
    }
    bool flag(size_t i) const { return (*this)[i] == "yes"; }
};

// A cell of just "" is empty; the rest as every table file reads.
inline std::string tableunescape(const std::string& cell) { return cell == "\"\"" ? "" : unescapedcell(cell); }

// Every section of a file with its lines as they stand.
inline const std::map<std::string, std::vector<TableLine>>& tablesections(const std::string& file) {
    static std::map<std::string, std::map<std::string, std::vector<TableLine>>> cache;
    if (const auto found = cache.find(file); found != cache.end()) return found->second;
    auto& sections = cache[file];
    std::ifstream in(std::string(VELMORA_TEST_DATA_DIR) + "/" + file);
    if (!in) ADD_FAILURE() << "no data file " << file;
    std::vector<TableLine>* current = nullptr;
    int number = 0;
    for (std::string text; std::getline(in, text);) {
        ++number;
        if (text.size() > 2 && text.front() == '[' && text.back() == ']')
            current = &sections[text.substr(1, text.size() - 2)];
        else if (current != nullptr)
            current->push_back({number, text});
    }
    return sections;
}

inline std::vector<TableRow> tablerows(const std::string& file, const std::string& section) {
    std::vector<TableRow> rows;
    const auto& sections = tablesections(file);
    if (!sections.contains(section)) ADD_FAILURE() << file << " has no section [" << section << "]";
    for (const TableLine& line : sections.contains(section) ? sections.at(section) : std::vector<TableLine>{}) {
        if (line.text.find_first_not_of(" \t") == std::string::npos || line.text[0] == '#') continue;
        TableRow row{file + ":" + std::to_string(line.line), {}};
        for (size_t at = 0;;) {
            const size_t bar = line.text.find(" | ", at);
            std::string cell = line.text.substr(at, bar == std::string::npos ? std::string::npos : bar - at);
            const size_t first = cell.find_first_not_of(" \t"), last = cell.find_last_not_of(" \t");
            cell = first == std::string::npos ? "" : cell.substr(first, last - first + 1);
            row.cells.push_back(tableunescape(cell));
            if (bar == std::string::npos) break;
            at = bar + 3;
        }
        rows.push_back(row);
    }
    if (rows.empty()) ADD_FAILURE() << file << " [" << section << "] holds no rows";
    return rows;
}

}  // namespace velmora::test
