#pragma once
// The five special breakpoints: each watches one data space location and drops a run to
// Step By Step when its value equals a target, or when it changes. The run control calls
// check() after every step while any entry is set (and only then, so that runs without them
// stay quiet); the window sets and clears entries through the user's answers.

#include <array>
#include <cstdint>
#include <string>

#include "core/events.h"
#include "core/runcontrol.h"

namespace velmora {

inline constexpr int kSpecialBreakpoints = 5;

enum class SpecialKind : int32_t { Empty = 0, ValueEqual = 1, ValueChange = 2 };

struct SpecialBreakpoint {
    SpecialKind kind = SpecialKind::Empty;
    int32_t address = 0;
    int32_t value = 0;  // the target, or the last value seen
};

class SpecialBreakpoints {
public:
    SpecialBreakpoints(RunControl& run, Questions& questions, Messenger& messenger);
    ~SpecialBreakpoints();
    SpecialBreakpoints(const SpecialBreakpoints&) = delete;
    SpecialBreakpoints& operator=(const SpecialBreakpoints&) = delete;

    const std::array<SpecialBreakpoint, kSpecialBreakpoints>& entries() const { return entries_; }

    // The set command of entry n: address, kind and (for Value Equal) target, each asked in
    // turn; a rejected answer ends the command with its message and leaves the entry as it was.
    void set(int n);
    void remove(int n);
    // A program loaded or cleared.
    void clear();

    // The labels of entry n: "$" and the address, and the condition; empty for an empty entry.
    std::string addresslabel(int n) const;
    std::string conditionlabel(int n) const;

    // The test after a step: the first entry that fires drops the rate, and the rest wait.
    void check();

private:
    void hook();

    RunControl& run_;
    Questions& questions_;
    Messenger& messenger_;
    std::array<SpecialBreakpoint, kSpecialBreakpoints> entries_{};
    int hookid_ = 0;
};

}  // namespace velmora
