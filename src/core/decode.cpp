#include "core/decode.h"

#include <iterator>

namespace velmora {

namespace {
const char* const kMnemonics[] = {
#define VELMORA_TEXT(id, text) text,
    VELMORA_INSTRUCTIONS(VELMORA_TEXT)
#undef VELMORA_TEXT
};

struct Fields {
    unsigned op, d5, r5, low4;
    explicit Fields(uint16_t w)
        : op(w), d5((w >> 4) & 31), r5((w & 15) | ((w >> 5) & 16)), low4(w & 15) {}
    unsigned top(int n) const { return op >> n; }
    bool bit(int n) const { return (op >> n) & 1; }
};

bool isCall(const Fields& f) { return f.top(9) == 74 && ((f.op >> 1) & 7) == 7; }
bool isJmp(const Fields& f) { return f.top(9) == 74 && ((f.op >> 1) & 7) == 6; }
bool isLds(const Fields& f) { return f.top(9) == 72 && f.low4 == 0; }
bool isSts(const Fields& f) { return f.top(9) == 73 && f.low4 == 0; }
}  // namespace

const char* mnemonic(Op id) { return kMnemonics[static_cast<int>(id)]; }

const char* branchmnemonic(bool set, int bit) {
    // BRLO and BRSH share their words with BRCS and BRCC, which stand first.
    static const char* const clear[8] = {"BRCC", "BRNE", "BRPL", "BRVC", "BRGE", "BRHC", "BRTC", "BRID"};
    static const char* const setn[8] = {"BRCS", "BREQ", "BRMI", "BRVS", "BRLT", "BRHS", "BRTS", "BRIE"};
    return set ? setn[bit & 7] : clear[bit & 7];
}

bool istwoword(uint16_t op) {
    const Fields f(op);
    return isCall(f) || isJmp(f) || isLds(f) || isSts(f);
}

Op chainmatch(uint16_t word) {
    const Fields f(word);
    const unsigned op = f.op;
    const bool sameregs = f.d5 == f.r5;
    const unsigned t7 = f.top(7), t8 = f.top(8), t9 = f.top(9), t10 = f.top(10), t11 = f.top(11),
                   t12 = f.top(12), t14 = f.top(14);
    const unsigned n = f.low4;

    if (t10 == 7 && !sameregs) return Op::Adc;
    if (t10 == 3 && !sameregs) return Op::Add;
    if (t8 == 150) return Op::Adiw;
    if (t10 == 8 && !sameregs) return Op::And;
    if (t12 == 7) return Op::Andi;
    if (t9 == 74 && n == 5) return Op::Asr;
    if (t7 == 297 && n == 8) return Op::Bclr;
    if (t9 == 124 && !f.bit(3)) return Op::Bld;
    if (t10 == 61) return Op::BranchClear;
    if (t10 == 60) return Op::BranchSet;
    if (op == 0x9598) return Op::Break;
    if (t7 == 296 && n == 8) return Op::Bset;
    if (t9 == 125 && !f.bit(3)) return Op::Bst;
    if (isCall(f)) return Op::Call;
    if (t8 == 152) return Op::Cbi;
    if (t10 == 9 && sameregs) return Op::Clr;
    if (t9 == 74 && n == 0) return Op::Com;
    if (t10 == 5) return Op::Cp;
    if (t10 == 1) return Op::Cpc;
    if (t12 == 3) return Op::Cpi;
    if (t10 == 4) return Op::Cpse;
    if (t9 == 74 && n == 10) return Op::Dec;
    if (op == 0x9519) return Op::Eicall;
    if (op == 0x9419) return Op::Eijmp;
    if (op == 0x95D8) return Op::Elpm;
    if (t9 == 72 && n == 6) return Op::ElpmZ;
    if (t9 == 72 && n == 7) return Op::ElpmZPlus;
    if (t10 == 9 && !sameregs) return Op::Eor;
    if (t7 == 6 && f.bit(3)) return Op::Fmul;
    if (t7 == 7 && !f.bit(3)) return Op::Fmuls;
    if (t7 == 7 && f.bit(3)) return Op::Fmulsu;
    if (op == 0x9509) return Op::Icall;
    if (op == 0x9409) return Op::Ijmp;
    if (t11 == 22) return Op::In;
    if (t9 == 74 && n == 3) return Op::Inc;
    if (isJmp(f)) return Op::Jmp;
    if (t9 == 72 && n == 12) return Op::LdX;
    if (t9 == 72 && n == 13) return Op::LdXPlus;
    if (t9 == 72 && n == 14) return Op::LdMinusX;
    if (t9 == 64 && n == 8) return Op::LdY;
    if (t9 == 72 && n == 9) return Op::LdYPlus;
    if (t9 == 72 && n == 10) return Op::LdMinusY;
    if (t14 == 2 && !f.bit(12) && !f.bit(9) && f.bit(3)) return Op::LddY;
    if (t9 == 64 && n == 0) return Op::LdZ;
    if (t9 == 72 && n == 1) return Op::LdZPlus;
    if (t9 == 72 && n == 2) return Op::LdMinusZ;
    if (t14 == 2 && !f.bit(12) && !f.bit(9) && !f.bit(3)) return Op::LddZ;
    if (t12 == 14) return Op::Ldi;
    if (isLds(f)) return Op::Lds;
    if (op == 0x95C8) return Op::Lpm;
    if (t9 == 72 && n == 4) return Op::LpmZ;
    if (t9 == 72 && n == 5) return Op::LpmZPlus;
    if (t10 == 3 && sameregs) return Op::Lsl;
    if (t9 == 74 && n == 6) return Op::Lsr;
    if (t10 == 11) return Op::Mov;
    if (t8 == 1) return Op::Movw;
    if (t10 == 39) return Op::Mul;
    if (t8 == 2) return Op::Muls;
    if (t7 == 6 && !f.bit(3)) return Op::Mulsu;
    if (t9 == 74 && n == 1) return Op::Neg;
    if (op == 0) return Op::Nop;
    if (t10 == 10) return Op::Or;
    if (t12 == 6) return Op::Ori;
    if (t11 == 23) return Op::Out;
    if (t9 == 72 && n == 15) return Op::Pop;
    if (t9 == 73 && n == 15) return Op::Push;
    if (t12 == 13) return Op::Rcall;
    if (op == 0x9508) return Op::Ret;
    if (op == 0x9518) return Op::Reti;
    if (t12 == 12) return Op::Rjmp;
    if (t10 == 7 && sameregs) return Op::Rol;
    if (t9 == 74 && n == 7) return Op::Ror;
    if (t10 == 2) return Op::Sbc;
    if (t12 == 4) return Op::Sbci;
    if (t8 == 154) return Op::Sbi;
    if (t8 == 153) return Op::Sbic;
    if (t8 == 155) return Op::Sbis;
    if (t8 == 151) return Op::Sbiw;
    if (t9 == 126 && !f.bit(3)) return Op::Sbrc;
    if (t9 == 127 && !f.bit(3)) return Op::Sbrs;
    if (op == 0x9588) return Op::Sleep;
    if (op == 0x95E8) return Op::Spm;
    if (t9 == 73 && n == 12) return Op::StX;
    if (t9 == 73 && n == 13) return Op::StXPlus;
    if (t9 == 73 && n == 14) return Op::StMinusX;
    if (t9 == 65 && n == 8) return Op::StY;
    if (t9 == 73 && n == 9) return Op::StYPlus;
    if (t9 == 73 && n == 10) return Op::StMinusY;
    if (t14 == 2 && !f.bit(12) && f.bit(9) && f.bit(3)) return Op::StdY;
    if (t9 == 65 && n == 0) return Op::StZ;
    if (t9 == 73 && n == 1) return Op::StZPlus;
    if (t9 == 73 && n == 2) return Op::StMinusZ;
    if (t14 == 2 && !f.bit(12) && f.bit(9) && !f.bit(3)) return Op::StdZ;
    if (isSts(f)) return Op::Sts;
    if (t10 == 6) return Op::Sub;
    if (t12 == 5) return Op::Subi;
    if (t9 == 74 && n == 2) return Op::Swap;
    if (t10 == 8 && sameregs) return Op::Tst;
    if (op == 0x95A8) return Op::Wdr;
    return Op::Unrecognized;
}

namespace {
// The same chain as a list of bit patterns. Filling the table from the last line up
// lets earlier lines overwrite later ones, which is first-match; a test checks this
// construction against the literal walk for every word.
enum class Regs : uint8_t { Any, Differ, Same };
struct Pattern {
    Op id;
    uint16_t mask, value;
    Regs regs;
};

constexpr Pattern kPatterns[] = {
    {Op::Adc, 0xFC00, 0x1C00, Regs::Differ}, {Op::Add, 0xFC00, 0x0C00, Regs::Differ},
    {Op::Adiw, 0xFF00, 0x9600, Regs::Any}, {Op::And, 0xFC00, 0x2000, Regs::Differ},
    {Op::Andi, 0xF000, 0x7000, Regs::Any}, {Op::Asr, 0xFE0F, 0x9405, Regs::Any},
    {Op::Bclr, 0xFF8F, 0x9488, Regs::Any}, {Op::Bld, 0xFE08, 0xF800, Regs::Any},
    {Op::BranchClear, 0xFC00, 0xF400, Regs::Any}, {Op::BranchSet, 0xFC00, 0xF000, Regs::Any},
    {Op::Break, 0xFFFF, 0x9598, Regs::Any}, {Op::Bset, 0xFF8F, 0x9408, Regs::Any},
    {Op::Bst, 0xFE08, 0xFA00, Regs::Any}, {Op::Call, 0xFE0E, 0x940E, Regs::Any},
    {Op::Cbi, 0xFF00, 0x9800, Regs::Any}, {Op::Clr, 0xFC00, 0x2400, Regs::Same},
    {Op::Com, 0xFE0F, 0x9400, Regs::Any}, {Op::Cp, 0xFC00, 0x1400, Regs::Any},
    {Op::Cpc, 0xFC00, 0x0400, Regs::Any}, {Op::Cpi, 0xF000, 0x3000, Regs::Any},
    {Op::Cpse, 0xFC00, 0x1000, Regs::Any}, {Op::Dec, 0xFE0F, 0x940A, Regs::Any},
    {Op::Eicall, 0xFFFF, 0x9519, Regs::Any}, {Op::Eijmp, 0xFFFF, 0x9419, Regs::Any},
    {Op::Elpm, 0xFFFF, 0x95D8, Regs::Any}, {Op::ElpmZ, 0xFE0F, 0x9006, Regs::Any},
    {Op::ElpmZPlus, 0xFE0F, 0x9007, Regs::Any}, {Op::Eor, 0xFC00, 0x2400, Regs::Differ},
    {Op::Fmul, 0xFF88, 0x0308, Regs::Any}, {Op::Fmuls, 0xFF88, 0x0380, Regs::Any},
    {Op::Fmulsu, 0xFF88, 0x0388, Regs::Any}, {Op::Icall, 0xFFFF, 0x9509, Regs::Any},
    {Op::Ijmp, 0xFFFF, 0x9409, Regs::Any}, {Op::In, 0xF800, 0xB000, Regs::Any},
    {Op::Inc, 0xFE0F, 0x9403, Regs::Any}, {Op::Jmp, 0xFE0E, 0x940C, Regs::Any},
    {Op::LdX, 0xFE0F, 0x900C, Regs::Any}, {Op::LdXPlus, 0xFE0F, 0x900D, Regs::Any},
    {Op::LdMinusX, 0xFE0F, 0x900E, Regs::Any}, {Op::LdY, 0xFE0F, 0x8008, Regs::Any},
    {Op::LdYPlus, 0xFE0F, 0x9009, Regs::Any}, {Op::LdMinusY, 0xFE0F, 0x900A, Regs::Any},
    {Op::LddY, 0xD208, 0x8008, Regs::Any}, {Op::LdZ, 0xFE0F, 0x8000, Regs::Any},
    {Op::LdZPlus, 0xFE0F, 0x9001, Regs::Any}, {Op::LdMinusZ, 0xFE0F, 0x9002, Regs::Any},
    {Op::LddZ, 0xD208, 0x8000, Regs::Any}, {Op::Ldi, 0xF000, 0xE000, Regs::Any},
    {Op::Lds, 0xFE0F, 0x9000, Regs::Any}, {Op::Lpm, 0xFFFF, 0x95C8, Regs::Any},
    {Op::LpmZ, 0xFE0F, 0x9004, Regs::Any}, {Op::LpmZPlus, 0xFE0F, 0x9005, Regs::Any},
    {Op::Lsl, 0xFC00, 0x0C00, Regs::Same}, {Op::Lsr, 0xFE0F, 0x9406, Regs::Any},
    {Op::Mov, 0xFC00, 0x2C00, Regs::Any}, {Op::Movw, 0xFF00, 0x0100, Regs::Any},
    {Op::Mul, 0xFC00, 0x9C00, Regs::Any}, {Op::Muls, 0xFF00, 0x0200, Regs::Any},
    {Op::Mulsu, 0xFF88, 0x0300, Regs::Any}, {Op::Neg, 0xFE0F, 0x9401, Regs::Any},
    {Op::Nop, 0xFFFF, 0x0000, Regs::Any}, {Op::Or, 0xFC00, 0x2800, Regs::Any},
    {Op::Ori, 0xF000, 0x6000, Regs::Any}, {Op::Out, 0xF800, 0xB800, Regs::Any},
    {Op::Pop, 0xFE0F, 0x900F, Regs::Any}, {Op::Push, 0xFE0F, 0x920F, Regs::Any},
    {Op::Rcall, 0xF000, 0xD000, Regs::Any}, {Op::Ret, 0xFFFF, 0x9508, Regs::Any},
    {Op::Reti, 0xFFFF, 0x9518, Regs::Any}, {Op::Rjmp, 0xF000, 0xC000, Regs::Any},
    {Op::Rol, 0xFC00, 0x1C00, Regs::Same}, {Op::Ror, 0xFE0F, 0x9407, Regs::Any},
    {Op::Sbc, 0xFC00, 0x0800, Regs::Any}, {Op::Sbci, 0xF000, 0x4000, Regs::Any},
    {Op::Sbi, 0xFF00, 0x9A00, Regs::Any}, {Op::Sbic, 0xFF00, 0x9900, Regs::Any},
    {Op::Sbis, 0xFF00, 0x9B00, Regs::Any}, {Op::Sbiw, 0xFF00, 0x9700, Regs::Any},
    {Op::Sbrc, 0xFE08, 0xFC00, Regs::Any}, {Op::Sbrs, 0xFE08, 0xFE00, Regs::Any},
    {Op::Sleep, 0xFFFF, 0x9588, Regs::Any}, {Op::Spm, 0xFFFF, 0x95E8, Regs::Any},
    {Op::StX, 0xFE0F, 0x920C, Regs::Any}, {Op::StXPlus, 0xFE0F, 0x920D, Regs::Any},
    {Op::StMinusX, 0xFE0F, 0x920E, Regs::Any}, {Op::StY, 0xFE0F, 0x8208, Regs::Any},
    {Op::StYPlus, 0xFE0F, 0x9209, Regs::Any}, {Op::StMinusY, 0xFE0F, 0x920A, Regs::Any},
    {Op::StdY, 0xD208, 0x8208, Regs::Any}, {Op::StZ, 0xFE0F, 0x8200, Regs::Any},
    {Op::StZPlus, 0xFE0F, 0x9201, Regs::Any}, {Op::StMinusZ, 0xFE0F, 0x9202, Regs::Any},
    {Op::StdZ, 0xD208, 0x8200, Regs::Any}, {Op::Sts, 0xFE0F, 0x9200, Regs::Any},
    {Op::Sub, 0xFC00, 0x1800, Regs::Any}, {Op::Subi, 0xF000, 0x5000, Regs::Any},
    {Op::Swap, 0xFE0F, 0x9402, Regs::Any}, {Op::Tst, 0xFC00, 0x2000, Regs::Same},
    {Op::Wdr, 0xFFFF, 0x95A8, Regs::Any},
};

bool patternmatches(const Pattern& p, unsigned w) {
    if ((w & p.mask) != p.value) return false;
    if (p.regs == Regs::Any) return true;
    const bool same = ((w >> 4) & 31) == ((w & 15) | ((w >> 5) & 16));
    return p.regs == Regs::Same ? same : !same;
}
}  // namespace

const std::array<Op, 65536>& decodetable() {
    static const std::array<Op, 65536> table = [] {
        std::array<Op, 65536> t{};
        t.fill(Op::Unrecognized);
        for (auto p = std::rbegin(kPatterns); p != std::rend(kPatterns); ++p)
            for (unsigned w = 0; w < 65536; ++w)
                if (patternmatches(*p, w)) t[w] = p->id;
        return t;
    }();
    return table;
}

const std::array<Op, 65536> detail::g_decodetable = decodetable();

}  // namespace velmora
