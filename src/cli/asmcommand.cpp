#include <cctype>
#include <ostream>
#include <string>

#include "assembler/assemblefile.h"
#include "core/textcase.h"
#include "cli/commands.h"
#include "cli/options.h"
#include "cli/session.h"
#include "models/modelfile.h"

namespace velmora {

namespace {

void asmusage(std::ostream& err) { err << "usage: velmora-cli asm [--model NAME] FILE.asm\n"; }

// The display name of the wanted model, or of the default one; empty after saying why not.
std::string modelname(const ParsedArgs& parsed, std::ostream& err) {
    const ModelList list = modellist(modeldirectory());
    if (!list.error.empty()) {
        err << list.error << "\n";
        return {};
    }
    const std::optional<std::string> wanted = parsed.value("--model");
    if (!wanted) return list.defaultindex >= 0 ? list.models[static_cast<size_t>(list.defaultindex)].name : "";
    for (const ModelEntry& entry : list.models)
        if (sameignoringcase(entry.name, *wanted)) return entry.name;
    err << "velmora-cli: no model named '" << *wanted << "'; 'velmora-cli models' lists them\n";
    return {};
}

}  // namespace

// Assembles a source file as the Assembler window's Assemble does: the listing and HEX file
// beside the source, the error rows and count on stdout, and no outputs left after errors.
int asmcommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const ParsedArgs parsed = parseargs(args, {"--model"}, {});
    if (!parsed.error.empty() || parsed.positional.size() != 1) {
        if (!parsed.error.empty()) err << "velmora-cli: " << parsed.error << "\n";
        asmusage(err);
        return kExitUsage;
    }
    const std::string model = modelname(parsed, err);
    if (model.empty()) return kExitInputError;
    const int errors = assemblefile(parsed.positional[0], model, modeldirectory(), out, err);
    return errors == 0 ? 0 : kExitInputError;
}

}  // namespace velmora
