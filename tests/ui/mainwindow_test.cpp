// The main window offscreen: start-up on fresh settings, the example at every rate, clicks
// that edit while paused, messages, and what closing leaves in the settings.

#include <QLabel>
#include <QTest>
#include <QTimer>

#include "gdb/rsp.h"
#include "support/loopbackclient.h"
#include "uifixture.h"

namespace velmora::test {

class MainWindowTest : public QObject {
    Q_OBJECT

private:
    static QString text(UiSession& ui, const char* field) { return ui.window().field(field)->text(); }
    static int row(UiSession& ui, const std::string& name) {
        const auto& table = ui.m().namedregisters;
        for (size_t i = 0; i < table.size(); ++i)
            if (table[i].name == name) {
                ui.model().scroll.registers = static_cast<int>(i);
                return static_cast<int>(i) - clampscroll(ui.m(), ui.model().scroll).registers;
            }
        return -1;
    }

private slots:
    void titleAndFieldsOnAFreshStart() {
        UiSession ui("fresh");
        QVERIFY(ui.session.start());
        const QString title = ui.window().windowTitle();
        QVERIFY2(title.contains("Velmora") && title.contains("ATmega32"), qPrintable(title));
        QCOMPARE(text(ui, "qprocessor"), QString("ATmega32"));
        QCOMPARE(text(ui, "qclockfreq"), QString("4.0 MHz"));
        QCOMPARE(ui.window().action("menuload")->text(), QString("&Load Program"));
        QCOMPARE(ui.window().action("menuabout")->text(), QString("About Velmora"));
        QVERIFY(ui.window().action("menuspeed4")->isChecked());
        QVERIFY(!ui.window().action("menustep2")->isVisible());
        QCOMPARE(ui.settings.getsetting("Simulation Rate", "?"), std::string("4"));
    }

    void runsTheExampleAtEveryRate() {
        UiSession ui("rates");
        QVERIFY(ui.session.start());
        QVERIFY(ui.window().windowTitle().contains("ATmega32"));
        ui.session.loadprogram(hellohex());
        QVERIFY(ui.session.display().lasttext().find("Total 42 (0.04K) program bytes loaded.") != std::string::npos);

        // Step By Step: ten single steps, then Stop.
        ui.trigger("menuspeed1");
        ui.trigger("menustart");
        QVERIFY(ui.window().action("menustep2")->isVisible());
        for (int i = 0; i < 10; ++i) ui.trigger("menustep2");
        ui.settle();
        QCOMPARE(text(ui, "qbrojinst"), QString("10"));
        QVERIFY(!text(ui, "qinst").isEmpty());
        ui.trigger("menustop");
        QVERIFY(ui.session.display().lasttext().rfind("Total number of executed instructions is 10.\n", 0) == 0);

        for (int rate = 2; rate <= 6; ++rate) {
            ui.trigger("menuspeed" + std::to_string(rate));
            // Stop comes from the event queue while the run loop is inside Start.
            QTimer::singleShot(rate >= 5 ? 400 : 150, [&ui] { ui.window().action("menustop")->trigger(); });
            ui.trigger("menustart");
            QVERIFY2(!ui.m().simulationrunning, qPrintable(QString("rate %1 did not stop").arg(rate)));
            const std::string summary = ui.session.display().lasttext();
            QVERIFY2(summary.rfind("Total number of executed instructions is ", 0) == 0, summary.c_str());
            QVERIFY(summary.find("clock cycles or ") != std::string::npos);
            QVERIFY(summary.find(" at 4 MHz.") != std::string::npos);
            QVERIFY(ui.m().totalinstructions >= 1);
            QVERIFY(ui.window().action("menustart")->isEnabled());
            QVERIFY(!ui.window().action("menustop")->isEnabled());
            if (rate >= 5) {
                // The counter on PORTB has moved on many times.
                QVERIFY(ui.m().totalinstructions > 20000);
            }
            ui.settle();
            QCOMPARE(text(ui, "qbrojinst"), QString::number(instructioncounter(ui.m())));
        }
    }

    void editsWhilePausedByClicks() {
        UiSession ui("editing");
        QVERIFY(ui.session.start());
        ui.session.loadprogram(hellohex());
        ui.trigger("menuspeed1");
        ui.trigger("menustart");
        const int gicr = row(ui, "GICR");
        QVERIFY(gicr >= 0);
        ui.window().flush();
        LampList* list = ui.window().registerlist();
        QTest::mouseClick(list, Qt::LeftButton, {}, list->lamprect(gicr, 6).center());
        QCOMPARE(int(ui.m().datamem[0x5B]), 0x40);
        QTest::mouseClick(list, Qt::LeftButton, {}, list->lamprect(gicr, 3).center());
        QCOMPARE(int(ui.m().datamem[0x5B]), 0x40);  // bit 3 of GICR does not exist
        ui.input.answers = {"ff"};
        QTest::mouseClick(list, Qt::LeftButton, {}, list->namerect(gicr).center());
        QCOMPARE(int(ui.m().datamem[0x5B]), 0xE3);
        ui.input.answers = {"2A"};
        QTest::mouseClick(ui.window().field("qpcname"), Qt::LeftButton);
        QCOMPARE(ui.m().pc, 0x2A);
        ui.settle();
        QCOMPARE(text(ui, "qpc"), QString("00002A"));
        ui.trigger("menustop");
    }

    void refusalsAndOptionsThroughTheMenus() {
        UiSession ui("options");
        QVERIFY(ui.session.start());
        ui.input.answers = {"20001"};
        ui.trigger("menuwritetime");
        QCOMPARE(ui.session.display().lasttext(), std::string("Allowed range 50-20000."));
        ui.input.answers = {"8"};
        QTest::mouseClick(ui.window().field("qclockfreq"), Qt::LeftButton);
        QCOMPARE(text(ui, "qclockfreq"), QString("8.0 MHz"));
        ui.trigger("menucompact");
        QVERIFY(!ui.window().action("menucompact")->isChecked());
        QCOMPARE(ui.settings.getsetting("Compact View", "?"), std::string("OFF"));
    }

    void closingStoresThePositionAndRemembersWindows() {
        {
            UiSession ui("closing");
            QVERIFY(ui.session.start());
            ui.session.loadprogram(hellohex());
            ui.trigger("menuperipheraldevices");
            QVERIFY(ui.session.microcontrollerview());
            ui.window().move(150, 90);
            ui.window().close();
            QCOMPARE(ui.settings.getsetting("Auto Start View", "?"), std::string("1"));
            QCOMPARE(ui.settings.getsetting("Auto Start Hex File", "?"), hellohex());
            QVERIFY(!ui.model().registry().microcontrollerviewopen());
        }
    }

    void closingWhileRunningStopsFirst() {
        UiSession ui("closerunning");
        QVERIFY(ui.session.start());
        ui.session.loadprogram(hellohex());
        ui.trigger("menuspeed5");
        QTimer::singleShot(200, [&ui] { ui.window().close(); });
        ui.trigger("menustart");
        QVERIFY(!ui.m().simulationrunning);
        QVERIFY(!ui.window().isVisible());
    }

    // The stub from the Simulation menu: the window's timer serves the client, and the run
    // fields follow gdb's step.
    void gdbServerFromTheSimulationMenu() {
        UiSession ui("gdb");
        QVERIFY(ui.session.start());
        ui.session.loadprogram(hellohex());
        const int port = freeport();
        ui.input.answers = {std::to_string(port)};
        ui.trigger("menugdb");
        QVERIFY(ui.window().action("menugdb")->isChecked());
        LoopbackClient client(port);
        QVERIFY(client.connected());
        std::string replies;
        const auto ask = [&](const std::string& packet) {
            client.send(rspframe(packet));
            replies.clear();
            for (int i = 0; i < 50 && replies.size() < 2; ++i) {
                QTest::qWait(20);
                replies += client.receive(0);
            }
            return replies;
        };
        QCOMPARE(ask("?"), "+" + rspframe("S05"));
        QCOMPARE(ask("s"), "+" + rspframe("S05"));
        ui.settle();
        QCOMPARE(text(ui, "qbrojinst"), QString("1"));
        ui.trigger("menugdb");
        QVERIFY(!ui.window().action("menugdb")->isChecked());
    }
};

VELMORA_UI_TEST(MainWindowTest);

}  // namespace velmora::test

#include "mainwindow_test.moc"
