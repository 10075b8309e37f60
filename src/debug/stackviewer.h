#pragma once
// The Stack SRAM Space Viewer: the seven cells from SP + 6 down to SP, the cell the next push
// writes (SP - 1) set apart, and the stack pointer. Read straight from the data space.

#include <array>
#include <string>

#include "core/machine.h"

namespace velmora {

inline constexpr char kStackHeading[] = " SRAM Addr.      Hex Value     Binary Value";
inline constexpr int kStackRows = 7;

struct StackPage {
    std::string label;                       // " Stack Pointer (SPH:SPL):" or " Stack Pointer (SPL):"
    std::array<std::string, kStackRows> rows; // SP + 6 first; empty outside the SRAM
    std::string pushrow;                     // SP - 1, empty outside the SRAM
    std::string stekpoint;                   // SP as "$" and hexadecimal digits
    int sp = 0;
};

class StackViewer {
public:
    explicit StackViewer(const Machine& m) : m_(m) {}

    // SPL, with SPH above it on a model that has that register.
    int stackpointer() const;
    // "stekprint".
    StackPage page() const;
    // One cell's row, or empty outside the SRAM.
    std::string row(int address) const;

private:
    const Machine& m_;
};

}  // namespace velmora
