#include "cli/runio.h"

#include <ostream>

#include "core/memory.h"
#include "core/ports.h"
#include "core/usart.h"

namespace velmora {

std::string checkinputs(const Machine& m, const std::vector<ScheduledInput>& inputs, bool hasuartinput) {
    for (const ScheduledInput& input : inputs) {
        if (input.kind == ScheduledInput::Kind::Pin && !portexists(m, input.portcode))
            return "--pin '" + input.text + "': " + m.modelname + " has no PORT" +
                   static_cast<char>('A' + input.portcode - kPortCodeA);
        if (input.kind == ScheduledInput::Kind::Analog && !m.adcchannels[input.channel].exists)
            return "--analog '" + input.text + "': " + m.modelname + " has no analog channel " +
                   std::to_string(input.channel);
    }
    if (hasuartinput && !hasusart(m)) return "--uart-in: " + m.modelname + " has no USART";
    return {};
}

RunIo::RunIo(Machine& m, std::ostream& out, std::vector<ScheduledInput> inputs, std::string uartinput)
    : m_(m), out_(out), inputs_(std::move(inputs)), uartinput_(std::move(uartinput)) {}

void RunIo::attach(RunControl& run) {
    run.objectinit = [this] { betweensteps(); };
    // The machine asks for a turn when the USART sent a byte or may take one, when the program
    // wrote a peripheral register, and at the cycle of the next scheduled input.
    run.onattention = [this] { betweensteps(); };
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
    drain();
    out_.flush();
}

}  // namespace velmora
