#pragma once
// The ten address breakpoints of the loaded program: word addresses kept as six upper-case
// hexadecimal digits, the text of a listing's address field, sorted after every change (the
// filled ones ascending, the empty ones behind) and handed to the machine, which drops a
// run to Step By Step when the program counter reaches one. They belong to the program, not
// to a window: closing the Breakpoints Manager leaves them in force.

#include <array>
#include <optional>
#include <string>

#include "core/machine.h"

namespace velmora {

inline constexpr int kBreakpointCount = 10;
inline constexpr char kTooManyBreakpoints[] = "You can not define more than 10 breakpoints.";

class BreakpointList {
public:
    explicit BreakpointList(Machine& m) : m_(m) {}

    const std::array<std::string, kBreakpointCount>& entries() const { return entries_; }
    bool contains(const std::string& address) const;

    enum class Toggle { Ignored, Set, Cleared, Full };
    // A row's first six characters: nothing when they are no hexadecimal number; the entry
    // is cleared when it is set, else it takes the first empty place (Full when none is left).
    Toggle toggle(const std::string& rowtext);
    // Clear All Breakpoints, and a program loaded or cleared.
    void clear();

private:
    void sortandapply();

    Machine& m_;
    std::array<std::string, kBreakpointCount> entries_;
};

// The first six characters of a row, upper-cased, when they read as a hexadecimal number.
std::optional<std::string> rowaddress(const std::string& rowtext);

}  // namespace velmora
