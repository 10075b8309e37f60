#pragma once
// The shape every simulated device shares. A device is a PinObserver: the machine gives it a
// turn after a step in which a port register was written or an input changed, and at the
// cycle it asked for (a busy time running out); in every other step it costs nothing. A
// device can keep a change log for headless runs: one line per change, with its cycle.

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

#include "core/machine.h"
#include "core/observers.h"

namespace velmora {

// "CYCLE<tab>DEVICE<tab>WHAT" lines to a stream; without a stream it writes nothing.
class DeviceLog {
public:
    DeviceLog() = default;
    DeviceLog(std::ostream* out, std::string device) : out_(out), device_(std::move(device)) {}
    bool on() const { return out_ != nullptr; }
    void line(uint64_t cycle, std::string_view what);

private:
    std::ostream* out_ = nullptr;
    std::string device_;
};

class Device : public PinObserver {
public:
    Device() = default;
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;
    ~Device() override { detach(); }

    // Starts following the machine's pins; it gets its first turn after the next step.
    void attach(Machine& m);
    void detach();
    Machine* machine() const { return machine_; }

    DeviceLog log;

private:
    Machine* machine_ = nullptr;
};

}  // namespace velmora
