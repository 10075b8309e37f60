#include "core/stack.h"

namespace velmora {

namespace {
bool insram(const Machine& m, int sp) { return sp >= 96 + m.extendedio && sp <= m.dataspacesize - 1; }

void setstackpointer(Machine& m, int sp) {
    m.datamem[kSplAddress] = static_cast<uint8_t>(sp & 0xFF) & m.datamask[kSplAddress];
    if (!m.eightbitpointers) m.datamem[kSphAddress] = static_cast<uint8_t>(sp >> 8) & m.datamask[kSphAddress];
    if (!insram(m, sp) && m.events) m.events->fault("Stack Pointer out of SRAM space!");
}

void fault(Machine& m, const char* text) {
    m.hwstackdepth = kHwStackFaulted;
    if (m.events) m.events->fault(text);
}
}  // namespace

int stackpointer(const Machine& m) {
    if (m.eightbitpointers) return m.datamem[kSplAddress];
    return m.datamem[kSplAddress] | (m.datamem[kSphAddress] << 8);
}

void stackpushbyte(Machine& m, uint8_t value) {
    const int sp = stackpointer(m);
    if (insram(m, sp)) m.datamem[sp] = value;
}

uint8_t stackpullbyte(Machine& m) {
    const int sp = stackpointer(m);
    return insram(m, sp) ? m.datamem[sp] : 0;
}

void spdecrement(Machine& m) {
    const int wrap = m.eightbitpointers ? 256 : 65536;
    setstackpointer(m, (stackpointer(m) - 1 + wrap) % wrap);
}

void spincrement(Machine& m) {
    const int wrap = m.eightbitpointers ? 256 : 65536;
    setstackpointer(m, (stackpointer(m) + 1) % wrap);
}

void hwstackpush(Machine& m, int32_t value) {
    m.hwstack[2] = m.hwstack[1];
    m.hwstack[1] = m.hwstack[0];
    m.hwstack[0] = value;
    m.hwstackdepth += 1;
    if (m.hwstackdepth == 4) fault(m, "Hardware Stack Overflow!");
}

int32_t hwstackpop(Machine& m) {
    const int32_t top = m.hwstack[0];
    const bool wasempty = m.hwstackdepth == 0;
    m.hwstack[0] = m.hwstack[1];
    m.hwstack[1] = m.hwstack[2];
    m.hwstackdepth -= 1;
    if (wasempty) fault(m, "Hardware Stack Underflow!");
    return top;
}

void pushreturnaddress(Machine& m, int32_t address) {
    if (m.sramsize == 0) {
        hwstackpush(m, address);
        return;
    }
    pushbyte(m, static_cast<uint8_t>(address & 0xFF));
    pushbyte(m, static_cast<uint8_t>((address >> 8) & 0xFF));
    if (m.threebytepc) pushbyte(m, static_cast<uint8_t>((address >> 16) & 0xFF));
}

int32_t pullreturnaddress(Machine& m) {
    if (m.sramsize == 0) return hwstackpop(m);
    int32_t address = 0;
    if (m.threebytepc) address = popbyte(m) << 16;
    address |= popbyte(m) << 8;
    address |= popbyte(m);
    return address;
}

}  // namespace velmora
