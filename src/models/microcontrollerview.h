#pragma once
// The Microcontroller View without its drawing: the pin table of the loaded model, what each
// pin's button and level field show, the commands on the pins, the analog panel, and the
// refresh that repaints only when something a pin shows has changed.

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "core/machine.h"
#include "core/ports.h"
#include "models/pinaccess.h"
#include "models/pinnames.h"

namespace velmora {

inline constexpr int kAnalogTop = 1023;

struct ViewPin {
    int number = 0;  // 1 to the pin count
    std::string name;
    int port = 0;      // port code, 0 for none
    uint8_t mask = 0;  // bit in the port, 0 for none
    int channel = -1;  // ADC channel, -1 for none
    int type = 0;      // 0 no control, 1 digital, 2 digital that can also be analog
    bool secondhalf = false;
};

std::vector<ViewPin> buildpintable(const Machine& m, const PinFilters& filters);

enum class PinButton { None, Toggle, Analog };  // shows nothing, "T" or "A"
enum class PinLevel { None, On, Off, Analog };

struct PinShown {
    PinButton button = PinButton::None;
    bool enabled = false;
    PinLevel level = PinLevel::None;
    std::string leveltext;  // "ON", "OFF" or the analog value
};
const char* buttoncaption(PinButton button);

class MicrocontrollerView {
public:
    MicrocontrollerView(const Machine& m, PinAccess& pins);

    // Rebuilds the pin table from the model, with these functions hidden.
    void rebuild(const PinFilters& filters);
    const std::vector<ViewPin>& pins() const { return pins_; }
    const std::vector<PinShown>& shown() const { return shown_; }
    std::string title() const;
    const std::string& modelname() const { return m_.modelname; }

    bool usevoltage = false;        // "Use Voltage For Analog Inputs"
    bool continuousslider = true;   // "Analog Slider Mode" 1

    // Refresh: true when the pins were worked out again and need repainting. While a
    // simulation runs nothing is repainted unless a compared value changed.
    bool refresh();

    // --- commands on the pins (by index into pins()) ---
    void leftclick(int pin);   // "T" toggles the input, "A" opens the analog panel
    void rightclick(int pin);  // a type 2 pin switches between digital and analog use
    void setallanalog(bool on);
    bool allanalog() const;    // every type 2 pin is analog

    // --- the analog panel ---
    std::optional<int> panelchannel() const { return panel_; }
    std::string panelcaption() const;  // "ADC" and the channel
    std::string panelvalue() const;
    int slidervalue() const;
    void sliderchanged(int value, bool released);
    std::string analogprompt() const;
    // An entry of the prompt; values outside the range are ignored.
    bool enteranalog(const std::string& answer);
    void closepanel() { panel_.reset(); }

    static std::string helptext();

private:
    struct Copies {
        std::array<uint8_t, kPortCount> direction{}, input{}, level{};
        std::array<int, kAdcChannelCount> analog{};
        std::array<bool, kAdcChannelCount> mode{};
        bool operator==(const Copies&) const = default;
    };
    Copies take() const;
    void work();
    void applyanalog(int value);

    const Machine& m_;
    PinAccess& access_;
    std::vector<ViewPin> pins_;
    std::vector<PinShown> shown_;
    std::optional<Copies> copies_;
    std::optional<int> panel_;
};

}  // namespace velmora
