#pragma once
// What the Microcontroller View needs of the pin model: directions, input latches, levels
// and the analog inputs, by port code (5 to 11) and channel (0 to 15).

#include <cstdint>

namespace velmora {

class PinAccess {
public:
    virtual ~PinAccess() = default;
    // Runs the port phase again, so levels follow the latest inputs.
    virtual void evaluate() = 0;
    virtual uint8_t direction(int port) const = 0;  // DDRx; 0 for a port the model lacks
    virtual uint8_t input(int port) const = 0;
    virtual uint8_t level(int port) const = 0;
    virtual void toggleinput(int port, uint8_t mask) = 0;
    virtual int analoginput(int channel) const = 0;
    virtual void setanaloginput(int channel, int value) = 0;
    virtual bool analogmode(int channel) const = 0;
    virtual void setanalogmode(int channel, bool on) = 0;
};

}  // namespace velmora
