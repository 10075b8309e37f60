#include "core/interpreter.h"

#include "core/decode.h"
#include "core/memory.h"
#include "core/stack.h"

namespace velmora {

namespace {

inline int sgn8(int v) { return v >= 128 ? v - 256 : v; }
inline int sgn16(int v) { return v >= 32768 ? v - 65536 : v; }

// SREG is written straight into the data space, past the write mask.
struct Flags {
    uint8_t& sreg;
    explicit Flags(Machine& m) : sreg(m.datamem[kSregAddress]) {}
    void put(uint8_t mask, bool on) { sreg = on ? (sreg | mask) : (sreg & ~mask); }
    bool get(uint8_t mask) const { return sreg & mask; }
    void zn(int result) {
        put(kFlagZ, (result & 0xFF) == 0);
        put(kFlagN, result & 0x80);
    }
    void s() { put(kFlagS, get(kFlagN) != get(kFlagV)); }
};

void flagsadd(Machine& m, int d, int r, int c, int result) {
    Flags f(m);
    f.zn(result);
    f.put(kFlagC, d + r + c >= 256);
    f.put(kFlagH, (d & 15) + (r & 15) + c >= 16);
    const int sv = sgn8(d) + sgn8(r) + c;
    f.put(kFlagV, sv < -128 || sv > 127);
    f.s();
}

// Subtraction flags; `sticky` keeps Z set only when it was set (SBC, SBCI, CPC).
void flagssub(Machine& m, int d, int r, int c, int result, bool sticky) {
    Flags f(m);
    if (sticky) {
        if (result & 0xFF) f.put(kFlagZ, false);
    } else {
        f.put(kFlagZ, (result & 0xFF) == 0);
    }
    f.put(kFlagN, result & 0x80);
    f.put(kFlagC, r + c > d);
    f.put(kFlagH, (r & 15) + c > (d & 15));
    const int sv = sgn8(d) - (sgn8(r) + c);
    f.put(kFlagV, sv < -128 || sv > 127);
    f.s();
}

void flagslogic(Machine& m, int result) {
    Flags f(m);
    f.zn(result);
    f.put(kFlagV, false);
    f.s();
}

// Shifts: C already set by the caller; V = N xor C.
void flagsshift(Machine& m, int result) {
    Flags f(m);
    f.zn(result);
    f.put(kFlagV, f.get(kFlagN) != f.get(kFlagC));
    f.s();
}

void flagsmul(Machine& m, int product) {
    Flags f(m);
    f.put(kFlagZ, (product & 0xFFFF) == 0);
    f.put(kFlagC, product & 0x8000);
}

void storeproduct(Machine& m, int product) {
    m.datamem[0] = static_cast<uint8_t>(product & 0xFF);
    m.datamem[1] = static_cast<uint8_t>((product >> 8) & 0xFF);
}

// Fractional multiply: C from bit 15 of the product, R1:R0 the product shifted left once.
void fmul(Machine& m, int product) {
    if (product < 0) product += 65536;
    const int shifted = (product * 2) & 0xFFFF;
    Flags f(m);
    f.put(kFlagC, product & 0x8000);
    f.put(kFlagZ, shifted == 0);
    storeproduct(m, shifted);
}

int word(const Machine& m, int low) { return m.datamem[low] | (m.datamem[low + 1] << 8); }

// Pointer registers: with an eight-bit data space only the low register counts.
int pointer(const Machine& m, int low) { return m.eightbitpointers ? m.datamem[low] : word(m, low); }

void setpointer(Machine& m, int low, int value) {
    if (m.eightbitpointers) {
        m.datamem[low] = static_cast<uint8_t>(value & 0xFF);
    } else {
        m.datamem[low] = static_cast<uint8_t>(value & 0xFF);
        m.datamem[low + 1] = static_cast<uint8_t>((value >> 8) & 0xFF);
    }
}

int pointerwrap(const Machine& m) { return m.eightbitpointers ? 256 : 65536; }

enum class Mode { Plain, PostIncrement, PreDecrement };

void load(Machine& m, int d, int low, Mode mode) {
    if (mode == Mode::PreDecrement) setpointer(m, low, (pointer(m, low) - 1 + pointerwrap(m)) % pointerwrap(m));
    m.datamem[d] = datamemread(m, pointer(m, low));
    // The pointer is read again after the destination was written (LD R26,X+).
    if (mode == Mode::PostIncrement) setpointer(m, low, (pointer(m, low) + 1) % pointerwrap(m));
    addcycles(m, 1);
}

void store(Machine& m, int r, int low, Mode mode) {
    if (mode == Mode::PreDecrement) setpointer(m, low, (pointer(m, low) - 1 + pointerwrap(m)) % pointerwrap(m));
    datamemwrite(m, pointer(m, low), m.datamem[r], 255);
    if (mode == Mode::PostIncrement) setpointer(m, low, (pointer(m, low) + 1) % pointerwrap(m));
    addcycles(m, 1);
}

void loadprogram(Machine& m, int d, bool increment) {
    const int z = word(m, kZL);
    if (z <= m.flashsize - 1) m.datamem[d] = m.progmem[z];
    if (increment) {
        const int next = (z + 1) & 0xFFFF;
        m.datamem[kZL] = static_cast<uint8_t>(next & 0xFF);
        m.datamem[kZH] = static_cast<uint8_t>(next >> 8);
    }
    addcycles(m, 2);
}

// A taken skip passes over one word, or two when that word starts a two-word instruction.
void skipif(Machine& m, bool condition) {
    if (!condition) return;
    const uint16_t next = progword(m, m.pc);
    const int words = istwoword(next) ? 2 : 1;
    for (int i = 0; i < words; ++i) {
        pcstep(m);
        addcycles(m, 1);
    }
}

void callextra(Machine& m, uint32_t cycles) { addcycles(m, m.threebytepc ? cycles + 1 : cycles); }

void checkinfiniteloop(Machine& m, int32_t oldpc) {
    if (m.infiniteloopstop && m.pc == oldpc) {
        m.stoprequest = true;
        m.stopreason = Machine::StopReason::InfiniteLoop;
    }
}

int32_t absolutetarget(const Machine& m, uint16_t op, uint16_t op2) {
    const int32_t high = (op & 1) | ((op >> 3) & 0x3E);
    const int64_t target = static_cast<int64_t>(high) * 65536 + op2;
    return m.flashwords > 0 ? static_cast<int32_t>(target % m.flashwords) : 0;
}

int32_t zmodflash(const Machine& m) { return m.flashwords > 0 ? word(m, kZL) % m.flashwords : 0; }

}  // namespace

void executeinstruction(Machine& m) {
    const uint16_t op = progword(m, m.pc);
    const uint16_t op2 = progword(m, m.pc + 1);
    const Op id = decode(op);
    m.lastop = op;
    m.lastop2 = op2;
    m.lastid = static_cast<uint8_t>(id);
    m.laststep = Machine::LastStep::Instruction;

    uint8_t* reg = m.datamem.data();
    const int d5 = (op >> 4) & 31;
    const int r5 = (op & 15) | ((op >> 5) & 16);
    const int d4 = 16 + ((op >> 4) & 15);
    const int k8 = ((op >> 4) & 0xF0) | (op & 15);
    const int d = reg[d5];
    const int r = reg[r5];
    Flags f(m);
    const int carry = f.get(kFlagC) ? 1 : 0;

    switch (id) {
    case Op::Unrecognized:
        m.laststep = Machine::LastStep::Unrecognized;
        m.stoprequest = true;
        m.stopreason = Machine::StopReason::Unrecognized;
        return;
    case Op::Spm:
        return;  // pc stays: the same SPM runs again on every step
    case Op::Jmp: {
        const int32_t old = m.pc;
        m.pc = absolutetarget(m, op, op2);
        addcycles(m, 2);
        checkinfiniteloop(m, old);
        return;
    }
    case Op::Ijmp:
    case Op::Eijmp: {
        const int32_t old = m.pc;
        m.pc = zmodflash(m);
        addcycles(m, 1);
        checkinfiniteloop(m, old);
        return;
    }
    case Op::Ret:
    case Op::Reti:
        m.pc = pullreturnaddress(m);
        pcnormalize(m);
        callextra(m, 3);
        if (id == Op::Reti) {
            f.put(kFlagI, true);
            m.afterreti = true;
        }
        return;
    default:
        break;
    }

    const int32_t oldpc = m.pc;
    pcstep(m);

    switch (id) {
    case Op::Adc:
    case Op::Add: {
        const int c = id == Op::Adc ? carry : 0;
        const int res = d + r + c;
        reg[d5] = static_cast<uint8_t>(res);
        flagsadd(m, d, r, c, res);
        break;
    }
    case Op::Lsl:
    case Op::Rol: {
        const int res = ((d & 127) * 2) + (id == Op::Rol ? carry : 0);
        reg[d5] = static_cast<uint8_t>(res);
        f.put(kFlagC, d & 0x80);
        f.put(kFlagH, (d & 15) + (d & 15) >= 16);
        flagsshift(m, res);
        break;
    }
    case Op::Adiw:
    case Op::Sbiw: {
        const int low = 24 + ((op >> 4) & 3) * 2;
        const int k = ((op >> 2) & 0x30) | (op & 15);
        const int w = word(m, low);
        int res;
        if (id == Op::Adiw) {
            res = w + k;
            f.put(kFlagC, res >= 65536);
            const int sv = sgn16(w) + k;
            f.put(kFlagV, sv < -32768 || sv > 32767);
        } else {
            res = w - k;
            f.put(kFlagC, k > w);
            const int sv = sgn16(w) - k;
            f.put(kFlagV, sv < -32768 || sv > 32767);
        }
        res &= 0xFFFF;
        reg[low] = static_cast<uint8_t>(res & 0xFF);
        reg[low + 1] = static_cast<uint8_t>(res >> 8);
        f.put(kFlagZ, res == 0);
        f.put(kFlagN, res & 0x8000);
        f.s();
        addcycles(m, 1);
        break;
    }
    case Op::And:
    case Op::Tst:
        reg[d5] = static_cast<uint8_t>(d & r);
        flagslogic(m, d & r);
        break;
    case Op::Andi:
        reg[d4] = static_cast<uint8_t>(reg[d4] & k8);
        flagslogic(m, reg[d4]);
        break;
    case Op::Or:
        reg[d5] = static_cast<uint8_t>(d | r);
        flagslogic(m, d | r);
        break;
    case Op::Ori:
        reg[d4] = static_cast<uint8_t>(reg[d4] | k8);
        flagslogic(m, reg[d4]);
        break;
    case Op::Eor:
        reg[d5] = static_cast<uint8_t>(d ^ r);
        flagslogic(m, d ^ r);
        break;
    case Op::Clr:
        reg[d5] = 0;
        flagslogic(m, 0);
        break;
    case Op::Com:
        reg[d5] = static_cast<uint8_t>(255 - d);
        f.put(kFlagC, true);
        flagslogic(m, 255 - d);
        break;
    case Op::Neg: {
        const int res = (0 - d) & 0xFF;
        reg[d5] = static_cast<uint8_t>(res);
        flagssub(m, 0, d, 0, res, false);
        break;
    }
    case Op::Sub:
    case Op::Cp: {
        const int res = (d - r) & 0xFF;
        if (id == Op::Sub) reg[d5] = static_cast<uint8_t>(res);
        flagssub(m, d, r, 0, res, false);
        break;
    }
    case Op::Sbc:
    case Op::Cpc: {
        const int res = (d - r - carry) & 0xFF;
        if (id == Op::Sbc) reg[d5] = static_cast<uint8_t>(res);
        flagssub(m, d, r, carry, res, true);
        break;
    }
    case Op::Subi:
    case Op::Cpi: {
        const int dv = reg[d4];
        const int res = (dv - k8) & 0xFF;
        if (id == Op::Subi) reg[d4] = static_cast<uint8_t>(res);
        flagssub(m, dv, k8, 0, res, false);
        break;
    }
    case Op::Sbci: {
        const int dv = reg[d4];
        const int res = (dv - k8 - carry) & 0xFF;
        reg[d4] = static_cast<uint8_t>(res);
        flagssub(m, dv, k8, carry, res, true);
        break;
    }
    case Op::Inc: {
        const int res = (d + 1) & 0xFF;
        reg[d5] = static_cast<uint8_t>(res);
        f.zn(res);
        f.put(kFlagV, d == 0x7F);
        f.s();
        break;
    }
    case Op::Dec: {
        const int res = (d - 1) & 0xFF;
        reg[d5] = static_cast<uint8_t>(res);
        f.zn(res);
        f.put(kFlagV, d == 0x80);
        f.s();
        break;
    }
    case Op::Asr:
    case Op::Lsr:
    case Op::Ror: {
        int res = d >> 1;
        if (id == Op::Asr) res |= d & 0x80;
        if (id == Op::Ror) res |= carry << 7;
        reg[d5] = static_cast<uint8_t>(res);
        f.put(kFlagC, d & 1);
        flagsshift(m, res);
        break;
    }
    case Op::Swap:
        reg[d5] = static_cast<uint8_t>(((d << 4) | (d >> 4)) & 0xFF);
        break;
    case Op::Bset:
    case Op::Bclr:
        f.put(static_cast<uint8_t>(1 << ((op >> 4) & 7)), id == Op::Bset);
        break;
    case Op::Bst:
        f.put(kFlagT, (d >> (op & 7)) & 1);
        break;
    case Op::Bld: {
        const uint8_t mask = static_cast<uint8_t>(1 << (op & 7));
        reg[d5] = f.get(kFlagT) ? (d | mask) : (d & ~mask);
        break;
    }
    case Op::Mov:
        reg[d5] = static_cast<uint8_t>(r);
        break;
    case Op::Ldi:
        reg[d4] = static_cast<uint8_t>(k8);
        break;
    case Op::Movw: {
        const int dd = ((op >> 4) & 15) * 2, rr = (op & 15) * 2;
        reg[dd] = reg[rr];
        reg[dd + 1] = reg[rr + 1];
        break;
    }
    case Op::In:
        reg[d5] = datamemread(m, (((op >> 5) & 0x30) | (op & 15)) + 32);
        break;
    case Op::Out:
        datamemwrite(m, (((op >> 5) & 0x30) | (op & 15)) + 32, static_cast<uint8_t>(d), 255);
        break;
    case Op::Sbi:
    case Op::Cbi: {
        const int address = ((op >> 3) & 31) + 32;
        const uint8_t mask = static_cast<uint8_t>(1 << (op & 7));
        uint8_t value = datamemread(m, address);
        value = id == Op::Sbi ? (value | mask) : (value & ~mask);
        datamemwrite(m, address, value, mask);
        addcycles(m, 1);
        break;
    }
    case Op::Mul: {
        const int product = d * r;
        storeproduct(m, product);
        flagsmul(m, product);
        addcycles(m, 1);
        break;
    }
    case Op::Muls: {
        int product = sgn8(reg[d4]) * sgn8(reg[16 + (op & 15)]);
        if (product < 0) product += 65536;
        storeproduct(m, product);
        flagsmul(m, product);
        addcycles(m, 1);
        break;
    }
    case Op::Mulsu: {
        int product = sgn8(reg[16 + ((op >> 4) & 7)]) * reg[16 + (op & 7)];
        if (product < 0) product += 65536;
        storeproduct(m, product);
        flagsmul(m, product);
        addcycles(m, 1);
        break;
    }
    case Op::Fmul:
        fmul(m, reg[16 + ((op >> 4) & 7)] * reg[16 + (op & 7)]);
        addcycles(m, 1);
        break;
    case Op::Fmuls:
        fmul(m, sgn8(reg[16 + ((op >> 4) & 7)]) * sgn8(reg[16 + (op & 7)]));
        addcycles(m, 1);
        break;
    case Op::Fmulsu:
        fmul(m, sgn8(reg[16 + ((op >> 4) & 7)]) * reg[16 + (op & 7)]);
        addcycles(m, 1);
        break;
    case Op::Nop:
    case Op::Break:
        break;
    case Op::Sleep:
        m.stoprequest = true;
        m.stopreason = Machine::StopReason::Sleep;
        break;
    case Op::Wdr:
        m.watchdogcounter = 0;
        break;
    case Op::BranchClear:
    case Op::BranchSet: {
        const bool flag = (m.datamem[kSregAddress] >> (op & 7)) & 1;
        if (flag == (id == Op::BranchSet)) {
            int k = (op >> 3) & 0x7F;
            if (k >= 64) k -= 128;
            m.pc += k;
            pcnormalize(m);
            addcycles(m, 1);
        }
        break;
    }
    case Op::Rjmp:
    case Op::Rcall: {
        int k = op & 0xFFF;
        if (k > 2047) k -= 4096;
        if (id == Op::Rcall) pushreturnaddress(m, m.pc);
        m.pc += k;
        pcnormalize(m);
        if (id == Op::Rjmp) {
            addcycles(m, 1);
            checkinfiniteloop(m, oldpc);
        } else {
            callextra(m, 2);
        }
        break;
    }
    case Op::Call:
        pcstep(m);
        pushreturnaddress(m, m.pc);
        m.pc = absolutetarget(m, op, op2);
        callextra(m, 3);
        break;
    case Op::Icall:
    case Op::Eicall:
        pushreturnaddress(m, m.pc);
        m.pc = zmodflash(m);
        callextra(m, 2);
        break;
    case Op::Cpse:
        skipif(m, d == r);
        break;
    case Op::Sbrc:
    case Op::Sbrs:
        skipif(m, ((d >> (op & 7)) & 1) == (id == Op::Sbrs ? 1 : 0));
        break;
    case Op::Sbic:
    case Op::Sbis: {
        const int value = datamemread(m, ((op >> 3) & 31) + 32);
        skipif(m, ((value >> (op & 7)) & 1) == (id == Op::Sbis ? 1 : 0));
        break;
    }
    case Op::Push:
        pushbyte(m, static_cast<uint8_t>(d));
        addcycles(m, 1);
        break;
    case Op::Pop:
        reg[d5] = popbyte(m);
        addcycles(m, 1);
        break;
    case Op::LdX: load(m, d5, kXL, Mode::Plain); break;
    case Op::LdXPlus: load(m, d5, kXL, Mode::PostIncrement); break;
    case Op::LdMinusX: load(m, d5, kXL, Mode::PreDecrement); break;
    case Op::LdY: load(m, d5, kYL, Mode::Plain); break;
    case Op::LdYPlus: load(m, d5, kYL, Mode::PostIncrement); break;
    case Op::LdMinusY: load(m, d5, kYL, Mode::PreDecrement); break;
    case Op::LdZ: load(m, d5, kZL, Mode::Plain); break;
    case Op::LdZPlus: load(m, d5, kZL, Mode::PostIncrement); break;
    case Op::LdMinusZ: load(m, d5, kZL, Mode::PreDecrement); break;
    case Op::StX: store(m, d5, kXL, Mode::Plain); break;
    case Op::StXPlus: store(m, d5, kXL, Mode::PostIncrement); break;
    case Op::StMinusX: store(m, d5, kXL, Mode::PreDecrement); break;
    case Op::StY: store(m, d5, kYL, Mode::Plain); break;
    case Op::StYPlus: store(m, d5, kYL, Mode::PostIncrement); break;
    case Op::StMinusY: store(m, d5, kYL, Mode::PreDecrement); break;
    case Op::StZ: store(m, d5, kZL, Mode::Plain); break;
    case Op::StZPlus: store(m, d5, kZL, Mode::PostIncrement); break;
    case Op::StMinusZ: store(m, d5, kZL, Mode::PreDecrement); break;
    case Op::LddY:
    case Op::LddZ:
    case Op::StdY:
    case Op::StdZ: {
        const int q = ((op >> 8) & 0x20) | ((op >> 7) & 0x18) | (op & 7);
        const int low = (id == Op::LddY || id == Op::StdY) ? kYL : kZL;
        const int address = pointer(m, low) + q;
        if (id == Op::LddY || id == Op::LddZ)
            reg[d5] = datamemread(m, address);
        else
            datamemwrite(m, address, static_cast<uint8_t>(d), 255);
        addcycles(m, 1);
        break;
    }
    case Op::Lds:
        pcstep(m);
        reg[d5] = datamemread(m, op2);
        addcycles(m, 1);
        break;
    case Op::Sts:
        pcstep(m);
        datamemwrite(m, op2, static_cast<uint8_t>(d), 255);
        addcycles(m, 1);
        break;
    case Op::Lpm:
    case Op::Elpm: loadprogram(m, 0, false); break;
    case Op::LpmZ:
    case Op::ElpmZ: loadprogram(m, d5, false); break;
    case Op::LpmZPlus:
    case Op::ElpmZPlus: loadprogram(m, d5, true); break;
    default:
        break;
    }
}

}  // namespace velmora
