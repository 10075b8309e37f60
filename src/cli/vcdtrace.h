#pragma once
// Pin traces of `run --vcd`: every change of the chosen pins' levels, with its simulated
// time, as a Value Change Dump that waveform viewers (GTKWave) and sigrok read. The trace
// looks only when the machine asks for the outside world's turn, which every write to a
// port register and every scheduled input does, so a run whose pins rest pays nothing.

#include <array>
#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "core/machine.h"

namespace velmora {

// A port and some of its bits, as --vcd-pins names them ("PORTB" or "PORTD.2").
struct PinSelection {
    int portcode = 0;  // 5..11 for ports A..G
    uint8_t mask = 0;
    std::string text;  // as given, for messages
};

// "PORTx" or "PORTx.BIT" (any case); nothing for other text.
std::optional<PinSelection> parsepinselection(const std::string& text);

// The VCD time unit for a clock: the coarsest of 1 s, 100 ms ... 1 fs in which one cycle is
// a whole number of units, so every cycle boundary is exact. A clock whose period has no such
// unit (3.6864 MHz) gets the coarsest unit in which a cycle is at least 1000 units, and each
// time is rounded to the nearest unit: still one distinct time per cycle.
struct VcdTimescale {
    int exponent = 9;  // units per second: 10 to this power, 0..15
    uint64_t hz = 1;   // the clock, in whole hertz
    bool exact = true;

    std::string unit() const;  // "10 ns"
    uint64_t time(uint64_t cycles) const;
};
VcdTimescale vcdtimescale(float megahertz);

class VcdTrace {
public:
    // Opens the file and writes the header for the chosen pins of the model's ports (all pins
    // of every port when `pins` is empty); false with the reason in `error`.
    bool open(const std::string& path, const Machine& m, const std::vector<PinSelection>& pins, std::string& error);
    bool isopen() const { return file_.is_open(); }
    // The levels at the start of the run, at time 0.
    void start(const Machine& m);
    // Writes the levels that changed since the last look, at the current cycle.
    void look(const Machine& m);
    // Writes the end time and closes the file; false when writing failed.
    bool finish(const Machine& m);

private:
    struct Pin {
        int port;  // index 0..6
        int bit;
        std::string id;
    };
    void writetime(uint64_t time);

    std::ofstream file_;
    VcdTimescale scale_;
    std::vector<Pin> pins_;
    std::array<uint8_t, kPortCount> masks_{}, last_{};
    uint64_t lasttime_ = 0;
};

}  // namespace velmora
