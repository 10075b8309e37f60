#pragma once
// The runtime routine library: subroutines the generated code calls, each written once
// behind the program, in a fixed order, and only when a statement asked for it.

#include <string>
#include <vector>

#include "basic/compilecontext.h"

namespace velmora {

// Routine numbers, as requests name them.
enum Routine : int {
    kRoutineMultiply = 1,
    kRoutineDivide = 2,
    kRoutineEeprom = 3,
    kRoutineSquareRoot = 4,
    kRoutineWaitMs = 5,
    kRoutineWaitUsByte = 6,
    kRoutineWaitUsWord = 7,
    kRoutineAdc = 8,
    kRoutineLcdChar = 9,
    kRoutineLcdCommand = 10,
    kRoutineLcdDigits = 11,
    kRoutineShiftLeft = 12,
    kRoutineShiftRight = 13,
    kRoutineHardwareSerial = 16,
    kRoutineHserDigits = 17,
    kRoutineDecimalLong = 35,
    kRoutineMultiplyLong = 36,
    kRoutineDivideLong = 37,
    kRoutineShiftLeftLong = 39,
    kRoutineShiftRightLong = 40,
    kRoutineDecimalWord = 47,
};

struct RoutineText {
    int number;
    const char* comment;
    std::vector<std::string> lines;  // "LABEL: INSTRUCTION" where a label stands
};

void emitroutines(CompileContext& ctx);

}  // namespace velmora
