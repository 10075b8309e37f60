#pragma once
// Which registers generated text names in operand position: the first sweep's text decides
// which registers are free for variables, and an interrupt routine's text what it saves.

#include <string>
#include <vector>

namespace velmora {

// True when `text` (lines joined by CR LF) names register `n`, by itself, by its half of a
// pointer pair (XL..ZH) or by the pair in pointer form (X, -X, X+ ...).
bool namesregister(const std::string& text, int n);

// Marks every named register in `memoryusage` as used by generated code.
void registerusagescan(const std::string& text, std::vector<int>& memoryusage);

}  // namespace velmora
