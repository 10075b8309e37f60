#include "basic/procedures.h"

#include <array>

#include "basic/assignment.h"
#include "basic/declarations.h"
#include "basic/emit.h"
#include "basic/symbols.h"
#include "basic/tokens.h"

namespace velmora {

namespace {

constexpr size_t kMaxArguments = 5;
constexpr std::array<const char*, 4> kTypes = {"Bit", "Byte", "Word", "Long"};

// "Byte" from "As Byte", or empty.
std::string typeafteras(const std::string& text) {
    for (const char* type : kTypes)
        if (text == std::string("As ") + type) return type;
    return "";
}

void counttype(MemoryPlan& plan, const std::string& type) {
    if (type == "Bit") ++plan.bits;
    if (type == "Byte") ++plan.bytes;
    if (type == "Word") ++plan.words;
    if (type == "Long") ++plan.longs;
}

// The pieces of a bracketed list cut at commas; an empty list has none.
std::vector<std::string> cutarguments(const std::string& list) {
    std::vector<std::string> pieces;
    if (trimblanks(list).empty()) return pieces;
    size_t start = 0;
    for (size_t comma; (comma = list.find(',', start)) != std::string::npos; start = comma + 1)
        pieces.push_back(trimblanks(list.substr(start, comma - start)));
    pieces.push_back(trimblanks(list.substr(start)));
    return pieces;
}

// `name As Type` pieces into the entry; `what` is "procedure" or "function".
bool scanarguments(CompileContext& ctx, RoutineEntry& entry, const std::string& list, const std::string& what) {
    const std::vector<std::string> pieces = cutarguments(list);
    if (pieces.size() > kMaxArguments) return fail(ctx, ": Too many arguments of the " + what + " (5 max).");
    for (const std::string& piece : pieces) {
        const size_t blank = piece.find(' ');
        const std::string name = piece.substr(0, blank);
        if (!validname(name)) return fail(ctx, ": Incorrect argument name '" + name + "'.");
        const std::string type = blank == std::string::npos ? "" : typeafteras(piece.substr(blank + 1));
        if (type.empty()) return fail(ctx, ": Incorrect argument declaration '" + piece + "'.");
        counttype(ctx.plan, type);
        entry.arguments.push_back({name, type});
    }
    return true;
}

const RoutineEntry* findroutine(const std::vector<RoutineEntry>& table, const std::string& name) {
    for (const RoutineEntry& entry : table)
        if (entry.name == name) return &entry;
    return nullptr;
}

int indexof(const std::vector<RoutineEntry>& table, const RoutineEntry* entry) {
    return static_cast<int>(entry - table.data()) + 1;
}

void replaceevery(std::string& text, const std::string& what, const std::string& with) {
    for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
}

}  // namespace

std::string argumentvariable(bool function, int i, int k) {
    return std::string(function ? "f_u_n_c_" : "p_r_o_c_") + std::to_string(i) + "_" + std::to_string(k);
}

bool scanprocedure(CompileContext& ctx, const std::string& text) {
    const size_t open = text.find('(');
    if (open == std::string::npos || !text.ends_with(")")) return fail(ctx, ": Incorrect procedure declaration.");
    RoutineEntry entry;
    entry.name = text.substr(0, open);
    if (!validname(entry.name)) return fail(ctx, ": Incorrect procedure name.");
    if (findroutine(ctx.proctable, entry.name)) return fail(ctx, ": Procedure name already used.");
    if (!scanarguments(ctx, entry, text.substr(open + 1, text.size() - open - 2), "procedure")) return false;
    entry.label = newlabel(ctx);
    ctx.proctable.push_back(std::move(entry));
    return true;
}

bool scanfunction(CompileContext& ctx, const std::string& text) {
    const size_t open = text.find('(');
    const size_t close = text.find(')', open == std::string::npos ? 0 : open);
    if (open == std::string::npos || close == std::string::npos) return fail(ctx, ": Incorrect function declaration.");
    RoutineEntry entry;
    const std::string behind = trimblanks(text.substr(close + 1));
    entry.resulttype = typeafteras(behind);
    if (entry.resulttype.empty()) return fail(ctx, ": Incorrect function declaration '" + text + "'.");
    entry.name = text.substr(0, open);
    if (!validname(entry.name) || findsymbol(ctx, entry.name)) return fail(ctx, ": Incorrect function name.");
    if (findroutine(ctx.functiontable, entry.name)) return fail(ctx, ": Function name already used.");
    if (!scanarguments(ctx, entry, text.substr(open + 1, close - open - 1), "function")) return false;
    counttype(ctx.plan, entry.resulttype);
    entry.label = newlabel(ctx);
    ctx.functiontable.push_back(std::move(entry));
    return true;
}

bool declareroutinevariables(CompileContext& ctx) {
    for (size_t i = 0; i < ctx.proctable.size(); ++i) {
        const auto& arguments = ctx.proctable[i].arguments;
        for (size_t k = 0; k < arguments.size(); ++k)
            if (!declarevariable(ctx, argumentvariable(false, static_cast<int>(i + 1), static_cast<int>(k + 1)),
                                 arguments[k].type))
                return false;
    }
    for (size_t i = 0; i < ctx.functiontable.size(); ++i) {
        const RoutineEntry& function = ctx.functiontable[i];
        if (!declarevariable(ctx, function.name, function.resulttype)) return false;
        for (size_t k = 0; k < function.arguments.size(); ++k)
            if (!declarevariable(ctx, argumentvariable(true, static_cast<int>(i + 1), static_cast<int>(k + 1)),
                                 function.arguments[k].type))
                return false;
    }
    return true;
}

bool routinestatement(CompileContext& ctx, bool function) {
    if (!ctx.afterend)
        return fail(ctx, function ? ": Functions must be placed after END statement in program."
                                  : ": Procedures must be placed after END statement in program.");
    if (ctx.currentproc != 0) return fail(ctx, ": End Proc is missing.");
    if (ctx.currentfunction != 0) return fail(ctx, ": End Function is missing.");
    // Bodies come in the order the scan found their headers.
    const std::vector<RoutineEntry>& table = function ? ctx.functiontable : ctx.proctable;
    const int index = (function ? ctx.lastfunction : ctx.lastproc) + 1;
    if (index > static_cast<int>(table.size()))
        return fail(ctx, function ? ": Incorrect function declaration." : ": Incorrect procedure declaration.");
    (function ? ctx.currentfunction : ctx.currentproc) = index;
    emitlabel(ctx, table[static_cast<size_t>(index - 1)].label);
    return true;
}

bool exitstatement(CompileContext& ctx) {
    if (ctx.currentproc == 0 && ctx.currentfunction == 0)
        return fail(ctx, ": Exit without Proc or Function declaration.");
    emitcode(ctx, "RET");
    return true;
}

bool endroutinestatement(CompileContext& ctx, bool function) {
    int& current = function ? ctx.currentfunction : ctx.currentproc;
    if (current == 0)
        return fail(ctx, function ? ": End Function without Function declaration."
                                  : ": End Proc without Proc declaration.");
    emitcode(ctx, "RET");
    (function ? ctx.lastfunction : ctx.lastproc) = current;
    current = 0;
    return true;
}

bool callstatement(CompileContext& ctx, const std::string& text) {
    const size_t open = text.find('(');
    if (open == std::string::npos || !text.ends_with(")")) return fail(ctx, ": Incorrect procedure or function call.");
    const std::string name = trimblanks(text.substr(0, open));
    // A procedure and a function may share a name; the procedure is the one called.
    const RoutineEntry* entry = findroutine(ctx.proctable, name);
    const bool function = entry == nullptr;
    if (function) entry = findroutine(ctx.functiontable, name);
    if (!entry) return fail(ctx, ": Incorrect procedure or function name.");
    const int index = indexof(function ? ctx.functiontable : ctx.proctable, entry);
    const std::vector<std::string> arguments = cutarguments(text.substr(open + 1, text.size() - open - 2));
    if (arguments.size() > entry->arguments.size())
        return fail(ctx, ": Too many arguments (" + std::to_string(entry->arguments.size()) + " max).");
    // Arguments left out keep what they hold.
    for (size_t k = 0; k < arguments.size(); ++k)
        if (!assign(ctx, argumentvariable(function, index, static_cast<int>(k + 1)), arguments[k])) return false;
    emitcode(ctx, "RCALL " + entry->label);
    return true;
}

const RoutineEntry* functioncalled(const CompileContext& ctx, const std::string& token) {
    const size_t open = token.find('(');
    if (open == std::string::npos || open == 0) return nullptr;
    return findroutine(ctx.functiontable, token.substr(0, open));
}

std::string translatename(const CompileContext& ctx, const std::string& text) {
    const bool function = ctx.currentproc == 0;
    const int index = function ? ctx.currentfunction : ctx.currentproc;
    if (index == 0) return text;
    const RoutineEntry& entry = (function ? ctx.functiontable : ctx.proctable)[static_cast<size_t>(index - 1)];
    std::string result = text;
    for (size_t k = 0; k < entry.arguments.size(); ++k) {
        const std::string& name = entry.arguments[k].name;
        const std::string mangled = argumentvariable(function, index, static_cast<int>(k + 1));
        if (result == name) return mangled;
        replaceevery(result, "(" + name + ")", "(" + mangled + ")");
        // Only a whole name takes a bit suffix: "x.0", not the tail of "ax.0".
        if (result.starts_with(name + ".")) result.replace(0, name.size(), mangled);
    }
    return result;
}

}  // namespace velmora
