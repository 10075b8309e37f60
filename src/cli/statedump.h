#pragma once
// The final state that `run --dump` prints.

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

#include "core/machine.h"

namespace velmora {

// R0-R31, SREG, SP, PC, every named register of the model with its value (hardware stack
// levels as four digits), and the EEPROM rows that are not erased.
void dumpstate(const Machine& m, std::ostream& out);

// Values a run was asked to watch, by name.
using WatchedValues = std::vector<std::pair<std::string, uint32_t>>;

// The same as one line of JSON, for scripts: {"registers":[32 numbers],"SREG":n,"SP":n,"PC":n,
// "io":{"NAME":n,...},"eeprom":[every byte]} and, with watched values, "watch":{"NAME":n,...};
// numbers in decimal.
void dumpstatejson(const Machine& m, std::ostream& out, const WatchedValues& watched = {});

}  // namespace velmora
