#include "assembler/asmpasses.h"

#include <cctype>
#include <string>
#include <utility>

#include "assembler/asmdata.h"
#include "assembler/asmencoder.h"
#include "assembler/asmexpression.h"
#include "assembler/asminstructions.h"
#include "assembler/asmmessages.h"
#include "assembler/asmoperandprep.h"
#include "assembler/asmtext.h"

namespace velmora {

namespace {

constexpr int32_t kMaxOrg = 0xFFFFFF;

bool isdata(const std::string& mnemonic) { return mnemonic == ".DB" || mnemonic == ".DW"; }

bool startslabel(char c) {
    const char upper = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return (upper >= 'A' && upper <= 'Z') || upper == '_';
}

// Splits "MNEMONIC args" into the line's fields.
void readstatement(AsmLine& line, const std::string& statement) {
    const size_t blank = statement.find(' ');
    line.mnemonic = uppercase(statement.substr(0, blank));
    const std::string arguments = blank == std::string::npos ? std::string() : asmtrim(statement.substr(blank + 1));
    const size_t comma = arguments.find(',');
    line.arg1 = asmtrim(arguments.substr(0, comma));
    if (comma != std::string::npos) line.arg2 = asmtrim(arguments.substr(comma + 1));
    if (isdata(line.mnemonic)) {
        // The whole list is one argument.
        if (comma != std::string::npos) line.arg1 += "," + line.arg2;
        line.arg1 = asmexpandstrings(line.arg1);
        line.arg2.clear();
    }
    line.argcount = !line.arg2.empty() ? 2 : !line.arg1.empty() ? 1 : 0;
}

// Directives with the argument count each takes.
struct Directive {
    const char* name;
    int argcount;
};
constexpr Directive kDirectives[] = {{".ORG", 1}, {".EQU", 1}, {".DB", 1}, {".DW", 1}, {".END", 0}};

void defineequ(AsmContext& ctx, AsmLine& line) {
    const size_t equals = line.arg1.find('=');
    const std::string name = equals == std::string::npos ? std::string() : asmtrim(line.arg1.substr(0, equals));
    if (name.empty()) {
        asmerror(ctx, line, asmmessage::kEquSyntax);
        return;
    }
    if (asmlookup(ctx, name) != 0) {
        asmerror(ctx, line, asmmessage::kDuplicateName);
        return;
    }
    const int32_t value = asmevalexpr(ctx, asmtrim(line.arg1.substr(equals + 1)));
    if (value == kAsmInvalid) {
        asmerror(ctx, line, asmmessage::kEquArgument);
        return;
    }
    asmaddsymbol(ctx, name, value);
}

// Operand text through the rewriting and the evaluator; false after reporting it.
bool evaluateoperand(AsmContext& ctx, AsmLine& line, const std::string& text, int32_t& value) {
    const std::string prepared = asmoperandprep(text, line.mnemonic);
    if (prepared.empty()) return true;
    value = asmevalexpr(ctx, prepared);
    if (value != kAsmInvalid) return true;
    asmerror(ctx, line, asmmessage::kInstructionArgument);
    return false;
}

}  // namespace

void asmsizeline(AsmContext& ctx, AsmLine& line) {
    if (line.mnemonic.empty()) return;
    for (const Directive& directive : kDirectives) {
        if (line.mnemonic != directive.name) continue;
        if (line.argcount != directive.argcount) {
            asmerror(ctx, line, asmmessage::kArgumentCount);
            return;
        }
        if (line.mnemonic == ".ORG") {
            const int32_t target = asmevalexpr(ctx, line.arg1);
            if (target < 0 || target > kMaxOrg) {
                asmerror(ctx, line, asmmessage::kOrgArgument);
                return;
            }
            ctx.asmlocation = target;
        } else if (line.mnemonic == ".DB") {
            ctx.asmlocation += (asmcountitems(line.arg1) + 1) / 2;
        } else if (line.mnemonic == ".DW") {
            ctx.asmlocation += asmcountitems(line.arg1);
        }
        return;
    }
    const AsmInstruction* instruction = asmfindinstruction(line.mnemonic);
    if (instruction == nullptr) {
        asmerror(ctx, line, asmmessage::kUnrecognized);
        return;
    }
    if (!asmacceptsargcount(*instruction, line.argcount)) {
        asmerror(ctx, line, asmmessage::kArgumentCount);
        return;
    }
    ctx.asmlocation += asmwordcount(*instruction);
}

void asmpass1line(AsmContext& ctx, int number) {
    AsmLine& line = asmline(ctx, number);
    AsmLine cleared;
    cleared.text = std::move(line.text);
    cleared.location = ctx.asmlocation;
    line = std::move(cleared);

    const std::string stripped = asmstripline(line.text);
    if (stripped.empty()) return;

    int label = 0;
    std::string rest = stripped;
    if (startslabel(stripped[0])) {
        const size_t blank = stripped.find(' ');
        std::string name = uppercase(stripped.substr(0, blank));
        rest = blank == std::string::npos ? std::string() : stripped.substr(blank);
        if (name.ends_with(':')) name.pop_back();
        if (name.size() > kAsmMaxLabelLength) {
            asmerror(ctx, line, asmmessage::kLabelTooLong);
            return;
        }
        if (asmlookup(ctx, name) != 0) {
            asmerror(ctx, line, asmmessage::kDuplicateLabel);
            return;
        }
        label = asmaddsymbol(ctx, name, kAsmInvalid, number);
    }

    rest = asmtrim(rest);
    if (!rest.empty()) readstatement(line, rest);

    // The label takes the location before the statement moves it, so ".ORG" behind a label
    // leaves the label where it was.
    if (label != 0) ctx.symbols[static_cast<size_t>(label - 1)].value = ctx.asmlocation;
    asmsizeline(ctx, line);
}

void asmpass2line(AsmContext& ctx, int number) {
    ctx.argvalue1 = 0;
    ctx.argvalue2 = 0;
    AsmLine& line = asmline(ctx, number);
    ctx.asmlocation = line.location;
    if (line.errorflag || line.mnemonic.empty()) return;

    if (line.mnemonic == ".EQU") {
        defineequ(ctx, line);
        return;
    }
    if (!isdata(line.mnemonic)) {
        if (!evaluateoperand(ctx, line, line.arg1, ctx.argvalue1)) return;
        if (!evaluateoperand(ctx, line, line.arg2, ctx.argvalue2)) return;
    }
    asmencodeline(ctx, line);
}

}  // namespace velmora
