#include "basic/expression.h"

#include <algorithm>

#include "basic/arithmetic.h"
#include "basic/assignment.h"
#include "basic/operands.h"
#include "basic/symbols.h"
#include "basic/tokens.h"

namespace velmora {

namespace {

constexpr int kMaxOperands = 9;

bool isoperator(char c) { return c == '+' || c == '-' || c == '*' || c == '/' || c == '%'; }

// The row's right side as single characters: operand digits 1..9, operators and brackets.
bool encode(CompileContext& ctx, const Tokens& t, std::string& shape, std::vector<std::string>& operands) {
    for (int i = 3; i <= t.count(); ++i) {
        std::string token = t[i] == "Mod" ? "%" : t[i];
        if (token.size() == 1 && isoperator(token[0])) {
            shape += token;
            continue;
        }
        while (token.starts_with("(")) {
            shape += '(';
            token.erase(0, 1);
        }
        // An operand keeps the closing bracket of its own element index.
        int closing = 0;
        while (token.ends_with(")") && std::count(token.begin(), token.end(), '(') < std::count(token.begin(), token.end(), ')')) {
            token.pop_back();
            ++closing;
        }
        if (token.empty()) return fail(ctx, ": Bad expression: improper use of brackets.");
        if (static_cast<int>(operands.size()) == kMaxOperands) return fail(ctx, ": Too many arguments.");
        operands.push_back(token);
        shape += static_cast<char>('0' + operands.size());
        shape.append(static_cast<size_t>(closing), ')');
    }
    return true;
}

bool bracketsbalance(const std::string& shape) {
    int depth = 0;
    for (size_t i = 0; i < shape.size(); ++i) {
        if (shape[i] == '(') ++depth;
        if (shape[i] == ')' && (--depth < 0 || (i > 0 && shape[i - 1] == '('))) return false;
    }
    return depth == 0;
}

// Operators by precedence: * / % bind tighter than + -; equal ones go left to right.
bool topostfix(CompileContext& ctx, const std::string& shape, std::string& postfix) {
    std::string stack;
    for (char c : shape) {
        if (c >= '1' && c <= '9') {
            postfix += c;
        } else if (c == '(') {
            stack += c;
        } else if (c == ')') {
            while (!stack.empty() && stack.back() != '(') {
                postfix += stack.back();
                stack.pop_back();
            }
            if (stack.empty()) return fail(ctx, ": Bad expression.");
            stack.pop_back();
        } else {
            const bool additive = c == '+' || c == '-';
            while (!stack.empty() && stack.back() != '(' &&
                   (additive || (stack.back() != '+' && stack.back() != '-'))) {
                postfix += stack.back();
                stack.pop_back();
            }
            stack += c;
        }
    }
    while (!stack.empty()) {
        postfix += stack.back();
        stack.pop_back();
    }
    return true;
}

std::string operatortext(char c) {
    if (c == '%') return "Mod";
    return std::string(1, c);
}

}  // namespace

bool expression(CompileContext& ctx, const std::string& row) {
    const Tokens t(row);
    std::string shape;
    std::vector<std::string> operands;
    if (!encode(ctx, t, shape, operands)) return false;
    if (!bracketsbalance(shape)) return fail(ctx, ": Bad expression: improper use of brackets.");
    std::string postfix;
    if (!topostfix(ctx, shape, postfix)) return false;

    const Operand result = operandof(ctx, t[1]);
    if (result.type == kTypeNone || result.type == kTypeBit)
        return fail(ctx, ": The result of arithmetic operation must be a valid variable.");
    const int width = result.type == kTypeLong ? kTypeLong : kTypeWord;
    const bool resultworks = (result.type == kTypeWord || result.type == kTypeLong) &&
                             std::find(operands.begin(), operands.end(), t[1]) == operands.end();

    std::vector<std::string> stack;
    for (char c : postfix) {
        if (c >= '1' && c <= '9') {
            stack.push_back(operands[static_cast<size_t>(c - '1')]);
            continue;
        }
        if (stack.size() < 2) return fail(ctx, ": Bad expression.");
        const std::string b = stack.back();
        stack.pop_back();
        const std::string a = stack.back();
        stack.pop_back();
        std::string place;
        if (resultworks && std::find(stack.begin(), stack.end(), t[1]) == stack.end()) place = t[1];
        if (place.empty()) place = temporary(ctx, width, stack);
        if (place.empty() || !arithmetic(ctx, place, a, operatortext(c), b)) return false;
        stack.push_back(place);
    }
    if (stack.size() != 1) return fail(ctx, ": Bad expression.");
    return stack.back() == t[1] || assign(ctx, t[1], stack.back());
}

}  // namespace velmora
