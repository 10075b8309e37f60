#include "models/microcontrollerview.h"

#include <charconv>
#include <cmath>

#include <algorithm>

namespace velmora {

namespace {
constexpr double kFullScaleVolts = 5.0;

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}
}  // namespace

std::vector<ViewPin> buildpintable(const Machine& m, const PinFilters& filters) {
    std::vector<ViewPin> table;
    for (size_t i = 0; i < m.pins.size(); ++i) {
        const PackagePin& p = m.pins[i];
        ViewPin v;
        v.number = static_cast<int>(i) + 1;
        v.name = pindisplayname(p.caption, p.secondhalf, filters);
        v.port = p.portcode;
        v.mask = p.portcode != 0 && p.bit >= 0 ? static_cast<uint8_t>(1u << p.bit) : 0;
        v.channel = p.adcchannel;
        v.type = (v.mask == 0) ? 0 : p.type;
        // A pin can only be analog when it names its channel.
        if (v.type == 2 && v.channel < 0) v.type = 1;
        v.secondhalf = p.secondhalf;
        table.push_back(v);
    }
    return table;
}

const char* buttoncaption(PinButton button) {
    switch (button) {
    case PinButton::Toggle: return "T";
    case PinButton::Analog: return "A";
    case PinButton::None: break;
    }
    return "";
}

MicrocontrollerView::MicrocontrollerView(const Machine& m, PinAccess& pins) : m_(m), access_(pins) {}

void MicrocontrollerView::rebuild(const PinFilters& filters) {
    pins_ = buildpintable(m_, filters);
    shown_.assign(pins_.size(), PinShown{});
    copies_.reset();
    if (panel_ && (*panel_ < 0 || *panel_ >= kAdcChannelCount || !m_.adcchannels[*panel_].exists)) panel_.reset();
    work();
}

std::string MicrocontrollerView::title() const { return "Microcontroller View - " + m_.modelname; }

MicrocontrollerView::Copies MicrocontrollerView::take() const {
    Copies c;
    for (int i = 0; i < kPortCount; ++i) {
        c.direction[i] = access_.direction(kPortCodeA + i);
        c.input[i] = access_.input(kPortCodeA + i);
        c.level[i] = access_.level(kPortCodeA + i);
    }
    for (int ch = 0; ch < kAdcChannelCount; ++ch) {
        c.analog[ch] = access_.analoginput(ch);
        c.mode[ch] = access_.analogmode(ch);
    }
    return c;
}

bool MicrocontrollerView::refresh() {
    access_.evaluate();
    Copies now = take();
    // While running, a comparison of a few dozen numbers saves repainting every pin.
    if (m_.simulationrunning && copies_ && *copies_ == now) return false;
    copies_ = now;
    work();
    return true;
}

void MicrocontrollerView::work() {
    for (size_t i = 0; i < pins_.size(); ++i) {
        const ViewPin& p = pins_[i];
        PinShown& s = shown_[i];
        s = PinShown{};
        if (p.type == 0) continue;
        const bool isinput = !(access_.direction(p.port) & p.mask);
        const bool analog = p.type == 2 && access_.analogmode(p.channel);
        s.button = analog ? PinButton::Analog : PinButton::Toggle;
        s.enabled = analog || isinput;
        if (analog) {
            s.level = PinLevel::Analog;
            s.leveltext = analogtext(access_.analoginput(p.channel), usevoltage);
        } else {
            const bool high = access_.level(p.port) & p.mask;
            s.level = high ? PinLevel::On : PinLevel::Off;
            s.leveltext = high ? "ON" : "OFF";
        }
    }
}

void MicrocontrollerView::leftclick(int pin) {
    if (pin < 0 || pin >= static_cast<int>(pins_.size())) return;
    const ViewPin& p = pins_[pin];
    const PinShown& s = shown_[pin];
    if (!s.enabled) return;
    if (s.button == PinButton::Analog) {
        panel_ = p.channel;
        return;
    }
    if (s.button == PinButton::Toggle) {
        access_.toggleinput(p.port, p.mask);
        copies_.reset();
        refresh();
    }
}

void MicrocontrollerView::rightclick(int pin) {
    if (pin < 0 || pin >= static_cast<int>(pins_.size()) || pins_[pin].type != 2) return;
    const int channel = pins_[pin].channel;
    access_.setanalogmode(channel, !access_.analogmode(channel));
    copies_.reset();
    refresh();
}

void MicrocontrollerView::setallanalog(bool on) {
    for (const ViewPin& p : pins_)
        if (p.type == 2) access_.setanalogmode(p.channel, on);
    copies_.reset();
    refresh();
}

bool MicrocontrollerView::allanalog() const {
    bool any = false;
    for (const ViewPin& p : pins_) {
        if (p.type != 2) continue;
        any = true;
        if (!access_.analogmode(p.channel)) return false;
    }
    return any;
}

std::string MicrocontrollerView::panelcaption() const {
    return panel_ ? "ADC" + std::to_string(*panel_) : std::string();
}

int MicrocontrollerView::slidervalue() const { return panel_ ? access_.analoginput(*panel_) : 0; }

std::string MicrocontrollerView::panelvalue() const {
    return panel_ ? analogtext(access_.analoginput(*panel_), usevoltage) : std::string();
}

void MicrocontrollerView::applyanalog(int value) {
    if (!panel_) return;
    access_.setanaloginput(*panel_, value);
    copies_.reset();
    refresh();
}

void MicrocontrollerView::sliderchanged(int value, bool released) {
    if (continuousslider || released) applyanalog(std::clamp(value, 0, kAnalogTop));
}

std::string MicrocontrollerView::analogprompt() const {
    if (usevoltage) return "Enter new analog value [0-5.00V].";
    return "Enter new analog value [0-" + std::to_string(kAnalogTop) + "].";
}

bool MicrocontrollerView::enteranalog(const std::string& answer) {
    std::string text = trimmed(answer);
    if (!panel_ || text.empty()) return false;
    int value = -1;
    if (usevoltage) {
        // Volts, with or without the unit: 5.00 V is the top value.
        if (text.back() == 'V' || text.back() == 'v') text.pop_back();
        double volts = -1;
        const auto result = std::from_chars(text.data(), text.data() + text.size(), volts);
        if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return false;
        if (volts < 0 || volts > kFullScaleVolts) return false;
        value = static_cast<int>(std::lround(volts / kFullScaleVolts * kAnalogTop));
    } else {
        if (text.find_first_not_of("0123456789") != std::string::npos || text.size() > 5) return false;
        value = std::stoi(text);
    }
    if (value < 0 || value > kAnalogTop) return false;
    applyanalog(value);
    return true;
}

std::string MicrocontrollerView::helptext() {
    return "To use a pin for analog purposes, right-click on its T button.\n"
           "Next right-click will switch it back to its digital input function.\n"
           "Use All Analog check box to setup all involved pins for analog purposes.\n"
           "To remove some of the unused alternative pin functions quoted in this\n"
           "window in order to get a more clear view press F12.";
}

}  // namespace velmora
