// velmora-cli as scripts use it: help on stdout with exit 0, usage errors on stderr with
// exit 2, exit codes by the reason a run ended, and error messages that name their file.
// One row per command line, in data/conventions.txt.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "clirows.h"

namespace velmora::test {
namespace {

TEST(CliConventions, EveryCommandLineGivesItsCodeAndStreams) { runcommandrows("conventions.txt"); }

TEST(CliConventions, VersionIsTheBuildsVersion) {
    const CliResult r = runinprocess({"--version"});
    EXPECT_EQ(r.code, 0);
    // "velmora-cli 1.2" or "velmora-cli 1.2.3": digits and dots after the name.
    const std::string version = r.out.substr(std::min(r.out.size(), sizeof "velmora-cli " - 1));
    EXPECT_EQ(r.out.rfind("velmora-cli ", 0), 0u) << r.out;
    EXPECT_TRUE(version.size() >= 4 && version.find('.') != std::string::npos && version.back() == '\n' &&
                version.find_first_not_of("0123456789.") == version.size() - 1)
        << r.out;
    EXPECT_EQ(r.err, "");
}

}  // namespace
}  // namespace velmora::test
