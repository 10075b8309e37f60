// The BASIC Compiler window: opened from the Tools menu, typed into, compiled, assembled and
// loaded; the caret on an error; the header on a clock change; the Viewer of the tables.

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTimer>

#include "uifixture.h"

namespace velmora::test {

class BasicCompilerWindowTest : public QObject {
    Q_OBJECT

private:
    static BasicCompilerWindowView* open(UiSession& ui) {
        ui.trigger("menubasic");
        return ui.session.basiccompiler();
    }
    static void trigger(BasicCompilerWindowView* view, const char* control) {
        QAction* action = view->action(control);
        QVERIFY2(action, control);
        action->trigger();
    }
    static std::string path(const QTemporaryDir& dir, const char* name) { return dir.filePath(name).toStdString(); }
    // A compile error is a modal box: the user's OK, once it shows (within five seconds).
    static void answermodalbox(int tries = 100) {
        QTimer::singleShot(50, [tries] {
            if (auto* box = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                box->accept();
            else if (tries > 1)
                answermodalbox(tries - 1);
        });
    }

private slots:
    void typedSourceIsCompiledAssembledAndLoaded() {
        UiSession ui("basicload");
        QVERIFY(ui.session.start());
        BasicCompilerWindowView* view = open(ui);
        QVERIFY(view);
        QVERIFY(ui.model().registry().isopen(windows::kBasicCompiler));
        QCOMPARE(view->windowTitle(), QString("BASIC Compiler - UNTITLED"));

        trigger(view, "menucompileassembleload");
        QCOMPARE(ui.session.display().lasttext(), std::string("The editor is empty."));

        SourceCodeEditor* source = view->sourceeditor();
        source->setFocus();
        QTest::keyClicks(source, "' typed");
        QTest::keyClick(source, Qt::Key_Return);
        QTest::keyClicks(source, "Dim n As Byte");
        QTemporaryDir dir;
        ui.input.savepath = path(dir, "typed.bas");
        trigger(view, "menucompileassembleload");

        QCOMPARE(view->windowTitle(), QString::fromStdString("BASIC Compiler - " + path(dir, "typed.bas")));
        QVERIFY(QFile::exists(dir.filePath("typed.asm")));
        QVERIFY(QFile::exists(dir.filePath("typed.lst")));
        QCOMPARE(ui.model().qprogram(), path(dir, "typed.hex"));
        UiSession::settle();
        QVERIFY(ui.window().field("qprogram2")->text().endsWith("typed.hex"));
        // CLR R15 at address 0, as the main window's Start will run it.
        QCOMPARE(int(ui.m().progmem[0]), 0xFF);
        QCOMPARE(int(ui.m().progmem[1]), 0x24);
        const std::string& report = ui.session.display().lasttext();
        QVERIFY2(report.starts_with("The compilation process was successful."), report.c_str());
        QVERIFY(report.ends_with("\nTotal 12 (0.01K) program bytes loaded."));
        QCOMPARE(source->toPlainText(), QString("' typed\nDim n As Byte"));
        view->close();
        QVERIFY(!ui.model().registry().isopen(windows::kBasicCompiler));
    }

    void theRunningLineIsMarkedWhenTheMainWindowDraws() {
        UiSession ui("basictracking");
        QVERIFY(ui.session.start());
        BasicCompilerWindowView* view = open(ui);
        QVERIFY(view);
        QTemporaryDir dir;
        view->sourceeditor()->setPlainText("' count\nDim n As Byte\nn = 1\nn = 2\nEnd\n");
        ui.input.savepath = path(dir, "count.bas");
        trigger(view, "menucompileassembleload");
        QVERIFY(ui.model().tracking().active());
        ui.trigger("menuspeed1");
        ui.trigger("menustart");
        QVERIFY(ui.window().action("menustep3")->isVisible());
        // The start-up code, then line 3's first word.
        for (int i = 0; i < 6 && ui.model().tracking().map().lineat(ui.m().pc) != 3; ++i) ui.trigger("menustep2");
        ui.window().flush();
        QCOMPARE(view->sourceeditor()->marks(), std::vector<int>{3});
        QCOMPARE(view->sourceeditor()->textCursor().blockNumber() + 1, 3);
        ui.trigger("menustep3");
        ui.window().flush();
        QCOMPARE(view->sourceeditor()->marks(), std::vector<int>{4});
        ui.trigger("menustop");
    }

    void anErrorPutsTheCaretOnItsLine() {
        UiSession ui("basicerror");
        QVERIFY(ui.session.start());
        BasicCompilerWindowView* view = open(ui);
        QVERIFY(view);
        view->show();
        QTemporaryDir dir;
        view->sourceeditor()->setPlainText("' one\nDim a As Byte\nDim 2b As Byte\n");
        ui.input.savepath = path(dir, "bad.bas");
        answermodalbox();
        trigger(view, "menucompile");
        QCOMPARE(ui.session.display().lasttext(), std::string("Error in line 3: Incorrect variable name."));
        QCOMPARE(view->sourceeditor()->textCursor().blockNumber() + 1, 3);
        QVERIFY(!QFile::exists(dir.filePath("bad.asm")));
    }

    void theHeaderFollowsTheClockAndTheModelStaysWhileOpen() {
        UiSession ui("basicheader");
        QVERIFY(ui.session.start());
        BasicCompilerWindowView* view = open(ui);
        QVERIFY(view);
        const QString model = QString::fromStdString(ui.m().modelname);
        QCOMPARE(view->header()->text(), " Microcontroller: " + model + ";  Clock Frequency: 4.0 MHz");
        ui.input.answers = {std::string("12")};
        ui.trigger("menuclock");
        QCOMPARE(view->header()->text(), " Microcontroller: " + model + ";  Clock Frequency: 12.0 MHz");
        ui.trigger("menuselect");
        QCOMPARE(ui.session.display().lasttext(), std::string("Please close BASIC Compiler window first."));
        // The Tools menu brings the open window forward instead of making a second one; once
        // closed, it makes a new one at once, before the closed one is deleted.
        ui.trigger("menubasic");
        QCOMPARE(ui.session.basiccompiler(), view);
        view->close();
        ui.trigger("menubasic");
        QVERIFY(ui.session.basiccompiler() && ui.session.basiccompiler() != view);
    }

    void showSystemVariablesOpensTheViewer() {
        UiSession ui("basicviewer");
        QVERIFY(ui.session.start());
        BasicCompilerWindowView* view = open(ui);
        QVERIFY(view);
        QVERIFY(!view->viewer());
        trigger(view, "menuvariables");
        QVERIFY(view->viewer() && view->viewer()->isVisible());
        QCOMPARE(view->viewer()->windowTitle(), QString("System Variables"));
        const QString table = view->viewer()->textview()->toPlainText();
        QVERIFY(table.startsWith("Name\tType\tAddress\n------------------------\n"));
        trigger(view, "menuinterrupts");
        QCOMPARE(view->viewer()->windowTitle(), QString("System Interrupt Names"));
        trigger(view, "menucompatible");
        QVERIFY(view->action("menucompatible")->isChecked());
        QCOMPARE(ui.settings.getsetting("MPASMWIN Listing", ""), std::string("ON"));
    }
};

VELMORA_UI_TEST(BasicCompilerWindowTest);

}  // namespace velmora::test

#include "basiccompilerwindow_test.moc"
