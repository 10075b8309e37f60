#include "basic/memoryaccess.h"

#include <vector>

#include "basic/assignment.h"
#include "basic/emit.h"
#include "basic/operands.h"
#include "basic/symbols.h"
#include "basic/tokens.h"

namespace velmora {

namespace {

bool addressoperand(CompileContext& ctx, const Operand& op, const char* low, const char* high) {
    if (widthof(op.type) != kTypeByte && widthof(op.type) != kTypeWord)
        return fail(ctx, ": The argument of Pointer function must be Byte or Word variable.");
    loadoperandbyte0(ctx, op, low);
    loadoperandbyte1(ctx, op, high);
    return true;
}

// The table's values: Byte constants, and each character of a quoted text.
bool tablevalues(CompileContext& ctx, std::string list, std::vector<int>& values) {
    while (!list.empty()) {
        std::string item = trimblanks(nextargument(list));
        if (item.size() >= 2 && item.front() == '"' && item.back() == '"') {
            for (size_t i = 1; i + 1 < item.size(); ++i) values.push_back(static_cast<unsigned char>(item[i]));
            continue;
        }
        if (!constantbyte(ctx, item)) return false;
        values.push_back(std::stoi(item));
    }
    return true;
}

}  // namespace

bool pointerread(CompileContext& ctx, const std::string& resulttext, const std::string& addresstext) {
    const Operand x = operandof(ctx, resulttext);
    if (x.type == kTypeNone || x.type == kTypeBit) return fail(ctx, ": The result must be Byte, Word or Long variable.");
    if (!addressoperand(ctx, operandof(ctx, addresstext), "XL", "XH")) return false;
    const int bytes = bytesoftype(x.type);
    for (int k = 0; k < bytes; ++k) {
        emitcode(ctx, k + 1 < bytes ? "LD R16,X+" : "LD R16,X");
        storeresultbyte(ctx, k, x.type, x.address, "R16");
    }
    return true;
}

bool pointerwrite(CompileContext& ctx, const std::string& addresstext, const std::string& sourcetext) {
    const Operand source = operandof(ctx, sourcetext);
    if (source.type == kTypeBit)
        return fail(ctx, ": Only Byte, Word or Long variable or Byte constant can be assigned to Pointer function.");
    if (source.type == kTypeNone) {
        std::string value = sourcetext;
        if (!constantbyte(ctx, value)) {
            ctx.error.clear();
            return fail(ctx, ": Only Byte, Word or Long variable or Byte constant can be assigned to Pointer function.");
        }
    }
    if (!addressoperand(ctx, operandof(ctx, addresstext), "YL", "YH")) return false;
    const int bytes = bytesoftype(source.type);
    for (int k = 0; k < bytes; ++k) {
        if (k == 0)
            loadoperandbyte0(ctx, source, "R16");
        else
            loadoperandupper(ctx, k, source, "R16");
        emitcode(ctx, k + 1 < bytes ? "ST Y+,R16" : "ST Y,R16");
    }
    return true;
}

bool lookup(CompileContext& ctx, const std::string& resulttext, const std::string& arguments) {
    const size_t close = arguments.find("), ");
    if (close == std::string::npos) return fail(ctx, ": LOOKUP index variable not found.");
    std::vector<int> values;
    const std::string list = trimblanks(arguments.substr(0, close));
    if (list.empty()) return fail(ctx, ": LOOKUP function must have at least one Byte data type constant argument.");
    const Operand x = operandof(ctx, resulttext), index = operandof(ctx, trimblanks(arguments.substr(close + 3)));
    if (x.type == kTypeNone || x.type == kTypeBit)
        return fail(ctx, ": LOOKUP result must be a Byte, Word or Long data type variable.");
    if (index.type == kTypeBit)
        return fail(ctx, ": LOOKUP index must be a Byte, Word or Long data type variable or constant.");
    if (!tablevalues(ctx, list, values)) return false;
    if (values.size() % 2) values.push_back(0);  // the table fills whole words

    const std::string table = newlabel(ctx), equate = newlabel(ctx), done = newlabel(ctx), out = newlabel(ctx);
    if (!loadoperandbyte0(ctx, index, "R16")) return false;
    const int count = static_cast<int>(values.size());
    emitcode(ctx, "CPI R16," + immediate(count));
    if (count < 101) {
        emitcode(ctx, "BRCC " + out);
    } else {
        // The table may lie beyond a conditional branch's reach; a jump can be relaxed.
        emitcode(ctx, "IN R17,SREG");
        emitcode(ctx, "SBRS R17,SREG_C");
        emitcode(ctx, "RJMP " + out);
    }
    emitraw(ctx, ".EQU    " + equate + " = 2*" + table);
    if (ctx.options.compatiblelisting) {
        emitcode(ctx, "LDI ZL,low(" + equate + ")");
        emitcode(ctx, "LDI ZH,high(" + equate + ")");
    } else {
        emitcode(ctx, "LDI ZL,low " + equate);
        emitcode(ctx, "LDI ZH,high " + equate);
    }
    emitcode(ctx, "ADD ZL,R16");
    emitcode(ctx, "ADC ZH,R15");
    emitcode(ctx, "LPM");
    emitcode(ctx, "RJMP " + done);
    emitlabel(ctx, table);
    for (size_t i = 0; i < values.size(); i += 2)
        emitraw(ctx, ".DB     " + immediate(values[i]) + "," + immediate(values[i + 1]));
    emitlabel(ctx, done);
    for (int k = 0; k < bytesoftype(x.type); ++k) storeresultbyte(ctx, k, x.type, x.address, k == 0 ? "R0" : "R15");
    emitlabel(ctx, out);
    return true;
}

}  // namespace velmora
