#pragma once
// Command lines and what each must give, read from a file of data/ (conventions.txt describes
// the rows) and run inside the test process in a fresh folder holding data/commandfiles/.

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "inprocess.h"
#include "support/datafile.h"
#include "support/tempfolder.h"

namespace velmora::test {

// The text with every "@/" made the folder's path, "%/" the test data folder's and "$/" the
// product data folder's.
inline std::string expand(std::string text, const TempFolder& folder) {
    const std::pair<const char*, std::string> places[] = {{"@/", (folder / "").string()},
                                                          {"%/", std::string(VELMORA_TEST_DATA_DIR) + "/"},
                                                          {"$/", std::string(VELMORA_SOURCE_DATA_DIR) + "/"}};
    for (const auto& [mark, path] : places)
        for (size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at + path.size()))
            text.replace(at, 2, path);
    return text;
}

inline void runcommandrows(const std::string& file) {
    const std::map<std::string, int> codes = {{"0", 0},
                                              {"usage", kExitUsage},
                                              {"input", kExitInputError},
                                              {"infinite", kExitInfiniteLoop},
                                              {"limit", kExitLimit},
                                              {"breakpoint", kExitBreakpoint},
                                              {"endofmemory", kExitEndOfMemory}};
    TempFolder folder;
    std::filesystem::copy(std::string(VELMORA_TEST_DATA_DIR) + "/commandfiles", folder.path());
    const std::vector<DataRow> lines = datarows(file);
    for (size_t i = 0; i < lines.size();) {
        const DataRow& command = lines[i++];
        SCOPED_TRACE(file + " line " + std::to_string(command.line) + ": " + command.text);
        std::vector<std::string> args;
        std::istringstream words(command.text == "-" ? "" : command.text);
        for (std::string word; words >> word;) args.push_back(expand(word, folder));
        const CliResult r = runinprocess(args);
        bool outchecked = false;
        for (; i < lines.size() && lines[i].text.starts_with("    "); ++i) {
            const std::string& line = lines[i].text;
            const size_t space = line.find(' ', 4);
            const std::string key = line.substr(4, space == std::string::npos ? std::string::npos : space - 4);
            const std::string text =
                space == std::string::npos ? "" : expand(unescapedcell(line.substr(space + 1)), folder);
            if (key == "code") {
                ASSERT_TRUE(codes.count(text)) << "no exit code " << text;
                EXPECT_EQ(r.code, codes.at(text)) << r.err;
            } else if (key == "out" || key == "out=") {
                outchecked = true;
                EXPECT_EQ(key == "out" ? r.out.substr(0, text.size()) : r.out, text);
            } else if (key == "out~") {
                outchecked = true;
                EXPECT_NE(r.out.find(text), std::string::npos) << r.out;
            } else if (key == "err") {
                EXPECT_NE(r.err.find(text), std::string::npos) << r.err;
            } else if (key == "err!") {
                EXPECT_EQ(r.err.find(text), std::string::npos) << r.err;
            } else if (key == "err=") {
                EXPECT_EQ(r.err, "");
            } else {
                ADD_FAILURE() << "line " << lines[i].line << ": no check " << key;
            }
        }
        if (!outchecked) { EXPECT_EQ(r.out, ""); }
    }
}

}  // namespace velmora::test
