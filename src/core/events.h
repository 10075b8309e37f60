#pragma once
// Small interfaces through which the core reaches the world around it. Each has a
// desktop implementation and a scripted or recording one for tests and the CLI.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace velmora {

enum class MessageKind { Information, Exclamation, Critical };

// Shows a message to the user (a box, the Confirmation window, or stderr).
class Messenger {
public:
    virtual ~Messenger() = default;
    virtual void show(const std::string& text, MessageKind kind) = 0;
};

// The plain questions a window puts to its user: a prompt with a typed answer and a yes/no
// question. The desktop answers with dialogs, tests from a script.
class Questions {
public:
    virtual ~Questions() = default;
    // The answer, or nothing when the user cancelled.
    virtual std::optional<std::string> inputbox(const std::string& prompt, const std::string& defaultanswer) = 0;
    virtual bool askyesno(const std::string& question) = 0;
};

// What the machine tells its run control: a stack fault speaks and drops the rate to Step By Step.
class MachineEvents {
public:
    virtual ~MachineEvents() = default;
    virtual void fault(const std::string& text) = 0;
};

// Wall time, the 5 ms nap and the yield to the event queue.
class Clock {
public:
    virtual ~Clock() = default;
    virtual double now() = 0;  // seconds since midnight, with fractions
    virtual void nap() = 0;    // about 5 ms
    // Lets pending user input act, then gives `onyield` its turn.
    void yield() {
        yieldevents();
        if (onyield) onyield();
    }
    // Between stretches of a run: a debugger client reads what came meanwhile (a Ctrl-C).
    std::function<void()> onyield;

protected:
    virtual void yieldevents() = 0;
};

// The per-user settings store: reading a missing value writes its default back.
class SettingsAccess {
public:
    virtual ~SettingsAccess() = default;
    virtual std::string getsetting(const std::string& name, const std::string& defaultvalue) = 0;
    virtual void putsetting(const std::string& name, const std::string& value) = 0;
    virtual int32_t getsettingdword(const std::string& name, int32_t defaultvalue) = 0;
    virtual void putsettingdword(const std::string& name, int32_t value) = 0;
};

}  // namespace velmora
