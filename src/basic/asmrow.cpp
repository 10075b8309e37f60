#include "basic/asmrow.h"

#include "basic/emit.h"
#include "core/textcase.h"

namespace velmora {

namespace {

void replaceall(std::string& text, const std::string& what, const std::string& with) {
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
}

}  // namespace

bool asmrow(CompileContext& ctx, const std::string& text) {
    const std::string upper = uppercase(text);
    for (const char* directive : {".EQU", ".ORG", ".DB", ".DW", ".END"}) {
        if (upper.find(directive) == std::string::npos) continue;
        emitraw(ctx, text);
        return true;
    }
    if (text.starts_with(" ")) {
        std::string instruction = text.substr(1);
        replaceall(instruction, " ,", ",");
        replaceall(instruction, ", ", ",");
        emitcode(ctx, instruction);
        return true;
    }
    const size_t blank = text.find(' ');
    if (text.empty() || blank == 0 || (blank != std::string::npos && blank == text.size() - 1)) return fail(ctx, ": Syntax error.");
    std::string label = text.substr(0, blank);
    if (label.ends_with(":")) label.pop_back();
    if (blank == std::string::npos)
        emitlabel(ctx, label);
    else
        emitlabel(ctx, label, text.substr(blank + 1));
    return true;
}

}  // namespace velmora
