#include "basic/basicfile.h"

#include <filesystem>
#include <fstream>
#include <ostream>
#include <sstream>

#include "assembler/asmassemble.h"
#include "core/machine.h"
#include "models/modelfile.h"

namespace velmora {

namespace {

std::string clocktext(double mhz) {
    std::ostringstream text;
    text << mhz << " MHz";
    return text.str();
}

}  // namespace

BasicBuildResult basiccompilefile(const BasicFileRequest& request, std::ostream& out, std::ostream& err) {
    BasicBuildResult result;
    std::ifstream file(request.path, std::ios::binary);
    if (!file) {
        result.failure = "The file '" + request.path + "' can not be opened.";
        err << result.failure << "\n";
        return result;
    }
    std::ostringstream source;
    source << file.rdbuf();

    Machine machine;
    ModelDefinitions definitions;
    const ModelLoadResult loaded = modelload(request.modeldir, request.modelname, ModelOptions{}, machine, definitions);
    if (!loaded.ok) {
        result.failure = loaded.message;
        err << result.failure << "\n";
        return result;
    }
    const BasicModel model = basicmodelof(machine, definitions, clocktext(request.clockmhz), request.clockmhz);

    const std::filesystem::path path(request.path);
    BasicBuildRequest build;
    build.folder = path.has_parent_path() ? path.parent_path().string() : std::string(".");
    build.basename = basicbasename(path.filename().string());
    build.source = source.str();
    build.model = &model;
    build.asmmodel = asmmodelof(machine, definitions);
    build.options.compatiblelisting = request.compatible;
    build.assemble = request.assemble;
    result = basicbuild(build);

    for (const std::string& warning : result.compile.warnings) err << warning << "\n";
    for (const std::string& row : result.asmerrorrows) out << row << "\n";
    if (!result.failure.empty()) {
        err << result.failure << "\n";
        return result;
    }
    (result.asmerrors > 0 ? err : out) << result.report << "\n";
    return result;
}

}  // namespace velmora
