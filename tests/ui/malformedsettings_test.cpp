// The desktop program started on a settings file edited by hand past every limit (see
// tests/fuzz/data/make-settings.sh): it starts as on an empty file, shows its messages, and
// every window it opens can be reached on a screen.

#include <QApplication>
#include <QGuiApplication>
#include <QScreen>
#include <QTest>
#include <filesystem>

#include "shell/settingnames.h"
#include "shell/settingvalues.h"
#include "uifixture.h"

namespace velmora::test {

class MalformedSettingsTest : public QObject {
    Q_OBJECT

private:
    // The start of the title bar lies on some screen.
    static bool reachable(const QWidget* window) {
        const QRect grab(window->pos(), QSize(8, 8));
        for (const QScreen* screen : QGuiApplication::screens())
            if (screen->availableGeometry().intersects(grab)) return true;
        return false;
    }

private slots:
    void startsAndKeepsEveryWindowInReach() {
        const std::filesystem::path path = freshsettings("malformed");
        std::filesystem::copy_file(std::string(VELMORA_SOURCE_DIR) + "/tests/fuzz/data/malformed.settings", path);
        SettingsStore settings(path);
        ScriptedInput input;
        ScriptedWiring wiring;
        DesktopSession session(settings, productdata(), &input, &wiring);
        QVERIFY(session.start());
        QCoreApplication::processEvents();

        // The auto-started windows opened too.
        QVERIFY(session.assembler() && session.basiccompiler() && session.lcd());
        int visible = 0;
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (!window->isVisible()) continue;
            ++visible;
            QVERIFY2(reachable(window), qPrintable(window->windowTitle()));
        }
        QVERIFY(visible >= 4);

        // A message through the Confirmation window, whose duration is far beyond any timer.
        session.window().action("menuunprogrammed")->trigger();
        QCOMPARE(session.display().count(), 1);
        QVERIFY(session.display().confirmationwindow().isVisible());
        QVERIFY(session.display().confirmationwindow().text().contains("Unprogrammed"));

        session.window().close();
        QCoreApplication::processEvents();
        // What the close stored is a place the next start can use.
        for (const char* name : {"Window1 Left", "Window1 Top", "Window17 Left", "Window16 Top"}) {
            const int32_t value = settinginteger(settings.getsetting(name, "-1"));
            QVERIFY2(value >= 0 && value <= kWindowTwipsHigh, name);
        }
    }
};

VELMORA_UI_TEST(MalformedSettingsTest);

}  // namespace velmora::test

#include "malformedsettings_test.moc"
