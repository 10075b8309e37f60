#pragma once
// Runs a velmora-cli command inside the test process and keeps its exit code and both streams.

#include <sstream>
#include <string>
#include <vector>

#include "cli/commands.h"

namespace velmora::test {

struct CliResult {
    int code;
    std::string out, err;
};

inline CliResult runinprocess(const std::vector<std::string>& args) {
    std::ostringstream out, err;
    const int code = clicommand(args, out, err);
    return {code, out.str(), err.str()};
}

}  // namespace velmora::test
