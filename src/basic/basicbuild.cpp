#include "basic/basicbuild.h"

#include "assembler/asmassemble.h"
#include "assembler/asmcommands.h"
#include "assembler/asmlisting.h"

namespace velmora {

std::string basicbasename(const std::string& filename) { return filename.substr(0, filename.find('.')); }

BasicBuildResult basicbuild(const BasicBuildRequest& request) {
    BasicBuildResult result;
    const std::string base = request.folder + "/" + request.basename;
    result.asmpath = base + ".asm";
    result.lstpath = base + ".lst";
    result.hexpath = base + ".hex";
    result.compile = basiccompile(request.source, *request.model, request.options);
    if (!result.compile.ok) {
        result.failure = result.compile.error;
        return result;
    }
    if (!writecompiledfile(result.asmpath, result.compile.asmtext, result.failure)) return result;
    result.report = compilereport(result.compile.outputwords, request.model->flashbytes, base);
    if (!request.assemble) return result;

    const std::string asmname = request.basename + ".asm";
    asmdeleteoutputs(request.folder, asmname);
    AsmEnvironment environment;
    environment.folder = request.folder;
    environment.model = request.asmmodel;
    AsmContext ctx;
    int mode = kAsmSilent;
    if (!asmassemble(ctx, asmname, mode, environment, result.failure)) return result;
    result.asmerrors = mode;
    result.asmerrorrows = asmerrorrows(ctx);
    if (mode > 0) {
        result.report = asmfailuremessage(mode);
        asmdeleteoutputs(request.folder, asmname);
        return result;
    }
    result.report += "\nListing file: " + result.lstpath + "\nGenerated HEX file: " + result.hexpath;
    return result;
}

}  // namespace velmora
