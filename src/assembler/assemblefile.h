#pragma once
// The headless assembly of velmora-cli: the Assembler window's Assemble command on a file
// that is already saved.

#include <iosfwd>
#include <string>

namespace velmora {

// Loads the model `modelname` from `modeldir`, assembles `asmpath` and writes "<base>.lst"
// and "<base>.hex" beside it. The listing's error rows and "Number of errors = N" go to
// `out`. As in the window, a run with errors ends with the failure message (to `err`) and
// leaves no output files behind. Returns the number of errors, or -1 when the model or
// the source could not be used (the reason on `err`).
int assemblefile(const std::string& asmpath, const std::string& modelname, const std::string& modeldir,
                 std::ostream& out, std::ostream& err);

}  // namespace velmora
