#pragma once
// Parts outside the chip that follow its pins: simulated devices, pin traces. Each is told
// after a step in which the machine raised attention (a port register written, an outside
// input changed, a peripheral's news) and once the cycle it asked for has come, and at every
// reset. Nothing calls it in a step where neither happened, so quiet runs stay quiet.

#include <cstdint>

namespace velmora {

struct Machine;

class PinObserver {
public:
    virtual ~PinObserver() = default;
    // The machine was reset: totalcycles is 0 and the pins hold their reset levels.
    virtual void reset(Machine& m) = 0;
    // Its turn after a step; returns the cycle at which it wants the next turn even if no pin
    // moves, or UINT64_MAX for none.
    virtual uint64_t attend(Machine& m) = 0;
};

// Gives every observer of m its turn and brings the machine's attention cycle down to the
// earliest cycle one of them asked for. Run after RunControl::onattention, whose owner sets
// the attention cycle afresh in its turn (as the headless runner does): a cycle already
// reached is taken as had and replaced.
void attendobservers(Machine& m);

// Adds or removes an observer; adding one gives it a turn after the next step.
void addobserver(Machine& m, PinObserver* observer);
void removeobserver(Machine& m, PinObserver* observer);

}  // namespace velmora
