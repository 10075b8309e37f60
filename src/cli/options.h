#pragma once
// Command-line option parsing shared by the sub-commands.

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmora {

struct ParsedArgs {
    std::map<std::string, std::vector<std::string>> options;  // "--name" -> values in order
    std::vector<std::pair<std::string, std::string>> ordered;  // valued options as given, across names
    std::vector<std::string> positional;
    std::string error;

    bool has(const std::string& name) const { return options.count(name) != 0; }
    std::optional<std::string> value(const std::string& name) const;
};

// `valued` lists the options that take a value; `flags` those that stand alone.
ParsedArgs parseargs(const std::vector<std::string>& args, const std::vector<std::string>& valued,
                     const std::vector<std::string>& flags);

}  // namespace velmora
