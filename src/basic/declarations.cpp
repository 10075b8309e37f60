#include "basic/declarations.h"

#include <charconv>

#include "basic/emit.h"
#include "basic/procedures.h"
#include "core/hextext.h"
#include "basic/symbols.h"
#include "basic/tokens.h"
#include "core/textcase.h"

namespace velmora {

namespace {

const char* const kNoRoom = ": Not enough SRAM memory available for this declaration.";
const char* const kTaken = ": SRAM location already reserved by system or user program.";
const char* const kMissing = ": Specified SRAM location address does not exist.";

int bytesof(const std::string& typeword) {
    if (typeword == "Byte") return 1;
    if (typeword == "Word") return 2;
    if (typeword == "Long") return 4;
    return 0;
}

int typecode(const std::string& typeword) {
    if (typeword == "Bit") return kTypeBit;
    if (typeword == "Byte") return kTypeByte;
    if (typeword == "Word") return kTypeWord;
    if (typeword == "Long") return kTypeLong;
    return kTypeNone;
}

// The size in "name(size)": a plain positive decimal, or 0.
int arraysize(const std::string& text) {
    if (text.empty() || text[0] == '0' || text.size() > 9) return 0;
    int value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    return ec == std::errc() && end == text.data() + text.size() ? value : 0;
}

// A free run of `bytes` adjacent SRAM locations from the lowest, taken; -1 when none.
int takesram(CompileContext& ctx, int bytes) {
    const int count = static_cast<int>(ctx.sramaddresses.size());
    for (int i = 0; i + bytes <= count; ++i) {
        bool free = true;
        for (int k = 0; k < bytes && free; ++k) {
            const size_t at = static_cast<size_t>(i + k);
            free = !ctx.sramused[at] && ctx.sramaddresses[at] == ctx.sramaddresses[static_cast<size_t>(i)] + k;
        }
        if (!free) continue;
        for (int k = 0; k < bytes; ++k) ctx.sramused[static_cast<size_t>(i + k)] = true;
        return ctx.sramaddresses[static_cast<size_t>(i)];
    }
    return -1;
}

int sramindex(const CompileContext& ctx, int address) {
    for (size_t i = 0; i < ctx.sramaddresses.size(); ++i)
        if (ctx.sramaddresses[i] == address) return static_cast<int>(i);
    return -1;
}

void addresscomment(CompileContext& ctx, const std::string& name, int type, int32_t address) {
    if (type == kTypeBit) {
        emitraw(ctx, ";       The address of '" + name + "' is 0x" + hexdigits(address / 100, 1) + "," +
                         hexdigits(address % 100, 1));
        return;
    }
    emitraw(ctx, ";       The address of '" + name + "' is 0x" + hexdigits(address, 1));
}

bool newname(const CompileContext& ctx, const std::string& name) {
    return validname(name) && !findsymbol(ctx, name);
}

void enter(CompileContext& ctx, const std::string& name, int type, int32_t address) {
    ctx.symbols.push_back({name, address, type});
    addresscomment(ctx, name, type, address);
    if (type != kTypeBit) emitraw(ctx, ".EQU    " + name + " = 0x" + hexdigits(address, 1));
}

// The Dim row's totals, without allocating.
void countdim(CompileContext& ctx, const Tokens& t) {
    if (t[5] == "@") return;
    std::string name = t[2];
    int elements = 1;
    if (const size_t open = name.find('('); open != std::string::npos && name.ends_with(")")) {
        elements = arraysize(name.substr(open + 1, name.size() - open - 2));
        if (elements == 0) return;
    }
    const std::string& type = t[4];
    if (type == "Bit") ctx.plan.bits += elements;
    if (type == "Byte") ctx.plan.bytes += elements;
    if (type == "Word") ctx.plan.words += elements;
    if (type == "Long") ctx.plan.longs += elements;
}

bool scanlabel(CompileContext& ctx, SourceRow& row, const Tokens& t) {
    const std::string& first = t[1];
    if (first == ":") return fail(ctx, ": Label name missing.");
    const std::string name = first.substr(0, first.size() - 1);
    if (!validname(name)) return fail(ctx, ": Incorrect line label name.");
    for (const SourceRow& other : ctx.rows)
        if (other.username == name) return fail(ctx, ": Line label name already used.");
    row.label = newlabel(ctx);
    row.username = name;
    row.statement = row.statement.size() > first.size() ? row.statement.substr(first.size() + 1) : "";
    return true;
}

void noteinterrupt(CompileContext& ctx, const std::string& name) {
    for (size_t i = 0; i < ctx.model->interrupts.size(); ++i)
        if (sameignoringcase(ctx.model->interrupts[i].name, name)) ctx.interruptused[i] = true;
    ctx.interrupts = true;
}

bool checkplan(CompileContext& ctx) {
    int free = 0;
    for (int state : ctx.registerstate) free += state == kRegFree;
    const int total = free + static_cast<int>(ctx.sramaddresses.size());
    const MemoryPlan& p = ctx.plan;
    const int user = (p.bits + 7) / 8 + p.bytes + 2 * p.words + 4 * p.longs;
    if (user + p.system <= total) return true;
    ctx.errorhasline = false;
    return fail(ctx, "Not enough SRAM memory available for declared variables.\nTotal number of SRAM locations: " +
                         std::to_string(total) + "\nNumber of locations required by system: " +
                         std::to_string(p.system) + "\nNumber of locations required by user program: " +
                         std::to_string(user));
}

}  // namespace

void preparememory(CompileContext& ctx) {
    const BasicModel& model = *ctx.model;
    ctx.sramaddresses.clear();
    ctx.virtualsram = !model.hassram() && !ctx.secondsweep;
    if (model.hassram())
        for (int a = 0; a < model.sramsize; ++a) ctx.sramaddresses.push_back(model.sramfirst + a);
    else if (ctx.virtualsram)
        for (int a = 96; a < 128; ++a) ctx.sramaddresses.push_back(a);
    ctx.sramused.assign(ctx.sramaddresses.size(), false);
    ctx.bitcounter = -1;
    ctx.bitlocation = 0;
    for (int& state : ctx.registerstate)
        if (state == kRegTaken) state = kRegFree;
}

int allocate(CompileContext& ctx, int bytes) {
    std::array<int, 32>& regs = ctx.registerstate;
    if (bytes == 1) {
        for (int r = 31; r >= 0; --r)
            if (regs[static_cast<size_t>(r)] == kRegFree) {
                regs[static_cast<size_t>(r)] = kRegTaken;
                return r;
            }
    } else if (bytes == 2) {
        for (int n = 30; n >= 0; --n)
            if (regs[static_cast<size_t>(n)] == kRegFree && regs[static_cast<size_t>(n + 1)] == kRegFree) {
                regs[static_cast<size_t>(n)] = regs[static_cast<size_t>(n + 1)] = kRegTaken;
                return n;
            }
    }
    return bytes > 0 ? takesram(ctx, bytes) : -1;
}

int allocateat(CompileContext& ctx, int bytes, int address) {
    const int first = sramindex(ctx, address);
    if (first < 0 || first + bytes > static_cast<int>(ctx.sramaddresses.size())) return -1;
    for (int k = 0; k < bytes; ++k)
        if (ctx.sramused[static_cast<size_t>(first + k)]) return -1;
    for (int k = 0; k < bytes; ++k) ctx.sramused[static_cast<size_t>(first + k)] = true;
    return address;
}

bool declarevariable(CompileContext& ctx, const std::string& name, const std::string& typeword) {
    if (!newname(ctx, name)) return fail(ctx, ": Incorrect variable name.");
    const int type = typecode(typeword);
    if (type == kTypeBit) {
        ++ctx.bitcounter;
        if (ctx.bitcounter % 8 == 0) {
            const int location = allocate(ctx, 1);
            if (location < 0) return fail(ctx, kNoRoom);
            ctx.bitlocation = location;
        }
        enter(ctx, name, type, ctx.bitlocation * 100 + ctx.bitcounter % 8);
        return true;
    }
    const int address = allocate(ctx, bytesof(typeword));
    if (address < 0) return fail(ctx, kNoRoom);
    enter(ctx, name, type, address);
    return true;
}

bool declarevariableat(CompileContext& ctx, const std::string& name, const std::string& typeword,
                       const std::string& addresstext) {
    if (!newname(ctx, name)) return fail(ctx, ": Incorrect variable name.");
    std::string text = addresstext;
    if (!constantword(ctx, text)) return false;
    const int address = std::stoi(text);
    const int bytes = bytesof(typeword);
    if (sramindex(ctx, address) < 0 || sramindex(ctx, address + bytes - 1) < 0) return fail(ctx, kMissing);
    if (allocateat(ctx, bytes, address) < 0) return fail(ctx, kTaken);
    enter(ctx, name, typecode(typeword), address);
    return true;
}

bool declarearray(CompileContext& ctx, const std::string& declaration, const std::string& typeword) {
    const size_t open = declaration.find('(');
    if (open == std::string::npos || !declaration.ends_with(")") || declaration.find(')') != declaration.size() - 1)
        return fail(ctx, ": Incorrect array declaration.");
    if (typeword == "Bit") return fail(ctx, ": Arrays are not supported for Bit variables.");
    if (typeword == "Long") return fail(ctx, ": Arrays are not supported for Long variables.");
    const std::string name = declaration.substr(0, open);
    if (!newname(ctx, name)) return fail(ctx, ": Incorrect variable name.");
    const int size = arraysize(declaration.substr(open + 1, declaration.size() - open - 2));
    if (size <= 0) return fail(ctx, ": Incorrect array declaration.");
    const int address = allocate(ctx, size * bytesof(typeword));
    if (address < 0) return fail(ctx, kNoRoom);
    enter(ctx, name, typecode(typeword), address);
    return true;
}

bool declaresymbol(CompileContext& ctx, const std::string& name, const std::string& argument) {
    if (!newname(ctx, name)) return fail(ctx, ": Incorrect symbol name.");
    const int type = symboltype(ctx, argument);
    if (type != kTypeBit && type != kTypeByte && type != kTypeWord) return fail(ctx, ": Incorrect argument.");
    const int32_t address = symboladdress(ctx, argument);
    ctx.symbols.push_back({name, address, type});
    addresscomment(ctx, name, type, address);
    if (type != kTypeBit) emitraw(ctx, ".EQU " + name + " = 0x" + hexdigits(address, 1));
    return true;
}

bool declareconstant(CompileContext& ctx, const std::string& name, const std::string& value) {
    if (!newname(ctx, name)) return fail(ctx, ": Incorrect constant name.");
    for (const ConstantEntry& constant : ctx.constants)
        if (constant.name == name) return fail(ctx, ": Duplicate constant name.");
    std::string text = value;
    if (!constantlong(ctx, text)) return false;
    ctx.constants.push_back({name, text});
    emitraw(ctx, ";       The value of '" + name + "' is " + text);
    return true;
}

bool reserve(CompileContext& ctx, const std::string& addresstext) {
    std::string text = addresstext;
    if (!constantword(ctx, text)) return false;
    const int address = std::stoi(text);
    const int index = sramindex(ctx, address);
    if (index < 0) return fail(ctx, kMissing);
    if (ctx.sramused[static_cast<size_t>(index)]) return fail(ctx, kTaken);
    ctx.sramused[static_cast<size_t>(index)] = true;
    emitraw(ctx, ";       Reserved SRAM location: 0x" + hexdigits(address, 1));
    return true;
}

bool declarationscan(CompileContext& ctx) {
    ctx.plan = {};
    for (int n = 1; n <= ctx.sourcelinecount(); ++n) {
        ctx.currentline = n;
        SourceRow& row = ctx.rows[static_cast<size_t>(n)];
        const Tokens whole(row.statement);
        if (whole.toolong()) return fail(ctx, ": Line too long.");
        if (whole[1].ends_with(":") && !whole[1].starts_with("ASM:") && !scanlabel(ctx, row, whole)) return false;
        const Tokens t(row.statement);
        if (t[1] == "I2CPrepare" && t.count() > 1) ctx.i2cprepare = true;
        if (t[1] == "SPIPrepare" && t.count() == 1) ctx.spiprepare = true;
        if (t[1] == "On" && t[2] == "Interrupt" && t.count() == 3) noteinterrupt(ctx, t[3]);
        if (t[1] == "StartFromZero" && t.count() == 1) ctx.startfromzero = true;
        if (t[1] == "StepHold" && t.count() == 1) ctx.stephold = true;
        if (t[1] == "Dim" && t[3] == "As") countdim(ctx, t);
        if (t[1] == "Proc" && t.count() > 1 && !scanprocedure(ctx, row.statement.substr(5))) return false;
        if (t[1] == "Function" && t.count() > 1 && !scanfunction(ctx, row.statement.substr(9))) return false;
    }
    ctx.currentline = ctx.sourcelinecount() + 1;
    ctx.plan.system = ctx.stephold ? 1 : 0;
    if (!checkplan(ctx)) return false;
    if (ctx.stephold && ctx.model->hassram() && !ctx.sramused.empty()) ctx.sramused[0] = true;
    return true;
}

}  // namespace velmora
