#pragma once
// The options of `velmora-cli run`, read and checked before anything is loaded, so a bad
// option is a usage error with a message that says what was expected.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/options.h"
#include "cli/rundevices.h"
#include "cli/vcdtrace.h"

namespace velmora {

// An input applied between steps once totalcycles reaches `cycle`.
struct ScheduledInput {
    enum class Kind { Pin, Analog } kind = Kind::Pin;
    uint64_t cycle = 0;
    int portcode = 0;  // Pin: 5..11 for ports A..G
    int bit = 0;       // Pin: 0..7
    int channel = 0;   // Analog: 0..15
    int value = 0;     // Pin: 0 or 1; Analog: 0..1023
    std::string text;  // the option as given, for messages
};

// Where the USART receiver's bytes come from, in command-line order.
struct UartSource {
    bool isfile = false;
    std::string text;  // the bytes themselves, or the file's path
};

// A --break value: a hexadecimal word address, or the name of a function of an ELF program
// (which wins when the text is both), resolved once the program is loaded.
struct BreakTarget {
    std::string text;
    std::optional<int32_t> address;  // when the text reads as an address
    bool operator==(const BreakTarget&) const = default;
};

struct RunOptions {
    std::string file;
    std::optional<std::string> model;
    std::optional<std::string> clock;
    uint64_t maxcycles = 0, maxinstructions = 0;  // 0: no limit
    std::vector<BreakTarget> breakpoints;          // command-line order
    bool infiniteloopstop = false;
    bool dump = false;
    bool dumpjson = false;
    std::string vcd;                   // empty: no pin trace
    std::vector<PinSelection> vcdpins; // empty: every pin
    bool help = false;
    std::optional<float> uarttime;  // microseconds per byte
    std::vector<UartSource> uartin;
    std::vector<ScheduledInput> inputs;  // sorted by cycle, command-line order within a cycle
    std::vector<DeviceRequest> devices;  // command-line order, at most one of each kind
    std::string devicelog;               // empty: no change log
    std::string tracebasic;              // empty: no BASIC line trace
    std::optional<int> gdbport;          // serve avr-gdb on this port
    std::vector<std::string> watches;    // BASIC variables or model registers to print at the end
};

// Reads the arguments after "run". On failure returns nothing and sets `error`.
std::optional<RunOptions> parserunoptions(const std::vector<std::string>& args, std::string& error);

// The usage and help text of `run`.
const CommandText& runtext();

// The pieces, for tests and for messages.
std::optional<uint64_t> parsedecimal(const std::string& text);
// C-style escapes: \n \r \t \0 \\ \xH or \xHH; anything else after a backslash is an error.
std::optional<std::string> unescape(const std::string& text, std::string& error);
// "PORTB.0=1" or "PORTB.0=1@CYCLE".
std::optional<ScheduledInput> parsepininput(const std::string& text, std::string& error);
// "CH=VALUE" or "CH=VALUE@CYCLE".
std::optional<ScheduledInput> parseanaloginput(const std::string& text, std::string& error);

}  // namespace velmora
