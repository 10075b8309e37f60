#pragma once
// The headless compile of velmora-cli: the BASIC Compiler window's Compile (and Compile &
// Assemble) on a saved source file.

#include <iosfwd>
#include <string>

#include "basic/basicbuild.h"

namespace velmora {

struct BasicFileRequest {
    std::string path;       // the .bas file
    std::string modelname;  // display name of the model
    std::string modeldir;
    double clockmhz = 4;
    bool assemble = false;
    bool compatible = false;  // write the listing an older assembler takes
};

// Loads the model, compiles the file and writes "<base>.asm" beside it (with `assemble` also
// "<base>.lst" and "<base>.hex"). Warnings, the compile error box and file problems go to
// `err`, the report to `out`. The result's failure is empty when everything was written.
BasicBuildResult basiccompilefile(const BasicFileRequest& request, std::ostream& out, std::ostream& err);

}  // namespace velmora
