#pragma once
// What a device window asks its user: the two wiring dialogs and the plain questions. The
// desktop answers with Qt dialogs, tests from a script.

#include <optional>
#include <string>

#include "devices/selectoption.h"
#include "devices/selectpin.h"

namespace velmora {

class WiringDialogs {
public:
    virtual ~WiringDialogs() = default;
    // Runs the dialog modally until the user selects or cancels.
    virtual void run(SelectPin& dialog) = 0;
    virtual void run(SelectOption& dialog) = 0;
    // The answer, or nothing when cancelled.
    virtual std::optional<std::string> inputbox(const std::string& prompt, const std::string& defaultanswer) = 0;
    virtual bool askyesno(const std::string& question) = 0;
};

}  // namespace velmora
