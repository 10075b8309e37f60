#include "basic/comparison.h"

#include "basic/assignment.h"
#include "basic/emit.h"
#include "basic/operands.h"
#include "basic/symbols.h"
#include "basic/tokens.h"

namespace velmora {

namespace {

const char* const kOperators[] = {"=", "<>", "<", "<=", ">", ">="};

// b against a (operands swapped) for <= and >, so every test is a carry or zero test.
bool swapped(const std::string& op) { return op == "<=" || op == ">"; }

// The skip instruction behind the flags: it skips the next line when the test holds.
std::string skipline(const std::string& op, const std::string& flags) {
    if (op == "=") return "SBRS " + flags + ",SREG_Z";
    if (op == "<>") return "SBRC " + flags + ",SREG_Z";
    if (op == ">=" || op == "<=") return "SBRC " + flags + ",SREG_C";
    return "SBRS " + flags + ",SREG_C";
}

bool bittest(CompileContext& ctx, const Test& test, const Operand& a, const Operand& b) {
    if (test.op != "=" && test.op != "<>") return fail(ctx, ": Operand not allowed for Bit variables.");
    if (a.type == kTypeBit && b.type == kTypeBit) {
        emitcode(ctx, "CLR R17");
        skipifbitclear(ctx, a.address, "R16");
        emitcode(ctx, "INC R17");
        skipifbitclear(ctx, b.address, "R16");
        emitcode(ctx, "DEC R17");
        // Bit 0 of R17 is set when the two differ: "=" holds when it is clear.
        emitcode(ctx, test.op == "=" ? "SBRC R17,0" : "SBRS R17,0");
        return true;
    }
    const Operand& bit = a.type == kTypeBit ? a : b;
    const Operand& other = a.type == kTypeBit ? b : a;
    if (other.type != kTypeNone) return fail(ctx, ": Invalid test expression.");
    std::string value = other.text;
    if (!constantbit(ctx, value)) return false;
    if ((test.op == "=") == (value == "1"))
        skipifbitset(ctx, bit.address, "R16");
    else
        skipifbitclear(ctx, bit.address, "R16");
    return true;
}

}  // namespace

bool parsetest(CompileContext& ctx, const std::string& text, Test& test) {
    const Tokens t(trimblanks(text));
    bool known = false;
    for (const char* op : kOperators) known = known || t[2] == op;
    if (t.count() != 3 || !known) return fail(ctx, ": Invalid test expression.");
    test = {t[1], t[2], t[3]};
    if (symboltype(ctx, test.a) == kTypeNone && symboltype(ctx, test.b) == kTypeNone)
        return fail(ctx, ": There has to be at least one variable in the test expression.");
    return true;
}

bool comparison(CompileContext& ctx, const std::string& text) {
    Test test;
    if (!parsetest(ctx, text, test)) return false;
    const Operand a = operandof(ctx, test.a), b = operandof(ctx, test.b);
    if (a.type == kTypeBit || b.type == kTypeBit) return bittest(ctx, test, a, b);
    const int wa = widthof(a.type), wb = widthof(b.type);
    const int bytes = wa == kTypeLong || wb == kTypeLong ? 4 : wa == kTypeWord || wb == kTypeWord ? 2 : 1;
    if (!loadoperand(ctx, a, bytes, 16) || !loadoperand(ctx, b, bytes, 16 + (bytes == 1 ? 1 : bytes))) return false;
    if (bytes == 1) {
        if (test.op == "=") {
            emitcode(ctx, "CPSE R16,R17");
            return true;
        }
        emitcode(ctx, swapped(test.op) ? "CP R17,R16" : "CP R16,R17");
        emitcode(ctx, "IN R18,SREG");
        emitcode(ctx, skipline(test.op, "R18"));
        return true;
    }
    const int second = 16 + bytes;
    for (int k = 0; k < bytes; ++k) {
        const int left = swapped(test.op) ? second + k : 16 + k, right = swapped(test.op) ? 16 + k : second + k;
        emitcode(ctx, std::string(k == 0 ? "CP R" : "CPC R") + std::to_string(left) + ",R" + std::to_string(right));
    }
    const std::string flags = "R" + std::to_string(second + bytes);
    emitcode(ctx, "IN " + flags + ",SREG");
    emitcode(ctx, skipline(test.op, flags));
    return true;
}

std::vector<std::string> splittests(const std::string& condition, const std::string& joiner) {
    std::vector<std::string> tests;
    const std::string separator = " " + joiner + " ";
    size_t start = 0;
    for (size_t at = condition.find(separator); at != std::string::npos; at = condition.find(separator, start)) {
        tests.push_back(condition.substr(start, at - start));
        start = at + separator.size();
    }
    tests.push_back(condition.substr(start));
    return tests;
}

}  // namespace velmora
