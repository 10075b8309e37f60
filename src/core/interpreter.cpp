#include "core/interpreter.h"

#include "core/decode.h"
#include "core/memory.h"
#include "core/stack.h"

namespace velmora {

namespace {

// One small handler per line of the chain, dispatched through a table indexed by the
// decoded id. Each handler reads only the fields it needs.

inline int sgn16(int v) { return v >= 32768 ? v - 65536 : v; }
inline int d5of(uint16_t op) { return (op >> 4) & 31; }
inline int r5of(uint16_t op) { return (op & 15) | ((op >> 5) & 16); }
inline int d4of(uint16_t op) { return 16 + ((op >> 4) & 15); }
inline int k8of(uint16_t op) { return ((op >> 4) & 0xF0) | (op & 15); }
inline int io6of(uint16_t op) { return (((op >> 5) & 0x30) | (op & 15)) + 32; }
inline int io5of(uint16_t op) { return ((op >> 3) & 31) + 32; }

inline uint8_t& sreg(Machine& m) { return m.datamem[kSregAddress]; }
inline int carry(const Machine& m) { return m.datamem[kSregAddress] & kFlagC; }
// Replaces the SREG bits of `mask` by `bits`.
inline void setflags(Machine& m, uint8_t mask, unsigned bits) {
    sreg(m) = static_cast<uint8_t>((sreg(m) & ~mask) | (bits & mask));
}
constexpr unsigned nzbits(int result) { return ((result & 0xFF) == 0 ? kFlagZ : 0) | ((result & 0x80) ? kFlagN : 0); }
// S = N xor V, from bits already in place.
constexpr unsigned withsign(unsigned bits) { return bits | ((((bits >> 2) ^ (bits >> 3)) & 1) << 4); }

// d + r + c: the classic carry, half-carry and two's-complement overflow rules.
inline void flagsadd(Machine& m, int d, int r, int c, int res) {
    unsigned bits = nzbits(res);
    if (res & 0x100) bits |= kFlagC;
    if (((d & 15) + (r & 15) + c) & 0x10) bits |= kFlagH;
    if ((d ^ res) & (r ^ res) & 0x80) bits |= kFlagV;
    setflags(m, kFlagC | kFlagZ | kFlagN | kFlagV | kFlagS | kFlagH, withsign(bits));
}

// d - r - c; `sticky` keeps Z only when it was set (SBC, SBCI, CPC).
inline void flagssub(Machine& m, int d, int r, int c, int res, bool sticky) {
    unsigned bits = res & 0x80 ? kFlagN : 0;
    if ((res & 0xFF) == 0) bits |= sticky ? (sreg(m) & kFlagZ) : kFlagZ;
    if (r + c > d) bits |= kFlagC;
    if ((r & 15) + c > (d & 15)) bits |= kFlagH;
    if ((d ^ r) & (d ^ res) & 0x80) bits |= kFlagV;
    setflags(m, kFlagC | kFlagZ | kFlagN | kFlagV | kFlagS | kFlagH, withsign(bits));
}

// Logic results: Z and N from the result, V cleared, S = N.
constexpr unsigned logicbits(int res) { return withsign(nzbits(res)); }
// Shifts and rotates: C from the shifted-out bit, V = N xor C.
constexpr unsigned shiftbits(int res, bool c) {
    unsigned bits = nzbits(res) | (c ? kFlagC : 0);
    if (((bits >> 2) ^ bits) & 1) bits |= kFlagV;
    return withsign(bits);
}
// Both worked out once for every result (and carry): the flags then cost one look-up.
constexpr auto kLogicBits = [] {
    std::array<uint8_t, 256> table{};
    for (int res = 0; res < 256; ++res) table[res] = static_cast<uint8_t>(logicbits(res));
    return table;
}();
constexpr auto kShiftBits = [] {
    std::array<uint8_t, 512> table{};
    for (int index = 0; index < 512; ++index) table[index] = static_cast<uint8_t>(shiftbits(index & 0xFF, index >> 8));
    return table;
}();

inline void flagslogic(Machine& m, int res) { setflags(m, kFlagZ | kFlagN | kFlagV | kFlagS, kLogicBits[res & 0xFF]); }

// `extra` (with `extramask`) adds H for LSL and ROL.
inline void flagsshift(Machine& m, int res, bool c, unsigned extra = 0, uint8_t extramask = 0) {
    setflags(m, kFlagC | kFlagZ | kFlagN | kFlagV | kFlagS | extramask,
             kShiftBits[(c ? 256 : 0) | (res & 0xFF)] | extra);
}

inline int word(const Machine& m, int low) { return m.datamem[low] | (m.datamem[low + 1] << 8); }

// Pointer registers: with an eight-bit data space only the low register counts.
inline int pointer(const Machine& m, int low) { return m.eightbitpointers ? m.datamem[low] : word(m, low); }
inline void setpointer(Machine& m, int low, int value) {
    m.datamem[low] = static_cast<uint8_t>(value & 0xFF);
    if (!m.eightbitpointers) m.datamem[low + 1] = static_cast<uint8_t>((value >> 8) & 0xFF);
}
inline int pointerwrap(const Machine& m) { return m.eightbitpointers ? 0xFF : 0xFFFF; }

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
inline void callcycles(Machine& m, uint32_t extra) { addcycles(m, m.threebytepc ? extra + 1 : extra); }

// A taken skip passes over one word, or two when that word starts a two-word instruction.
void skipif(Machine& m, bool condition) {
    if (!condition) return;
    const int words = istwoword(progword(m, m.pc)) ? 2 : 1;
    for (int i = 0; i < words; ++i) {
        pcstep(m);
        addcycles(m, 1);
    }
}

// ---- handlers ----

void hUnrecognized(Machine& m, uint16_t) {
    m.laststep = Machine::LastStep::Unrecognized;
    m.stoprequest = true;
    m.stopreason = Machine::StopReason::Unrecognized;
}

template <bool kCarry>
void hAdd(Machine& m, uint16_t op) {
    const int dr = d5of(op), d = m.datamem[dr], r = m.datamem[r5of(op)], c = kCarry ? carry(m) : 0;
    const int res = d + r + c;
    m.datamem[dr] = static_cast<uint8_t>(res);
    flagsadd(m, d, r, c, res);
    pcstep(m);
}

template <bool kCarry>
void hShiftLeft(Machine& m, uint16_t op) {  // LSL, ROL: the ADD/ADC words with equal registers
    const int dr = d5of(op), d = m.datamem[dr];
    const int res = ((d & 127) << 1) | (kCarry ? carry(m) : 0);
    m.datamem[dr] = static_cast<uint8_t>(res);
    flagsshift(m, res, d & 0x80, (d & 0x08) ? kFlagH : 0, kFlagH);
    pcstep(m);
}

template <bool kAdd>
void hWord(Machine& m, uint16_t op) {  // ADIW, SBIW
    const int low = 24 + ((op >> 4) & 3) * 2;
    const int k = ((op >> 2) & 0x30) | (op & 15);
    const int w = word(m, low);
    const int res = (kAdd ? w + k : w - k) & 0xFFFF;
    const int sv = kAdd ? sgn16(w) + k : sgn16(w) - k;
    unsigned bits = (res == 0 ? kFlagZ : 0) | ((res & 0x8000) ? kFlagN : 0);
    if (kAdd ? (w + k >= 65536) : (k > w)) bits |= kFlagC;
    if (sv < -32768 || sv > 32767) bits |= kFlagV;
    m.datamem[low] = static_cast<uint8_t>(res & 0xFF);
    m.datamem[low + 1] = static_cast<uint8_t>(res >> 8);
    setflags(m, kFlagC | kFlagZ | kFlagN | kFlagV | kFlagS, withsign(bits));
    addcycles(m, 1);
    pcstep(m);
}

enum class Logic { And, Or, Eor };
template <Logic kOp>
inline int logic(int a, int b) {
    return kOp == Logic::And ? (a & b) : kOp == Logic::Or ? (a | b) : (a ^ b);
}

template <Logic kOp>
void hLogic(Machine& m, uint16_t op) {  // AND, TST, OR, EOR, CLR
    const int dr = d5of(op);
    const int res = logic<kOp>(m.datamem[dr], m.datamem[r5of(op)]);
    m.datamem[dr] = static_cast<uint8_t>(res);
    flagslogic(m, res);
    pcstep(m);
}

template <Logic kOp>
void hLogicImmediate(Machine& m, uint16_t op) {  // ANDI, ORI
    const int dr = d4of(op);
    const int res = logic<kOp>(m.datamem[dr], k8of(op));
    m.datamem[dr] = static_cast<uint8_t>(res);
    flagslogic(m, res);
    pcstep(m);
}

void hCom(Machine& m, uint16_t op) {
    const int dr = d5of(op), res = 255 - m.datamem[dr];
    m.datamem[dr] = static_cast<uint8_t>(res);
    setflags(m, kFlagC | kFlagZ | kFlagN | kFlagV | kFlagS, withsign(nzbits(res) | kFlagC));
    pcstep(m);
}

void hNeg(Machine& m, uint16_t op) {
    const int dr = d5of(op), d = m.datamem[dr], res = (0 - d) & 0xFF;
    m.datamem[dr] = static_cast<uint8_t>(res);
    flagssub(m, 0, d, 0, res, false);
    pcstep(m);
}

// SUB, SBC, CP, CPC on registers; SUBI, SBCI, CPI on an immediate.
template <bool kImmediate, bool kCarry, bool kStore>
void hSubtract(Machine& m, uint16_t op) {
    const int dr = kImmediate ? d4of(op) : d5of(op);
    const int d = m.datamem[dr], r = kImmediate ? k8of(op) : m.datamem[r5of(op)];
    const int c = kCarry ? carry(m) : 0;
    const int res = (d - r - c) & 0xFF;
    if (kStore) m.datamem[dr] = static_cast<uint8_t>(res);
    flagssub(m, d, r, c, res, kCarry);
    pcstep(m);
}

template <int kDelta>
void hIncDec(Machine& m, uint16_t op) {  // INC, DEC: C and H untouched
    const int dr = d5of(op), d = m.datamem[dr], res = (d + kDelta) & 0xFF;
    m.datamem[dr] = static_cast<uint8_t>(res);
    const bool v = kDelta > 0 ? d == 0x7F : d == 0x80;
    setflags(m, kFlagZ | kFlagN | kFlagV | kFlagS, withsign(nzbits(res) | (v ? kFlagV : 0)));
    pcstep(m);
}

enum class Shift { Asr, Lsr, Ror };
template <Shift kKind>
void hShiftRight(Machine& m, uint16_t op) {
    const int dr = d5of(op), d = m.datamem[dr];
    int res = d >> 1;
    if (kKind == Shift::Asr) res |= d & 0x80;
    if (kKind == Shift::Ror) res |= carry(m) << 7;
    m.datamem[dr] = static_cast<uint8_t>(res);
    flagsshift(m, res, d & 1);
    pcstep(m);
}

void hSwap(Machine& m, uint16_t op) {
    uint8_t& r = m.datamem[d5of(op)];
    r = static_cast<uint8_t>((r << 4) | (r >> 4));
    pcstep(m);
}

template <bool kSet>
void hSregBit(Machine& m, uint16_t op) {  // BSET, BCLR
    const uint8_t mask = static_cast<uint8_t>(1 << ((op >> 4) & 7));
    setflags(m, mask, kSet ? mask : 0);
    pcstep(m);
}

void hBst(Machine& m, uint16_t op) {
    setflags(m, kFlagT, ((m.datamem[d5of(op)] >> (op & 7)) & 1) ? kFlagT : 0);
    pcstep(m);
}

void hBld(Machine& m, uint16_t op) {
    uint8_t& r = m.datamem[d5of(op)];
    const uint8_t mask = static_cast<uint8_t>(1 << (op & 7));
    r = (sreg(m) & kFlagT) ? (r | mask) : (r & ~mask);
    pcstep(m);
}

void hMov(Machine& m, uint16_t op) {
    m.datamem[d5of(op)] = m.datamem[r5of(op)];
    pcstep(m);
}

void hLdi(Machine& m, uint16_t op) {
    m.datamem[d4of(op)] = static_cast<uint8_t>(k8of(op));
    pcstep(m);
}

void hMovw(Machine& m, uint16_t op) {
    const int dd = ((op >> 4) & 15) * 2, rr = (op & 15) * 2;
    m.datamem[dd] = m.datamem[rr];
    m.datamem[dd + 1] = m.datamem[rr + 1];
    pcstep(m);
}

void hIn(Machine& m, uint16_t op) {
    pcstep(m);
    m.datamem[d5of(op)] = datamemread(m, io6of(op));
}

void hOut(Machine& m, uint16_t op) {
    pcstep(m);
    datamemwrite(m, io6of(op), m.datamem[d5of(op)], 255);
}

template <bool kSet>
void hIoBit(Machine& m, uint16_t op) {  // SBI, CBI: read, change one bit, write with that bit as mask
    pcstep(m);
    const int address = io5of(op);
    const uint8_t mask = static_cast<uint8_t>(1 << (op & 7));
    uint8_t value = datamemread(m, address);
    value = kSet ? (value | mask) : (value & ~mask);
    datamemwrite(m, address, value, mask);
    addcycles(m, 1);
}

void storeproduct(Machine& m, int product) {
    if (product < 0) product += 65536;
    m.datamem[0] = static_cast<uint8_t>(product & 0xFF);
    m.datamem[1] = static_cast<uint8_t>((product >> 8) & 0xFF);
    setflags(m, kFlagZ | kFlagC, ((product & 0xFFFF) == 0 ? kFlagZ : 0) | ((product & 0x8000) ? kFlagC : 0));
}

inline int s8(int v) { return static_cast<int8_t>(v); }
enum class Sign { UU, SS, SU };
template <Sign kSign>
inline int product(int a, int b) {
    return kSign == Sign::UU ? a * b : kSign == Sign::SS ? s8(a) * s8(b) : s8(a) * b;
}

void hMul(Machine& m, uint16_t op) {
    pcstep(m);
    storeproduct(m, m.datamem[d5of(op)] * m.datamem[r5of(op)]);
    addcycles(m, 1);
}

void hMuls(Machine& m, uint16_t op) {
    pcstep(m);
    storeproduct(m, product<Sign::SS>(m.datamem[d4of(op)], m.datamem[16 + (op & 15)]));
    addcycles(m, 1);
}

void hMulsu(Machine& m, uint16_t op) {
    pcstep(m);
    storeproduct(m, product<Sign::SU>(m.datamem[16 + ((op >> 4) & 7)], m.datamem[16 + (op & 7)]));
    addcycles(m, 1);
}

// Fractional multiply: C from bit 15 of the product, R1:R0 the product shifted left once.
template <Sign kSign>
void hFmul(Machine& m, uint16_t op) {
    pcstep(m);
    int p = product<kSign>(m.datamem[16 + ((op >> 4) & 7)], m.datamem[16 + (op & 7)]);
    if (p < 0) p += 65536;
    const int shifted = (p << 1) & 0xFFFF;
    m.datamem[0] = static_cast<uint8_t>(shifted & 0xFF);
    m.datamem[1] = static_cast<uint8_t>(shifted >> 8);
    setflags(m, kFlagZ | kFlagC, (shifted == 0 ? kFlagZ : 0) | ((p & 0x8000) ? kFlagC : 0));
    addcycles(m, 1);
}

void hNop(Machine& m, uint16_t) { pcstep(m); }

// A NOP that the run control answers after the step.
void hBreak(Machine& m, uint16_t) {
    m.breakexecuted = true;
    m.endquiet = true;
    pcstep(m);
}

void hSleep(Machine& m, uint16_t) {
    pcstep(m);
    m.stoprequest = true;
    m.stopreason = Machine::StopReason::Sleep;
}

void hWdr(Machine& m, uint16_t) {
    pcstep(m);
    m.watchdogcounter = 0;
}

void hSpm(Machine&, uint16_t) {}  // pc stays: the same SPM runs again on every step

template <bool kSet>
void hBranch(Machine& m, uint16_t op) {
    pcstep(m);
    if (((sreg(m) >> (op & 7)) & 1) == (kSet ? 1 : 0)) {
        m.pc += static_cast<int8_t>(static_cast<uint8_t>((op >> 2) & 0xFE)) >> 1;
        pcnormalize(m);
        addcycles(m, 1);
    }
}

inline int relative12(uint16_t op) { return static_cast<int16_t>(static_cast<uint16_t>(op << 4)) >> 4; }

void hRjmp(Machine& m, uint16_t op) {
    const int32_t old = m.pc;
    pcstep(m);
    m.pc += relative12(op);
    pcnormalize(m);
    addcycles(m, 1);
    checkinfiniteloop(m, old);
}

void hRcall(Machine& m, uint16_t op) {
    pcstep(m);
    pushreturnaddress(m, m.pc);
    m.pc += relative12(op);
    pcnormalize(m);
    callcycles(m, 2);
}

void hJmp(Machine& m, uint16_t op) {
    const int32_t old = m.pc;
    m.pc = absolutetarget(m, op, progword(m, m.pc + 1));
    addcycles(m, 2);
    checkinfiniteloop(m, old);
}

void hCall(Machine& m, uint16_t op) {
    const uint16_t op2 = progword(m, m.pc + 1);
    pcstep(m);
    pcstep(m);
    pushreturnaddress(m, m.pc);
    m.pc = absolutetarget(m, op, op2);
    callcycles(m, 3);
}

void hIjmp(Machine& m, uint16_t) {  // IJMP, EIJMP: EIND is never consulted
    const int32_t old = m.pc;
    m.pc = zmodflash(m);
    addcycles(m, 1);
    checkinfiniteloop(m, old);
}

void hIcall(Machine& m, uint16_t) {  // ICALL, EICALL
    pcstep(m);
    pushreturnaddress(m, m.pc);
    m.pc = zmodflash(m);
    callcycles(m, 2);
}

template <bool kReti>
void hRet(Machine& m, uint16_t) {
    m.pc = pullreturnaddress(m);
    pcnormalize(m);
    callcycles(m, 3);
    if (kReti) {
        sreg(m) |= kFlagI;
        m.afterreti = true;
    }
}

void hCpse(Machine& m, uint16_t op) {
    pcstep(m);
    skipif(m, m.datamem[d5of(op)] == m.datamem[r5of(op)]);
}

template <bool kSet>
void hSkipRegisterBit(Machine& m, uint16_t op) {  // SBRC, SBRS
    pcstep(m);
    skipif(m, ((m.datamem[d5of(op)] >> (op & 7)) & 1) == (kSet ? 1 : 0));
}

template <bool kSet>
void hSkipIoBit(Machine& m, uint16_t op) {  // SBIC, SBIS
    pcstep(m);
    skipif(m, ((datamemread(m, io5of(op)) >> (op & 7)) & 1) == (kSet ? 1 : 0));
}

void hPush(Machine& m, uint16_t op) {
    pcstep(m);
    pushbyte(m, m.datamem[d5of(op)]);
    addcycles(m, 1);
}

void hPop(Machine& m, uint16_t op) {
    pcstep(m);
    const uint8_t value = popbyte(m);
    m.datamem[d5of(op)] = value;
    addcycles(m, 1);
}

enum class Mode { Plain, PostIncrement, PreDecrement };

template <int kLow, Mode kMode>
void hLoad(Machine& m, uint16_t op) {
    pcstep(m);
    if (kMode == Mode::PreDecrement) setpointer(m, kLow, (pointer(m, kLow) - 1) & pointerwrap(m));
    const uint8_t value = datamemread(m, pointer(m, kLow));
    m.datamem[d5of(op)] = value;
    // The pointer is read again after the destination was written (LD R26,X+).
    if (kMode == Mode::PostIncrement) setpointer(m, kLow, (pointer(m, kLow) + 1) & pointerwrap(m));
    addcycles(m, 1);
}

template <int kLow, Mode kMode>
void hStore(Machine& m, uint16_t op) {
    pcstep(m);
    if (kMode == Mode::PreDecrement) setpointer(m, kLow, (pointer(m, kLow) - 1) & pointerwrap(m));
    datamemwrite(m, pointer(m, kLow), m.datamem[d5of(op)], 255);
    if (kMode == Mode::PostIncrement) setpointer(m, kLow, (pointer(m, kLow) + 1) & pointerwrap(m));
    addcycles(m, 1);
}

inline int displacement(uint16_t op) { return ((op >> 8) & 0x20) | ((op >> 7) & 0x18) | (op & 7); }

template <int kLow>
void hLoadDisplaced(Machine& m, uint16_t op) {  // LDD: pointer plus q, no wrap of the sum
    pcstep(m);
    const uint8_t value = datamemread(m, pointer(m, kLow) + displacement(op));
    m.datamem[d5of(op)] = value;
    addcycles(m, 1);
}

template <int kLow>
void hStoreDisplaced(Machine& m, uint16_t op) {
    pcstep(m);
    datamemwrite(m, pointer(m, kLow) + displacement(op), m.datamem[d5of(op)], 255);
    addcycles(m, 1);
}

void hLds(Machine& m, uint16_t op) {
    const uint16_t address = progword(m, m.pc + 1);
    pcstep(m);
    pcstep(m);
    const uint8_t value = datamemread(m, address);
    m.datamem[d5of(op)] = value;
    addcycles(m, 1);
}

void hSts(Machine& m, uint16_t op) {
    const uint16_t address = progword(m, m.pc + 1);
    pcstep(m);
    pcstep(m);
    datamemwrite(m, address, m.datamem[d5of(op)], 255);
    addcycles(m, 1);
}

// LPM and ELPM alike: Z is a byte address; past the end the destination keeps its value.
template <bool kDestination, bool kIncrement>
void hLoadProgram(Machine& m, uint16_t op) {
    pcstep(m);
    const int dr = kDestination ? d5of(op) : 0;
    const int z = word(m, kZL);
    if (z <= m.flashsize - 1) m.datamem[dr] = m.progmem[z];
    if (kIncrement) {
        const int next = (z + 1) & 0xFFFF;
        m.datamem[kZL] = static_cast<uint8_t>(next & 0xFF);
        m.datamem[kZH] = static_cast<uint8_t>(next >> 8);
    }
    addcycles(m, 2);
}

constexpr detail::Handler handlerfor(Op id) {
    switch (id) {
    case Op::Unrecognized: return hUnrecognized;
    case Op::Adc: return hAdd<true>;
    case Op::Add: return hAdd<false>;
    case Op::Adiw: return hWord<true>;
    case Op::And: case Op::Tst: return hLogic<Logic::And>;
    case Op::Andi: return hLogicImmediate<Logic::And>;
    case Op::Asr: return hShiftRight<Shift::Asr>;
    case Op::Bclr: return hSregBit<false>;
    case Op::Bld: return hBld;
    case Op::BranchClear: return hBranch<false>;
    case Op::BranchSet: return hBranch<true>;
    case Op::Break: return hBreak;
    case Op::Bset: return hSregBit<true>;
    case Op::Bst: return hBst;
    case Op::Call: return hCall;
    case Op::Cbi: return hIoBit<false>;
    case Op::Clr: case Op::Eor: return hLogic<Logic::Eor>;
    case Op::Com: return hCom;
    case Op::Cp: return hSubtract<false, false, false>;
    case Op::Cpc: return hSubtract<false, true, false>;
    case Op::Cpi: return hSubtract<true, false, false>;
    case Op::Cpse: return hCpse;
    case Op::Dec: return hIncDec<-1>;
    case Op::Eicall: case Op::Icall: return hIcall;
    case Op::Eijmp: case Op::Ijmp: return hIjmp;
    case Op::Elpm: case Op::Lpm: return hLoadProgram<false, false>;
    case Op::ElpmZ: case Op::LpmZ: return hLoadProgram<true, false>;
    case Op::ElpmZPlus: case Op::LpmZPlus: return hLoadProgram<true, true>;
    case Op::Fmul: return hFmul<Sign::UU>;
    case Op::Fmuls: return hFmul<Sign::SS>;
    case Op::Fmulsu: return hFmul<Sign::SU>;
    case Op::In: return hIn;
    case Op::Inc: return hIncDec<1>;
    case Op::Jmp: return hJmp;
    case Op::LdX: return hLoad<kXL, Mode::Plain>;
    case Op::LdXPlus: return hLoad<kXL, Mode::PostIncrement>;
    case Op::LdMinusX: return hLoad<kXL, Mode::PreDecrement>;
    case Op::LdY: return hLoad<kYL, Mode::Plain>;
    case Op::LdYPlus: return hLoad<kYL, Mode::PostIncrement>;
    case Op::LdMinusY: return hLoad<kYL, Mode::PreDecrement>;
    case Op::LddY: return hLoadDisplaced<kYL>;
    case Op::LdZ: return hLoad<kZL, Mode::Plain>;
    case Op::LdZPlus: return hLoad<kZL, Mode::PostIncrement>;
    case Op::LdMinusZ: return hLoad<kZL, Mode::PreDecrement>;
    case Op::LddZ: return hLoadDisplaced<kZL>;
    case Op::Ldi: return hLdi;
    case Op::Lds: return hLds;
    case Op::Lsl: return hShiftLeft<false>;
    case Op::Lsr: return hShiftRight<Shift::Lsr>;
    case Op::Mov: return hMov;
    case Op::Movw: return hMovw;
    case Op::Mul: return hMul;
    case Op::Muls: return hMuls;
    case Op::Mulsu: return hMulsu;
    case Op::Neg: return hNeg;
    case Op::Nop: return hNop;
    case Op::Or: return hLogic<Logic::Or>;
    case Op::Ori: return hLogicImmediate<Logic::Or>;
    case Op::Out: return hOut;
    case Op::Pop: return hPop;
    case Op::Push: return hPush;
    case Op::Rcall: return hRcall;
    case Op::Ret: return hRet<false>;
    case Op::Reti: return hRet<true>;
    case Op::Rjmp: return hRjmp;
    case Op::Rol: return hShiftLeft<true>;
    case Op::Ror: return hShiftRight<Shift::Ror>;
    case Op::Sbc: return hSubtract<false, true, true>;
    case Op::Sbci: return hSubtract<true, true, true>;
    case Op::Sbi: return hIoBit<true>;
    case Op::Sbic: return hSkipIoBit<false>;
    case Op::Sbis: return hSkipIoBit<true>;
    case Op::Sbiw: return hWord<false>;
    case Op::Sbrc: return hSkipRegisterBit<false>;
    case Op::Sbrs: return hSkipRegisterBit<true>;
    case Op::Sleep: return hSleep;
    case Op::Spm: return hSpm;
    case Op::StX: return hStore<kXL, Mode::Plain>;
    case Op::StXPlus: return hStore<kXL, Mode::PostIncrement>;
    case Op::StMinusX: return hStore<kXL, Mode::PreDecrement>;
    case Op::StY: return hStore<kYL, Mode::Plain>;
    case Op::StYPlus: return hStore<kYL, Mode::PostIncrement>;
    case Op::StMinusY: return hStore<kYL, Mode::PreDecrement>;
    case Op::StdY: return hStoreDisplaced<kYL>;
    case Op::StZ: return hStore<kZL, Mode::Plain>;
    case Op::StZPlus: return hStore<kZL, Mode::PostIncrement>;
    case Op::StMinusZ: return hStore<kZL, Mode::PreDecrement>;
    case Op::StdZ: return hStoreDisplaced<kZL>;
    case Op::Sts: return hSts;
    case Op::Sub: return hSubtract<false, false, true>;
    case Op::Subi: return hSubtract<true, false, true>;
    case Op::Swap: return hSwap;
    case Op::Wdr: return hWdr;
    case Op::Count: break;
    }
    return hUnrecognized;
}

}  // namespace

// Instructions that only change registers, flags (not I) and pc need not look for the end of
// the quiet beyond a stop and the next attention cycle.
constexpr bool registersonly(Op id) {
    switch (id) {
    case Op::Adc: case Op::Add: case Op::Adiw: case Op::And: case Op::Andi: case Op::Asr: case Op::Bclr:
    case Op::Bld: case Op::BranchClear: case Op::BranchSet: case Op::Bst: case Op::Clr: case Op::Com:
    case Op::Cp: case Op::Cpc: case Op::Cpi: case Op::Cpse: case Op::Dec: case Op::Eor: case Op::Fmul:
    case Op::Fmuls: case Op::Fmulsu: case Op::Ijmp: case Op::Eijmp: case Op::Inc: case Op::Jmp: case Op::Ldi:
    case Op::Lsl: case Op::Lsr: case Op::Mov: case Op::Movw: case Op::Mul: case Op::Muls: case Op::Mulsu:
    case Op::Neg: case Op::Nop: case Op::Or: case Op::Ori: case Op::Rjmp: case Op::Rol: case Op::Ror:
    case Op::Sbc: case Op::Sbci: case Op::Sbiw: case Op::Sbrc: case Op::Sbrs: case Op::Sub: case Op::Subi:
    case Op::Swap: case Op::Tst:
        return true;
    default:
        return false;
    }
}

namespace {

// Breakpoint words end the run after the step that reaches one; a run without any tests
// nothing for them, so it is a separate instance of the loop.
template <bool Breakpoints>
[[gnu::flatten]] QuietRun runquietwith(Machine& m, uint32_t count) {
    // No instruction moves the memories, so their places stay in registers. Interrupts set
    // within the run end it; when they were already set, nothing was pending and only a write
    // to an interrupt's register (which ends the run too) can change that. Without an interrupt
    // table the I flag matters to nobody.
    const uint8_t* const program = m.progmem.data();
    const uint8_t interruptflag =
        m.interrupttable.empty() || (m.datamem[kSregAddress] & kFlagI) ? 0 : kFlagI;
    const uint8_t* const sreg = interruptflag ? m.datamem.data() + kSregAddress : &interruptflag;
    const Op* const decoded = decodetable().data();
    const uint8_t* const breakat = m.breakat.data();
    m.laststep = Machine::LastStep::Instruction;
    m.endquiet = false;
    for (uint32_t i = 0; i < count; ++i) {
        m.stepstartcycles = m.totalcycles;
        ++m.totalinstructions;
        addcycles(m, 1);
        const int32_t pc = m.pc;
        const uint16_t op = static_cast<uint16_t>(program[2 * pc] | (program[2 * pc + 1] << 8));
        m.lastpc = pc;
        // Every handler inlined into one switch: a jump per instruction instead of a call. RETI
        // ends the quiet, so afterreti, clear when it began, stays clear within it.
        switch (decoded[op]) {
#define VELMORA_CASE(name, text)                                                                      \
    case Op::name: {                                                                                  \
        constexpr detail::Handler handler = handlerfor(Op::name);                                     \
        handler(m, op);                                                                               \
        if (Op::name == Op::Reti || (!registersonly(Op::name) && ((*sreg & interruptflag) || m.endquiet))) \
            return {i + 1, true};                                                                     \
        break;                                                                                        \
    }
            VELMORA_INSTRUCTIONS(VELMORA_CASE)
#undef VELMORA_CASE
        default: __builtin_unreachable();  // the table holds only the chain's ids
        }
        if (m.stoprequest || m.totalcycles >= m.attentioncycle) return {i + 1, true};
        if constexpr (Breakpoints)
            if (breakat[m.pc]) return {i + 1, true};
    }
    return {count, false};
}

}  // namespace

QuietRun runquiet(Machine& m, uint32_t count) {
    return m.breakpointsset ? runquietwith<true>(m, count) : runquietwith<false>(m, count);
}

namespace detail {
constinit const HandlerTable g_handlers = [] {
    HandlerTable table{};
    for (size_t i = 0; i < table.size(); ++i) table[i] = handlerfor(static_cast<Op>(i));
    return table;
}();
}  // namespace detail

}  // namespace velmora
