#pragma once
// The simulated devices that `velmora-cli run` wires to the pins: one row per kind with its
// option, how its setup text ("2x16,rs=PORTB.3") is checked before anything is loaded, how
// it is attached to the loaded model, and how its state is printed when the run ends. A new
// device is one more row in rundevices.cpp.

#include <fstream>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/machine.h"

namespace velmora {

// One device wired for a run.
class RunDevice {
public:
    virtual ~RunDevice() = default;
    // Its state at the end of the run: a line with its name and a colon, then a few lines.
    virtual void print(const Machine& m, std::ostream& out) = 0;
};

struct DeviceKind {
    const char* option;  // "--lcd"
    // Reads the setup text; false with the reason in `error`, starting with the item it is about.
    bool (*check)(const std::string& setup, std::string& error);
    // Wires a checked setup to the loaded model; null when the model lacks a port it names,
    // with the reason in `error`. With `log`, one line per change goes there.
    std::unique_ptr<RunDevice> (*attach)(Machine& m, const std::string& setup, std::ostream* log,
                                         std::string& error);
};

std::span<const DeviceKind> devicekinds();
// The row of an option ("--lcd"), or null.
const DeviceKind* devicekind(std::string_view option);
// "--lcd" or "--lcd or --glcd ...": the device options, for messages.
std::string deviceoptionnames();

// A device option as given on the command line.
struct DeviceRequest {
    const DeviceKind* kind = nullptr;
    std::string setup;
};

// The devices of one run and the change log they share. Not to be moved: the devices write
// to the log through a pointer.
class RunDevices {
public:
    RunDevices() = default;
    RunDevices(const RunDevices&) = delete;
    RunDevices& operator=(const RunDevices&) = delete;

    // Wires every requested device in command-line order, before the run starts so that they
    // see its reset; with `logging` they write to the log that openlog opens. False with the
    // reason in `error` (a usage error: the option and what does not fit the model).
    bool attach(Machine& m, const std::vector<DeviceRequest>& requests, bool logging, std::string& error);
    // Creates the log file; false when it cannot be written.
    bool openlog(const std::string& path);
    // Flushes and closes the log; false when writing failed.
    bool closelog();
    bool empty() const { return devices_.empty(); }
    // Every device's state, in command-line order.
    void print(const Machine& m, std::ostream& out) const;

private:
    std::ofstream log_;
    std::vector<std::unique_ptr<RunDevice>> devices_;
};

}  // namespace velmora
