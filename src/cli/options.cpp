#include "cli/options.h"

#include <algorithm>

namespace velmora {

std::optional<std::string> ParsedArgs::value(const std::string& name) const {
    auto it = options.find(name);
    if (it == options.end() || it->second.empty()) return std::nullopt;
    return it->second.back();
}

ParsedArgs parseargs(const std::vector<std::string>& args, const std::vector<std::string>& valued,
                     const std::vector<std::string>& flags) {
    ParsedArgs parsed;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a.rfind("--", 0) != 0) {
            parsed.positional.push_back(a);
            continue;
        }
        if (std::find(flags.begin(), flags.end(), a) != flags.end()) {
            parsed.options[a];
            continue;
        }
        if (std::find(valued.begin(), valued.end(), a) == valued.end()) {
            parsed.error = "unknown option " + a;
            return parsed;
        }
        if (i + 1 >= args.size()) {
            parsed.error = "option " + a + " needs a value";
            return parsed;
        }
        parsed.options[a].push_back(args[++i]);
        parsed.ordered.emplace_back(a, args[i]);
    }
    return parsed;
}

}  // namespace velmora
