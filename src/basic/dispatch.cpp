#include "basic/dispatch.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "basic/adc.h"
#include "basic/arithmetic.h"
#include "basic/asmrow.h"
#include "basic/controlflow.h"
#include "basic/assignment.h"
#include "basic/declarations.h"
#include "basic/delays.h"
#include "basic/eeprom.h"
#include "basic/defines.h"
#include "basic/expression.h"
#include "basic/hardwareserial.h"
#include "basic/interruptcontrol.h"
#include "basic/memoryaccess.h"
#include "basic/jumps.h"
#include "basic/lcdstatements.h"
#include "basic/pins.h"
#include "basic/procedures.h"
#include "basic/tokens.h"

namespace velmora {

namespace {

using Words = std::initializer_list<std::string_view>;

bool oneof(const std::string& word, Words words) { return std::find(words.begin(), words.end(), word) != words.end(); }

// How often `word` stands among tokens first..last.
int countword(const Tokens& t, std::string_view word, int first, int last) {
    int n = 0;
    for (int i = first; i <= last; ++i) n += t[i] == word;
    return n;
}

int thenposition(const Tokens& t) {
    for (int i = 1; i <= t.count(); ++i)
        if (t[i] == "Then") return i;
    return 0;
}

const Words kDeviceWords = {
    "Adcin", "Read", "Write", "WaitMs", "WaitUs", "Lcdinit", "Lcdout", "Lcdcmdout", "Lcddefchar", "GLcdinit",
    "GLcdclear", "GLcdout", "GLcdcmdout", "GLcdin", "GLcdpset", "GLcdpreset", "GLcdposition", "GLcdwrite",
    "GLcdclean", "Hseropen", "Hserout", "Hserin", "Hserget", "Serout", "SeroutInv", "Serin", "SerinInv",
    "I2CWrite", "I2CRead", "I2CWrite1", "I2CRead1", "I2CPrepare", "I2CStart", "I2CStop", "I2CSend", "I2CRecA",
    "I2CReceiveAck", "I2CRecN", "I2CReceiveNAck", "SPIPrepare", "SPICSOn", "SPICSOff", "SPISend", "SPISendBits",
    "SPIReceive", "Count", "FreqOut", "StepHold", "StepCW", "StepCCW", "PWMon", "PWMduty", "PWMoff", "ServoIn",
    "ServoOut", "1wireInit", "1wireGetBit", "1wireSendBit", "1wireGetByte", "1wireSendByte", "DS18S20Start",
    "DS18S20ReadT",
};

// First words of the statements a one-line If may carry behind Then, besides assignments.
const Words kThenWords = {
    "High", "Low", "Toggle", "Next", "Goto", "Gosub", "Return", "Halt", "Break", "Adcin", "Read", "Write",
    "WaitMs", "WaitUs", "Lcdinit", "Lcdout", "Lcdcmdout", "Lcddefchar", "GLcdinit", "GLcdclear", "GLcdout",
    "GLcdcmdout", "GLcdin", "GLcdpset", "GLcdpreset", "GLcdposition", "GLcdwrite", "GLcdclean", "Hseropen",
    "Hserout", "Hserin", "Hserget", "Serout", "SeroutInv", "Serin", "SerinInv", "I2CWrite", "I2CRead",
    "I2CWrite1", "I2CRead1", "I2CPrepare", "I2CStart", "I2CStop", "I2CSend", "I2CRecA", "I2CReceiveAck",
    "I2CRecN", "I2CReceiveNAck", "SPIPrepare", "SPICSOn", "SPICSOff", "SPISend", "SPISendBits", "SPIReceive",
    "Count", "FreqOut", "Resume", "Enable", "Disable", "PWMon", "PWMduty", "PWMoff", "ServoIn", "ServoOut",
    "1wireInit", "1wireGetBit", "1wireSendBit", "1wireGetByte", "1wireSendByte", "DS18S20Start", "DS18S20ReadT",
    "Exit", "Call",
};

// Statements that need indirect access through X and Y, which the limited parts lack.
const Words kFullSetWords = {"Serout", "SeroutInv", "Serin", "SerinInv", "I2CWrite", "I2CRead",
                             "I2CWrite1", "I2CRead1", "I2CPrepare", "FreqOut"};

using Fits = bool (*)(const Tokens&);
using Handle = bool (*)(CompileContext&, const Tokens&, const std::string&);

struct Rule {
    int order;  // place in the chain; some places hold several shapes
    Fits fits;
    Handle handle;
    bool fullset = false;  // refused on the limited instruction set
};

bool notyet(CompileContext& ctx, const Tokens&, const std::string&) {
    return fail(ctx, ": This statement is not supported yet by this version of the compiler.");
}

bool accept(CompileContext&, const Tokens&, const std::string&) { return true; }

// "name(argument)" without its name and brackets.
std::string insidebrackets(const std::string& token, const std::string& opening) {
    const size_t end = token.ends_with(")") ? token.size() - 1 : token.size();
    return token.substr(opening.size(), end - opening.size());
}

bool whilerow(CompileContext& ctx, const Tokens& t, const std::string&) { return whilestatement(ctx, t); }

bool ifrow(CompileContext& ctx, const Tokens& t, const std::string&) { return ifstatement(ctx, t); }

bool assignment(const Tokens& t) { return t[2] == "="; }

// An operand of a two-operand form; a bracket that is no array element's belongs to an expression.
bool plainoperand(const std::string& token) {
    if (token.empty() || token.starts_with("(")) return false;
    return !token.ends_with(")") || token.find('(') != std::string::npos;
}

bool twooperands(const Tokens& t, Words operators) {
    return assignment(t) && oneof(t[4], operators) && plainoperand(t[3]) && plainoperand(t[5]) && t.count() <= 5;
}

const Rule kRules[] = {
    // Declarations.
    {1, [](const Tokens& t) { return t[1] == "Reserve" && t.count() == 2; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return reserve(ctx, t[2]); }},
    {2, [](const Tokens& t) {
         return t[1] == "Dim" && t[3] == "As" && oneof(t[4], {"Byte", "Word", "Long"}) && t[5] == "@" && t.count() <= 6;
     },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return declarevariableat(ctx, t[2], t[4], t[6]); }},
    {3, [](const Tokens& t) {
         return t[1] == "Dim" && t[3] == "As" && oneof(t[4], {"Bit", "Byte", "Word", "Long"}) && t.count() <= 5;
     },
     [](CompileContext& ctx, const Tokens& t, const std::string&) {
         if (t[2].find_first_of("()") != std::string::npos) return declarearray(ctx, t[2], t[4]);
         return declarevariable(ctx, t[2], t[4]);
     }},
    {4, [](const Tokens& t) { return t[1] == "Symbol" && t[3] == "=" && t.count() <= 4; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return declaresymbol(ctx, t[2], t[4]); }},
    {5, [](const Tokens& t) { return t[1] == "Const" && t[3] == "=" && t.count() <= 4; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return declareconstant(ctx, t[2], t[4]); }},
    {6, [](const Tokens& t) { return t[1] == "Define" && t[3] == "=" && t.count() <= 4; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return definestatement(ctx, t[2], t[4]); }},
    {7, [](const Tokens& t) { return t[1].starts_with("ASM:"); },
     [](CompileContext& ctx, const Tokens&, const std::string& row) { return asmrow(ctx, row.substr(4)); }},
    // Assignments.
    {8, [](const Tokens& t) {
         return assignment(t) && (t[3].starts_with("ShiftLeft(") || t[3].starts_with("ShiftRight(")) &&
                t[3].ends_with(",") && t[4].ends_with(")") && t.count() <= 4;
     },
     [](CompileContext& ctx, const Tokens& t, const std::string&) {
         const bool left = t[3].starts_with("ShiftLeft(");
         const std::string a = t[3].substr(left ? 10 : 11, t[3].size() - (left ? 11 : 12));
         return shiftstatement(ctx, t[1], left, a, t[4].substr(0, t[4].size() - 1));
     }},
    {9, [](const Tokens& t) { return assignment(t) && t[3].starts_with("Sqr(") && t.count() <= 3; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) {
         if (!t[3].ends_with(")")) return fail(ctx, ": Syntax error.");
         return sqrstatement(ctx, t[1], t[3].substr(4, t[3].size() - 5));
     }},
    {10, [](const Tokens& t) { return assignment(t) && t[3].starts_with("Pointer("); },
     [](CompileContext& ctx, const Tokens& t, const std::string&) {
         return pointerread(ctx, t[1], insidebrackets(t[3], "Pointer("));
     },
     true},
    {11, [](const Tokens& t) { return t[1].starts_with("Pointer(") && assignment(t); },
     [](CompileContext& ctx, const Tokens& t, const std::string&) {
         return pointerwrite(ctx, insidebrackets(t[1], "Pointer("), t[3]);
     },
     true},
    {12, [](const Tokens& t) { return assignment(t) && t[3].starts_with("LookUp("); },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return lookup(ctx, t[1], t.from(3).substr(7)); }},
    {13, [](const Tokens& t) { return assignment(t) && t[3] == "Not" && t.count() <= 4; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return notstatement(ctx, t[1], t[4]); }},
    {14, [](const Tokens& t) { return twooperands(t, {"And", "Or", "Xor", "Nor", "Nand", "Nxor"}); },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return logic(ctx, t[1], t[3], t[4], t[5]); }},
    {15, [](const Tokens& t) { return assignment(t) && t.count() <= 3; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return assign(ctx, t[1], t[3]); }},
    {16, [](const Tokens& t) { return twooperands(t, {"-", "+", "*", "/", "Mod"}); },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return arithmetic(ctx, t[1], t[3], t[4], t[5]); }},
    {17, assignment, [](CompileContext& ctx, const Tokens&, const std::string& row) { return expression(ctx, row); }},
    // Pins.
    {18, [](const Tokens& t) { return oneof(t[1], {"High", "Low", "Toggle"}) && t.count() == 2; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) {
         const PinAction action = t[1] == "High" ? PinAction::High : t[1] == "Low" ? PinAction::Low : PinAction::Toggle;
         return pinstatement(ctx, action, t[2]);
     }},
    // Loops and tests.
    {19, [](const Tokens& t) {
         return (t[1] == "While" && t.count() == 2) || (t[1] == "While" && t[2] == "Not" && t.count() == 3) ||
                (t[1] == "Wend" && t.count() == 1);
     },
     [](CompileContext& ctx, const Tokens& t, const std::string&) {
         return t[1] == "Wend" ? wendstatement(ctx) : whilestatement(ctx, t);
     }},
    {20, [](const Tokens& t) {
         return t[1] == "While" && countword(t, "Or", 2, t.count()) > 0 && countword(t, "And", 2, t.count()) == 0;
     },
     whilerow},
    {21, [](const Tokens& t) { return t[1] == "While" && countword(t, "Or", 2, t.count()) == 0; }, whilerow},
    {22, [](const Tokens& t) {
         const int then = thenposition(t);
         return t[1] == "If" && countword(t, "Then", 1, t.count()) == 1 && (then == 3 || then == 4);
     },
     ifrow},
    {23, [](const Tokens& t) {
         const int then = thenposition(t);
         return t[1] == "If" && countword(t, "Then", 1, t.count()) == 1 && countword(t, "Or", 2, then) > 0 &&
                countword(t, "And", 2, then) == 0;
     },
     ifrow},
    {24, [](const Tokens& t) {
         const int then = thenposition(t);
         return t[1] == "If" && countword(t, "Then", 1, t.count()) == 1 && countword(t, "Or", 2, then) == 0;
     },
     ifrow},
    {25, [](const Tokens& t) { return oneof(t[1], {"Else", "Endif"}) && t.count() == 1; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) {
         return t[1] == "Else" ? elsestatement(ctx) : endifstatement(ctx);
     }},
    {26, [](const Tokens& t) {
         return (t[1] == "Select" && t[2] == "Case" && t.count() == 3) || t[1] == "Case" ||
                (t[1] == "EndSelect" && t.count() == 1);
     },
     [](CompileContext& ctx, const Tokens& t, const std::string&) {
         if (t[1] == "Select") return selectstatement(ctx, t[3]);
         if (t[1] == "EndSelect") return endselectstatement(ctx);
         if (t[2] == "Else" && t.count() == 2) return caseelsestatement(ctx);
         return casestatement(ctx, t.from(2));
     }},
    {27, [](const Tokens& t) {
         return t[1] == "For" && t[3] == "=" && t[5] == "To" && (t.count() == 6 || (t.count() == 8 && t[7] == "Step"));
     },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return forstatement(ctx, t); }},
    // Jumps.
    {28, [](const Tokens& t) { return t[1] == "Next" && t.count() == 2; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return nextstatement(ctx, t[2]); }},
    {28, [](const Tokens& t) { return t[1] == "Goto" && t.count() == 2; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return gotostatement(ctx, t[2]); }},
    {28, [](const Tokens& t) { return t[1] == "Gosub" && t.count() == 2; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return gosubstatement(ctx, t[2]); }},
    {28, [](const Tokens& t) { return t[1] == "Return" && t.count() == 1; },
     [](CompileContext& ctx, const Tokens&, const std::string&) { return returnstatement(ctx); }},
    {28, [](const Tokens& t) { return t[1] == "End" && t.count() == 1; },
     [](CompileContext& ctx, const Tokens&, const std::string&) { return endstatement(ctx); }},
    {28, [](const Tokens& t) { return t[1] == "Halt" && t.count() == 1; },
     [](CompileContext& ctx, const Tokens&, const std::string&) { return haltstatement(ctx); }},
    {28, [](const Tokens& t) { return t[1] == "Break" && t.count() == 1; },
     [](CompileContext& ctx, const Tokens&, const std::string&) { return breakstatement(ctx); }},
    // Devices; statements that only document wiring make no code.
    {29, [](const Tokens& t) { return oneof(t[1], {"Count", "PWMon", "PWMduty", "PWMoff"}); }, accept},
    {29, [](const Tokens& t) { return oneof(t[1], kFullSetWords); }, notyet, true},
    {29, [](const Tokens& t) { return t[1] == "Hseropen" && t.count() <= 2; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return hseropen(ctx, t[2]); }},
    {29, [](const Tokens& t) { return oneof(t[1], {"Hserout", "Hserin"}) && t.count() >= 2; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) {
         return t[1] == "Hserout" ? hserout(ctx, t.from(2)) : hserin(ctx, t.from(2));
     }},
    {29, [](const Tokens& t) { return t[1] == "Hserget" && t.count() == 2; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return hserget(ctx, t[2]); }},
    {29, [](const Tokens& t) { return oneof(t[1], {"WaitMs", "WaitUs"}) && t.count() == 2; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) {
         return t[1] == "WaitMs" ? waitmsstatement(ctx, t[2]) : waitusstatement(ctx, t[2]);
     }},
    {29, [](const Tokens& t) { return oneof(t[1], {"Adcin", "Read", "Write"}) && t.count() >= 2; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) {
         if (t[1] == "Adcin") return adcinstatement(ctx, t.from(2));
         return t[1] == "Read" ? readstatement(ctx, t.from(2)) : writestatement(ctx, t.from(2));
     }},
    {29, [](const Tokens& t) { return t[1] == "Lcdinit" && t.count() <= 2; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return lcdinitstatement(ctx, t[2]); }},
    {29, [](const Tokens& t) { return oneof(t[1], {"Lcdout", "Lcdcmdout", "Lcddefchar"}) && t.count() >= 2; },
     [](CompileContext& ctx, const Tokens& t, const std::string&) {
         if (t[1] == "Lcdout") return lcdoutstatement(ctx, t.from(2));
         return t[1] == "Lcdcmdout" ? lcdcmdoutstatement(ctx, t.from(2)) : lcddefcharstatement(ctx, t.from(2));
     }},
    {29, [](const Tokens& t) { return oneof(t[1], kDeviceWords); }, notyet},
    // Interrupts.
    {30, [](const Tokens& t) {
         return (t[1] == "On" && t[2] == "Interrupt") || (t[1] == "Resume" && t.count() == 1) ||
                (oneof(t[1], {"Enable", "Disable"}) && t.count() <= 2);
     },
     [](CompileContext& ctx, const Tokens& t, const std::string&) {
         if (t[1] == "Enable" || t[1] == "Disable") return enablestatement(ctx, t[2], t[1] == "Enable");
         if (t[1] == "Resume") return resumestatement(ctx);
         return interruptstatement(ctx, t.from(3));
     }},
    // Procedures and functions.
    {31, [](const Tokens& t) {
         return t[1] == "Proc" || t[1] == "Function" || t[1] == "Call" || (t[1] == "Exit" && t.count() == 1) ||
                (t[1] == "End" && oneof(t[2], {"Proc", "Function"}) && t.count() == 2);
     },
     [](CompileContext& ctx, const Tokens& t, const std::string&) {
         if (t[1] == "Call") return callstatement(ctx, t.from(2));
         if (t[1] == "Exit") return exitstatement(ctx);
         if (t[1] == "End") return endroutinestatement(ctx, t[2] == "Function");
         return routinestatement(ctx, t[1] == "Function");
     }},
    // Start-up and pin direction.
    {32, [](const Tokens& t) { return t[1] == "StartFromZero" && t.count() == 1; }, accept},
    {32, [](const Tokens& t) {
         return t[1] == "Config" && t[3] == "=" && oneof(t[4], {"Input", "Output"}) && t.count() == 4;
     },
     [](CompileContext& ctx, const Tokens& t, const std::string&) { return configstatement(ctx, t[2], t[4]); }},
};

bool limitedset(const CompileContext& ctx) { return ctx.model->instset == 2; }

bool run(CompileContext& ctx, const Tokens& given, const std::string& row) {
    // `x = f(a, b)` calls the function first; its result is then assigned as `x = f`.
    const RoutineEntry* function = assignment(given) ? functioncalled(ctx, given[3]) : nullptr;
    if (function && !callstatement(ctx, given.from(3))) return false;
    const std::string statement = function ? given[1] + " = " + function->name : row;
    const Tokens t = function ? Tokens(statement) : given;
    for (const Rule& rule : kRules) {
        if (!rule.fits(t)) continue;
        if (rule.fullset && limitedset(ctx))
            return fail(ctx,
                        ": This statement is not available in the current release of basic compiler\n"
                        "due to limited instruction set featured in the selected microcontroller model.");
        return rule.handle(ctx, t, statement);
    }
    return fail(ctx, ": Syntax error.");
}

}  // namespace

int chainrule(const std::string& row) {
    const Tokens t(row);
    for (const Rule& rule : kRules)
        if (rule.fits(t)) return rule.order;
    return 0;
}

bool dispatchrow(CompileContext& ctx, const std::string& row) {
    const Tokens t(row);
    if (t.count() == 0) return true;
    return run(ctx, t, row);
}

bool dispatchthen(CompileContext& ctx, const std::string& statement) {
    const Tokens t(statement);
    if (t.count() == 0) return fail(ctx, ": Syntax error.");
    if (!assignment(t) && !oneof(t[1], kThenWords)) return fail(ctx, ": Invalid statement in IF THEN line.");
    return run(ctx, t, statement);
}

}  // namespace velmora
