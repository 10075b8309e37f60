#include "core/memory.h"

#include "core/ports.h"

namespace velmora {

namespace {
int portindexofpin(const Machine& m, int address) {
    for (int i = 0; i < kPortCount; ++i)
        if (m.roles.portexists[i] && m.roles.pin[i] == address && address != 0) return i;
    return -1;
}

// Roles left at 0 are unbound and must not claim R0.
void mark(Machine& m, int address, uint8_t effect) {
    if (address > 0 && address < m.dataspacesize) m.sideeffects[address] |= effect;
}

// Every register a peripheral phase reads. The stack pointer and SREG are not among them:
// the pending-interrupt test reads the I flag itself.
void markwake(Machine& m) {
    const RegisterRoles& r = m.roles;
    std::vector<int> addresses = {r.eecr,  r.eedr,   r.eearl, r.eearh, r.udr,   r.ucsra, r.ucsrb,
                                  r.ucsrc, r.ubrrl,  r.ubrrh, r.admux, r.adcsra, r.adch, r.adcl,
                                  r.adcsrb, r.acsr,  r.acsrb, r.sfior, r.mcucr, r.eicra};
    for (int i = 0; i < kPortCount; ++i)
        if (r.portexists[i]) addresses.insert(addresses.end(), {r.port[i], r.pin[i], r.ddr[i]});
    m.peripheralsalwaysawake = false;
    for (const int address : addresses) {
        // The instructions change R0..R31 without this path, so such a model never lets the phases rest.
        if (address > 0 && address < kRegisterFileSize) m.peripheralsalwaysawake = true;
        mark(m, address, kEffectWrite | kEffectWake);
    }
}
void watchreached(Machine& m, int address, bool write) {
    m.watchhit = address;
    m.watchhitwrite = write;
    m.breakexecuted = true;
    m.endquiet = true;
}
}  // namespace

bool setdatawatch(Machine& m, int address, bool reads, bool writes) {
    if (address < kRegisterFileSize || address >= m.dataspacesize) return false;
    uint8_t& effects = m.sideeffects[static_cast<size_t>(address)];
    effects = static_cast<uint8_t>((effects & ~(kEffectWatchRead | kEffectWatchWrite)) | (reads ? kEffectWatchRead : 0) |
                                   (writes ? kEffectWatchWrite : 0));
    return true;
}

void marksideeffects(Machine& m) {
    m.sideeffects.assign(m.dataspacesize, kEffectNone);
    for (int i = 0; i < kPortCount; ++i)
        if (m.roles.portexists[i]) mark(m, m.roles.pin[i], kEffectRead | kEffectWrite);
    if (sharesucsrc(m)) mark(m, m.roles.ucsrc, kEffectRead | kEffectWrite);
    if (hasusart(m)) mark(m, m.roles.udr, kEffectRead | kEffectWrite);
    if (m.kinds.adcconf >= 2) {
        mark(m, m.roles.adcl, kEffectRead);
        mark(m, m.roles.adch, kEffectRead);
    }
    m.interruptsuntracked = false;
    for (const InterruptEntry& e : m.interrupttable) {
        // An entry without a flag field tests R0, so address 0 is marked here on purpose.
        if (e.polarity == 1 && e.flagaddress >= 0 && e.flagaddress < m.dataspacesize)
            m.sideeffects[e.flagaddress] |= kEffectWrite | kEffectClearFlag;
        // Whether an interrupt is pending changes only with these cells (and SREG's I flag);
        // the instructions change R0..R31 without this path.
        for (const int address : {e.enableaddress, e.flagaddress}) {
            if (address >= 0 && address < kRegisterFileSize) m.interruptsuntracked = true;
            if (address >= kRegisterFileSize && address < m.dataspacesize)
                m.sideeffects[address] |= kEffectWrite | kEffectInterrupt;
        }
    }
    markwake(m);
}

uint8_t datamemreadslow(Machine& m, int address) {
    if (address < 0 || address > m.dataspacesize - 1) return 0;
    if (m.sideeffects[address] & kEffectWatchRead) watchreached(m, address, false);
    uint8_t value = m.datamem[address];
    const int port = portindexofpin(m, address);
    if (port >= 0) {
        // The pins are worked out now, so a change made between two steps is seen at once.
        portstep(m);
        value = m.ports[port].pinread;
    }
    if (sharesucsrc(m) && m.roles.ucsrc > 0 && address == m.roles.ucsrc) {
        // Two reads one cycle apart give UCSRC; a single read gives the UBRRH shadow.
        if (m.usart.lastucsrcread != 0 && m.totalcycles == m.usart.lastucsrcread + 1) {
            m.usart.lastucsrcread = 0;
        } else {
            m.usart.lastucsrcread = m.totalcycles;
            value = static_cast<uint8_t>(m.usart.ubrrhshadow);
        }
    }
    if (hasusart(m) && m.roles.udr > 0 && address == m.roles.udr && m.usart.rxfifo1 >= 0) {
        value = static_cast<uint8_t>(m.usart.rxfifo1);
        m.usart.rxfifo1 = m.usart.rxfifo2;
        m.usart.rxfifo2 = -1;
    }
    if (m.kinds.adcconf >= 2) {
        if (m.roles.adcl > 0 && address == m.roles.adcl) m.adc.locked = true;
        if (m.roles.adch > 0 && address == m.roles.adch) m.adc.locked = false;
    }
    return value;
}

void datamemwriteslow(Machine& m, int address, uint8_t value, uint8_t bits) {
    if (address < 0 || address > m.dataspacesize - 1) return;
    if (m.sideeffects[address] & kEffectWatchWrite) watchreached(m, address, true);
    const uint8_t old = m.datamem[address];
    m.datamem[address] = m.datamask[address] & value;
    const int port = portindexofpin(m, address);
    if (port >= 0) {
        m.datamem[address] = 0;
        const int portaddress = m.roles.port[port];
        if (portaddress > 0 && portaddress < m.dataspacesize)
            m.datamem[portaddress] ^= static_cast<uint8_t>(value & bits);
    }
    const uint8_t effects = m.sideeffects[address];
    if (effects & kEffectWake) {
        wakeperipherals(m);
        m.attention = true;
    }
    if (effects & kEffectInterrupt) m.endquiet = true;
    if (effects & kEffectClearFlag) {
        for (const InterruptEntry& e : m.interrupttable) {
            if (e.polarity != 1 || e.flagaddress != address) continue;
            if (value & e.flagmask)
                m.datamem[address] &= static_cast<uint8_t>(~e.flagmask);
            else if (old & e.flagmask)
                m.datamem[address] |= e.flagmask;
        }
    }
    if (sharesucsrc(m) && m.roles.ucsrc > 0 && address == m.roles.ucsrc && !(value & 0x80)) {
        m.usart.ubrrhshadow = value & 15;
        m.datamem[address] = old;
    }
    if (hasusart(m) && m.roles.udr > 0 && address == m.roles.udr) {
        if (m.roles.ucsra > 0 && (m.datamem[m.roles.ucsra] & 0x20)) m.usart.txbuffer = value;
        m.datamem[address] = 0;
    }
}

}  // namespace velmora
