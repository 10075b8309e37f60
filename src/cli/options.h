#pragma once
// Command-line option parsing shared by the sub-commands, with the conventions scripts
// expect: "--name value" or "--name=value", --help (or -h) on stdout with exit 0, and a
// usage error on stderr with exit 2.

#include <iosfwd>
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
    bool help = false;  // --help or -h was given

    bool has(const std::string& name) const { return options.count(name) != 0; }
    std::optional<std::string> value(const std::string& name) const;
};

// `valued` lists the options that take a value; `flags` those that stand alone.
ParsedArgs parseargs(const std::vector<std::string>& args, const std::vector<std::string>& valued,
                     const std::vector<std::string>& flags);

// How a sub-command introduces itself: its name, its one-line usage, and its full help.
struct CommandText {
    const char* name;   // "run"
    const char* usage;  // "[OPTIONS] FILE"
    const char* help;   // what follows the usage line in --help
};

// Help on stdout (exit 0) when asked for.
void printhelp(const CommandText& command, std::ostream& out);
// A usage error on stderr: the reason, then the usage line; returns the usage exit code.
int usageerror(const CommandText& command, const std::string& reason, std::ostream& err);

// The version of the program, as the build names it.
const char* programversion();

}  // namespace velmora
