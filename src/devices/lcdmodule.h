#pragma once
// The character LCD module on the simulated pins: it watches the E line, takes commands and
// data from the data lines by RS, answers reads with the busy flag, and counts its busy time
// in simulated microseconds. As a Device it acts only after a step in which a pin could have
// changed and at the step where its busy time runs out; `refreshlcd` is the same work done
// after every step, which the on-change turns must equal exactly.

#include <cstdint>
#include <functional>
#include <string>

#include "devices/device.h"
#include "devices/lcdconfig.h"
#include "devices/lcdcontroller.h"

namespace velmora {

class LcdModule : public Device {
public:
    LcdConfig config;
    LcdController state;
    LcdCharRom rom;  // blank until a view loads it; headless text needs none

    // The `errorlab` indicator: a byte arrived while busy and was dropped.
    bool error = false;
    // The trace file "lcdlog.txt" (F12): path, and whether lines are written to it.
    std::string tracepath;
    bool tracing = false;
    // Called after every executed byte and every reset: each is one repaint of the panel.
    std::function<void()> changed;

    void reset(Machine& m) override;
    uint64_t attend(Machine& m) override;
    // The turn of a hook that runs after every step.
    void refreshlcd(Machine& m);
    // Brings the busy time up to the present cycle between turns (for showing the state at
    // the end of a run); the per-step countdown is always up to date already.
    void settle(const Machine& m);

    // The module as the window opens it: cursor off, user characters blank, display clear.
    void initialise();
    LcdContext context(const Machine& m) const;

private:
    // Busy time as the per-step countdown leaves it after this step.
    void countdownstep(const Machine& m);
    void catchupbusy(const Machine& m);
    void bus(Machine& m, bool everystep);
    void takebusbyte(Machine& m);
    void execute(Machine& m, uint8_t byte);
    void drivereaddata(Machine& m, bool always);
    void releasebus(Machine& m);
    uint64_t nextturn(const Machine& m) const;
    uint8_t datamask() const;
    void trace(const std::string& line) const;

    // When the clock makes the countdown exact, busy time is worked out from the cycle at
    // which it began instead of being counted down in every step.
    uint64_t busystart_ = 0;
    float busystartvalue_ = 0;
    bool startpending_ = false;  // reset: the countdown starts with the next step
};

// True when a clock of this many MHz makes the per-step float countdown of a busy time exact,
// so its end can be computed from cycles (powers of two from 1/1024 to 1024 MHz).
bool exactcountdown(float mhz);

}  // namespace velmora
