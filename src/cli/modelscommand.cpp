#include <ostream>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/session.h"
#include "models/modelfile.h"

namespace velmora {

namespace {
constexpr CommandText kModels = {"models", "",
                                 "Lists the microcontroller models in display order with their descriptions;\n"
                                 "'*' marks the default one.\n"};
}  // namespace

int modelscommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const ParsedArgs parsed = parseargs(args, {}, {});
    if (parsed.help) {
        printhelp(kModels, out);
        return 0;
    }
    if (!parsed.error.empty()) return usageerror(kModels, parsed.error, err);
    if (!parsed.positional.empty()) return usageerror(kModels, "takes no file", err);
    const ModelList list = modellist(modeldirectory());
    if (!list.error.empty()) {
        err << list.error << "\n";
        return kExitInputError;
    }
    for (size_t i = 0; i < list.models.size(); ++i)
        out << (static_cast<int>(i) == list.defaultindex ? "* " : "  ") << list.models[i].name << "\t"
            << list.models[i].description << "\n";
    return 0;
}

}  // namespace velmora
