#include "cli/runio.h"

#include <ostream>

#include "core/memory.h"
#include "core/ports.h"
#include "core/usart.h"

namespace velmora {

namespace {
std::string noport(const Machine& m, const char* option, const std::string& text, int portcode) {
    return std::string(option) + " '" + text + "': " + m.modelname + " has no PORT" +
           static_cast<char>('A' + portcode - kPortCodeA);
}
}  // namespace

std::string checkinputs(const Machine& m, const RunOptions& options) {
    for (const PinSelection& pins : options.vcdpins)
        if (!portexists(m, pins.portcode)) return noport(m, "--vcd-pins", pins.text, pins.portcode);
    for (const ScheduledInput& input : options.inputs) {
        if (input.kind == ScheduledInput::Kind::Pin && !portexists(m, input.portcode))
            return noport(m, "--pin", input.text, input.portcode);
        if (input.kind == ScheduledInput::Kind::Analog && !m.adcchannels[input.channel].exists)
            return "--analog '" + input.text + "': " + m.modelname + " has no analog channel " +
                   std::to_string(input.channel);
    }
    if (!options.uartin.empty() && !hasusart(m)) return "--uart-in: " + m.modelname + " has no USART";
    return {};
}

RunIo::RunIo(Machine& m, std::ostream& out, std::vector<ScheduledInput> inputs, std::string uartinput)
    : m_(m), out_(out), inputs_(std::move(inputs)), uartinput_(std::move(uartinput)) {}

void RunIo::attach(RunControl& run, VcdTrace* trace) {
    trace_ = trace;
    run.objectinit = [this] {
        betweensteps();
        if (trace_) starttrace();
    };
    // The machine asks for a turn when the USART sent a byte or may take one, when the program
    // wrote a peripheral register (every port register among them), and at the cycle of the
    // next scheduled input.
    run.onattention = [this] {
        betweensteps();
        if (trace_) trace_->look(m_);
    };
}

void RunIo::starttrace() {
    // The levels that the reset and the inputs due at cycle 0 give, as the first step would work them out.
    portstep(m_);
    trace_->start(m_);
}

void RunIo::betweensteps() {
    if (nextinput_ < inputs_.size() && inputs_[nextinput_].cycle <= m_.totalcycles) applydue();
    m_.attentioncycle = nextinput_ < inputs_.size() ? inputs_[nextinput_].cycle : UINT64_MAX;
    // A terminal sends the next byte once the receiver is enabled and has taken the last one.
    if (uartnext_ < uartinput_.size() && usartreceiverready(m_))
        usartreceive(m_, static_cast<uint8_t>(uartinput_[uartnext_++]));
    if (m_.usart.txoutputcount > 0) drain();
}

void RunIo::applydue() {
    for (; nextinput_ < inputs_.size() && inputs_[nextinput_].cycle <= m_.totalcycles; ++nextinput_) {
        const ScheduledInput& input = inputs_[nextinput_];
        if (input.kind == ScheduledInput::Kind::Pin) {
            const uint8_t mask = static_cast<uint8_t>(1u << input.bit);
            if (input.value) setinput(m_, input.portcode, mask);
            else clearinput(m_, input.portcode, mask);
        } else {
            setanalogmode(m_, input.channel, true);
            setanaloginput(m_, input.channel, input.value);
        }
    }
    // Pin levels as the changed inputs make them, before the next step looks at them.
    portstep(m_);
}

void RunIo::drain() {
    uint8_t bytes[kUsartOutputCapacity];
    const size_t n = usarttakeoutput(m_, bytes, sizeof bytes);
    if (n == 0) return;
    out_.write(reinterpret_cast<const char*>(bytes), static_cast<std::streamsize>(n));
    wrote_ = true;
    last_ = static_cast<char>(bytes[n - 1]);
}

void RunIo::finish() {
    drain();  // first what was sent, so the ring has room for the rest
    usartfinishsending(m_);
    drain();
    out_.flush();
}

}  // namespace velmora
