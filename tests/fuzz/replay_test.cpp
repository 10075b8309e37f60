// Every saved input of every fuzz target, run through the target's body: the seed corpus and
// the inputs that once crashed. A crash or a sanitizer report fails the run.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzztargets.h"

namespace velmora::fuzz {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> inputsof(const fs::path& folder) {
    std::vector<fs::path> files;
    std::error_code error;
    if (!fs::is_directory(folder, error)) return files;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.is_regular_file()) files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

std::vector<uint8_t> bytesof(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class Replay : public testing::TestWithParam<FuzzTarget> {};

TEST_P(Replay, EverySavedInputRunsThrough) {
    const FuzzTarget& target = GetParam();
    const fs::path root(VELMORA_FUZZ_DIR);
    const std::vector<fs::path> corpus = inputsof(root / "corpus" / target.name);
    // A target without seeds would pass without testing anything.
    ASSERT_FALSE(corpus.empty()) << "no seed corpus for " << target.name;
    std::vector<fs::path> inputs = corpus;
    const std::vector<fs::path> regressions = inputsof(root / "regressions" / target.name);
    inputs.insert(inputs.end(), regressions.begin(), regressions.end());
    for (const fs::path& file : inputs) {
        SCOPED_TRACE(file.string());
        const std::vector<uint8_t> bytes = bytesof(file);
        EXPECT_EQ(target.run(bytes.data(), bytes.size()), 0) << file;
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, Replay, testing::ValuesIn(fuzztargets().begin(), fuzztargets().end()),
                         [](const testing::TestParamInfo<FuzzTarget>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace velmora::fuzz
