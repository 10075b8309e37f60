// Section 5: the package pins and, through them, the ADC channels.

#include <algorithm>
#include <string>

#include "core/numbers.h"
#include "models/modelsections.h"
#include "models/modeltext.h"

namespace velmora::models {

namespace {

// "a".."g" gives the port code, anything else ("x") none.
int portcodeof(const std::string& field) {
    const std::string text = lowercase(trim(field));
    if (text.size() != 1 || text[0] < 'a' || text[0] >= 'a' + kPortCount) return 0;
    return kPortCodeA + (text[0] - 'a');
}

// A plain decimal from 0 to `highest`, else -1 ("x").
int smallnumber(const std::string& field, int highest) {
    const std::string text = trim(field);
    if (text.empty() || text.size() > 2 || text.find_first_not_of("0123456789") != std::string::npos) return -1;
    const int value = std::stoi(text);
    return value <= highest ? value : -1;
}

int pintype(const std::string& field) {
    const int64_t type = lenientdecimal(field);
    return type >= 0 && type <= 2 ? static_cast<int>(type) : 0;
}

}  // namespace

void buildpins(Machine& m, const std::vector<std::string>& lines) {
    const int count = static_cast<int>(std::min<size_t>(lines.size(), kMaxPackagePins));
    for (int i = 0; i < count; ++i) {
        // Field 1, the pin number, is implied by the line's position.
        const std::vector<std::string> fields = splitfields(lines[i], ',');
        PackagePin pin;
        pin.caption = trim(fieldat(fields, 1));
        pin.secondhalf = (i + 1) * 2 > count;
        pin.portcode = portcodeof(fieldat(fields, 2));
        pin.bit = smallnumber(fieldat(fields, 3), 7);
        pin.adcchannel = smallnumber(fieldat(fields, 4), kAdcChannelCount - 1);
        pin.type = pintype(fieldat(fields, 5));
        if (pin.adcchannel >= 0)
            m.adcchannels[pin.adcchannel] = {true, pin.portcode,
                                             static_cast<uint8_t>(pin.bit >= 0 ? 1u << pin.bit : 0u), i};
        m.pins.push_back(pin);
    }
}

}  // namespace velmora::models
