#pragma once
// Changing the machine from the main window while a started simulation stands at Step By
// Step: a register's value or one of its bits, an SRAM cell, the PC, and the statistics.
// Outside that state every click does nothing.

#include <optional>
#include <string>

#include "core/events.h"
#include "core/runcontrol.h"
#include "shell/userinput.h"

namespace velmora {

// Prompts of the edits.
std::string registerprompt(const std::string& rowtext);
std::string sramprompt(const std::string& celltext);
std::string pcprompt(const Machine& m);

// An answer for a byte: one digit gets a leading "0", upper-cased; exactly two hexadecimal
// digits, else nothing.
std::optional<uint8_t> bytefromanswer(const std::string& answer);
// An answer for the PC: padded on the left with zeros to six digits; a value up to the
// highest PC, else nothing.
std::optional<int32_t> pcfromanswer(const std::string& answer, const Machine& m);

class PausedEditing {
public:
    PausedEditing(RunControl& run, UserInput& input) : run_(run), input_(input) {}

    // True when a click edits: started, at Step By Step.
    bool editable() const;

    // Each returns true when it changed the machine; the caller then refreshes the window.
    bool editregister(int tableindex);
    bool flipbit(int tableindex, int bit);
    bool editsram(int address);
    bool editpc();
    bool resetstatistics();

private:
    RunControl& run_;
    UserInput& input_;
};

}  // namespace velmora
