#include "basic/assignment.h"

#include "basic/emit.h"
#include "basic/operands.h"
#include "basic/symbols.h"

namespace velmora {

namespace {

int bytesof(int width) { return width == kTypeLong ? 4 : width == kTypeWord ? 2 : 1; }

const char* familyname(int type) {
    switch (widthof(type)) {
    case kTypeWord: return "Word";
    case kTypeLong: return "Long";
    default: return "Byte";
    }
}

bool inregister(const Operand& op) { return op.address >= 0 && op.address < 32; }

// Byte k of the source through R16 into byte k of the result.
bool copybyte(CompileContext& ctx, const Operand& result, const Operand& source, int k) {
    if (k == 0 && !loadoperandword0(ctx, source, "R16")) return false;
    loadoperandupper(ctx, k, source, "R16");
    storeresultbyte(ctx, k, result.type, result.address, "R16");
    return true;
}

// A constant: the bytes that are not zero through R16 (or straight by LDI into a high
// register), zero bytes from R15.
bool assignconstant(CompileContext& ctx, const Operand& result, const Operand& source) {
    const int width = widthof(result.type);
    std::string text = source.text;
    const bool valid = width == kTypeByte   ? constantbyte(ctx, text)
                       : width == kTypeWord ? constantword(ctx, text)
                                            : constantlong(ctx, text);
    if (!valid) return false;
    const int64_t value = std::stoll(text);
    const bool highregisters = (result.type == kTypeByte || result.type == kTypeWord) && result.address >= 16 &&
                               result.address + bytesof(width) <= 32;
    if (highregisters) {
        for (int k = 0; k < bytesof(width); ++k)
            emitcode(ctx, "LDI R" + std::to_string(result.address + k) + "," + immediate(value >> (8 * k)));
        return true;
    }
    // The bytes that the value's size needs go through R16, the rest are zero.
    const int loaded = value == 0 ? 0 : value <= 255 ? 1 : value <= 65535 ? 2 : 4;
    for (int k = 0; k < bytesof(width); ++k) {
        if (k < loaded) {
            emitcode(ctx, "LDI R16," + immediate(value >> (8 * k)));
            storeresultbyte(ctx, k, result.type, result.address, "R16");
        } else {
            storeresultbyte(ctx, k, result.type, result.address, "R15");
        }
    }
    return true;
}

bool assignbit(CompileContext& ctx, const Operand& result, const Operand& source) {
    if (source.type == kTypeNone) {
        // True, False and any number: what is not 0 sets the bit.
        std::string text = source.text;
        const int64_t value = constantvalue(ctx, text);
        if (value < 0 && !constantbit(ctx, text)) return false;
        if (value == 0 || text == "0")
            clearbit(ctx, result.address, "R16");
        else
            setbit(ctx, result.address, "R16");
        return true;
    }
    if (source.type != kTypeBit)
        return fail(ctx, std::string(": ") + familyname(source.type) + " variable can not be assigned to Bit variable.");
    loadbit(ctx, source.address, "R16");
    copybit(ctx, result.address, "R16");
    return true;
}

}  // namespace

int widthof(int type) {
    if (type == kTypeByteIndexed) return kTypeByte;
    if (type == kTypeWordIndexed) return kTypeWord;
    return type;
}

bool assign(CompileContext& ctx, const std::string& resulttext, const std::string& sourcetext) {
    const Operand result = operandof(ctx, resulttext);
    const Operand source = operandof(ctx, sourcetext);
    if (result.type == kTypeNone) return fail(ctx, ": Incorrect argument.");
    if (result.type == kTypeBit) return assignbit(ctx, result, source);
    if (source.type == kTypeBit)
        return fail(ctx, std::string(": Bit variable can not be assigned to ") + familyname(result.type) + " variable.");
    if (source.type == kTypeNone) return assignconstant(ctx, result, source);

    const bool sametype = result.type == source.type && (result.type == kTypeByte || result.type == kTypeWord);
    if (sametype && inregister(result) && inregister(source)) {
        for (int k = 0; k < bytesof(result.type); ++k)
            emitcode(ctx, "MOV R" + std::to_string(result.address + k) + ",R" + std::to_string(source.address + k));
        return true;
    }
    const int copied = std::min(bytesof(widthof(result.type)), bytesof(widthof(source.type)));
    for (int k = 0; k < bytesof(widthof(result.type)); ++k) {
        if (k < copied) {
            if (!copybyte(ctx, result, source, k)) return false;
        } else {
            storeresultbyte(ctx, k, result.type, result.address, "R15");
        }
    }
    return true;
}

}  // namespace velmora
