#include "assembler/asmassemble.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "assembler/asmhexfile.h"
#include "assembler/asmlisting.h"
#include "assembler/asmpasses.h"
#include "core/machine.h"
#include "models/modelfile.h"

namespace velmora {

namespace {

// Reports through `progress` when there is one; a silent run passes none.
class Reporter {
public:
    explicit Reporter(AsmProgress* progress) : progress_(progress) {}
    void status(const std::string& first, const std::string& second = {}) const {
        if (progress_ != nullptr) progress_->status(first, second);
    }
    void line(const std::string& phase, int number) const {
        if (progress_ == nullptr) return;
        progress_->status(phase, "Line " + std::to_string(number));
        progress_->yield();
    }

private:
    AsmProgress* progress_;
};

bool readlines(const std::filesystem::path& path, std::vector<std::string>& lines) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    std::string line;
    while (std::getline(in, line)) {
        if (line.ends_with('\r')) line.pop_back();
        lines.push_back(std::move(line));
    }
    return !in.bad();
}

bool writetext(const std::filesystem::path& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    out.close();
    return static_cast<bool>(out);
}

void runlines(AsmContext& ctx, const std::vector<std::string>& source, const AsmModel& model, const Reporter& report) {
    asmreset(ctx, model.flashsize);
    asmpredefine(ctx, model);
    ctx.lines.resize(source.size());
    for (size_t i = 0; i < source.size(); ++i) ctx.lines[i].text = asmpreprocess(source[i]);
    const int count = static_cast<int>(ctx.lines.size());
    for (int number = 1; number <= count; ++number) {
        report.line("Performing pass 1.", number);
        asmpass1line(ctx, number);
    }
    for (int number = 1; number <= count; ++number) {
        report.line("Performing pass 2.", number);
        asmpass2line(ctx, number);
    }
}

}  // namespace

std::string asmbasename(const std::string& filename) { return filename.substr(0, filename.find('.')); }

AsmModel asmmodelof(const Machine& m, const ModelDefinitions& definitions) {
    return AsmModel{definitions.definitiontext, m.flashsize, m.sramsize, m.extendedio};
}

void asmassemblelines(AsmContext& ctx, const std::vector<std::string>& source, const AsmModel& model,
                      AsmProgress* progress) {
    runlines(ctx, source, model, Reporter(progress));
}

bool asmassemble(AsmContext& ctx, const std::string& filename, int& mode, const AsmEnvironment& environment,
                 std::string& failure) {
    const Reporter report(mode == kAsmSilent ? nullptr : environment.progress);
    report.status("Loading source file.");
    const std::filesystem::path folder(environment.folder);
    const std::string base = asmbasename(filename);
    failure.clear();

    std::vector<std::string> source;
    if (!readlines(folder / filename, source)) {
        asmreset(ctx, environment.model.flashsize);
        mode = ctx.asmerrors;
        failure = "The source file " + (folder / filename).string() + " could not be read.";
        return false;
    }
    runlines(ctx, source, environment.model, report);

    report.status("Writing LST file.");
    const std::filesystem::path listing = folder / (base + ".lst");
    if (!writetext(listing, asmlistingtext(ctx))) failure = "The file " + listing.string() + " could not be written.";

    report.status("Writing HEX file.");
    const std::filesystem::path hex = folder / (base + ".hex");
    const int last = asmbuildimage(ctx);
    if (!writetext(hex, asmhextext(ctx, last)) && failure.empty())
        failure = "The file " + hex.string() + " could not be written.";

    mode = ctx.asmerrors;
    return failure.empty();
}

}  // namespace velmora
