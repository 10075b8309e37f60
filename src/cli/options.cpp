#include "cli/options.h"

#include <algorithm>
#include <ostream>

#include "cli/commands.h"

namespace velmora {

std::optional<std::string> ParsedArgs::value(const std::string& name) const {
    auto it = options.find(name);
    if (it == options.end() || it->second.empty()) return std::nullopt;
    return it->second.back();
}

ParsedArgs parseargs(const std::vector<std::string>& args, const std::vector<std::string>& valued,
                     const std::vector<std::string>& flags) {
    ParsedArgs parsed;
    const auto listed = [](const std::vector<std::string>& names, const std::string& name) {
        return std::find(names.begin(), names.end(), name) != names.end();
    };
    // The first error is the one reported; reading goes on so that a later --help still counts.
    const auto fail = [&parsed](const std::string& why) {
        if (parsed.error.empty()) parsed.error = why;
    };
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--help" || a == "-h") {
            parsed.help = true;
            continue;
        }
        if (a == "--") {  // the rest are files, whatever they look like
            parsed.positional.insert(parsed.positional.end(), args.begin() + static_cast<long>(i) + 1, args.end());
            break;
        }
        if (a.rfind("--", 0) != 0) {
            parsed.positional.push_back(a);
            continue;
        }
        const size_t equals = a.find('=');
        const std::string name = a.substr(0, equals);
        if (listed(flags, name)) {
            if (equals != std::string::npos) {
                fail("option " + name + " takes no value");
                continue;
            }
            parsed.options[name];
            continue;
        }
        if (!listed(valued, name)) {
            fail("unknown option " + name);
            continue;
        }
        std::string value;
        if (equals != std::string::npos) {
            value = a.substr(equals + 1);
        } else if (i + 1 < args.size()) {
            value = args[++i];
        } else {
            fail("option " + name + " needs a value");
            continue;
        }
        parsed.options[name].push_back(value);
        parsed.ordered.emplace_back(name, value);
    }
    return parsed;
}

void printhelp(const CommandText& command, std::ostream& out) {
    out << "usage: velmora-cli " << command.name << " " << command.usage << "\n" << command.help;
}

int usageerror(const CommandText& command, const std::string& reason, std::ostream& err) {
    err << "velmora-cli " << command.name << ": " << reason << "\n"
        << "usage: velmora-cli " << command.name << " " << command.usage << "   ('velmora-cli " << command.name
        << " --help' tells more)\n";
    return kExitUsage;
}

const char* programversion() { return VELMORA_VERSION; }

}  // namespace velmora
