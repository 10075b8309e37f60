#pragma once
// State of the pin model and of the timed on-chip peripherals, as the machine holds it.
// Plain values; the behaviour lives in ports.cpp, extinterrupts.cpp, adc.cpp and eeprom.cpp.

#include <array>
#include <cstdint>

namespace velmora {

// Ports, channels, input latches and analog values change through the operations of
// core/ports.h, which tell the pin model to work the pins out again.

// One port A..G.
struct PortState {
    uint8_t pininput = 0;  // what outside drivers put on the pins; only input pins keep bits
    uint8_t pinlevel = 0;  // level of every pin, outputs and inputs
    uint8_t pinread = 0;   // what a read of PINx gives: the level, analog pins read 0
};

// One ADC channel 0..15.
struct AnalogState {
    int analoginput = 0;      // 0..1023
    bool analogmode = false;  // the channel's pin is used as an analog input
};

// What the port phase last worked from, so that a step which changed none of it costs a
// compare or two: a copy of the window of data space that holds every DDRx and PORTx of the
// model. `stale` is set by every change to a latch or an analog channel and by a reset.
// `analogchanges` counts the times the analog inputs may have changed, for the comparator.
struct PinWatch {
    static constexpr int kWindow = 128;
    bool stale = true;
    uint32_t analogchanges = 0;
    int dataspacesize = 0;
    int first = 0, length = 0;  // the window; 0 long when the model has no port
    bool narrow = false;        // the window fits in the two words below
    uint64_t low = 0, high = 0;
    std::array<uint8_t, kWindow> seen{};
};

// INT0 or INT1 as the model wires it, resolved at each reset, with the pin's level as the
// previous step saw it. A reset keeps the level, so a level that changed across a restart
// still counts as an edge.
struct ExternalInterruptLine {
    int port = 0;          // index 0..6
    uint8_t mask = 0;      // 0: no such interrupt on this model
    int control = 0;       // address of the sense bits, 0 when unbound
    int shift = 0;
    int flagaddress = -1;  // -1 when the flag lies outside the data space
    uint8_t flagmask = 0;
    bool previous = false;
};

struct ExternalInterruptState {
    int dataspacesize = -1;  // of the machine the lines were resolved for
    ExternalInterruptLine int0, int1;
};

// The comparator as the model wires it, resolved at each reset, and its inputs as it last
// saw them: with the same registers (ACSR as it left it) and no analog change since, a step
// would change nothing.
struct ComparatorState {
    int dataspacesize = -1;  // of the machine the addresses were resolved for
    int acsr = 0;            // 0: no comparator
    int control = 0, admux = 0, adcsra = 0;  // multiplexer registers; ACSR again where a kind has none
    bool known = false;
    uint32_t analogchanges = 0;
    uint32_t registers = 0;
};

struct AdcState {
    float timer = 0;      // microseconds into the running conversion; 0 when none runs
    int sample = 0;       // the input taken at the conversion's first step
    bool locked = false;  // ADCL was read and ADCH not yet: results are dropped
};

struct EepromState {
    bool writing = false;
    float timeleft = 0;    // microseconds until the write lands
    int address = 0;       // what EEAR, EEDR and the mode bits held when the write began
    uint8_t data = 0;
    uint8_t modebits = 0;
    int mastercounter = 0;  // lifetime of the master write enable bit, in cycles above 6
};

}  // namespace velmora
