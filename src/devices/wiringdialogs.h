#pragma once
// What a device window asks its user: the two wiring dialogs and the plain questions. The
// desktop answers with Qt dialogs, tests from a script.

#include "core/events.h"
#include "devices/selectoption.h"
#include "devices/selectpin.h"

namespace velmora {

class WiringDialogs : public Questions {
public:
    // Runs the dialog modally until the user selects or cancels.
    virtual void run(SelectPin& dialog) = 0;
    virtual void run(SelectOption& dialog) = 0;
};

}  // namespace velmora
