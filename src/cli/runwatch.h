#pragma once
// The --watch names of a run: a variable of the program compiled from BASIC, else a named
// register of the model, else R0-R31; each printed with its value at the end.

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "cli/statedump.h"
#include "debug/watchvariables.h"

namespace velmora {

// The entry each name stands for, or nothing after naming the first unknown one in `error`.
std::optional<std::vector<WatchEntry>> resolvewatches(const Machine& m, const std::vector<WatchEntry>& variables,
                                                      const std::vector<std::string>& names, std::string& error);

// The values as the names were given.
WatchedValues watchedvalues(const Machine& m, const std::vector<std::string>& names,
                            const std::vector<WatchEntry>& entries);

// "NAME = VALUE", one line each.
void printwatches(const WatchedValues& values, std::ostream& out);

}  // namespace velmora
