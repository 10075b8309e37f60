#pragma once
// avr-gdb's way into the desktop program. While on, the stub listens on the loopback address;
// a client that comes finds the loaded program started and standing at Step By Step, and
// drives it as velmora-cli's --gdb does. The window's timer calls tick(), which never waits
// for the client, so the window stays alive between gdb's commands; a continue runs in the
// run loop, whose yields hand the client's Ctrl-C to the session.

#include <functional>
#include <memory>
#include <string>

#include "core/events.h"
#include "core/runcontrol.h"

namespace velmora {

class GdbServer;
class GdbSession;

inline constexpr int32_t kGdbPortDefault = 1234, kGdbPortLow = 1, kGdbPortHigh = 65535;
inline constexpr char kGdbPortPrompt[] = "Enter the TCP port on which avr-gdb connects\n(target remote :PORT).";

// The port last offered to avr-gdb ("GDB Port").
int32_t gdbport(SettingsAccess& settings);

class GdbLink {
public:
    GdbLink(RunControl& run, Clock& clock, Messenger& messenger, SettingsAccess& settings, Questions& questions);
    ~GdbLink();
    GdbLink(const GdbLink&) = delete;
    GdbLink& operator=(const GdbLink&) = delete;

    bool listening() const { return server_ != nullptr; }
    bool connected() const { return session_ != nullptr; }
    // The port listened on (0 while off).
    int port() const;

    // The menu command: off, it asks for the port (the last one offered) and starts; on, it stops.
    // Refused without a program, as there is nothing to debug.
    void toggle();

    // Listens on `port` (0: any free one); a port that cannot be had is told, and the link
    // stays off.
    bool start(int port);
    // Lets the client go (its breakpoints and watches with it) and stops listening. During a
    // run that gdb started, the run is ended first and the link goes off after it.
    void stop();

    // Takes a waiting client, and answers what the client sent until it pauses.
    void tick();

    // After gdb stepped, ran or changed the machine, or a client came or went.
    std::function<void()> changed;
    // Starts the simulation for a client that comes while it is not running; without it the
    // run control's Start.
    std::function<void()> startprogram;

private:
    void begin();
    void answer(const std::string& bytes);
    void endsession();
    void notify();

    RunControl& run_;
    Clock& clock_;
    Messenger& messenger_;
    SettingsAccess& settings_;
    Questions& questions_;
    std::unique_ptr<GdbServer> server_;
    std::unique_ptr<GdbSession> session_;
    bool busy_ = false;      // the session is answering (a continue may be running)
    bool stopafter_ = false;  // stop() came while busy
};

}  // namespace velmora
