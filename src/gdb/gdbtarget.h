#pragma once
// What avr-gdb reads and writes of the simulated machine: its registers in the layout
// avr-gdb expects (R0-R31, SREG, SP, PC as a byte address) and memory in avr-gdb's address
// spaces (program memory from 0, the data space from 0x800000, EEPROM from 0x810000), and
// the breakpoint addresses it sets. Packets that run the program are the server's.

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "core/machine.h"

namespace velmora {

inline constexpr uint32_t kGdbDataSpace = 0x800000;
inline constexpr uint32_t kGdbEeprom = 0x810000;
// Register numbers past R31.
inline constexpr int kGdbSreg = 32, kGdbSp = 33, kGdbPc = 34;

class GdbTarget {
public:
    explicit GdbTarget(Machine& m) : m_(m) {}

    // The reply to a packet that reads or changes the machine; "" for one it does not know, as
    // the protocol wants; nothing for a packet it leaves to the server (c, s, vCont, k, D, ?).
    std::optional<std::string> answer(const std::string& packet);

    // The software and hardware breakpoints avr-gdb set, as byte addresses in program memory.
    const std::set<uint32_t>& breakpoints() const { return breakpoints_; }

    // Takes back every breakpoint and watch the client set (it has gone); the user's stay.
    void release();

    // The stop reply for a step or run that ended at a watched address ("T05watch:800100;"),
    // or nothing when none was reached; forgets the hit.
    std::optional<std::string> watchstop();

private:
    std::string registers() const;
    std::string setregisters(const std::string& hex);
    std::optional<std::string> registervalue(int number) const;
    std::string setregister(const std::string& request);
    std::string readmemory(const std::string& request) const;
    std::string writememory(const std::string& request, bool binary);
    std::string breakpoint(const std::string& request, bool set);
    std::string watchpoint(char type, const std::string& request, bool set);
    // The byte at a gdb address, or nothing outside every memory.
    uint8_t* place(uint32_t address) const;

    Machine& m_;
    std::set<uint32_t> breakpoints_;
    // Data addresses watched, with the kinds set on each (2 write, 3 read, 4 access).
    std::map<int, std::set<char>> watches_;
};

}  // namespace velmora
