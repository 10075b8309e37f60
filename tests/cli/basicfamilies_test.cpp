// BASIC programs, one per statement family, compiled and run by `velmora-cli run` on two
// models; what the USART prints must equal NAME.expected, worked out by hand from the
// language rules in NAME.reasoning.md. ATmega32 is in because its UBRRH and UCSRC share
// one address; ATmega328P has the newer UART. Interrupt programs name their model's vectors
// and registers, so they run on one. End is a jump to itself, which the run stops at with
// --infinite-loop-stop; the cycle limit only catches a program that hangs.

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "inprocess.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

// The programs live with the BASIC compiler's data, beside this folder's.
const std::filesystem::path kFamilies =
    std::filesystem::path(VELMORA_TEST_DATA_DIR).parent_path().parent_path() / "basic" / "data" / "families";

const char* const kBoth[] = {"ATmega328P", "ATmega32"};

const struct {
    const char* program;
    const char* model;  // null: both
} kPrograms[] = {
    {"arithmetic", nullptr}, {"divzero", nullptr},    {"sqr", nullptr},        {"brackets", nullptr},
    {"shifts", nullptr},     {"logic", nullptr},      {"arrays", nullptr},     {"lookup", nullptr},
    {"loops", nullptr},      {"selectcase", nullptr}, {"ifgoto", nullptr},     {"hserout", nullptr},
    {"hserin", nullptr},     {"procedures", nullptr}, {"int0edges", "ATmega328P"}, {"rxecho", "ATmega32"},
};

struct Row {
    std::string program, model;
};

std::vector<Row> rows() {
    std::vector<Row> all;
    for (const auto& entry : kPrograms)
        for (const char* model : kBoth)
            if (!entry.model || std::string(entry.model) == model) all.push_back({entry.program, model});
    return all;
}

// NAME.args: more options for the run, one per line.
std::vector<std::string> extraoptions(const std::filesystem::path& file) {
    std::vector<std::string> options;
    if (!std::filesystem::exists(file)) return options;
    std::istringstream lines(readfile(file));
    for (std::string line; std::getline(lines, line);)
        if (!line.empty()) options.push_back(line);
    return options;
}

class BasicFamilies : public testing::TestWithParam<Row> {};

TEST_P(BasicFamilies, UsartPrintsTheHandWorkedResults) {
    const Row& row = GetParam();
    const std::filesystem::path source = kFamilies / (row.program + ".bas");
    std::vector<std::string> args = {"run", "--model", row.model, "--infinite-loop-stop", "--max-cycles", "20000000"};
    // A program that reads the USART gets its bytes from NAME.uartin.
    const std::filesystem::path input = kFamilies / (row.program + ".uartin");
    if (std::filesystem::exists(input)) args.insert(args.end(), {"--uart-in-file", input.string()});
    for (const std::string& option : extraoptions(kFamilies / (row.program + ".args"))) args.push_back(option);
    args.push_back(source.string());

    const CliResult run = runinprocess(args);
    const std::string name = row.program + " on " + row.model;
    EXPECT_EQ(run.code, kExitInfiniteLoop) << name << " did not end at End:\n" << run.err;
    EXPECT_EQ(run.out, readfile(kFamilies / (row.program + ".expected"))) << name;
}

INSTANTIATE_TEST_SUITE_P(Programs, BasicFamilies, testing::ValuesIn(rows()),
                         [](const testing::TestParamInfo<Row>& info) {
                             return info.param.program + "_" + info.param.model;
                         });

// Every program in the folder has its rows, its expected output and its reasoning.
TEST(BasicFamiliesFolder, EveryProgramIsInTheTable) {
    std::set<std::string> listed;
    for (const auto& entry : kPrograms) listed.insert(entry.program);
    int found = 0;
    for (const auto& entry : std::filesystem::directory_iterator(kFamilies)) {
        if (entry.path().extension() != ".bas") continue;
        const std::string program = entry.path().stem().string();
        ++found;
        EXPECT_TRUE(listed.contains(program)) << program << ".bas has no row";
        EXPECT_TRUE(std::filesystem::exists(kFamilies / (program + ".expected"))) << program;
        EXPECT_TRUE(std::filesystem::exists(kFamilies / (program + ".reasoning.md"))) << program;
    }
    EXPECT_EQ(found, static_cast<int>(std::size(kPrograms)));
}

}  // namespace
}  // namespace velmora::test
