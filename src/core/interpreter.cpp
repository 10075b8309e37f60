#include "core/interpreter.h"

#include <type_traits>
#include <utility>

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

// The state a handler works on. A single step works on the machine's own fields; a quiet run
// on copies in locals that the compiler can keep in registers, since any byte stored to the
// data space could otherwise be one of them and would force them back to memory per
// instruction. Whatever is not copied is reached through `m`. Procedures outside this file
// see the machine only, so the copies go back before such a call and are read again after it.
// What no instruction changes: the memories' places and the model's sizes.
struct Layout {
    explicit Layout(Machine& machine)
        : m(machine), data(machine.datamem.data()), program(machine.progmem.data()), flashwords(machine.flashwords),
          dataspacesize(machine.dataspacesize), sideeffects(machine.sideeffects.data()),
          datamask(machine.datamask.data()), eightbitpointers(machine.eightbitpointers),
          sramstack(machine.sramsize > 0), sramstart(96 + machine.extendedio), threebytepc(machine.threebytepc),
          infiniteloopstop(machine.infiniteloopstop) {}

    Machine& m;
    uint8_t* const data;
    const uint8_t* const program;
    const int32_t flashwords;
    const int dataspacesize;
    const uint8_t* const sideeffects;
    const uint8_t* const datamask;
    const bool eightbitpointers;
    const bool sramstack;  // the stack lies in SRAM, not in the hardware stack
    const int sramstart;
    const bool threebytepc;
    const bool infiniteloopstop;
};

struct StepState : Layout {
    explicit StepState(Machine& machine)
        : Layout(machine), pc(machine.pc), cycles(machine.totalcycles), status(machine.datamem[kSregAddress]) {}
    static constexpr bool kStatusApart = false;
    void flush() {}
    void reload() {}
    void stop(Machine::StopReason reason) {
        m.stoprequest = true;
        m.stopreason = reason;
    }

    int32_t& pc;
    uint64_t& cycles;
    uint8_t& status;  // SREG
};

struct QuietState : Layout {
    explicit QuietState(Machine& machine)
        : Layout(machine), pc(machine.pc), cycles(machine.totalcycles),
          limit(machine.stoprequest ? 0 : machine.attentioncycle), instructionsbefore(machine.totalinstructions),
          stepstart(machine.stepstartcycles), lastpc(machine.lastpc), status(machine.datamem[kSregAddress]) {}
    // SREG is kept apart from the data space too: the flags of one instruction are read by the next.
    static constexpr bool kStatusApart = true;
    void flush() {
        data[kSregAddress] = status;
        m.pc = pc;
        m.totalcycles = cycles;
        m.totalinstructions = instructionsbefore + done;
        m.stepstartcycles = stepstart;
        m.lastpc = lastpc;
    }
    void reload() {
        status = data[kSregAddress];
        pc = m.pc;
        cycles = m.totalcycles;
        limit = m.stoprequest ? 0 : m.attentioncycle;
    }
    void stop(Machine::StopReason reason) {
        m.stoprequest = true;
        m.stopreason = reason;
        limit = 0;
    }

    int32_t pc;
    uint64_t cycles;
    uint64_t limit;  // the run ends once cycles reach it: the attention cycle, or 0 after a stop
    const uint64_t instructionsbefore;
    uint32_t done = 0;  // instructions run, the one under way included
    uint64_t stepstart;
    int32_t lastpc;
    uint8_t status;
};

// A procedure of another file, on the machine itself.
template <class S, class F>
inline auto outside(S& s, F call) {
    s.flush();
    if constexpr (std::is_void_v<decltype(call(s.m))>) {
        call(s.m);
        s.reload();
    } else {
        const auto result = call(s.m);
        s.reload();
        return result;
    }
}

template <class S>
inline void spend(S& s, uint32_t n) {
    s.cycles += n;
}

// Steps pc by one word; running off the end of program memory wraps and stops.
template <class S>
inline void advance(S& s) {
    if (++s.pc >= s.flashwords) {
        s.pc = s.flashwords > 0 ? s.pc % s.flashwords : 0;
        s.stop(Machine::StopReason::EndOfMemory);
    }
}

template <class S>
inline void normalize(S& s) {
    s.pc = wrappedpc(s.pc, s.flashwords);
}

template <class S>
inline uint16_t progword(const S& s, int wordaddress) {
    const uint8_t* bytes = s.program + static_cast<size_t>(wordaddress) * 2;
    return static_cast<uint16_t>(bytes[0] | (bytes[1] << 8));
}

// The data space with its side effects, as datamemread and datamemwrite reach it.
template <class S>
inline uint8_t readdata(S& s, int address) {
    if (static_cast<unsigned>(address) < static_cast<unsigned>(s.dataspacesize) &&
        !(s.sideeffects[address] & kEffectReadPath)) {
        if constexpr (S::kStatusApart)
            if (address == kSregAddress) return s.status;
        return s.data[address];
    }
    return outside(s, [address](Machine& m) { return datamemreadslow(m, address); });
}

template <class S>
inline void writedata(S& s, int address, uint8_t value, uint8_t bits) {
    if (static_cast<unsigned>(address) < static_cast<unsigned>(s.dataspacesize) &&
        !(s.sideeffects[address] & kEffectWritePath)) {
        if constexpr (S::kStatusApart)
            if (address == kSregAddress) {
                s.status = s.datamask[address] & value;
                return;
            }
        s.data[address] = s.datamask[address] & value;
        return;
    }
    outside(s, [address, value, bits](Machine& m) { datamemwriteslow(m, address, value, bits); });
}

// The stack in SRAM as stack.cpp keeps it, done here while the stack pointer stays inside
// SRAM; the hardware stack and a pointer leaving SRAM (with its message) go to stack.cpp.
template <class S>
inline int stacktop(const S& s) {
    return s.eightbitpointers ? s.data[kSplAddress] : s.data[kSplAddress] | (s.data[kSphAddress] << 8);
}
template <class S>
inline bool instack(const S& s, int sp) {
    return sp >= s.sramstart && sp <= s.dataspacesize - 1;
}
template <class S>
inline void setstacktop(S& s, int sp) {
    s.data[kSplAddress] = static_cast<uint8_t>(sp & 0xFF) & s.datamask[kSplAddress];
    if (!s.eightbitpointers) s.data[kSphAddress] = static_cast<uint8_t>(sp >> 8) & s.datamask[kSphAddress];
}

template <class S>
inline void push(S& s, uint8_t value) {
    const int sp = stacktop(s);
    if (s.sramstack && instack(s, sp) && instack(s, sp - 1)) {
        s.data[sp] = value;
        setstacktop(s, sp - 1);
        return;
    }
    outside(s, [value](Machine& m) { pushbyte(m, value); });
}

template <class S>
inline uint8_t pop(S& s) {
    const int sp = stacktop(s) + 1;
    if (s.sramstack && instack(s, sp)) {
        setstacktop(s, sp);
        const int top = stacktop(s);  // as stored, through the registers' masks
        return instack(s, top) ? s.data[top] : 0;
    }
    return outside(s, [](Machine& m) { return popbyte(m); });
}

template <class S>
inline void pushreturn(S& s, int32_t address) {
    if (!s.sramstack) {
        outside(s, [address](Machine& m) { pushreturnaddress(m, address); });
        return;
    }
    push(s, static_cast<uint8_t>(address & 0xFF));
    push(s, static_cast<uint8_t>((address >> 8) & 0xFF));
    if (s.threebytepc) push(s, static_cast<uint8_t>((address >> 16) & 0xFF));
}

template <class S>
inline int32_t pullreturn(S& s) {
    if (!s.sramstack) return outside(s, [](Machine& m) { return pullreturnaddress(m); });
    int32_t address = 0;
    if (s.threebytepc) address = pop(s) << 16;
    address |= pop(s) << 8;
    address |= pop(s);
    return address;
}

template <class S>
inline uint8_t& sreg(S& s) { return s.status; }
template <class S>
inline int carry(const S& s) { return s.status & kFlagC; }
// Replaces the SREG bits of `mask` by `bits`.
template <class S>
inline void setflags(S& s, uint8_t mask, unsigned bits) {
    sreg(s) = static_cast<uint8_t>((sreg(s) & ~mask) | (bits & mask));
}
constexpr unsigned nzbits(int result) { return ((result & 0xFF) == 0 ? kFlagZ : 0) | ((result & 0x80) ? kFlagN : 0); }
// S = N xor V, from bits already in place.
constexpr unsigned withsign(unsigned bits) { return bits | ((((bits >> 2) ^ (bits >> 3)) & 1) << 4); }

// d + r + c: the classic carry, half-carry and two's-complement overflow rules.
template <class S>
inline void flagsadd(S& s, int d, int r, int c, int res) {
    unsigned bits = nzbits(res);
    if (res & 0x100) bits |= kFlagC;
    if (((d & 15) + (r & 15) + c) & 0x10) bits |= kFlagH;
    if ((d ^ res) & (r ^ res) & 0x80) bits |= kFlagV;
    setflags(s, kFlagC | kFlagZ | kFlagN | kFlagV | kFlagS | kFlagH, withsign(bits));
}

// d - r - c; `sticky` keeps Z only when it was set (SBC, SBCI, CPC).
template <class S>
inline void flagssub(S& s, int d, int r, int c, int res, bool sticky) {
    unsigned bits = res & 0x80 ? kFlagN : 0;
    if ((res & 0xFF) == 0) bits |= sticky ? (sreg(s) & kFlagZ) : kFlagZ;
    if (r + c > d) bits |= kFlagC;
    if ((r & 15) + c > (d & 15)) bits |= kFlagH;
    if ((d ^ r) & (d ^ res) & 0x80) bits |= kFlagV;
    setflags(s, kFlagC | kFlagZ | kFlagN | kFlagV | kFlagS | kFlagH, withsign(bits));
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

template <class S>
inline void flagslogic(S& s, int res) { setflags(s, kFlagZ | kFlagN | kFlagV | kFlagS, kLogicBits[res & 0xFF]); }

// `extra` (with `extramask`) adds H for LSL and ROL.
template <class S>
inline void flagsshift(S& s, int res, bool c, unsigned extra = 0, uint8_t extramask = 0) {
    setflags(s, kFlagC | kFlagZ | kFlagN | kFlagV | kFlagS | extramask,
             kShiftBits[(c ? 256 : 0) | (res & 0xFF)] | extra);
}

template <class S>
inline int word(const S& s, int low) { return s.data[low] | (s.data[low + 1] << 8); }

// Pointer registers: with an eight-bit data space only the low register counts.
template <class S>
inline int pointer(const S& s, int low) { return s.eightbitpointers ? s.data[low] : word(s, low); }
template <class S>
inline void setpointer(S& s, int low, int value) {
    s.data[low] = static_cast<uint8_t>(value & 0xFF);
    if (!s.eightbitpointers) s.data[low + 1] = static_cast<uint8_t>((value >> 8) & 0xFF);
}
template <class S>
inline int pointerwrap(const S& s) { return s.eightbitpointers ? 0xFF : 0xFFFF; }

template <class S>
void checkinfiniteloop(S& s, int32_t oldpc) {
    if (s.infiniteloopstop && s.pc == oldpc) {
        s.stop(Machine::StopReason::InfiniteLoop);
    }
}

template <class S>
int32_t absolutetarget(const S& s, uint16_t op, uint16_t op2) {
    const int32_t high = (op & 1) | ((op >> 3) & 0x3E);
    const int64_t target = static_cast<int64_t>(high) * 65536 + op2;
    return s.flashwords > 0 ? static_cast<int32_t>(target % s.flashwords) : 0;
}

template <class S>
int32_t zmodflash(const S& s) { return s.flashwords > 0 ? word(s, kZL) % s.flashwords : 0; }
template <class S>
inline void callcycles(S& s, uint32_t extra) { spend(s, s.threebytepc ? extra + 1 : extra); }

// A taken skip passes over one word, or two when that word starts a two-word instruction.
template <class S>
void skipif(S& s, bool condition) {
    if (!condition) return;
    const int words = istwoword(progword(s, s.pc)) ? 2 : 1;
    for (int i = 0; i < words; ++i) {
        advance(s);
        spend(s, 1);
    }
}

// ---- handlers ----

template <class S>
void hUnrecognized(S& s, uint16_t) {
    s.m.laststep = Machine::LastStep::Unrecognized;
    s.stop(Machine::StopReason::Unrecognized);
}

template <bool kCarry, class S>
void hAdd(S& s, uint16_t op) {
    const int dr = d5of(op), d = s.data[dr], r = s.data[r5of(op)], c = kCarry ? carry(s) : 0;
    const int res = d + r + c;
    s.data[dr] = static_cast<uint8_t>(res);
    flagsadd(s, d, r, c, res);
    advance(s);
}

template <bool kCarry, class S>
void hShiftLeft(S& s, uint16_t op) {  // LSL, ROL: the ADD/ADC words with equal registers
    const int dr = d5of(op), d = s.data[dr];
    const int res = ((d & 127) << 1) | (kCarry ? carry(s) : 0);
    s.data[dr] = static_cast<uint8_t>(res);
    flagsshift(s, res, d & 0x80, (d & 0x08) ? kFlagH : 0, kFlagH);
    advance(s);
}

template <bool kAdd, class S>
void hWord(S& s, uint16_t op) {  // ADIW, SBIW
    const int low = 24 + ((op >> 4) & 3) * 2;
    const int k = ((op >> 2) & 0x30) | (op & 15);
    const int w = word(s, low);
    const int res = (kAdd ? w + k : w - k) & 0xFFFF;
    const int sv = kAdd ? sgn16(w) + k : sgn16(w) - k;
    unsigned bits = (res == 0 ? kFlagZ : 0) | ((res & 0x8000) ? kFlagN : 0);
    if (kAdd ? (w + k >= 65536) : (k > w)) bits |= kFlagC;
    if (sv < -32768 || sv > 32767) bits |= kFlagV;
    s.data[low] = static_cast<uint8_t>(res & 0xFF);
    s.data[low + 1] = static_cast<uint8_t>(res >> 8);
    setflags(s, kFlagC | kFlagZ | kFlagN | kFlagV | kFlagS, withsign(bits));
    spend(s, 1);
    advance(s);
}

enum class Logic { And, Or, Eor };
template <Logic kOp>
inline int logic(int a, int b) {
    return kOp == Logic::And ? (a & b) : kOp == Logic::Or ? (a | b) : (a ^ b);
}

template <Logic kOp, class S>
void hLogic(S& s, uint16_t op) {  // AND, TST, OR, EOR, CLR
    const int dr = d5of(op);
    const int res = logic<kOp>(s.data[dr], s.data[r5of(op)]);
    s.data[dr] = static_cast<uint8_t>(res);
    flagslogic(s, res);
    advance(s);
}

template <Logic kOp, class S>
void hLogicImmediate(S& s, uint16_t op) {  // ANDI, ORI
    const int dr = d4of(op);
    const int res = logic<kOp>(s.data[dr], k8of(op));
    s.data[dr] = static_cast<uint8_t>(res);
    flagslogic(s, res);
    advance(s);
}

template <class S>
void hCom(S& s, uint16_t op) {
    const int dr = d5of(op), res = 255 - s.data[dr];
    s.data[dr] = static_cast<uint8_t>(res);
    setflags(s, kFlagC | kFlagZ | kFlagN | kFlagV | kFlagS, withsign(nzbits(res) | kFlagC));
    advance(s);
}

template <class S>
void hNeg(S& s, uint16_t op) {
    const int dr = d5of(op), d = s.data[dr], res = (0 - d) & 0xFF;
    s.data[dr] = static_cast<uint8_t>(res);
    flagssub(s, 0, d, 0, res, false);
    advance(s);
}

// SUB, SBC, CP, CPC on registers; SUBI, SBCI, CPI on an immediate.
template <bool kImmediate, bool kCarry, bool kStore, class S>
void hSubtract(S& s, uint16_t op) {
    const int dr = kImmediate ? d4of(op) : d5of(op);
    const int d = s.data[dr], r = kImmediate ? k8of(op) : s.data[r5of(op)];
    const int c = kCarry ? carry(s) : 0;
    const int res = (d - r - c) & 0xFF;
    if (kStore) s.data[dr] = static_cast<uint8_t>(res);
    flagssub(s, d, r, c, res, kCarry);
    advance(s);
}

template <int kDelta, class S>
void hIncDec(S& s, uint16_t op) {  // INC, DEC: C and H untouched
    const int dr = d5of(op), d = s.data[dr], res = (d + kDelta) & 0xFF;
    s.data[dr] = static_cast<uint8_t>(res);
    const bool v = kDelta > 0 ? d == 0x7F : d == 0x80;
    setflags(s, kFlagZ | kFlagN | kFlagV | kFlagS, withsign(nzbits(res) | (v ? kFlagV : 0)));
    advance(s);
}

enum class Shift { Asr, Lsr, Ror };
template <Shift kKind, class S>
void hShiftRight(S& s, uint16_t op) {
    const int dr = d5of(op), d = s.data[dr];
    int res = d >> 1;
    if (kKind == Shift::Asr) res |= d & 0x80;
    if (kKind == Shift::Ror) res |= carry(s) << 7;
    s.data[dr] = static_cast<uint8_t>(res);
    flagsshift(s, res, d & 1);
    advance(s);
}

template <class S>
void hSwap(S& s, uint16_t op) {
    uint8_t& r = s.data[d5of(op)];
    r = static_cast<uint8_t>((r << 4) | (r >> 4));
    advance(s);
}

template <bool kSet, class S>
void hSregBit(S& s, uint16_t op) {  // BSET, BCLR
    const uint8_t mask = static_cast<uint8_t>(1 << ((op >> 4) & 7));
    setflags(s, mask, kSet ? mask : 0);
    advance(s);
}

template <class S>
void hBst(S& s, uint16_t op) {
    setflags(s, kFlagT, ((s.data[d5of(op)] >> (op & 7)) & 1) ? kFlagT : 0);
    advance(s);
}

template <class S>
void hBld(S& s, uint16_t op) {
    uint8_t& r = s.data[d5of(op)];
    const uint8_t mask = static_cast<uint8_t>(1 << (op & 7));
    r = (sreg(s) & kFlagT) ? (r | mask) : (r & ~mask);
    advance(s);
}

template <class S>
void hMov(S& s, uint16_t op) {
    s.data[d5of(op)] = s.data[r5of(op)];
    advance(s);
}

template <class S>
void hLdi(S& s, uint16_t op) {
    s.data[d4of(op)] = static_cast<uint8_t>(k8of(op));
    advance(s);
}

template <class S>
void hMovw(S& s, uint16_t op) {
    const int dd = ((op >> 4) & 15) * 2, rr = (op & 15) * 2;
    s.data[dd] = s.data[rr];
    s.data[dd + 1] = s.data[rr + 1];
    advance(s);
}

template <class S>
void hIn(S& s, uint16_t op) {
    advance(s);
    s.data[d5of(op)] = readdata(s, io6of(op));
}

template <class S>
void hOut(S& s, uint16_t op) {
    advance(s);
    writedata(s, io6of(op), s.data[d5of(op)], 255);
}

template <bool kSet, class S>
void hIoBit(S& s, uint16_t op) {  // SBI, CBI: read, change one bit, write with that bit as mask
    advance(s);
    const int address = io5of(op);
    const uint8_t mask = static_cast<uint8_t>(1 << (op & 7));
    uint8_t value = readdata(s, address);
    value = kSet ? (value | mask) : (value & ~mask);
    writedata(s, address, value, mask);
    spend(s, 1);
}

template <class S>
void storeproduct(S& s, int product) {
    if (product < 0) product += 65536;
    s.data[0] = static_cast<uint8_t>(product & 0xFF);
    s.data[1] = static_cast<uint8_t>((product >> 8) & 0xFF);
    setflags(s, kFlagZ | kFlagC, ((product & 0xFFFF) == 0 ? kFlagZ : 0) | ((product & 0x8000) ? kFlagC : 0));
}

inline int s8(int v) { return static_cast<int8_t>(v); }
enum class Sign { UU, SS, SU };
template <Sign kSign>
inline int product(int a, int b) {
    return kSign == Sign::UU ? a * b : kSign == Sign::SS ? s8(a) * s8(b) : s8(a) * b;
}

template <class S>
void hMul(S& s, uint16_t op) {
    advance(s);
    storeproduct(s, s.data[d5of(op)] * s.data[r5of(op)]);
    spend(s, 1);
}

template <class S>
void hMuls(S& s, uint16_t op) {
    advance(s);
    storeproduct(s, product<Sign::SS>(s.data[d4of(op)], s.data[16 + (op & 15)]));
    spend(s, 1);
}

template <class S>
void hMulsu(S& s, uint16_t op) {
    advance(s);
    storeproduct(s, product<Sign::SU>(s.data[16 + ((op >> 4) & 7)], s.data[16 + (op & 7)]));
    spend(s, 1);
}

// Fractional multiply: C from bit 15 of the product, R1:R0 the product shifted left once.
template <Sign kSign, class S>
void hFmul(S& s, uint16_t op) {
    advance(s);
    int p = product<kSign>(s.data[16 + ((op >> 4) & 7)], s.data[16 + (op & 7)]);
    if (p < 0) p += 65536;
    const int shifted = (p << 1) & 0xFFFF;
    s.data[0] = static_cast<uint8_t>(shifted & 0xFF);
    s.data[1] = static_cast<uint8_t>(shifted >> 8);
    setflags(s, kFlagZ | kFlagC, (shifted == 0 ? kFlagZ : 0) | ((p & 0x8000) ? kFlagC : 0));
    spend(s, 1);
}

template <class S>
void hNop(S& s, uint16_t) { advance(s); }

// A NOP that the run control answers after the step.
template <class S>
void hBreak(S& s, uint16_t) {
    s.m.breakexecuted = true;
    s.m.endquiet = true;
    advance(s);
}

template <class S>
void hSleep(S& s, uint16_t) {
    advance(s);
    s.stop(Machine::StopReason::Sleep);
}

template <class S>
void hWdr(S& s, uint16_t) {
    advance(s);
    s.m.watchdogcounter = 0;
}

template <class S>
void hSpm(S&, uint16_t) {}  // pc stays: the same SPM runs again on every step

template <bool kSet, class S>
void hBranch(S& s, uint16_t op) {
    advance(s);
    if (((sreg(s) >> (op & 7)) & 1) == (kSet ? 1 : 0)) {
        s.pc += static_cast<int8_t>(static_cast<uint8_t>((op >> 2) & 0xFE)) >> 1;
        normalize(s);
        spend(s, 1);
    }
}

inline int relative12(uint16_t op) { return static_cast<int16_t>(static_cast<uint16_t>(op << 4)) >> 4; }

template <class S>
void hRjmp(S& s, uint16_t op) {
    const int32_t old = s.pc;
    advance(s);
    s.pc += relative12(op);
    normalize(s);
    spend(s, 1);
    checkinfiniteloop(s, old);
}

template <class S>
void hRcall(S& s, uint16_t op) {
    advance(s);
    pushreturn(s, s.pc);
    s.pc += relative12(op);
    normalize(s);
    callcycles(s, 2);
}

template <class S>
void hJmp(S& s, uint16_t op) {
    const int32_t old = s.pc;
    s.pc = absolutetarget(s, op, progword(s, s.pc + 1));
    spend(s, 2);
    checkinfiniteloop(s, old);
}

template <class S>
void hCall(S& s, uint16_t op) {
    const uint16_t op2 = progword(s, s.pc + 1);
    advance(s);
    advance(s);
    pushreturn(s, s.pc);
    s.pc = absolutetarget(s, op, op2);
    callcycles(s, 3);
}

template <class S>
void hIjmp(S& s, uint16_t) {  // IJMP, EIJMP: EIND is never consulted
    const int32_t old = s.pc;
    s.pc = zmodflash(s);
    spend(s, 1);
    checkinfiniteloop(s, old);
}

template <class S>
void hIcall(S& s, uint16_t) {  // ICALL, EICALL
    advance(s);
    pushreturn(s, s.pc);
    s.pc = zmodflash(s);
    callcycles(s, 2);
}

template <bool kReti, class S>
void hRet(S& s, uint16_t) {
    s.pc = pullreturn(s);
    normalize(s);
    callcycles(s, 3);
    if (kReti) {
        sreg(s) |= kFlagI;
        s.m.afterreti = true;
    }
}

template <class S>
void hCpse(S& s, uint16_t op) {
    advance(s);
    skipif(s, s.data[d5of(op)] == s.data[r5of(op)]);
}

template <bool kSet, class S>
void hSkipRegisterBit(S& s, uint16_t op) {  // SBRC, SBRS
    advance(s);
    skipif(s, ((s.data[d5of(op)] >> (op & 7)) & 1) == (kSet ? 1 : 0));
}

template <bool kSet, class S>
void hSkipIoBit(S& s, uint16_t op) {  // SBIC, SBIS
    advance(s);
    skipif(s, ((readdata(s, io5of(op)) >> (op & 7)) & 1) == (kSet ? 1 : 0));
}

template <class S>
void hPush(S& s, uint16_t op) {
    advance(s);
    push(s, s.data[d5of(op)]);
    spend(s, 1);
}

template <class S>
void hPop(S& s, uint16_t op) {
    advance(s);
    const uint8_t value = pop(s);
    s.data[d5of(op)] = value;
    spend(s, 1);
}

enum class Mode { Plain, PostIncrement, PreDecrement };

template <int kLow, Mode kMode, class S>
void hLoad(S& s, uint16_t op) {
    advance(s);
    if (kMode == Mode::PreDecrement) setpointer(s, kLow, (pointer(s, kLow) - 1) & pointerwrap(s));
    const uint8_t value = readdata(s, pointer(s, kLow));
    s.data[d5of(op)] = value;
    // The pointer is read again after the destination was written (LD R26,X+).
    if (kMode == Mode::PostIncrement) setpointer(s, kLow, (pointer(s, kLow) + 1) & pointerwrap(s));
    spend(s, 1);
}

template <int kLow, Mode kMode, class S>
void hStore(S& s, uint16_t op) {
    advance(s);
    if (kMode == Mode::PreDecrement) setpointer(s, kLow, (pointer(s, kLow) - 1) & pointerwrap(s));
    writedata(s, pointer(s, kLow), s.data[d5of(op)], 255);
    if (kMode == Mode::PostIncrement) setpointer(s, kLow, (pointer(s, kLow) + 1) & pointerwrap(s));
    spend(s, 1);
}

inline int displacement(uint16_t op) { return ((op >> 8) & 0x20) | ((op >> 7) & 0x18) | (op & 7); }

template <int kLow, class S>
void hLoadDisplaced(S& s, uint16_t op) {  // LDD: pointer plus q, no wrap of the sum
    advance(s);
    const uint8_t value = readdata(s, pointer(s, kLow) + displacement(op));
    s.data[d5of(op)] = value;
    spend(s, 1);
}

template <int kLow, class S>
void hStoreDisplaced(S& s, uint16_t op) {
    advance(s);
    writedata(s, pointer(s, kLow) + displacement(op), s.data[d5of(op)], 255);
    spend(s, 1);
}

template <class S>
void hLds(S& s, uint16_t op) {
    const uint16_t address = progword(s, s.pc + 1);
    advance(s);
    advance(s);
    const uint8_t value = readdata(s, address);
    s.data[d5of(op)] = value;
    spend(s, 1);
}

template <class S>
void hSts(S& s, uint16_t op) {
    const uint16_t address = progword(s, s.pc + 1);
    advance(s);
    advance(s);
    writedata(s, address, s.data[d5of(op)], 255);
    spend(s, 1);
}

// LPM and ELPM alike: Z is a byte address; past the end the destination keeps its value.
template <bool kDestination, bool kIncrement, class S>
void hLoadProgram(S& s, uint16_t op) {
    advance(s);
    const int dr = kDestination ? d5of(op) : 0;
    const int z = word(s, kZL);
    if (z <= s.m.flashsize - 1) s.data[dr] = s.m.progmem[z];
    if (kIncrement) {
        const int next = (z + 1) & 0xFFFF;
        s.data[kZL] = static_cast<uint8_t>(next & 0xFF);
        s.data[kZH] = static_cast<uint8_t>(next >> 8);
    }
    spend(s, 2);
}

template <class S>
using HandlerOn = void (*)(S&, uint16_t);

template <class S>
constexpr HandlerOn<S> handlerfor(Op id) {
    switch (id) {
    case Op::Unrecognized: return hUnrecognized<S>;
    case Op::Adc: return hAdd<true, S>;
    case Op::Add: return hAdd<false, S>;
    case Op::Adiw: return hWord<true, S>;
    case Op::And: case Op::Tst: return hLogic<Logic::And, S>;
    case Op::Andi: return hLogicImmediate<Logic::And, S>;
    case Op::Asr: return hShiftRight<Shift::Asr, S>;
    case Op::Bclr: return hSregBit<false, S>;
    case Op::Bld: return hBld<S>;
    case Op::BranchClear: return hBranch<false, S>;
    case Op::BranchSet: return hBranch<true, S>;
    case Op::Break: return hBreak<S>;
    case Op::Bset: return hSregBit<true, S>;
    case Op::Bst: return hBst<S>;
    case Op::Call: return hCall<S>;
    case Op::Cbi: return hIoBit<false, S>;
    case Op::Clr: case Op::Eor: return hLogic<Logic::Eor, S>;
    case Op::Com: return hCom<S>;
    case Op::Cp: return hSubtract<false, false, false, S>;
    case Op::Cpc: return hSubtract<false, true, false, S>;
    case Op::Cpi: return hSubtract<true, false, false, S>;
    case Op::Cpse: return hCpse<S>;
    case Op::Dec: return hIncDec<-1, S>;
    case Op::Eicall: case Op::Icall: return hIcall<S>;
    case Op::Eijmp: case Op::Ijmp: return hIjmp<S>;
    case Op::Elpm: case Op::Lpm: return hLoadProgram<false, false, S>;
    case Op::ElpmZ: case Op::LpmZ: return hLoadProgram<true, false, S>;
    case Op::ElpmZPlus: case Op::LpmZPlus: return hLoadProgram<true, true, S>;
    case Op::Fmul: return hFmul<Sign::UU, S>;
    case Op::Fmuls: return hFmul<Sign::SS, S>;
    case Op::Fmulsu: return hFmul<Sign::SU, S>;
    case Op::In: return hIn<S>;
    case Op::Inc: return hIncDec<1, S>;
    case Op::Jmp: return hJmp<S>;
    case Op::LdX: return hLoad<kXL, Mode::Plain, S>;
    case Op::LdXPlus: return hLoad<kXL, Mode::PostIncrement, S>;
    case Op::LdMinusX: return hLoad<kXL, Mode::PreDecrement, S>;
    case Op::LdY: return hLoad<kYL, Mode::Plain, S>;
    case Op::LdYPlus: return hLoad<kYL, Mode::PostIncrement, S>;
    case Op::LdMinusY: return hLoad<kYL, Mode::PreDecrement, S>;
    case Op::LddY: return hLoadDisplaced<kYL, S>;
    case Op::LdZ: return hLoad<kZL, Mode::Plain, S>;
    case Op::LdZPlus: return hLoad<kZL, Mode::PostIncrement, S>;
    case Op::LdMinusZ: return hLoad<kZL, Mode::PreDecrement, S>;
    case Op::LddZ: return hLoadDisplaced<kZL, S>;
    case Op::Ldi: return hLdi<S>;
    case Op::Lds: return hLds<S>;
    case Op::Lsl: return hShiftLeft<false, S>;
    case Op::Lsr: return hShiftRight<Shift::Lsr, S>;
    case Op::Mov: return hMov<S>;
    case Op::Movw: return hMovw<S>;
    case Op::Mul: return hMul<S>;
    case Op::Muls: return hMuls<S>;
    case Op::Mulsu: return hMulsu<S>;
    case Op::Neg: return hNeg<S>;
    case Op::Nop: return hNop<S>;
    case Op::Or: return hLogic<Logic::Or, S>;
    case Op::Ori: return hLogicImmediate<Logic::Or, S>;
    case Op::Out: return hOut<S>;
    case Op::Pop: return hPop<S>;
    case Op::Push: return hPush<S>;
    case Op::Rcall: return hRcall<S>;
    case Op::Ret: return hRet<false, S>;
    case Op::Reti: return hRet<true, S>;
    case Op::Rjmp: return hRjmp<S>;
    case Op::Rol: return hShiftLeft<true, S>;
    case Op::Ror: return hShiftRight<Shift::Ror, S>;
    case Op::Sbc: return hSubtract<false, true, true, S>;
    case Op::Sbci: return hSubtract<true, true, true, S>;
    case Op::Sbi: return hIoBit<true, S>;
    case Op::Sbic: return hSkipIoBit<false, S>;
    case Op::Sbis: return hSkipIoBit<true, S>;
    case Op::Sbiw: return hWord<false, S>;
    case Op::Sbrc: return hSkipRegisterBit<false, S>;
    case Op::Sbrs: return hSkipRegisterBit<true, S>;
    case Op::Sleep: return hSleep<S>;
    case Op::Spm: return hSpm<S>;
    case Op::StX: return hStore<kXL, Mode::Plain, S>;
    case Op::StXPlus: return hStore<kXL, Mode::PostIncrement, S>;
    case Op::StMinusX: return hStore<kXL, Mode::PreDecrement, S>;
    case Op::StY: return hStore<kYL, Mode::Plain, S>;
    case Op::StYPlus: return hStore<kYL, Mode::PostIncrement, S>;
    case Op::StMinusY: return hStore<kYL, Mode::PreDecrement, S>;
    case Op::StdY: return hStoreDisplaced<kYL, S>;
    case Op::StZ: return hStore<kZL, Mode::Plain, S>;
    case Op::StZPlus: return hStore<kZL, Mode::PostIncrement, S>;
    case Op::StMinusZ: return hStore<kZL, Mode::PreDecrement, S>;
    case Op::StdZ: return hStoreDisplaced<kZL, S>;
    case Op::Sts: return hSts<S>;
    case Op::Sub: return hSubtract<false, false, true, S>;
    case Op::Subi: return hSubtract<true, false, true, S>;
    case Op::Swap: return hSwap<S>;
    case Op::Wdr: return hWdr<S>;
    case Op::Count: break;
    }
    return hUnrecognized<S>;
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
    // Interrupts set within the run end it; when they were already set, nothing was pending
    // and only a write to an interrupt's register (which ends the run too) can change that.
    // Without an interrupt table the I flag matters to nobody.
    QuietState s(m);
    const uint8_t interruptflag = m.interrupttable.empty() || (s.status & kFlagI) ? 0 : kFlagI;
    const uint8_t* const breakat = m.breakat.data();
    m.laststep = Machine::LastStep::Instruction;
    m.endquiet = false;
    bool ended = true;
    for (;;) {
        if (s.done == count) {
            ended = false;
            break;
        }
        ++s.done;
        s.stepstart = s.cycles;
        s.cycles += 1;
        s.lastpc = s.pc;
        const uint16_t op = progword(s, s.pc);
        // Every handler inlined into one switch: a jump per instruction instead of a call. RETI
        // ends the quiet, so afterreti, clear when it began, stays clear within it.
        switch (decode(op)) {
#define VELMORA_CASE(name, text)                                                                      \
    case Op::name: {                                                                                  \
        constexpr HandlerOn<QuietState> handler = handlerfor<QuietState>(Op::name);                   \
        handler(s, op);                                                                               \
        if (Op::name == Op::Reti || (!registersonly(Op::name) && ((s.status & interruptflag) || m.endquiet))) \
            goto end;                                                                                 \
        break;                                                                                        \
    }
            VELMORA_INSTRUCTIONS(VELMORA_CASE)
#undef VELMORA_CASE
        default: __builtin_unreachable();  // the table holds only the chain's ids
        }
        // A stop sets the limit to 0.
        if (s.cycles >= s.limit) break;
        if constexpr (Breakpoints)
            if (breakat[s.pc]) break;
    }
end:
    s.flush();
    return {s.done, ended};
}

// One step's instruction on the machine's own fields, for each id.
template <size_t Id>
void onmachine(Machine& m, uint16_t op) {
    StepState s(m);
    constexpr HandlerOn<StepState> handler = handlerfor<StepState>(static_cast<Op>(Id));
    handler(s, op);
}

template <size_t... Id>
constexpr detail::HandlerTable handlertable(std::index_sequence<Id...>) {
    return {onmachine<Id>...};
}

}  // namespace

QuietRun runquiet(Machine& m, uint32_t count) {
    return m.breakpointsset ? runquietwith<true>(m, count) : runquietwith<false>(m, count);
}

namespace detail {
constinit const HandlerTable g_handlers = handlertable(std::make_index_sequence<static_cast<size_t>(Op::Count)>());
}  // namespace detail

}  // namespace velmora
