#pragma once
// Compile, and optionally assemble, a BASIC source into files beside it: the part of the
// BASIC Compiler window's Tools commands that is not drawing, shared with velmora-cli.

#include <string>
#include <vector>

#include "assembler/asmpreprocess.h"
#include "basic/basiccompile.h"

namespace velmora {

struct BasicBuildRequest {
    std::string folder;    // where "<base>.asm" (and ".lst", ".hex") go
    std::string basename;  // the source's name up to its first point
    std::string source;
    const BasicModel* model = nullptr;
    AsmModel asmmodel;     // used when assembling
    CompileOptions options;
    bool assemble = false;
};

struct BasicBuildResult {
    BasicCompileResult compile;
    std::string report;   // what the window shows after a successful compile
    std::string failure;  // the compile error box, or why a file could not be written
    int asmerrors = -1;   // -1 when not assembled
    std::vector<std::string> asmerrorrows;
    std::string asmpath, lstpath, hexpath;

    bool ok() const { return compile.ok && failure.empty() && asmerrors <= 0; }
};

// The base name of a source file: its name up to the first point.
std::string basicbasename(const std::string& filename);

BasicBuildResult basicbuild(const BasicBuildRequest& request);

}  // namespace velmora
