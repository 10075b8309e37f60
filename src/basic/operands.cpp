#include "basic/operands.h"

#include "basic/emit.h"
#include "basic/symbols.h"
#include "core/hextext.h"
#include "core/numbers.h"

namespace velmora {

namespace {

std::string reg(int32_t address) { return "R" + std::to_string(address); }

bool inregisters(int32_t address) { return address >= 0 && address < 32; }
bool inio(int32_t address) { return address >= 32 && address < 96; }

int constantbyte(const CompileContext& ctx, const Operand& op, int index) {
    const int64_t value = constantvalue(ctx, op.text);
    return value < 0 ? 0 : static_cast<int>((value >> (8 * index)) & 0xFF);
}

// The pointer set to an element: base, plus the index variable once or, for Words, twice.
void elementpointer(CompileContext& ctx, const Operand& op, char pointer) {
    const int32_t base = op.address / 10000, index = op.address % 10000;
    const std::string low = std::string(1, pointer) + "L", high = std::string(1, pointer) + "H";
    emitcode(ctx, "LDI " + low + "," + immediate(base & 0xFF));
    emitcode(ctx, "LDI " + high + "," + immediate((base >> 8) & 0xFF));
    emitcode(ctx, "LDS R14," + addresstext(index));
    for (int times = op.type == kTypeWordIndexed ? 2 : 1; times > 0; --times) {
        emitcode(ctx, "ADD " + low + ",R14");
        emitcode(ctx, "ADC " + high + ",R15");
    }
}

// A location of a Word or Long beyond byte 0: a register or SRAM.
void loadlocation(CompileContext& ctx, int32_t address, const std::string& r) {
    emitcode(ctx, inregisters(address) ? "MOV " + r + "," + reg(address) : "LDS " + r + "," + addresstext(address));
}

void storelocation(CompileContext& ctx, int32_t address, const std::string& r) {
    emitcode(ctx, inregisters(address) ? "MOV " + reg(address) + "," + r : "STS " + addresstext(address) + "," + r);
}

void loadbyte0(CompileContext& ctx, const Operand& op, const std::string& r, int constant) {
    switch (op.type) {
    case kTypeNone:
        emitcode(ctx, "LDI " + r + "," + immediate(constant));
        return;
    case kTypeByte:
        if (inio(op.address)) {
            emitcode(ctx, "IN " + r + "," + addresstext(op.address - 32));
            return;
        }
        [[fallthrough]];
    case kTypeWord:
    case kTypeLong:
        loadlocation(ctx, op.address, r);
        return;
    case kTypeByteIndexed:
    case kTypeWordIndexed:
        elementpointer(ctx, op, 'X');
        emitcode(ctx, "LD " + r + (op.type == kTypeWordIndexed ? ",X+" : ",X"));
        return;
    default:
        return;
    }
}

// The byte address, bit and bit mask of a Bit address.
struct BitPlace {
    int32_t byte;
    int bit;
};

BitPlace place(int32_t address) { return {address / 100, static_cast<int>(address % 100)}; }

std::string bitoperand(const BitPlace& p) { return "," + std::to_string(p.bit); }

// Reads the bit's byte into the scratch register, for bits no single instruction reaches.
void readbyte(CompileContext& ctx, const BitPlace& p, const std::string& scratch) {
    emitcode(ctx, inio(p.byte) ? "IN " + scratch + "," + addresstext(p.byte - 32)
                               : "LDS " + scratch + "," + addresstext(p.byte));
}

void writebyte(CompileContext& ctx, const BitPlace& p, const std::string& scratch) {
    emitcode(ctx, inio(p.byte) ? "OUT " + addresstext(p.byte - 32) + "," + scratch
                               : "STS " + addresstext(p.byte) + "," + scratch);
}

// SBI, CBI, SBIS and SBIC reach the first 32 I/O addresses only.
bool lowio(int32_t byte) { return byte >= 32 && byte < 64; }

void setorclear(CompileContext& ctx, int32_t address, const std::string& scratch, bool set) {
    const BitPlace p = place(address);
    if (inregisters(p.byte) && p.byte >= 16) {
        emitcode(ctx, std::string(set ? "SBR " : "CBR ") + reg(p.byte) + "," + std::to_string(1 << p.bit));
    } else if (lowio(p.byte)) {
        emitcode(ctx, std::string(set ? "SBI " : "CBI ") + addresstext(p.byte - 32) + bitoperand(p));
    } else {
        emitcode(ctx, set ? "SET" : "CLT");
        copybit(ctx, address, scratch);
    }
}

void skipif(CompileContext& ctx, int32_t address, const std::string& scratch, bool set) {
    const BitPlace p = place(address);
    const char* onregister = set ? "SBRS " : "SBRC ";
    if (inregisters(p.byte)) {
        emitcode(ctx, onregister + reg(p.byte) + bitoperand(p));
    } else if (lowio(p.byte)) {
        emitcode(ctx, std::string(set ? "SBIS " : "SBIC ") + addresstext(p.byte - 32) + bitoperand(p));
    } else {
        readbyte(ctx, p, scratch);
        emitcode(ctx, onregister + scratch + bitoperand(p));
    }
}

}  // namespace

std::string immediate(int64_t value) { return "0x" + hexdigits(static_cast<uint32_t>(value & 0xFF), 2); }

std::string addresstext(int64_t value) { return "0x" + hexdigits(static_cast<uint32_t>(value), 1); }

Operand operandof(const CompileContext& ctx, const std::string& text) {
    return {symboltype(ctx, text), text, symboladdress(ctx, text)};
}

int64_t constantvalue(const CompileContext& ctx, const std::string& text) {
    std::string value = text;
    for (const ConstantEntry& constant : ctx.constants)
        if (value == constant.name) value = constant.value;
    const double number = parsenumber32(value);
    if (number < 0) {
        const int character = parsenumber16(value);  // 'A' and the other character forms
        return character == kNotANumber16 ? -1 : character;
    }
    return static_cast<int64_t>(number);
}

bool loadoperandbyte0(CompileContext& ctx, const Operand& op, const std::string& r) {
    std::string text = op.text;
    if (op.type == kTypeNone && !velmora::constantbyte(ctx, text)) return false;
    loadbyte0(ctx, op, r, op.type == kTypeNone ? std::stoi(text) : 0);
    return true;
}

bool loadoperandword0(CompileContext& ctx, const Operand& op, const std::string& r) {
    std::string text = op.text;
    if (op.type == kTypeNone && !constantlong(ctx, text)) return false;
    loadbyte0(ctx, op, r, op.type == kTypeNone ? constantbyte(ctx, op, 0) : 0);
    return true;
}

void loadoperandbyte1(CompileContext& ctx, const Operand& op, const std::string& r) {
    switch (op.type) {
    case kTypeNone:
        emitcode(ctx, "LDI " + r + "," + immediate(constantbyte(ctx, op, 1)));
        return;
    case kTypeWord:
    case kTypeLong:
        loadlocation(ctx, op.address + 1, r);
        return;
    case kTypeWordIndexed:
        emitcode(ctx, "LD " + r + ",X");
        return;
    default:
        emitcode(ctx, "MOV " + r + ",R15");
        return;
    }
}

void loadoperandbyte2(CompileContext& ctx, const Operand& op, const std::string& r) {
    if (op.type == kTypeNone)
        emitcode(ctx, "LDI " + r + "," + immediate(constantbyte(ctx, op, 2)));
    else if (op.type == kTypeLong)
        emitcode(ctx, "LDS " + r + "," + addresstext(op.address + 2));
    else
        emitcode(ctx, "MOV " + r + ",R15");
}

void loadoperandbyte3(CompileContext& ctx, const Operand& op, const std::string& r) {
    if (op.type == kTypeNone)
        emitcode(ctx, "LDI " + r + "," + immediate(constantbyte(ctx, op, 3)));
    else if (op.type == kTypeLong)
        emitcode(ctx, "LDS " + r + "," + addresstext(op.address + 3));
    else
        emitcode(ctx, "MOV " + r + ",R15");
}

bool loadoperand(CompileContext& ctx, const Operand& op, int bytes, int first) {
    const std::string r0 = "R" + std::to_string(first);
    if (!(bytes == 1 ? loadoperandbyte0(ctx, op, r0) : loadoperandword0(ctx, op, r0))) return false;
    if (bytes > 1) loadoperandbyte1(ctx, op, "R" + std::to_string(first + 1));
    if (bytes > 2) {
        loadoperandbyte2(ctx, op, "R" + std::to_string(first + 2));
        loadoperandbyte3(ctx, op, "R" + std::to_string(first + 3));
    }
    return true;
}

void storeresult(CompileContext& ctx, int type, int32_t address, int bytes, int first) {
    for (int k = 0; k < bytes && k < 4; ++k) storeresultbyte(ctx, k, type, address, "R" + std::to_string(first + k));
}

void loadoperandupper(CompileContext& ctx, int k, const Operand& op, const std::string& r) {
    using Loader = void (*)(CompileContext&, const Operand&, const std::string&);
    static const Loader kLoads[] = {loadoperandbyte1, loadoperandbyte2, loadoperandbyte3};
    if (k >= 1 && k <= 3) kLoads[k - 1](ctx, op, r);
}

void storeresultbyte(CompileContext& ctx, int k, int type, int32_t address, const std::string& r) {
    using Storer = void (*)(CompileContext&, int, int32_t, const std::string&);
    static const Storer kStores[] = {storeresultbyte0, storeresultbyte1, storeresultbyte2, storeresultbyte3};
    if (k >= 0 && k <= 3) kStores[k](ctx, type, address, r);
}

int bytesoftype(int type) {
    if (type == kTypeLong) return 4;
    return type == kTypeWord || type == kTypeWordIndexed ? 2 : 1;
}

void storeresultbyte0(CompileContext& ctx, int type, int32_t address, const std::string& r) {
    if (type == kTypeByteIndexed || type == kTypeWordIndexed) {
        elementpointer(ctx, {type, "", address}, 'Y');
        emitcode(ctx, "ST Y" + std::string(type == kTypeWordIndexed ? "+," : ",") + r);
    } else if (type == kTypeByte && inio(address)) {
        emitcode(ctx, "OUT " + addresstext(address - 32) + "," + r);
    } else {
        storelocation(ctx, address, r);
    }
}

void storeresultbyte1(CompileContext& ctx, int type, int32_t address, const std::string& r) {
    if (type == kTypeWordIndexed)
        emitcode(ctx, "ST Y," + r);
    else if (type == kTypeWord || type == kTypeLong)
        storelocation(ctx, address + 1, r);
}

void storeresultbyte2(CompileContext& ctx, int type, int32_t address, const std::string& r) {
    if (type == kTypeLong) emitcode(ctx, "STS " + addresstext(address + 2) + "," + r);
}

void storeresultbyte3(CompileContext& ctx, int type, int32_t address, const std::string& r) {
    if (type == kTypeLong) emitcode(ctx, "STS " + addresstext(address + 3) + "," + r);
}

void setbit(CompileContext& ctx, int32_t address, const std::string& scratch) { setorclear(ctx, address, scratch, true); }

void clearbit(CompileContext& ctx, int32_t address, const std::string& scratch) {
    setorclear(ctx, address, scratch, false);
}

void copybit(CompileContext& ctx, int32_t address, const std::string& scratch) {
    const BitPlace p = place(address);
    if (inregisters(p.byte)) {
        emitcode(ctx, "BLD " + reg(p.byte) + bitoperand(p));
        return;
    }
    readbyte(ctx, p, scratch);
    emitcode(ctx, "BLD " + scratch + bitoperand(p));
    writebyte(ctx, p, scratch);
}

void loadbit(CompileContext& ctx, int32_t address, const std::string& scratch) {
    const BitPlace p = place(address);
    if (inregisters(p.byte)) {
        emitcode(ctx, "BST " + reg(p.byte) + bitoperand(p));
        return;
    }
    readbyte(ctx, p, scratch);
    emitcode(ctx, "BST " + scratch + bitoperand(p));
}

void loadbitinverted(CompileContext& ctx, int32_t address, const std::string& scratch) {
    const BitPlace p = place(address);
    if (inregisters(p.byte))
        emitcode(ctx, "MOV " + scratch + "," + reg(p.byte));
    else
        readbyte(ctx, p, scratch);
    emitcode(ctx, "COM " + scratch);
    emitcode(ctx, "BST " + scratch + bitoperand(p));
}

void skipifbitset(CompileContext& ctx, int32_t address, const std::string& scratch) { skipif(ctx, address, scratch, true); }

void skipifbitclear(CompileContext& ctx, int32_t address, const std::string& scratch) {
    skipif(ctx, address, scratch, false);
}

}  // namespace velmora
