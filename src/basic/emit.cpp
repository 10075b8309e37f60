#include "basic/emit.h"

#include <cstdio>

#include "assembler/asmdata.h"
#include "core/numbers.h"
#include "core/textcase.h"

namespace velmora {

namespace {

bool contains(const std::string& text, const char* what) { return text.find(what) != std::string::npos; }

std::string trimmed(std::string text) {
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.pop_back();
    size_t start = 0;
    while (start < text.size() && (text[start] == ' ' || text[start] == '\t')) ++start;
    return text.substr(start);
}

// Elements of a data directive's list, the comment cut off.
int dataitems(const std::string& upper, size_t directive) {
    std::string list = upper.substr(directive + 4);
    const size_t semicolon = list.find(';');
    if (semicolon != std::string::npos) list.resize(semicolon);
    return asmcountitems(trimmed(list));
}

// Keeps the label and the relative jump of a line, for the relaxation of large models.
void notejump(CompileContext& ctx, const std::string& label, const std::string& instruction) {
    JumpLine line;
    line.label = uppercase(label);
    const std::string upper = uppercase(trimmed(instruction));
    for (const char* mnemonic : {"RJMP ", "RCALL "}) {
        if (!upper.starts_with(mnemonic)) continue;
        line.jump = trimmed(std::string(mnemonic));
        line.target = trimmed(upper.substr(line.jump.size()));
    }
    ctx.jumplines.push_back(std::move(line));
}

void addline(CompileContext& ctx, std::string text, const std::string& label, const std::string& instruction,
             bool counts) {
    ctx.lineaddress.push_back(ctx.outputwords);
    if (counts) {
        long org = 0;
        const int words = countwords(text, org);
        ctx.outputwords = words < 0 ? static_cast<int>(org) : ctx.outputwords + words;
    }
    if (ctx.model && ctx.model->flashwords > 4096) notejump(ctx, label, instruction);
    // What interrupt routines save is decided from the first sweep's text alone, so that
    // every entry and the common exit agree on the second.
    if (ctx.ininterrupt && !ctx.secondsweep && !instruction.empty()) {
        ctx.interrupttext += instruction;
        ctx.interrupttext += kCrLf;
    }
    ctx.outputlines.push_back(std::move(text));
}

}  // namespace

bool fail(CompileContext& ctx, const std::string& message) {
    if (ctx.error.empty()) ctx.error = message;
    return false;
}

int countwords(const std::string& line, long& orgvalue) {
    const std::string upper = uppercase(line);
    if (upper.starts_with(";") || contains(upper, ".EQU ") || contains(upper, ".END")) return 0;
    if (upper.starts_with(".ORG ")) {
        const double value = parsenumber32(trimmed(upper.substr(5)));
        orgvalue = value < 0 ? 0 : static_cast<long>(value);
        return -1;
    }
    if (contains(upper, "CALL ")) return contains(upper, "ICALL ") || contains(upper, "RCALL ") ? 1 : 2;
    if (contains(upper, "JMP ")) return contains(upper, "IJMP ") || contains(upper, "RJMP ") ? 1 : 2;
    if (contains(upper, "LDS ") || contains(upper, "STS ")) return 2;
    if (const size_t db = upper.find(".DB "); db != std::string::npos) {
        const int items = dataitems(upper, db);
        return (items + (items % 2)) / 2;
    }
    if (const size_t dw = upper.find(".DW "); dw != std::string::npos) return dataitems(upper, dw);
    return 1;
}

void emitraw(CompileContext& ctx, const std::string& text) { addline(ctx, text, "", "", true); }

void emitcode(CompileContext& ctx, const std::string& text) { addline(ctx, "\t" + text, "", text, true); }

void emitlabel(CompileContext& ctx, const std::string& label, const std::string& instruction) {
    if (instruction.empty())
        addline(ctx, label + ":", label, "", false);
    else
        addline(ctx, label + ":\t" + instruction, label, instruction, true);
}

std::string newlabel(CompileContext& ctx) {
    ++ctx.generatedlabelcount;
    char digits[16];
    std::snprintf(digits, sizeof digits, "%04d", ctx.generatedlabelcount % 10000);
    return std::string("L") + digits;
}

void requestroutine(CompileContext& ctx, int number) {
    if (number < 1 || number > 100) return;
    ctx.routineused[static_cast<size_t>(number)] = true;
    if (ctx.ininterrupt) ctx.routineusedininterrupt[static_cast<size_t>(number)] = true;
}

}  // namespace velmora
