#pragma once
// A bare simulated machine with recording messenger, scripted clock and in-memory
// settings, for tests that run instructions.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/machine.h"
#include "core/memorysettings.h"
#include "core/runcontrol.h"
#include "core/testmachine.h"

namespace velmora::test {

struct RecordingMessenger : Messenger {
    std::vector<std::string> messages;
    void show(const std::string& text, MessageKind) override { messages.push_back(text); }
};

// Time moves only when the test says so; naps and yields are counted.
struct ScriptedClock : Clock {
    double time = 1000.0;
    double tick = 0;  // added at every reading, for runs that must yield now and then
    int naps = 0, yields = 0;
    double now() override { return time += tick; }
    void nap() override {
        ++naps;
        time += 0.005;
    }

protected:
    void yieldevents() override { ++yields; }
};

// The data address of a named register of the machine's table, or -1.
inline int registeraddress(const Machine& m, const std::string& name) {
    for (const NamedRegister& r : m.namedregisters)
        if (r.name == name) return r.address;
    return -1;
}

struct Sim {
    Machine m;
    RecordingMessenger messenger;
    ScriptedClock clock;
    MemorySettings settings;
    RunControl run{m, messenger, clock, settings};

    explicit Sim(int flashsize = 32768, int sramsize = 2048, int eepromsize = 1024) {
        configurebaremachine(m, flashsize, sramsize, eepromsize);
        clean(m);
    }
    void load(const std::vector<uint16_t>& words) { loadwords(m, words); }
    // Sets SP to the top of SRAM, as start-up code does.
    void stacktop() {
        const int top = m.dataspacesize - 1;
        m.datamem[kSplAddress] = static_cast<uint8_t>(top & 0xFF);
        m.datamem[kSphAddress] = static_cast<uint8_t>(top >> 8);
    }
    void step(int n = 1) {
        for (int i = 0; i < n; ++i) run.simulatestep();
    }
    uint8_t& reg(int r) { return m.datamem[r]; }
    uint8_t sreg() const { return m.datamem[kSregAddress]; }
    void setsreg(uint8_t v) { m.datamem[kSregAddress] = v; }
};

}  // namespace velmora::test
