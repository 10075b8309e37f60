#pragma once
// Runs a velmora-cli command inside the test process and keeps its exit code and both streams.

#include <cstdint>
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

// The cycle count of a run's closing summary on stderr, or 0.
inline uint64_t summarycycles(const std::string& err) {
    const std::string lead = "Real-time duration of the simulation is ";
    const size_t at = err.find(lead);
    return at == std::string::npos ? 0 : std::stoull(err.substr(at + lead.size()));
}

}  // namespace velmora::test
