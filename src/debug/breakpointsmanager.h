#pragma once
// The Breakpoints Manager window without its drawing: a view of the loaded program, one row
// per line of the assembler's listing beside it (when the user takes it) or of a plain
// disassembly, twenty rows from the scroll position on, a mark on each row whose address is
// a breakpoint and the arrow on the row of the program counter. A click on a row toggles its
// breakpoint; "Hold PC In Focus" scrolls the program counter's row into view.

#include <array>
#include <string>
#include <vector>

#include "core/events.h"
#include "debug/breakpointlist.h"

namespace velmora {

inline constexpr int kBreakpointRows = 20;
inline constexpr char kHoldPcInFocus[] = "Hold PC In Focus";
inline constexpr char kAssemblerListingRule[] = "---------------------------------------------";
inline constexpr char kAssemblerListingTitle[] = "AVR ASSEMBLER LISTING";

struct BreakpointRow {
    std::string text;
    bool breakpoint = false;
    bool pc = false;
};

class BreakpointsManager {
public:
    BreakpointsManager(Machine& m, BreakpointList& list, Questions& questions, Messenger& messenger,
                       SettingsAccess& settings);

    // Builds the rows for the program loaded from `programpath`: its ".lst" twin when it
    // exists, the user agrees and it is this assembler's listing, else the disassembly.
    void load(const std::string& programpath);
    const std::vector<std::string>& lines() const { return lines_; }

    // First row shown, from 0; the scroll bar is off with fewer than 21 rows.
    int scroll() const { return scroll_; }
    int scrollmax() const;
    bool scrollenabled() const { return lines_.size() >= kBreakpointRows + 1; }
    void setscroll(int first);

    // The refresh after a step and after every change: with the program counter's row out of
    // sight and "Hold PC In Focus" on, scrolls it to the fourth row.
    void draw();
    // The visible rows, each cut to `width` characters.
    std::array<BreakpointRow, kBreakpointRows> rows(int width) const;

    void clickrow(int row);
    void clearall();

    bool holdpcinfocus() const { return holdpcinfocus_; }
    void setholdpcinfocus(bool on);

private:
    // The row of the program counter's address among all rows, or -1.
    int pcline() const;

    Machine& m_;
    BreakpointList& list_;
    Questions& questions_;
    SettingsAccess& settings_;
    Messenger& messenger_;
    std::vector<std::string> lines_;
    int scroll_ = 0;
    bool holdpcinfocus_ = true;
};

}  // namespace velmora
