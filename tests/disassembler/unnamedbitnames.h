#pragma once
// The bit-name table of a machine whose model names no register: every I/O address
// reads as "$" and three digits, every bit as its number.

#include "core/instructiontext.h"
#include "core/machine.h"

namespace velmora::test {

inline BitNameTable unnamedbitnames() {
    BitNameTable names(96);
    for (int a = 0; a < 96; ++a) names[a] = defaultbitnames(a);
    return names;
}

}  // namespace velmora::test
