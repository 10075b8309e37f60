#pragma once
// The Program Memory Editor: sixteen rows of program words from the scroll position on, each
// with its hexadecimal and binary value and the instruction's text, and the edit of one word
// by its opcode. It reads program memory directly; nothing it does touches the data space.

#include <array>
#include <optional>
#include <string>

#include "core/machine.h"

namespace velmora {

inline constexpr char kProgramMemoryHeading[] =
    " Address           Hex Value     Binary Value                            Instruction";
inline constexpr char kProgramMemoryHint[] = "Click to edit!";
inline constexpr int kProgramMemoryRows = 16;
inline constexpr int kInstructionTextWidth = 20;

struct ProgramMemoryRow {
    std::string text;  // empty beyond the end of program memory
    int address = -1;  // word address, -1 for an empty row
};

class ProgramMemoryEditor {
public:
    explicit ProgramMemoryEditor(Machine& m) : m_(m) {}

    // First word shown, 0 to scrollmax().
    int scroll() const { return scroll_; }
    void setscroll(int first);
    int scrollmax() const;

    // The rows from the scroll position on ("memorijaprint"). A two-word instruction takes the
    // row behind it for its second word, unless it stands in the last row.
    std::array<ProgramMemoryRow, kProgramMemoryRows> rows() const;

    // The question for the word a row shows; empty for an empty row.
    std::string prompt(int row) const;
    // Stores the typed opcode at the row's word: padded on the left to four digits and read as
    // hexadecimal. False, and nothing changes, for a cancelled or unreadable answer.
    bool editrow(int row, const std::optional<std::string>& answer);
    // The same for a word address.
    bool editword(int address, const std::optional<std::string>& answer);

private:
    Machine& m_;
    int scroll_ = 0;
};

}  // namespace velmora
