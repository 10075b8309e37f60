#pragma once
// The desktop program put together as main() does, on a fresh settings file, with answers
// to its dialogs given by the test.

#include <QCoreApplication>
#include <QTest>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "shell/settingsstore.h"
#include "support/modelchoice.h"
#include "support/scriptedinput.h"
#include "support/scriptedwiring.h"
#include "ui/desktopsession.h"

namespace velmora::test {

inline std::string productdata() { return VELMORA_SOURCE_DATA_DIR; }
inline std::string hellohex() { return productdata() + "/examples/hello.hex"; }

// A settings file of its own for each session, empty at the start.
inline std::filesystem::path freshsettings(const std::string& name) {
    const char* base = std::getenv("VELMORA_SETTINGS");
    std::filesystem::path path = std::string(base && *base ? base : "/tmp/velmora-ui-settings") + "-" + name;
    std::filesystem::remove(path);
    return path;
}

struct UiSession {
    explicit UiSession(const std::string& name)
        : settings(freshsettings(name)), session(settings, productdata(), &input, &wiring) {}
    MainWindowModel& model() { return session.model(); }
    MainWindow& window() { return session.window(); }
    Machine& m() { return session.model().machine(); }
    void trigger(const std::string& control) {
        QAction* action = window().action(control);
        QVERIFY2(action, control.c_str());
        action->trigger();
    }
    // Runs what is queued, so the window shows the latest fields.
    static void settle() { QCoreApplication::processEvents(); }

    SettingsStore settings;
    ScriptedInput input;
    ScriptedWiring wiring;
    DesktopSession session;
};

// Each test file adds its test object to the one program.
using UiTestFactory = QObject* (*)();
int registeruitest(UiTestFactory factory);
#define VELMORA_UI_TEST(Class) \
    static const int Class##registered = ::velmora::test::registeruitest([]() -> QObject* { return new Class; })

}  // namespace velmora::test
