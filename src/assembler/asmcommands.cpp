#include "assembler/asmcommands.h"

#include <filesystem>

#include "assembler/asmassemble.h"
#include "assembler/asmtext.h"

namespace velmora {

bool asmsourceallowed(const std::string& filename) {
    const std::string lower = lowercase(filename);
    return !lower.ends_with(".hex") && !lower.ends_with(".obj") && !lower.ends_with(".lst");
}

std::string asmsaveasname(const std::string& filename) { return asmbasename(filename) + ".asm"; }

std::string asmcaption(const std::string& fullname) { return kAsmCaptionPrefix + fullname; }

std::string asmfileofcaption(const std::string& caption) {
    const std::string prefix = kAsmCaptionPrefix;
    return caption.size() > prefix.size() ? caption.substr(prefix.size()) : std::string();
}

std::string asmoutputpath(const std::string& folder, const std::string& filename, const std::string& extension) {
    return (std::filesystem::path(folder) / (asmbasename(filename) + extension)).string();
}

void asmdeleteoutputs(const std::string& folder, const std::string& filename) {
    std::error_code ignored;
    std::filesystem::remove(asmoutputpath(folder, filename, ".lst"), ignored);
    std::filesystem::remove(asmoutputpath(folder, filename, ".hex"), ignored);
}

std::string asmfailuremessage(int errors) {
    return "Assembly was not successful.\nYour assembler source contains " + std::to_string(errors) + " errors.";
}

int asmerrorlistline(const AsmContext& ctx, int sourceline) {
    for (size_t i = 0; i < ctx.errorsourceline.size() && i < ctx.errorlistline.size(); ++i)
        if (ctx.errorsourceline[i] == sourceline) return ctx.errorlistline[i];
    return 0;
}

}  // namespace velmora
