#include <ostream>

#include "cli/commands.h"
#include "cli/session.h"
#include "models/modelfile.h"

namespace velmora {

// Lists the models in display order with their descriptions; the default is marked.
int modelscommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (!args.empty()) {
        err << "usage: velmora-cli models\n";
        return kExitUsage;
    }
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
