#include "core/eeprom.h"

#include "core/interpreter.h"
#include "core/roleregisters.h"

namespace velmora {

namespace {

constexpr int kFirstKind = 2, kLastKind = 6;
constexpr uint32_t kReadStall = 4, kWriteStall = 2;
// The master bit is armed at 10 and dies below 7: four cycles after the program set it.
constexpr int kMasterArmed = 10, kMasterLast = 7;
constexpr int kHighAddressFrom = 256;

void holdaddress(Machine& m, int address) {
    setrolevalue(m, m.roles.eearl, static_cast<uint8_t>(address & 0xFF));
    if (m.eepromsize > kHighAddressFrom) setrolevalue(m, m.roles.eearh, static_cast<uint8_t>(address >> 8));
}

void finishwrite(Machine& m, uint8_t& eecr) {
    EepromState& e = m.eeprom;
    e.timeleft = 0;
    if (e.address < m.eepromsize) m.eeprommem[e.address] = e.data;
    eecr &= static_cast<uint8_t>(~kEewe);
    const int counter = e.mastercounter;
    e = EepromState{};
    e.mastercounter = counter;
}

}  // namespace

int eepromaddress(const Machine& m) {
    int address = rolevalue(m, m.roles.eearl);
    if (m.eepromsize > kHighAddressFrom) address += rolevalue(m, m.roles.eearh) * 256;
    return address;
}

bool eeprombusy(const Machine& m) {
    const int kind = m.kinds.eeconf;
    if (kind < kFirstKind || kind > kLastKind || !bound(m, m.roles.eecr)) return false;
    const EepromState& e = m.eeprom;
    return e.writing || e.mastercounter > 0 || (m.datamem[m.roles.eecr] & (kEere | kEewe | kEemwe));
}

void eepromstep(Machine& m) {
    if (!eeprombusy(m)) return;
    EepromState& e = m.eeprom;
    uint8_t& eecr = m.datamem[m.roles.eecr];

    if (!e.writing && (eecr & kEere)) {
        addcycles(m, kReadStall);
        eecr &= static_cast<uint8_t>(~kEere);
        const int address = eepromaddress(m);
        if (address < m.eepromsize) setrolevalue(m, m.roles.eedr, m.eeprommem[address]);
    }

    // Armed in the step that sets the bit and counted from the next, so that the usual
    // EEMWE-then-EEWE pair of instructions writes.
    if (e.mastercounter <= 0) {
        if (eecr & kEemwe) e.mastercounter = kMasterArmed;
    } else {
        e.mastercounter -= static_cast<int>(instructioncycles(m));
        eecr |= kEemwe;
        if (e.mastercounter < kMasterLast) {
            e.mastercounter = 0;
            eecr &= static_cast<uint8_t>(~kEemwe);
        }
    }

    if (e.writing) {
        e.timeleft -= static_cast<float>(instructioncycles(m)) / m.clockfrequency;
        // The program cannot change what is being written.
        eecr = static_cast<uint8_t>(((eecr | kEewe) & ~(kEere | kEepm)) | e.modebits);
        holdaddress(m, e.address);
        if (e.timeleft <= 0) finishwrite(m, eecr);
    }

    if (!e.writing && (eecr & kEemwe) && (eecr & kEewe)) {
        addcycles(m, kWriteStall);
        e.writing = true;
        e.address = eepromaddress(m);
        e.data = rolevalue(m, m.roles.eedr);
        e.modebits = eecr & kEepm;
        e.timeleft = m.eepromwritetime;
    }
}

}  // namespace velmora
