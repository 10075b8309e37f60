#pragma once
// What a headless run exchanges with the outside between two steps: scheduled pin and
// analog inputs, the bytes for the USART receiver, and the USART's output to a stream.

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

#include "cli/runoptions.h"
#include "cli/vcdtrace.h"
#include "core/machine.h"
#include "core/runcontrol.h"

namespace velmora {

// Why the scheduled inputs, the receiver bytes or the traced pins do not fit the loaded
// model; empty if they do.
std::string checkinputs(const Machine& m, const RunOptions& options);

class RunIo {
public:
    RunIo(Machine& m, std::ostream& out, std::vector<ScheduledInput> inputs, std::string uartinput);

    // Hooks into the run: what is due at cycle 0 acts right after the reset of Start, the
    // rest when the machine asks for the outside world's turn. A trace, when given, looks at
    // the pins at the same moments.
    void attach(RunControl& run, VcdTrace* trace = nullptr);
    // For the end of a run: lets the transmitter finish what was written to UDR, writes what
    // the USART sent and nobody has taken yet, and flushes. No simulated time passes.
    void finish();
    // True when nothing was written or the last byte written was a line break.
    bool atlinestart() const { return last_ == '\n' || !wrote_; }
    size_t uartbytesleft() const { return uartinput_.size() - uartnext_; }

private:
    void betweensteps();
    void starttrace();
    void applydue();
    void drain();

    Machine& m_;
    std::ostream& out_;
    VcdTrace* trace_ = nullptr;
    std::vector<ScheduledInput> inputs_;
    size_t nextinput_ = 0;
    std::string uartinput_;
    size_t uartnext_ = 0;
    bool wrote_ = false;
    char last_ = 0;
};

}  // namespace velmora
