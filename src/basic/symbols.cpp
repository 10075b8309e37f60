#include "basic/symbols.h"

#include <charconv>

#include "basic/procedures.h"
#include "core/numbers.h"
#include "core/textcase.h"

namespace velmora {

namespace {

const char* const kPairNames[] = {"XL", "XH", "YL", "YH", "ZL", "ZH"};

// The value of a text that is the plain decimal form of a number from 0 to `limit`, or -1.
int plaindecimal(const std::string& text, int limit) {
    if (text.empty() || text.size() > 6 || (text.size() > 1 && text[0] == '0')) return -1;
    int value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec != std::errc() || end != text.data() + text.size() || value > limit) return -1;
    return value;
}

struct Resolved {
    int type = kTypeNone;
    int32_t address = 0;
};

Resolved resolveelement(const CompileContext& ctx, const std::string& text) {
    const size_t open = text.find('(');
    if (text.back() != ')' || open == std::string::npos || open == 0) return {};
    const SymbolEntry* array = findsymbol(ctx, text.substr(0, open));
    if (!array || (array->type != kTypeByte && array->type != kTypeWord)) return {};
    const std::string index = text.substr(open + 1, text.size() - open - 2);
    const int element = plaindecimal(index, 255);
    if (element >= 0)
        return {array->type, array->address + (array->type == kTypeWord ? 2 * element : element)};
    const SymbolEntry* variable = findsymbol(ctx, index);
    if (!variable || (variable->type != kTypeByte && variable->type != kTypeWord)) return {};
    return {array->type == kTypeByte ? kTypeByteIndexed : kTypeWordIndexed, array->address * 10000 + variable->address};
}

Resolved resolvesuffix(const CompileContext& ctx, const std::string& text, size_t point) {
    const SymbolEntry* base = findsymbol(ctx, text.substr(0, point));
    if (!base) return {};
    std::string suffix = text.substr(point + 1);
    if (base->type == kTypeByte) {
        for (const BasicBitName& bit : ctx.bitnames) {
            if (bit.name != suffix) continue;
            if (bit.owner == base->name || ctx.options.allowarbitrarybitnames) {
                suffix = std::to_string(bit.bit);
                break;
            }
        }
    }
    if (base->type == kTypeLong && (suffix == "HW" || suffix == "LW"))
        return {kTypeWord, base->address + (suffix == "HW" ? 2 : 0)};
    if ((base->type == kTypeLong || base->type == kTypeWord) && (suffix == "HB" || suffix == "LB"))
        return {kTypeByte, base->address + (suffix == "HB" ? 1 : 0)};
    if (base->type == kTypeWord) {
        const int bit = plaindecimal(suffix, 15);
        if (bit < 0) return {};
        return {kTypeBit, bit < 8 ? base->address * 100 + bit : (base->address + 1) * 100 + bit - 8};
    }
    if (base->type == kTypeByte) {
        const int bit = plaindecimal(suffix, 7);
        if (bit < 0) return {};
        return {kTypeBit, base->address * 100 + bit};
    }
    return {};
}

Resolved resolve(const CompileContext& ctx, const std::string& given) {
    if (ctx.symbols.empty() || given.empty()) return {};
    const std::string text = translatename(ctx, given);
    if (text.find_first_of("()") != std::string::npos) return resolveelement(ctx, text);
    const size_t point = text.find('.');
    if (point == std::string::npos) {
        const SymbolEntry* entry = findsymbol(ctx, text);
        return entry ? Resolved{entry->type, entry->address} : Resolved{};
    }
    return resolvesuffix(ctx, text, point);
}

void replaceconstants(const CompileContext& ctx, std::string& text) {
    for (const ConstantEntry& constant : ctx.constants)
        if (text == constant.name) text = constant.value;
}

bool argumentfailure(CompileContext& ctx, const std::string& text, const char* type) {
    return fail(ctx, ": Argument '" + text + "' is not a valid " + type + " type constant.");
}

bool constantrange(CompileContext& ctx, std::string& text, int limit, const char* type) {
    std::string value = text;
    replaceconstants(ctx, value);
    const int number = parsenumber16(value);
    if (number == kNotANumber16 || number < 0 || number > limit) return argumentfailure(ctx, text, type);
    text = std::to_string(number);
    return true;
}

}  // namespace

void loadsystemsymbols(CompileContext& ctx) {
    ctx.symbols.clear();
    ctx.bitnames = ctx.model->bitnames;
    for (const BasicRegisterName& reg : ctx.model->registers) {
        ctx.symbols.push_back({reg.name, reg.address, kTypeByte});
        if (reg.name.size() != 5 || !reg.name.starts_with("PORT") || reg.name[4] < 'A' || reg.name[4] > 'G') continue;
        const std::string alias = std::string("P") + reg.name[4];
        ctx.symbols.push_back({alias, reg.address, kTypeByte});
        for (int bit = 0; bit < 8; ++bit)
            ctx.symbols.push_back({alias + std::to_string(bit), reg.address * 100 + bit, kTypeBit});
    }
    for (int r = 0; r < 32; ++r) ctx.symbols.push_back({"R" + std::to_string(r), r, kTypeByte});
    for (int i = 0; i < 6; ++i) ctx.symbols.push_back({kPairNames[i], 26 + i, kTypeByte});
}

const SymbolEntry* findsymbol(const CompileContext& ctx, const std::string& name) {
    for (const SymbolEntry& entry : ctx.symbols)
        if (entry.name == name) return &entry;
    return nullptr;
}

int symboltype(const CompileContext& ctx, const std::string& text) { return resolve(ctx, text).type; }

int32_t symboladdress(const CompileContext& ctx, const std::string& text) { return resolve(ctx, text).address; }

bool validname(const std::string& text) {
    if (text.empty()) return false;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool letter = (c >= 'a' && c <= 'z') || c == '_';
        if (!letter && !(i > 0 && c >= '0' && c <= '9')) return false;
    }
    return true;
}

bool constantbit(CompileContext& ctx, std::string& text) {
    std::string value = text;
    replaceconstants(ctx, value);
    const std::string upper = uppercase(value);
    if (upper == "0" || upper == "FALSE") {
        text = "0";
        return true;
    }
    if (upper == "1" || upper == "TRUE") {
        text = "1";
        return true;
    }
    return argumentfailure(ctx, text, "Bit");
}

bool constantbyte(CompileContext& ctx, std::string& text) { return constantrange(ctx, text, 255, "Byte"); }

bool constantword(CompileContext& ctx, std::string& text) { return constantrange(ctx, text, 65535, "Word"); }

bool constantlong(CompileContext& ctx, std::string& text) {
    std::string value = text;
    replaceconstants(ctx, value);
    const double number = parsenumber32(value);
    if (number < 0 || number > 4294967295.0) return argumentfailure(ctx, text, "Long");
    text = std::to_string(static_cast<uint64_t>(number));
    return true;
}

bool isport(CompileContext& ctx, int32_t address) {
    for (const BasicRegisterName& reg : ctx.model->registers) {
        if (reg.address != address || reg.name.size() != 5 || !reg.name.starts_with("PORT")) continue;
        const char letter = reg.name[4];
        if (letter >= 'A' && letter <= 'E') return true;
        if (letter == 'F' || letter == 'G') {
            ctx.warnings.push_back(
                "PORT registers mapped in the extended I/O space can not be used\n"
                "in high-level basic statements in this version of basic compiler.");
            return false;
        }
    }
    return false;
}

std::string portletter(const CompileContext& ctx, int32_t address) {
    for (const BasicRegisterName& reg : ctx.model->registers)
        if (reg.address == address && reg.name.size() == 5 && reg.name.starts_with("PORT") && reg.name[4] >= 'A' &&
            reg.name[4] <= 'G')
            return std::string(1, reg.name[4]);
    return "X";
}

}  // namespace velmora
