// The debugging windows opened from the Tools menu: a breakpoint set by a click on a listing
// row stops fast runs there, the Watch Variables window follows a BASIC variable while
// stepping, and the Special Breakpoints window sets entries through the user's answers.

#include <QAction>
#include <QTemporaryDir>
#include <QTest>
#include <fstream>
#include <sstream>

#include "assembler/assemblefile.h"
#include "basic/basicfile.h"
#include "uifixture.h"

namespace velmora::test {

class DebugWindowsTest : public QObject {
    Q_OBJECT

private:
    static void atmega32(UiSession& ui) {
        QVERIFY(ui.session.start());
        QVERIFY(selectmodelnamed(ui.model().simulation(), "ATmega32"));
    }
    static std::string modeldir() { return productdata() + "/models"; }
    // The first shown row that begins with `address`, or -1.
    static int rowof(BreakpointsWindow* view, const std::string& address) {
        const auto& rows = view->rows()->shownrows();
        for (int i = 0; i < kBreakpointRows; ++i)
            if (rows[static_cast<size_t>(i)].text.starts_with(address)) return i;
        return -1;
    }
    // The value shown behind the tab of the watch window's row for `name`.
    static QString shownvalue(WatchWindow* view, const QString& name) {
        for (const QString& row : view->text()->toPlainText().split('\n'))
            if (row.startsWith(name + " (")) return row.section('\t', 1);
        return "(missing)";
    }

private slots:
    // r16 counts to 5 with its compare at word 4; the run comes back to it once per round
    // until the breakpoint goes, and then runs to SLEEP.
    void clickedRowStopsFastRunsThere() {
        UiSession ui("breakpoints");
        atmega32(ui);
        QTemporaryDir dir;
        const std::string asmpath = dir.filePath("count.asm").toStdString();
        std::ofstream(asmpath, std::ios::binary) << "; counts in r16\r\n"
                                                    "start:\tldi r16,0\r\n"
                                                    "again:\tinc r16\r\n"
                                                    "\tsts 0x0100,r16\r\n"
                                                    "\tcpi r16,5\r\n"
                                                    "\tbrne again\r\n"
                                                    "\tsleep\r\n";
        std::ostringstream out, err;
        QCOMPARE(assemblefile(asmpath, "ATmega32", modeldir(), out, err), 0);
        ui.session.loadprogram(dir.filePath("count.hex").toStdString());
        ui.input.questions.clear();
        ui.trigger("menubreakpointsmanager");
        BreakpointsWindow* view = ui.session.breakpoints();
        QVERIFY(view);
        QVERIFY(ui.model().registry().isopen(windows::kBreakpointsManager));
        const std::string listing = dir.filePath("count.lst").toStdString();
        QCOMPARE(ui.input.questions, std::vector<std::string>{"Do you want to use existing listing file " + listing + "?"});
        QVERIFY2(!view->scrollbar()->isEnabled(), "a short listing needs no scrolling");

        const int row = rowof(view, "000004");
        QVERIFY(row >= 0);
        QVERIFY(view->rows()->shownrows()[static_cast<size_t>(row)].text.find("cpi r16,5") != std::string::npos);
        QTest::mouseClick(view->rows(), Qt::LeftButton, {}, view->rows()->rowrect(row).center());
        QCOMPARE(view->breakpointlabel(0)->text(), QString("000004"));
        QCOMPARE(view->breakpointlabel(1)->text(), QString());
        QVERIFY(view->rows()->shownrows()[static_cast<size_t>(row)].breakpoint);

        ui.trigger("menuspeed6");
        ui.trigger("menustart");
        const struct {
            int r16;  // the counter when the run stands at the compare
        } stops[] = {{1}, {2}, {3}};
        for (const auto& stop : stops) {
            ui.settle();
            QVERIFY2(ui.m().simulationrunning, "a breakpoint does not end the simulation");
            QCOMPARE(ui.model().run().simulationrate(), kRateStep);
            QCOMPARE(ui.m().pc, 4);
            QCOMPARE(int(ui.m().datamem[16]), stop.r16);
            QCOMPARE(view->rows()->arrowrow(), row);
            QTest::keyClick(view, Qt::Key_F1);  // Start again at the rate chosen before
        }
        // A second click takes the breakpoint away, and the run goes on to SLEEP.
        ui.settle();
        QTest::mouseClick(view->rows(), Qt::LeftButton, {}, view->rows()->rowrect(row).center());
        QCOMPARE(view->breakpointlabel(0)->text(), QString());
        QTest::keyClick(view, Qt::Key_F1);
        QVERIFY(!ui.m().simulationrunning);
        QCOMPARE(int(ui.m().datamem[0x100]), 5);
        view->unload();
        QVERIFY(!ui.model().registry().isopen(windows::kBreakpointsManager));
    }

    void watchFollowsAVariableWhileStepping() {
        UiSession ui("watch");
        atmega32(ui);
        QTemporaryDir dir;
        const std::string bas = dir.filePath("count.bas").toStdString();
        std::ofstream(bas, std::ios::binary) << "Dim n As Byte\r\nDim w As Word\r\nw = 4660\r\n"
                                                "loop:\r\nn = n + 1\r\nGoto loop\r\n";
        BasicFileRequest request;
        request.path = bas;
        request.modelname = "ATmega32";
        request.modeldir = modeldir();
        request.assemble = true;
        std::ostringstream out, err;
        QVERIFY2(basiccompilefile(request, out, err).ok(), err.str().c_str());
        ui.session.loadprogram(dir.filePath("count.hex").toStdString());
        ui.trigger("menuwatch");
        WatchWindow* view = ui.session.watch();
        QVERIFY(view);
        QVERIFY(ui.model().registry().isopen(windows::kWatchVariables));
        QCOMPARE(view->text()->document()->blockCount(), 2);
        QVERIFY(!view->scrollbar()->isEnabled());

        // Each value of n in turn, as the steps write it.
        ui.trigger("menuspeed1");
        ui.trigger("menustart");
        QStringList seen{shownvalue(view, "n")};
        for (int i = 0; i < 400 && seen.size() < 4; ++i) {
            ui.trigger("menustep");
            ui.settle();
            if (shownvalue(view, "n") != seen.back()) seen << shownvalue(view, "n");
        }
        QCOMPARE(seen, (QStringList{"0", "1", "2", "3"}));
        QCOMPARE(shownvalue(view, "w"), QString("4660"));

        // The same rows in hexadecimal.
        view->action("menuhex")->trigger();
        const struct {
            const char* name;
            const char* shown;
        } hexrows[] = {{"n", "0x03"}, {"w", "0x1234"}};
        for (const auto& row : hexrows) QCOMPARE(shownvalue(view, row.name), QString(row.shown));
        QCOMPARE(ui.settings.getsetting(kWatchHexValues, ""), std::string("ON"));

        // Delete mode: a click on the first row removes n, after the question.
        view->action("menudelete")->trigger();
        QVERIFY(view->deletemode());
        QVERIFY(view->deletepanel()->isVisibleTo(view));
        QVERIFY(!view->action("menuadd")->isEnabled());
        const QRect first = view->text()->cursorRect(QTextCursor(view->text()->document()->firstBlock()));
        QTest::mouseClick(view->text()->viewport(), Qt::LeftButton, {}, first.center());
        QCOMPARE(ui.input.questions.back(), std::string("Do you want to delete variable 'n'?"));
        QCOMPARE(shownvalue(view, "n"), QString("(missing)"));
        QTest::mouseClick(view->herelabel(), Qt::LeftButton);
        QVERIFY(!view->deletemode());
        ui.trigger("menustop");
        view->unload();
    }

    void specialBreakpointsSetThroughAnswers() {
        UiSession ui("special");
        atmega32(ui);
        ui.trigger("menuspecialbreak");
        SpecialBreakpointsWindow* view = ui.session.specialbreakpoints();
        QVERIFY(view);
        QVERIFY(ui.model().registry().isopen(windows::kSpecialBreakpoints));
        const struct {
            int entry;
            std::vector<std::optional<std::string>> answers;
            const char* address;
            const char* condition;
        } cases[] = {
            {0, {"60", "1", "2a"}, "$060", "Value = 0x2A"},
            {2, {"85f", "2"}, "$85F", "Value Change"},
            {4, {"1", "1", ""}, "", ""},  // no target: the entry stays empty
        };
        for (const auto& c : cases) {
            ui.input.answers = {c.answers.begin(), c.answers.end()};
            QTest::mouseClick(view->setbutton(c.entry), Qt::LeftButton);
            const QString row = QString("entry %1").arg(c.entry);
            QVERIFY2(view->addresslabel(c.entry)->text() == c.address, qPrintable(row));
            QVERIFY2(view->conditionlabel(c.entry)->text() == c.condition, qPrintable(row));
            const bool filled = *c.address != 0;
            QVERIFY2(view->setbutton(c.entry)->isEnabled() == !filled, qPrintable(row));
            QVERIFY2(view->deletebutton(c.entry)->isEnabled() == filled, qPrintable(row));
        }
        QCOMPARE(ui.input.prompts[1], std::string("Enter special breakpoint type:\n1 - Value Equal\n2 - Value Change"));

        QTest::mouseClick(view->deletebutton(0), Qt::LeftButton);
        QCOMPARE(view->addresslabel(0)->text(), QString());
        QVERIFY(view->setbutton(0)->isEnabled());
        // The entries belong to the program: they outlive the window, and a load clears them.
        view->unload();
        ui.settle();
        QCOMPARE(ui.model().specialbreakpoints().addresslabel(2), std::string("$85F"));
        ui.trigger("menuspecialbreak");
        view = ui.session.specialbreakpoints();
        QVERIFY(view);
        QCOMPARE(view->addresslabel(2)->text(), QString("$85F"));
        ui.session.loadprogram(hellohex());
        QCOMPARE(view->addresslabel(2)->text(), QString());
        view->unload();
    }
};

VELMORA_UI_TEST(DebugWindowsTest);

}  // namespace velmora::test

#include "debugwindows_test.moc"
