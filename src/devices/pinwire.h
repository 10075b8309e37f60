#pragma once
// A device's connection to one pin: the port code (5..11 for PORTA..PORTG, 0 for none) and
// the bit, as the Select Pin dialog returns them and the settings keep them.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/machine.h"

namespace velmora {

struct PinWire {
    int port = 0;
    int bit = 0;
    bool connected() const { return port >= kPortCodeA && port < kPortCodeA + kPortCount; }
    uint8_t mask() const { return static_cast<uint8_t>(1u << (bit & 7)); }
    bool operator==(const PinWire&) const = default;
};

// "PORTA".."PORTG" for 5..11, "" for any other code.
std::string portname(int portcode);
// The code of "PORTA".."PORTG" in any letter case, 0 for anything else.
int portcodeof(std::string_view name);
// "PORTB.3" (or "PORTB,3"), any letter case; nothing for anything else.
std::optional<PinWire> parsepinwire(std::string_view text);

}  // namespace velmora
