#pragma once
// Wall time, the 5 ms nap and the yield to the event queue, for the run loop.

#include "core/events.h"

namespace velmora {

class QtClock : public Clock {
public:
    double now() override;  // seconds since midnight
    void nap() override;

protected:
    void yieldevents() override;
};

}  // namespace velmora
