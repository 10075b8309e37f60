#include "shell/gdblink.h"

#include "core/peripheraltimes.h"
#include "gdb/gdbserver.h"
#include "gdb/gdbsession.h"
#include "shell/mainwindowmenus.h"
#include "shell/settingnames.h"
#include "shell/settingvalues.h"

namespace velmora {

namespace {
// gdb sends its next packet as soon as a reply came: waiting a little for it spares a timer
// period per step of a `next`, and the window still gets its turn after a while.
constexpr int kPacketWaitMs = 5;
constexpr double kAnswerSeconds = 0.1;
}  // namespace

int32_t gdbport(SettingsAccess& settings) {
    return readnumber(settings, settingnames::kGdbPort, kGdbPortDefault, {kGdbPortLow, kGdbPortHigh});
}

GdbLink::GdbLink(RunControl& run, Clock& clock, Messenger& messenger, SettingsAccess& settings, Questions& questions)
    : run_(run), clock_(clock), messenger_(messenger), settings_(settings), questions_(questions) {}

GdbLink::~GdbLink() {
    if (session_) session_->release();
    if (server_) clock_.onyield = nullptr;
}

int GdbLink::port() const { return server_ ? server_->port() : 0; }

void GdbLink::toggle() {
    if (listening()) {
        stop();
        return;
    }
    if (const auto refusal = toolrefusal(ToolGuard::Program, run_.machine())) {
        messenger_.show(*refusal, MessageKind::Exclamation);
        return;
    }
    const AskNumber ask = [this](const std::string& prompt, const std::string& current) {
        return questions_.inputbox(prompt, current);
    };
    const NumberAnswer answer =
        asknumberinrange(messenger_, ask, kGdbPortPrompt, std::to_string(gdbport(settings_)), kGdbPortLow, kGdbPortHigh);
    if (!answer.value) return;
    settings_.putsettingdword(settingnames::kGdbPort, *answer.value);
    start(*answer.value);
}

bool GdbLink::start(int port) {
    if (server_) return true;
    auto server = std::make_unique<GdbServer>();
    std::string error;
    if (!server->listen(port, error)) {
        messenger_.show("The GDB server could not listen on " + error + ".", MessageKind::Exclamation);
        return false;
    }
    server_ = std::move(server);
    const std::string where = std::to_string(server_->port());
    messenger_.show("GDB server waiting for avr-gdb on 127.0.0.1:" + where + " (target remote :" + where + ").",
                    MessageKind::Information);
    notify();
    return true;
}

void GdbLink::stop() {
    if (busy_) {
        // Inside gdb's continue: end the run; tick() finishes the stop once the reply is out.
        stopafter_ = true;
        run_.menuspeed(kRateStep);
        return;
    }
    stopafter_ = false;
    if (session_) endsession();
    server_.reset();
    notify();
}

void GdbLink::tick() {
    if (!server_ || busy_) return;
    if (!session_) {
        if (!server_->acceptwaiting()) return;
        begin();
    }
    // A run the window started: the client's packets wait until it has ended (begin() ended it).
    if (run_.inloop()) return;
    const double until = clock_.now() + kAnswerSeconds;
    for (int wait = 0; session_ && !stopafter_; wait = kPacketWaitMs) {
        const std::string bytes = server_->poll(wait);
        if (bytes.empty()) break;
        answer(bytes);
        if (session_->end() != GdbSession::End::None || clock_.now() >= until) break;
    }
    if (session_ && (session_->end() != GdbSession::End::None || !server_->hasclient())) endsession();
    if (stopafter_) stop();
}

void GdbLink::begin() {
    session_ = std::make_unique<GdbSession>(
        run_, [this](const std::string& bytes) { server_->write(bytes); }, [this] { return server_->poll(); });
    clock_.onyield = [this] {
        if (session_) session_->duringrun();
    };
    run_.menuspeed(kRateStep);
    if (!run_.machine().simulationrunning) {
        if (startprogram)
            startprogram();
        else
            run_.menustart();
    }
    notify();
}

void GdbLink::answer(const std::string& bytes) {
    busy_ = true;
    session_->receive(bytes.data(), bytes.size());
    busy_ = false;
    // As velmora-cli ends its run: gdb's kill ends the program.
    if (session_->end() == GdbSession::End::Killed) run_.menustop();
    notify();
}

void GdbLink::endsession() {
    session_->release();
    session_.reset();
    clock_.onyield = nullptr;
    server_->closeclient();
    notify();
}

void GdbLink::notify() {
    if (changed) changed();
}

}  // namespace velmora
