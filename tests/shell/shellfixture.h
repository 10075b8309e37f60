#pragma once
// A main window model over the product's model files, with scripted answers, recorded
// messages and settings kept in memory.

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "core/memorysettings.h"
#include "shell/mainwindowmodel.h"
#include "shell/messagepolicy.h"
#include "support/modelchoice.h"
#include "support/scriptedinput.h"
#include "support/simfixture.h"

namespace velmora::test {

// Settings that remember the order of first reads.
struct RecordingSettings : MemorySettings {
    std::vector<std::string> reads;
    std::string getsetting(const std::string& name, const std::string& defaultvalue) override {
        reads.push_back(name);
        return MemorySettings::getsetting(name, defaultvalue);
    }
};

inline std::string productdata() { return VELMORA_SOURCE_DATA_DIR; }
inline std::string hellohex() { return productdata() + "/examples/hello.hex"; }

struct Shell {
    RecordingSettings settings;
    RecordingMessenger messenger;
    ScriptedInput input;
    ScriptedClock clock;
    MainWindowModel model{ShellServices{settings, messenger, input, clock}, productdata()};

    // Loads the model of that display name without the start-up sequence.
    void select(const std::string& name) {
        ASSERT_TRUE(selectmodelnamed(model.simulation(), name)) << "model " << name << ": " << model.simulation().error();
    }
    Machine& m() { return model.machine(); }
    void loadhello() {
        input.openpath = hellohex();
        model.command("menuload");
    }
    // Started and standing at Step By Step.
    void startpaused() {
        model.command("menuspeed1");
        model.command("menustart");
    }
    std::string lastmessage() const { return messenger.messages.empty() ? "" : messenger.messages.back(); }
};

}  // namespace velmora::test
