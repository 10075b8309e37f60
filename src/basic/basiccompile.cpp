#include "basic/basiccompile.h"

#include <cmath>
#include <cstdio>
#include <algorithm>
#include <fstream>

#include "assembler/asminstructions.h"
#include "basic/declarations.h"
#include "basic/defines.h"
#include "basic/emit.h"
#include "basic/keywords.h"
#include "basic/linecleaner.h"
#include "basic/program.h"
#include "basic/registerscan.h"
#include "basic/relaxjumps.h"
#include "basic/symbols.h"
#include "core/hextext.h"

namespace velmora {

const char* const kFractionalClockWarning =
    "You use a non-integer value for the Clock Frequency parameter.\n"
    "WAITUS, WAITMS and other basic statements that involve precise timing\n"
    "might not work correctly, because they require an integer multiple of 1MHz\n"
    "clock frequency to be used.";

namespace {

std::string joinlines(const std::vector<std::string>& lines) {
    std::string text;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (i > 0) text += kCrLf;
        text += lines[i];
    }
    return text;
}

// Everything a sweep starts without; the interrupt text survives into the second sweep.
void resetsweep(CompileContext& ctx) {
    ctx.outputlines.clear();
    ctx.outputwords = 0;
    ctx.lineaddress.clear();
    ctx.jumplines.clear();
    ctx.generatedlabelcount = 0;
    ctx.routineused.fill(false);
    ctx.routineusedininterrupt.fill(false);
    if (!ctx.secondsweep) ctx.interrupttext.clear();
    ctx.ininterrupt = false;
    ctx.symbols.clear();
    ctx.constants.clear();
    ctx.temporaries.clear();
    ctx.plan = {};
    ctx.startfromzero = ctx.stephold = ctx.i2cprepare = ctx.spiprepare = ctx.interrupts = false;
    ctx.interruptused.assign(ctx.model->interrupts.size(), false);
    ctx.interruptlabel.assign(ctx.model->interrupts.size(), "");
    ctx.exitlabel.clear();
    ctx.afterend = false;
    ctx.proctable.clear();
    ctx.functiontable.clear();
    ctx.currentproc = ctx.currentfunction = ctx.lastproc = ctx.lastfunction = 0;
    ctx.uartopened = false;
    ctx.lcdinitialised = false;
    ctx.whilestack.clear();
    ctx.forstack.clear();
    ctx.ifstack.clear();
    ctx.selectstack.clear();
    ctx.currentline = 0;
}

bool basicsweep(CompileContext& ctx, const std::string& source, const KeywordSpelling& spelling) {
    resetsweep(ctx);
    if (!ctx.secondsweep) definedefaults(ctx);  // the second sweep applies each Define again
    preparememory(ctx);
    loadsource(ctx, source, spelling);
    loadsystemsymbols(ctx);
    return declarationscan(ctx) && generateprogram(ctx);
}

void markmemory(CompileContext& ctx) {
    const BasicModel& model = *ctx.model;
    ctx.memoryusage.assign(static_cast<size_t>(model.datasize), kMemUnused);
    for (int address : model.sfraddresses)
        if (address >= 0 && address < model.datasize) ctx.memoryusage[static_cast<size_t>(address)] = kMemSpecial;
    for (int a = 0; a < model.sramsize; ++a)
        if (model.sramfirst + a < model.datasize) ctx.memoryusage[static_cast<size_t>(model.sramfirst + a)] = kMemAvailable;
    for (int r = 0; r < 32 && r < model.datasize; ++r) ctx.memoryusage[static_cast<size_t>(r)] = kMemAvailable;
    ctx.registerstate.fill(kRegUnavailable);
}

void markvariables(CompileContext& ctx) {
    for (int r = 0; r < 32; ++r)
        if (ctx.registerstate[static_cast<size_t>(r)] == kRegTaken) ctx.memoryusage[static_cast<size_t>(r)] = kMemVariable;
    for (size_t i = 0; i < ctx.sramaddresses.size(); ++i) {
        const int address = ctx.sramaddresses[i];
        if (ctx.sramused[i] && address < static_cast<int>(ctx.memoryusage.size()))
            ctx.memoryusage[static_cast<size_t>(address)] = kMemVariable;
    }
}

// How often each mnemonic stands behind a tab. The search words of mnemonics that begin
// a longer one carry a blank (or, for RET, the line end) so that only whole words count.
void countinstructions(const std::string& text, BasicCompileResult& result) {
    static const std::vector<std::string> kGuarded = {"AND", "CP", "FMUL", "FMULS", "IN", "LD", "MOV", "MUL",
                                                      "MULS", "OR", "SBC", "SBI", "SBR", "ST", "SUB"};
    std::vector<std::string> mnemonics;
    for (const AsmInstruction& instruction : asminstructiontable()) mnemonics.emplace_back(instruction.mnemonic);
    std::sort(mnemonics.begin(), mnemonics.end());
    for (const std::string& mnemonic : mnemonics) {
        std::string word = "\t" + mnemonic;
        if (std::find(kGuarded.begin(), kGuarded.end(), mnemonic) != kGuarded.end()) word += " ";
        if (mnemonic == "RET") word += kCrLf;
        int count = 0;
        for (size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + word.size())) ++count;
        result.statistics.push_back({mnemonic, count});
        result.totalinstructions += count;
    }
}

std::string compileerror(const CompileContext& ctx) {
    if (!ctx.errorhasline) return ctx.error;
    return "Error in line " + std::to_string(ctx.currentline) + ctx.error;
}

void replaceall(std::string& text, const std::string& what, const std::string& with) {
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
}

}  // namespace

std::vector<std::string> basickeywordsfor(const BasicModel& model) {
    CompileContext ctx;
    ctx.model = &model;
    loadsystemsymbols(ctx);
    std::vector<std::string> names;
    for (const SymbolEntry& entry : ctx.symbols) names.push_back(entry.name);
    for (const BasicBitName& bit : model.bitnames) names.push_back(bit.name);
    return basickeywordlist(names);
}

void loadsource(CompileContext& ctx, const std::string& source, const KeywordSpelling& spelling) {
    ctx.rows.assign(1, SourceRow{});
    // Rows end in CR LF; a file written on another system may end them in LF alone.
    std::string text = source;
    if (!text.ends_with("\n")) text += kCrLf;
    for (size_t start = 0; start < text.size();) {
        const size_t end = text.find('\n', start);
        const size_t length = end - start - (end > start && text[end - 1] == '\r' ? 1 : 0);
        const std::string cleaned = cleanbasicline(text.substr(start, length), spelling);
        start = end + 1;
        SourceRow row;
        bool instring = false, incomment = false;
        for (char c : cleaned) {
            if (c == '\t') c = ' ';
            if (c == '\'' && !instring) incomment = true;
            if (c == '"' && !incomment) instring = !instring;
            (incomment ? row.comment : row.statement) += c;
        }
        if (!row.comment.empty()) row.comment.insert(0, " ");
        const size_t first = row.statement.find_first_not_of(' ');
        row.statement = first == std::string::npos ? "" : row.statement.substr(first, row.statement.find_last_not_of(' ') - first + 1);
        ctx.rows.push_back(std::move(row));
    }
}

BasicCompileResult basiccompile(const std::string& source, const BasicModel& model, const CompileOptions& options) {
    BasicCompileResult result;
    CompileContext ctx;
    ctx.model = &model;
    ctx.options = options;
    const KeywordSpelling spelling(basickeywordsfor(model));
    markmemory(ctx);
    if (std::floor(model.clockmhz) != model.clockmhz) result.warnings.push_back(kFractionalClockWarning);

    ctx.secondsweep = false;
    bool ok = basicsweep(ctx, source, spelling);
    if (ok) {
        registerusagescan(joinlines(ctx.outputlines), ctx.memoryusage);
        for (int r = 0; r < 32; ++r)
            if (ctx.memoryusage[static_cast<size_t>(r)] == kMemAvailable) ctx.registerstate[static_cast<size_t>(r)] = kRegFree;
        ctx.secondsweep = true;
        ok = basicsweep(ctx, source, spelling);
    }
    result.warnings.insert(result.warnings.end(), ctx.warnings.begin(), ctx.warnings.end());
    // The Define acts from its row on, also when a later row fails.
    if (ctx.clockdefined) result.definedclock = ctx.clockmhz;
    if (!ok) {
        result.error = compileerror(ctx);
        result.errorline = ctx.currentline > ctx.sourcelinecount() ? 0 : ctx.currentline;
        return result;
    }
    relaxjumps(ctx);
    markvariables(ctx);
    result.ok = true;
    result.asmtext = joinlines(ctx.outputlines);
    result.outputwords = ctx.outputwords;
    result.memoryusage = ctx.memoryusage;
    countinstructions(result.asmtext, result);
    if (options.compatiblelisting) result.asmtext = compatiblelisting(result.asmtext, model.datasize);
    return result;
}

std::string compatiblelisting(const std::string& asmtext, int datasize) {
    std::string text = asmtext;
    const size_t end = text.rfind(".END");
    if (end != std::string::npos) text.resize(end >= 2 ? end - 2 : 0);
    const int ramend = datasize - 1;
    replaceall(text, "low RAMEND", "0x" + hex2(static_cast<uint32_t>(ramend % 256)));
    replaceall(text, "high RAMEND", "0x" + hex2(static_cast<uint32_t>(ramend / 256)));
    return text;
}

std::string compilereport(int outputwords, int flashbytes, const std::string& basepath) {
    const int bytes = 2 * outputwords;
    std::string report = bytes > flashbytes ? "The program is too large." : "The compilation process was successful.";
    report += "\n";
    report += "The size of the generated code is " + std::to_string(bytes) + " program bytes.";
    report += "\n";
    report += "Total " + std::to_string(flashbytes) + " program bytes available.";
    report += "\n";
    report += "Output saved as " + basepath + ".asm";
    return report;
}

bool writecompiledfile(const std::string& path, const std::string& text, std::string& failure) {
    std::remove(path.c_str());
    std::ofstream file(path, std::ios::binary);
    if (file) file.write(text.data(), static_cast<std::streamsize>(text.size()));
    if (!file) {
        failure = "The file '" + path + "' can not be written.";
        return false;
    }
    return true;
}

}  // namespace velmora
