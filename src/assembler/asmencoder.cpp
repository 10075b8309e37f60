#include "assembler/asmencoder.h"

#include <cctype>
#include <optional>
#include <vector>

#include "assembler/asmdata.h"
#include "assembler/asminstructions.h"
#include "assembler/asmmessages.h"
#include "core/hextext.h"

namespace velmora {

namespace {

bool inrange(int64_t value, AsmCheck check) {
    const AsmRange range = asmcheckrange(check);
    return value >= range.low && value <= range.high;
}

int32_t relative(const AsmContext& ctx, std::string_view target, int32_t value, AsmCheck check) {
    const int index = asmlookup(ctx, target);
    if (index == 0) return value;
    const AsmRange range = asmcheckrange(check);
    const int64_t offset = int64_t{asmsymbolvalue(ctx, index)} - ctx.asmlocation - 1;
    const int64_t words = asmflashwords(ctx);
    if (offset > range.high && inrange(offset - words, check)) return static_cast<int32_t>(offset - words);
    if (offset < range.low && inrange(offset + words, check)) return static_cast<int32_t>(offset + words);
    if (offset < INT32_MIN || offset > INT32_MAX) return INT32_MAX;
    return static_cast<int32_t>(offset);
}

// Operand value as the range check sees it: a branch target becomes its offset.
int32_t checkedvalue(const AsmContext& ctx, AsmCheck check, std::string_view text, int32_t value) {
    if (check == AsmCheck::Rel7) return asmrelshort(ctx, text, value);
    if (check == AsmCheck::Rel12) return asmrellong(ctx, text, value);
    return value;
}

// The low bits of a two's-complement offset that has passed its range check.
uint16_t offsetfield(int32_t offset, int bits) {
    return static_cast<uint16_t>(offset < 0 ? offset + (1 << bits) : offset);
}

// LD and ST by pointer code 1..9 (X, X+, -X, Y, Y+, -Y, Z, Z+, -Z); ST adds 0200.
constexpr uint16_t kLoadWords[9] = {0x900C, 0x900D, 0x900E, 0x8008, 0x9009, 0x900A, 0x8000, 0x9001, 0x9002};
constexpr uint16_t kStoreBit = 0x0200;
constexpr int kPointerZ = 7, kPointerZPlus = 8;

std::optional<uint16_t> pointerword(int32_t code) {
    if (code < 1 || code > 9) return std::nullopt;
    return kLoadWords[code - 1];
}

// Y adds 8 to the base; Z keeps it; any other letter names no pointer.
std::optional<uint16_t> displacedword(uint16_t base, std::string_view pointertext, int32_t reg, int32_t q) {
    const char pointer = pointertext.empty() ? '\0' : static_cast<char>(std::toupper(static_cast<unsigned char>(pointertext[0])));
    if (pointer != 'Y' && pointer != 'Z') return std::nullopt;
    return static_cast<uint16_t>(base | (pointer == 'Y' ? 8 : 0) | (reg << 4) | ((q & 0x20) << 8) | ((q & 0x18) << 7) |
                                 (q & 7));
}

// The words of an instruction whose operands passed their checks; empty when the operands
// name no form (a pointer code outside the table), which generates nothing.
std::vector<uint16_t> encodewords(const AsmInstruction& ins, const AsmLine& line, int32_t a, int32_t b) {
    const uint16_t base = ins.base;
    auto word = [](int64_t w) { return static_cast<uint16_t>(w); };
    switch (ins.layout) {
        case AsmLayout::Fixed: return {base};
        case AsmLayout::RegSelf: b = a; [[fallthrough]];
        case AsmLayout::RegReg: return {word(base | ((b & 16) << 5) | (a << 4) | (b & 15))};
        case AsmLayout::Reg:
        case AsmLayout::StatusBit: return {word(base | (a << 4))};
        case AsmLayout::RegHighOnly: return {word(base | ((a - 16) << 4))};
        case AsmLayout::RegImmediateNot: b = 255 - b; [[fallthrough]];
        case AsmLayout::RegImmediate: return {word(base | ((b >> 4) << 8) | ((a - 16) << 4) | (b & 15))};
        case AsmLayout::RegBit:
        case AsmLayout::PairPair: return {word(base | (a << 4) | b)};
        case AsmLayout::RegHighPair: return {word(base | ((a - 16) << 4) | (b - 16))};
        case AsmLayout::PairImmediate: return {word(base | ((b >> 4) << 6) | (a << 4) | (b & 15))};
        case AsmLayout::In: return {word(base | ((b >> 4) << 9) | (a << 4) | (b & 15))};
        case AsmLayout::Out: return {word(base | ((a >> 4) << 9) | (b << 4) | (a & 15))};
        case AsmLayout::IoBit: return {word(base | (a << 3) | b)};
        case AsmLayout::LoadDirect: return {word(base | (a << 4)), word(b)};
        case AsmLayout::StoreDirect: return {word(base | (b << 4)), word(a)};
        case AsmLayout::Absolute: return {word(base | ((a >> 17) << 4) | ((a >> 16) & 1)), word(a & 0xFFFF)};
        case AsmLayout::Relative12: return {word(base | offsetfield(a, 12))};
        case AsmLayout::Relative7: return {word(base | (offsetfield(a, 7) << 3))};
        case AsmLayout::StatusRelative7: return {word(base | (offsetfield(b, 7) << 3) | a)};
        case AsmLayout::Load:
            if (const auto w = pointerword(b)) return {word(*w | (a << 4))};
            return {};
        case AsmLayout::Store:
            if (const auto w = pointerword(a)) return {word(*w | kStoreBit | (b << 4))};
            return {};
        case AsmLayout::ProgramLoad: {
            if (line.argcount == 0) return {base};
            // Z and Z+ forms: LPM 9004/9005, ELPM 9006/9007.
            const uint16_t zform = ins.mnemonic == "LPM" ? 0x9004 : 0x9006;
            if (b == kPointerZ) return {word(zform | (a << 4))};
            if (b == kPointerZPlus) return {word((zform + 1) | (a << 4))};
            return {};
        }
        case AsmLayout::LoadDisplaced:
            if (const auto w = displacedword(base, line.arg2, a, b)) return {*w};
            return {};
        case AsmLayout::StoreDisplaced:
            if (const auto w = displacedword(base, line.arg1, b, a)) return {*w};
            return {};
    }
    return {};
}

void encodeinstruction(AsmContext& ctx, AsmLine& line, const AsmInstruction& ins) {
    const int32_t a = checkedvalue(ctx, ins.check1, line.arg1, ctx.argvalue1);
    const int32_t b = checkedvalue(ctx, ins.check2, line.arg2, ctx.argvalue2);
    // Both operands are always checked, and each failure counts.
    bool good = true;
    for (const auto& [check, value] : {std::pair{ins.check1, a}, std::pair{ins.check2, b}}) {
        if (!inrange(value, check)) {
            asmerror(ctx, line, asmmessage::kInstructionArgument);
            good = false;
        }
    }
    if (!good) return;
    for (uint16_t w : encodewords(ins, line, a, b)) asmappendword(line.opcode, w);
}

}  // namespace

void asmappendword(std::string& opcode, uint16_t word) {
    opcode += hex2(word & 0xFFu);
    opcode += hex2(word >> 8);
}

int32_t asmrelshort(const AsmContext& ctx, std::string_view target, int32_t value) {
    return relative(ctx, target, value, AsmCheck::Rel7);
}

int32_t asmrellong(const AsmContext& ctx, std::string_view target, int32_t value) {
    return relative(ctx, target, value, AsmCheck::Rel12);
}

void asmencodeline(AsmContext& ctx, AsmLine& line) {
    if (line.mnemonic == ".DB") {
        line.opcode = asmencodedb(ctx, line.arg1, line);
    } else if (line.mnemonic == ".DW") {
        line.opcode = asmencodedw(ctx, line.arg1, line);
    } else if (const AsmInstruction* ins = asmfindinstruction(line.mnemonic)) {
        encodeinstruction(ctx, line, *ins);
    }
}

}  // namespace velmora
