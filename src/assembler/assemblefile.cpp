#include "assembler/assemblefile.h"

#include <filesystem>
#include <ostream>

#include "assembler/asmassemble.h"
#include "assembler/asmcommands.h"
#include "assembler/asmlisting.h"
#include "core/machine.h"
#include "models/modelfile.h"

namespace velmora {

int assemblefile(const std::string& asmpath, const std::string& modelname, const std::string& modeldir,
                 std::ostream& out, std::ostream& err) {
    const std::filesystem::path path(asmpath);
    const std::string filename = path.filename().string();
    if (!asmsourceallowed(filename)) {
        err << kAsmExtensionRefused << "\n";
        return -1;
    }

    Machine machine;
    ModelDefinitions definitions;
    const ModelLoadResult loaded = modelload(modeldir, modelname, ModelOptions{}, machine, definitions);
    if (!loaded.ok) {
        err << loaded.message << "\n";
        return -1;
    }

    AsmEnvironment environment;
    environment.folder = path.has_parent_path() ? path.parent_path().string() : std::string(".");
    environment.model = asmmodelof(machine, definitions);
    asmdeleteoutputs(environment.folder, filename);

    AsmContext ctx;
    int mode = kAsmSilent;
    std::string failure;
    if (!asmassemble(ctx, filename, mode, environment, failure)) {
        err << failure << "\n";
        return -1;
    }
    for (const std::string& row : asmerrorrows(ctx)) out << row << "\n";
    out << "Number of errors = " << mode << "\n";
    if (mode > 0) {
        err << asmfailuremessage(mode) << "\n";
        asmdeleteoutputs(environment.folder, filename);
    }
    return mode;
}

}  // namespace velmora
