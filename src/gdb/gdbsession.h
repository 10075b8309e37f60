#pragma once
// One avr-gdb client driving the simulator: its packets answered in order, steps through the
// same step as the Step command, continues through the run loop at the Ultimate rate, which
// the machine's own breakpoint words, watched addresses, BREAK, the program's stop or the
// client's Ctrl-C end. The bytes come from and go to a transport (a socket, or a test).

#include <functional>
#include <string>
#include <vector>

#include "core/runcontrol.h"
#include "gdb/gdbtarget.h"
#include "gdb/rsp.h"

namespace velmora {

class GdbSession {
public:
    enum class End { None, Detached, Killed };

    // `send` takes the bytes for the client; `poll` gives what the client sent meanwhile
    // without waiting (nothing when nothing came), and is asked between stretches of a run.
    GdbSession(RunControl& run, std::function<void(const std::string&)> send, std::function<std::string()> poll);

    // Acts on bytes from the client. After `k` or `D` the session has ended and reads nothing.
    void receive(const char* bytes, size_t count);
    End end() const { return end_; }
    // The client's breakpoints and watches go with it.
    void release() { target_.release(); }

    // For the clock's yield during a run: takes the client's bytes, and a Ctrl-C among them
    // ends the run at the next step.
    void duringrun();

private:
    void packet(const std::string& text);
    void reply(const std::string& text);
    void resume(bool step);
    std::string stopreply();

    RunControl& run_;
    Machine& m_;
    GdbTarget target_;
    RspReader reader_;
    std::function<void(const std::string&)> send_;
    std::function<std::string()> poll_;
    std::string lastreply_;
    std::string pending_;  // bytes that came during a run, read after it
    bool running_ = false, interrupted_ = false;
    End end_ = End::None;
};

}  // namespace velmora
