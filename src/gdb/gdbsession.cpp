#include "gdb/gdbsession.h"

namespace velmora {

GdbSession::GdbSession(RunControl& run, std::function<void(const std::string&)> send,
                       std::function<std::string()> poll)
    : run_(run), m_(run.machine()), target_(run.machine()), send_(std::move(send)), poll_(std::move(poll)) {}

void GdbSession::receive(const char* bytes, size_t count) {
    std::vector<RspEvent> events;
    reader_.feed(bytes, count, events);
    for (const RspEvent& event : events) {
        if (end_ != End::None) return;
        switch (event.kind) {
        case RspEvent::Kind::Packet:
            send_("+");
            packet(event.payload);
            break;
        case RspEvent::Kind::BadChecksum: send_("-"); break;
        case RspEvent::Kind::Nak:
            if (!lastreply_.empty()) send_(lastreply_);
            break;
        case RspEvent::Kind::Ack: break;
        case RspEvent::Kind::Interrupt:
            // Between runs there is nothing to stop: the target already waits.
            if (!running_) reply(stopreply());
            break;
        }
    }
}

void GdbSession::reply(const std::string& text) {
    lastreply_ = rspframe(text);
    send_(lastreply_);
}

void GdbSession::packet(const std::string& text) {
    if (text == "?") return reply(stopreply());
    if (text == "k") {
        end_ = End::Killed;
        return;
    }
    if (text == "D" || text.starts_with("D;")) {
        reply("OK");
        end_ = End::Detached;
        return;
    }
    if (text == "vCont?") return reply("vCont;c;C;s;S");
    if (text.starts_with("vCont;")) {
        const char action = text.size() > 6 ? text[6] : 'c';
        return resume(action == 's' || action == 'S');
    }
    if (!text.empty() && (text[0] == 'c' || text[0] == 'C')) return resume(false);
    if (!text.empty() && (text[0] == 's' || text[0] == 'S')) return resume(true);
    if (const std::optional<std::string> answer = target_.answer(text)) return reply(*answer);
    reply("");
}

void GdbSession::resume(bool step) {
    if (!m_.simulationrunning) return reply("W00");
    interrupted_ = false;
    if (step) {
        run_.menustep();
    } else {
        running_ = true;
        run_.menuspeed(kRateUltimate);
        running_ = false;
    }
    reply(stopreply());
    if (!pending_.empty()) {
        const std::string bytes = std::move(pending_);
        pending_.clear();
        receive(bytes.data(), bytes.size());
    }
}

std::string GdbSession::stopreply() {
    // The program's own end (SLEEP, a fault that stops it, running off the end) is its exit.
    if (!m_.simulationrunning) return "W00";
    if (interrupted_) return "S02";
    if (const std::optional<std::string> watch = target_.watchstop()) return *watch;
    return "S05";
}

void GdbSession::duringrun() {
    if (!running_ || !poll_) return;
    const std::string bytes = poll_();
    for (const char c : bytes) {
        if (c == '\x03') {
            interrupted_ = true;
            run_.menuspeed(kRateStep);
        } else {
            pending_ += c;
        }
    }
}

}  // namespace velmora
