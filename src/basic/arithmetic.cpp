#include "basic/arithmetic.h"

#include <algorithm>

#include "basic/assignment.h"
#include "basic/declarations.h"
#include "basic/emit.h"
#include "basic/operands.h"
#include "basic/routines.h"

namespace velmora {

namespace {

int bytesof(int width) { return width == kTypeLong ? 4 : width == kTypeWord ? 2 : 1; }

const char* typeword(int width) { return width == kTypeLong ? "Long" : width == kTypeWord ? "Word" : "Byte"; }

std::string r(int n) { return "R" + std::to_string(n); }

bool inregisters(const Operand& op, int type) { return op.type == type && op.address >= 0 && op.address + bytesof(type) <= 32; }

bool isconstantone(const CompileContext& ctx, const Operand& op) {
    return op.type == kTypeNone && constantvalue(ctx, op.text) == 1;
}

// x = x + b, x = a + x and the rest straight on registers, when all three are Byte (or all
// Word) register variables and the operator is + or -.
bool registerform(CompileContext& ctx, const Operand& x, const Operand& a, const std::string& op, const Operand& b) {
    const int type = x.type;
    if ((op != "+" && op != "-") || (type != kTypeByte && type != kTypeWord)) return false;
    if (!inregisters(x, type) || !inregisters(a, type) || !inregisters(b, type)) return false;
    const bool add = op == "+";
    const Operand* other = &b;
    if (x.address == b.address && add) {
        other = &a;
    } else if (x.address != a.address) {
        for (int k = 0; k < bytesof(type); ++k) emitcode(ctx, "MOV " + r(x.address + k) + "," + r(a.address + k));
    }
    for (int k = 0; k < bytesof(type); ++k)
        emitcode(ctx, std::string(k == 0 ? (add ? "ADD " : "SUB ") : (add ? "ADC " : "SBC ")) + r(x.address + k) + "," +
                          r(other->address + k));
    return true;
}

// The operation on R16.. and the second operand, at `width`; the result is left in R16..
bool addsubtract(CompileContext& ctx, int width, const Operand& a, bool add, const Operand& b) {
    const int bytes = bytesof(width);
    if (!loadoperand(ctx, a, bytes, 16)) return false;
    if (width == kTypeByte && isconstantone(ctx, b)) {
        emitcode(ctx, add ? "INC R16" : "DEC R16");
        return true;
    }
    if (width == kTypeWord && add && isconstantone(ctx, b)) {
        const std::string carried = newlabel(ctx);
        emitcode(ctx, "INC R16");
        emitcode(ctx, "BRNE " + carried);
        emitcode(ctx, "INC R17");
        emitlabel(ctx, carried);
        return true;
    }
    int second = width == kTypeByte ? 17 : 16 + bytes;
    if (width != kTypeLong && inregisters(b, width)) {
        second = b.address;
    } else if (!loadoperand(ctx, b, bytes, second)) {
        return false;
    }
    for (int k = 0; k < bytes; ++k)
        emitcode(ctx, std::string(k == 0 ? (add ? "ADD " : "SUB ") : (add ? "ADC " : "SBC ")) + r(16 + k) + "," +
                          r(second + k));
    return true;
}

// * / and Mod through the routines; the register where the result starts.
int muldiv(CompileContext& ctx, int width, const Operand& a, const std::string& op, const Operand& b, bool& ok) {
    if (width == kTypeLong) {
        ok = loadoperand(ctx, a, 4, 16) && loadoperand(ctx, b, 4, 20);
        if (!ok) return 16;
        if (op == "*") {
            requestroutine(ctx, kRoutineMultiplyLong);
            emitcode(ctx, "RCALL LM01");
            return 20;
        }
        requestroutine(ctx, kRoutineDivideLong);
        emitcode(ctx, "RCALL LD01");
        return op == "/" ? 16 : 24;
    }
    ok = loadoperand(ctx, a, 2, 16) && loadoperand(ctx, b, 2, 18);
    if (!ok) return 16;
    if (op == "*") {
        requestroutine(ctx, kRoutineMultiply);
        emitcode(ctx, "RCALL M001");
        return 18;
    }
    requestroutine(ctx, kRoutineDivide);
    emitcode(ctx, "RCALL D001");
    return op == "/" ? 16 : 20;
}

int widest(int a, int b, int c) {
    int width = kTypeByte;
    for (int type : {widthof(a), widthof(b), widthof(c)})
        if (type == kTypeLong || (type == kTypeWord && width != kTypeLong)) width = type;
    return width;
}

// The byte that holds a Bit into `reg`.
void loadbitbyte(CompileContext& ctx, int32_t bit, const std::string& reg) {
    const int32_t byte = bit / 100;
    loadoperandbyte0(ctx, {kTypeByte, "", byte}, reg);
}

const char* logicmnemonic(const std::string& op) {
    if (op == "And" || op == "Nand") return "AND ";
    if (op == "Xor" || op == "Nxor") return "EOR ";
    return "OR ";
}

bool negated(const std::string& op) { return op == "Nor" || op == "Nand" || op == "Nxor"; }

}  // namespace

std::string temporary(CompileContext& ctx, int type, const std::vector<std::string>& busy) {
    for (const SymbolEntry& temp : ctx.temporaries)
        if (temp.type == type && std::find(busy.begin(), busy.end(), temp.name) == busy.end()) return temp.name;
    const std::string name = "brindlewood_temp_" + std::to_string(ctx.temporaries.size() + 1);
    if (!declarevariable(ctx, name, typeword(type))) return "";
    ctx.temporaries.push_back({name, 0, type});
    return name;
}

bool arithmetic(CompileContext& ctx, const std::string& resulttext, const std::string& atext, const std::string& op,
                const std::string& btext) {
    const Operand x = operandof(ctx, resulttext), a = operandof(ctx, atext), b = operandof(ctx, btext);
    if (x.type == kTypeBit || a.type == kTypeBit || b.type == kTypeBit)
        return fail(ctx, ": Bit variables can not be used for arithmetic operations.");
    if (x.type == kTypeNone) return fail(ctx, ": The result of arithmetic operation must be a valid variable.");
    if (registerform(ctx, x, a, op, b)) return true;

    const int width = widest(x.type, a.type, b.type);
    if (width != widthof(x.type)) {
        const std::string temp = temporary(ctx, width);
        return !temp.empty() && arithmetic(ctx, temp, atext, op, btext) && assign(ctx, resulttext, temp);
    }
    int first = 16;
    bool ok = true;
    if (op == "+" || op == "-")
        ok = addsubtract(ctx, width, a, op == "+", b);
    else
        first = muldiv(ctx, width, a, op, b, ok);
    if (!ok) return false;
    storeresult(ctx, x.type, x.address, bytesof(width), first);
    return true;
}

bool logic(CompileContext& ctx, const std::string& resulttext, const std::string& atext, const std::string& op,
           const std::string& btext) {
    const Operand x = operandof(ctx, resulttext), a = operandof(ctx, atext), b = operandof(ctx, btext);
    if (x.type == kTypeNone) return fail(ctx, ": The result of operation must be a variable.");
    if (x.type == kTypeBit) {
        if (a.type != kTypeBit || b.type != kTypeBit) return fail(ctx, ": The arguments must also be Bit variables.");
        loadbitbyte(ctx, a.address, "R18");
        loadbitbyte(ctx, b.address, "R19");
        emitcode(ctx, "CLR R16");
        emitcode(ctx, "CLR R17");
        emitcode(ctx, "SBRC R18," + std::to_string(a.address % 100));
        emitcode(ctx, "SER R16");
        emitcode(ctx, "SBRC R19," + std::to_string(b.address % 100));
        emitcode(ctx, "SER R17");
        emitcode(ctx, std::string(logicmnemonic(op)) + "R16,R17");
        if (negated(op)) emitcode(ctx, "COM R16");
        emitcode(ctx, "BST R16,0");
        copybit(ctx, x.address, "R16");
        return true;
    }
    if (a.type == kTypeBit || b.type == kTypeBit)
        return fail(ctx, std::string(": Bit variable can not be used as argument if the result is ") +
                             typeword(widthof(x.type)) + " variable.");
    const int bytes = bytesof(widthof(x.type));
    const int second = bytes == 1 ? 17 : 16 + bytes;
    if (!loadoperand(ctx, a, bytes, 16) || !loadoperand(ctx, b, bytes, second)) return false;
    for (int k = 0; k < bytes; ++k) emitcode(ctx, logicmnemonic(op) + r(16 + k) + "," + r(second + k));
    if (negated(op))
        for (int k = 0; k < bytes; ++k) emitcode(ctx, "COM " + r(16 + k));
    storeresult(ctx, x.type, x.address, bytes, 16);
    return true;
}

bool notstatement(CompileContext& ctx, const std::string& resulttext, const std::string& sourcetext) {
    const Operand x = operandof(ctx, resulttext), y = operandof(ctx, sourcetext);
    if (x.type == kTypeNone) return fail(ctx, ": The result of operation must be a variable.");
    if (x.type == kTypeBit) {
        if (y.type != kTypeBit) return fail(ctx, ": The argument must also be a Bit variable.");
        loadbitinverted(ctx, y.address, "R16");
        copybit(ctx, x.address, "R16");
        return true;
    }
    if (y.type == kTypeBit)
        return fail(ctx, std::string(": Bit variable can not be used as argument if the result is ") +
                             typeword(widthof(x.type)) + " variable.");
    const int bytes = bytesof(widthof(x.type));
    if (!loadoperand(ctx, y, bytes, 16)) return false;
    for (int k = 0; k < bytes; ++k) emitcode(ctx, "COM " + r(16 + k));
    storeresult(ctx, x.type, x.address, bytes, 16);
    return true;
}

bool shiftstatement(CompileContext& ctx, const std::string& resulttext, bool left, const std::string& atext,
                    const std::string& counttext) {
    const Operand x = operandof(ctx, resulttext), a = operandof(ctx, atext), n = operandof(ctx, counttext);
    if (x.type == kTypeBit || a.type == kTypeBit || n.type == kTypeBit)
        return fail(ctx, ": Bit variables can not be used here.");
    if (x.type == kTypeNone) return fail(ctx, ": The result of operation must be a variable.");
    const bool islong = x.type == kTypeLong;
    if (islong != (a.type == kTypeLong)) return fail(ctx, ": Argument and result must be of the same data type.");
    const int bytes = islong ? 4 : 2;
    if (!loadoperand(ctx, a, bytes, 16) || !loadoperandbyte0(ctx, n, islong ? "R20" : "R18")) return false;
    if (islong) {
        requestroutine(ctx, left ? kRoutineShiftLeftLong : kRoutineShiftRightLong);
        emitcode(ctx, left ? "RCALL SLX0" : "RCALL SRX0");
    } else {
        requestroutine(ctx, left ? kRoutineShiftLeft : kRoutineShiftRight);
        emitcode(ctx, left ? "RCALL SL00" : "RCALL SR00");
    }
    storeresult(ctx, x.type, x.address, bytesoftype(x.type), 16);
    return true;
}

bool sqrstatement(CompileContext& ctx, const std::string& resulttext, const std::string& argument) {
    const Operand x = operandof(ctx, resulttext), a = operandof(ctx, argument);
    if (widthof(x.type) != kTypeByte && widthof(x.type) != kTypeWord)
        return fail(ctx, ": The result must be Byte or Word variable.");
    if (a.type != kTypeNone && widthof(a.type) != kTypeByte && widthof(a.type) != kTypeWord)
        return fail(ctx, ": Invalid argument.");
    if (!loadoperand(ctx, a, 2, 16)) return false;
    requestroutine(ctx, kRoutineSquareRoot);
    emitcode(ctx, "RCALL S001");
    storeresultbyte0(ctx, x.type, x.address, "R16");
    storeresultbyte1(ctx, x.type, x.address, "R15");
    return true;
}

}  // namespace velmora
