#include "assembler/asmpreprocess.h"

#include <array>
#include <string_view>

#include "assembler/asmtext.h"
#include "core/numbers.h"

namespace velmora {

namespace {

constexpr std::array<std::string_view, 5> kRemovedDirectives{".include", ".cseg", ".exit", ".list", ".nolist"};

struct Rewrite {
    std::string_view needle;       // in the lower-cased line
    std::string_view replacement;  // of the same length
    std::string_view notice;
    bool dropsparenthesis;         // a function call becomes a prefix
    bool needsparenthesis;
};

constexpr std::array<Rewrite, 4> kRewrites{{
    {"low(", "low ", " ;Line modified by AVR Assembler preprocessor (LOW function replaced with LOW prefix): ", true, true},
    {"high(", "high ", " ;Line modified by AVR Assembler preprocessor (HIGH function replaced with HIGH prefix): ", true, true},
    {".set ", ".equ ", " ;Line modified by AVR Assembler preprocessor (.SET replaced with .EQU): ", false, false},
    {".def ", ".equ ", " ;Line modified by AVR Assembler preprocessor (.DEF replaced with .EQU): ", false, false},
}};

}  // namespace

int asmramend(const AsmModel& model) { return model.sramsize + model.extendedio + 96 - 1; }

void asmpredefine(AsmContext& ctx, const AsmModel& model) {
    for (const std::string& definition : model.definitiontext) {
        const std::string line = asmcleanline(definition);
        if (!line.starts_with(".EQU ")) continue;
        const std::string_view rest = std::string_view(line).substr(5);
        const size_t equals = rest.find('=');
        if (equals == std::string_view::npos) continue;
        asmaddsymbol(ctx, asmtrim(rest.substr(0, equals)), parsenumber16(asmtrim(rest.substr(equals + 1))));
    }
    for (int r = 0; r < 32; ++r) asmaddsymbol(ctx, "R" + std::to_string(r), r);
    constexpr std::array<std::string_view, 6> kPointerHalves{"XL", "XH", "YL", "YH", "ZL", "ZH"};
    for (size_t i = 0; i < kPointerHalves.size(); ++i) asmaddsymbol(ctx, kPointerHalves[i], 26 + static_cast<int32_t>(i));
    asmaddsymbol(ctx, "RAMEND", asmramend(model));
}

std::string asmpreprocess(const std::string& line) {
    const std::string cleaned = asmsqueezeline(asmstripline(line));
    const std::string lower = lowercase(cleaned);
    for (std::string_view directive : kRemovedDirectives)
        if (lower.find(directive) != std::string::npos) return ";Line removed by AVR Assembler preprocessor: " + line;
    for (const Rewrite& rewrite : kRewrites) {
        if (lower.find(rewrite.needle) == std::string::npos) continue;
        if (rewrite.needsparenthesis && lower.find(')') == std::string::npos) continue;
        std::string modified = asmreplacefirst(cleaned, rewrite.needle, rewrite.replacement);
        modified += rewrite.notice;
        modified += line;
        if (rewrite.dropsparenthesis) modified.erase(modified.find(')'), 1);
        return modified;
    }
    return line;
}

}  // namespace velmora
