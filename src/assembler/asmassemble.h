#pragma once
// One assembly run: source file in, listing and HEX file out, beside the source.

#include <string>
#include <vector>

#include "assembler/asmcontext.h"
#include "assembler/asmpreprocess.h"

namespace velmora {

struct Machine;
struct ModelDefinitions;

// The mode value that makes a run silent: no status texts and no yielding.
inline constexpr int kAsmSilent = 1000;

// Status texts of a reporting run, for the Assembler window's two fields.
class AsmProgress {
public:
    virtual ~AsmProgress() = default;
    virtual void status(const std::string& first, const std::string& second) = 0;
    // Once per line: lets the user interface breathe.
    virtual void yield() = 0;
};

struct AsmEnvironment {
    std::string folder;  // the current source path; outputs go here too
    AsmModel model;
    AsmProgress* progress = nullptr;  // used unless the run is silent
};

// The base name of the outputs: `filename` up to its first ".".
std::string asmbasename(const std::string& filename);

// What the assembler needs of a loaded model.
AsmModel asmmodelof(const Machine& m, const ModelDefinitions& definitions);

// The whole run on `source` lines already read: predefine, preprocess, both passes.
// Leaves the line table, the symbols and the error count in `ctx`.
void asmassemblelines(AsmContext& ctx, const std::vector<std::string>& source, const AsmModel& model,
                      AsmProgress* progress = nullptr);

// Assembles "<folder>/<filename>" and writes "<base>.lst" and "<base>.hex" in the folder,
// also when there are errors. `mode` is kAsmSilent for a silent run and holds the error
// count on return. Returns false, with `failure` set, when the source cannot be read or an
// output cannot be written; the error count is then that of what was done.
bool asmassemble(AsmContext& ctx, const std::string& filename, int& mode, const AsmEnvironment& environment,
                 std::string& failure);

}  // namespace velmora
