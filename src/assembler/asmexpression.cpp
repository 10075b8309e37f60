#include "assembler/asmexpression.h"

#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "assembler/asmtext.h"
#include "core/numbers.h"

namespace velmora {

namespace {

// One side of an operation: a symbol first, then a number.
int32_t operandvalue(const AsmContext& ctx, std::string_view text) {
    if (const int index = asmlookup(ctx, text)) return asmsymbolvalue(ctx, index);
    return parsenumber16(text);
}

// Quotient rounded to the nearest integer, halves to the even neighbour.
int64_t roundeddivision(int64_t left, int64_t right) {
    const double quotient = static_cast<double>(left) / static_cast<double>(right);
    const double lower = std::floor(quotient);
    const double fraction = quotient - lower;
    if (fraction > 0.5) return static_cast<int64_t>(lower) + 1;
    if (fraction < 0.5) return static_cast<int64_t>(lower);
    return std::fmod(lower, 2.0) == 0 ? static_cast<int64_t>(lower) : static_cast<int64_t>(lower) + 1;
}

std::optional<int64_t> operate(char op, int64_t left, int64_t right) {
    switch (op) {
        case '+': return left + right;
        case '-': return left - right;
        case '*': return left * right;
        default:
            if (right == 0) return std::nullopt;
            return roundeddivision(left, right);
    }
}

// Position of the operator that splits the text, or npos. Each operator counts by its first
// occurrence only, and only inside the text.
size_t splitposition(std::string_view text, char& op) {
    for (char candidate : {'+', '-', '*', '/'}) {
        const size_t at = text.find(candidate);
        if (at != std::string_view::npos && at != 0 && at != text.size() - 1) {
            op = candidate;
            return at;
        }
    }
    return std::string_view::npos;
}

}  // namespace

int32_t asmevalterm(const AsmContext& ctx, std::string_view text) {
    if (const int index = asmlookup(ctx, text)) return asmsymbolvalue(ctx, index);
    if (const int number = parsenumber16(text); number < kNotANumber16) return number;

    std::string term(text);
    if (term.starts_with('-')) term.insert(0, "0");

    std::string left, right;
    char op = '+';
    if (term == "$") {
        left = "$";
        right = "0";
    } else {
        const size_t at = splitposition(term, op);
        if (at == std::string::npos) return kNotANumber16;
        left = asmtrim(std::string_view(term).substr(0, at));
        right = asmtrim(std::string_view(term).substr(at + 1));
    }
    if (left == "$") left = std::to_string(ctx.asmlocation);

    const int32_t a = operandvalue(ctx, left);
    const int32_t b = operandvalue(ctx, right);
    if (a >= kNotANumber16 || b >= kNotANumber16) return kNotANumber16;
    const std::optional<int64_t> result = operate(op, a, b);
    if (!result || *result < std::numeric_limits<int32_t>::min() || *result > std::numeric_limits<int32_t>::max())
        return kNotANumber16;
    return static_cast<int32_t>(*result);
}

int32_t asmevalexpr(const AsmContext& ctx, std::string_view text) {
    enum class Prefix { None, Upper, High, Low } prefix = Prefix::None;
    const std::string lower = lowercase(text.substr(0, 6));
    if (lower.starts_with("upper ")) {
        prefix = Prefix::Upper;
        text.remove_prefix(6);
    } else if (lower.starts_with("high ")) {
        prefix = Prefix::High;
        text.remove_prefix(5);
    } else if (lower.starts_with("low ")) {
        prefix = Prefix::Low;
        text.remove_prefix(4);
    }

    int64_t value = asmevalterm(ctx, text);
    if (value >= kNotANumber16) {
        value = std::llround(parsenumber32(text));
        if (value < 0 || value >= kAsmInvalid) return kAsmInvalid;
    }

    // Whole-number division that rounds down, then a remainder that keeps the dividend's sign,
    // so that a negative value stays negative and fails its range check later.
    auto floordiv = [](int64_t v, int64_t d) { return v >= 0 ? v / d : -((-v + d - 1) / d); };
    switch (prefix) {
        case Prefix::Upper: return static_cast<int32_t>(floordiv(value, 65536) % 256);
        case Prefix::High: return static_cast<int32_t>(floordiv(value, 256) % 256);
        case Prefix::Low: return static_cast<int32_t>(value % 256);
        case Prefix::None: break;
    }
    return static_cast<int32_t>(value);
}

}  // namespace velmora
