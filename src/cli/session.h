#pragma once
// Everything one headless run needs: the machine, its run control, messages to
// stderr, a steady clock and settings kept in memory.

#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>

#include "core/machine.h"
#include "core/memorysettings.h"
#include "core/runcontrol.h"
#include "cli/programinput.h"
#include "debug/sourcemap.h"
#include "models/modelfile.h"

namespace velmora {

class StreamMessenger : public Messenger {
public:
    explicit StreamMessenger(std::ostream& out) : out_(out) {}
    void show(const std::string& text, MessageKind kind) override;
    // Called before each message, so that the program's output and messages keep their order.
    std::function<void()> beforeshow;
    // Put before each message while it concerns one file ("FILE: "), so the message says which.
    std::string prefix;

private:
    std::ostream& out_;
};

class SteadyClock : public Clock {
public:
    double now() override;
    void nap() override {}

protected:
    void yieldevents() override {}
};

class CliSession {
public:
    explicit CliSession(std::ostream& err);
    Machine& machine() { return machine_; }
    RunControl& runcontrol() { return *run_; }
    SettingsAccess& settings() { return settings_; }
    SteadyClock& clock() { return clock_; }
    StreamMessenger& messenger() { return messenger_; }

    // Loads the named model (case-insensitive display name, or the default one) and sets up
    // its on-chip peripherals; false after printing why not.
    bool selectmodel(const std::optional<std::string>& name);
    // Sets the clock in MHz from text; false for a value that is not a positive number.
    bool setclock(const std::string& text);
    // Loads a program for the selected model by its kind (see programinput.h); false after
    // printing why not, naming the file.
    bool loadprogram(const std::string& path);
    // The BASIC line map of the loaded program; empty unless it was compiled from BASIC.
    const SourceMap& sourcelines() const { return companions_.lines; }
    const std::vector<WatchEntry>& basicvariables() const { return companions_.variables; }
    // The functions and objects of a program loaded from an ELF file.
    const std::vector<ElfSymbol>& symbols() const { return companions_.symbols; }

private:
    std::ostream& err_;
    Machine machine_;
    StreamMessenger messenger_;
    SteadyClock clock_;
    MemorySettings settings_;
    ModelDefinitions definitions_;
    std::unique_ptr<RunControl> run_;
    ProgramCompanions companions_;
};

// Folder of the at*.cfg model files.
std::string modeldirectory();

// The display name of the named model (any case), or of the default one without a name;
// nothing after printing why not.
std::optional<std::string> modelnamed(const std::optional<std::string>& name, std::ostream& err);

}  // namespace velmora
