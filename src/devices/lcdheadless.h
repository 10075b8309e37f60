#pragma once
// The LCD module without a window, for velmora-cli and tests.
//
// A device spec is a comma-separated list of items, in any letter case; items not given keep
// the module's defaults (2 x 16, data on the high nibble of PORTB, RS PORTB.3, E PORTB.2,
// R/W not connected, busy delays 1640/42/46 us):
//   2x16              module type: 1x16, 2x16, 4x16, 2x20, 4x20, 2x24 or 2x40
//   PORTB, D=PORTB    data port, high nibble; D=PORTB.4 the same, D=PORTB.0 the low nibble
//   4BIT, 8BIT, BITS=4|8   four data lines (the nibble above) or all eight
//   RS=PORTB.3  E=PORTB.2  RW=PORTB.1   control lines (RW left out: not connected)
//   INIT=1640  CMD=42  DATA=46          busy delays in microseconds, 20 to 5000
//   BAS=FILE          the Define lines of a BASIC program, read where the item stands
// Example: "2x16,d=PORTB.4,rs=PORTB.3,e=PORTB.2".

#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "devices/lcdmodule.h"

namespace velmora {

// The configuration a spec describes, or nothing with the reason in `error`.
std::optional<LcdConfig> parselcdspec(std::string_view spec, std::string& error);

// Wires an LCD module described by `spec` to the machine; with `log`, one line per executed
// or dropped byte: "CYCLE<tab>lcd<tab>command 28". Null with the reason in `error`.
std::unique_ptr<LcdModule> attachlcd(Machine& m, std::string_view spec, std::string& error,
                                     std::ostream* log = nullptr);

// The display as the panel shows it, one line per row between '|' marks.
void printlcd(const LcdModule& lcd, std::ostream& out);

}  // namespace velmora
