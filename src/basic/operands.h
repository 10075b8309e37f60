#pragma once
// Loads and stores of one byte of an operand, and the Bit operations: every statement asks
// these for its operands instead of writing its own loads.

#include <cstdint>
#include <string>

#include "basic/compilecontext.h"

namespace velmora {

// The (type, text, address) triple of an operand text; a constant has type 0 and its text.
struct Operand {
    int type = kTypeNone;
    std::string text;
    int32_t address = 0;
};

Operand operandof(const CompileContext& ctx, const std::string& text);

// The value of a constant operand (constant names replaced), or -1 when it is none.
int64_t constantvalue(const CompileContext& ctx, const std::string& text);

// Byte 0 of an operand into `reg`; a constant must be a Byte. False after the error.
bool loadoperandbyte0(CompileContext& ctx, const Operand& op, const std::string& reg);
// Byte 0 with the constant taken as a Long, so that the low byte of a big constant loads.
bool loadoperandword0(CompileContext& ctx, const Operand& op, const std::string& reg);
void loadoperandbyte1(CompileContext& ctx, const Operand& op, const std::string& reg);
void loadoperandbyte2(CompileContext& ctx, const Operand& op, const std::string& reg);
void loadoperandbyte3(CompileContext& ctx, const Operand& op, const std::string& reg);

// The low `bytes` bytes of an operand into R<first> upwards (a constant taken as a Long beyond
// one byte), and their store back; false after the error.
bool loadoperand(CompileContext& ctx, const Operand& op, int bytes, int first);
void storeresult(CompileContext& ctx, int type, int32_t address, int bytes, int first);

// Byte k (1 to 3) of an operand, and byte k (0 to 3) of a result, by number.
void loadoperandupper(CompileContext& ctx, int k, const Operand& op, const std::string& reg);
void storeresultbyte(CompileContext& ctx, int k, int type, int32_t address, const std::string& reg);

// How many bytes a value of this type has: 4, 2 or 1.
int bytesoftype(int type);

void storeresultbyte0(CompileContext& ctx, int type, int32_t address, const std::string& reg);
void storeresultbyte1(CompileContext& ctx, int type, int32_t address, const std::string& reg);
void storeresultbyte2(CompileContext& ctx, int type, int32_t address, const std::string& reg);
void storeresultbyte3(CompileContext& ctx, int type, int32_t address, const std::string& reg);

// Bit operations on a Bit address (byte address * 100 + bit); `scratch` carries the byte of
// bits that no single instruction reaches.
void setbit(CompileContext& ctx, int32_t address, const std::string& scratch);
void clearbit(CompileContext& ctx, int32_t address, const std::string& scratch);
void copybit(CompileContext& ctx, int32_t address, const std::string& scratch);  // T into the bit
void loadbit(CompileContext& ctx, int32_t address, const std::string& scratch);  // the bit into T
void loadbitinverted(CompileContext& ctx, int32_t address, const std::string& scratch);
// Skips the next line when the bit is set (so what follows runs when it is clear).
void skipifbitset(CompileContext& ctx, int32_t address, const std::string& scratch);
void skipifbitclear(CompileContext& ctx, int32_t address, const std::string& scratch);

// "0x" and two upper-case digits, as constants go into LDI.
std::string immediate(int64_t value);
// "0x" and bare upper-case digits, as addresses go into LDS, STS, IN, OUT, SBI and CBI.
std::string addresstext(int64_t value);

}  // namespace velmora
