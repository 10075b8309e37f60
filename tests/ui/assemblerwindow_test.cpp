// The Assembler window: opened from the Tools menu, typed into, assembled, with its listing,
// error marks, Go To Next Error, Assemble & Load, the Edit commands and printing.

#include <QAction>
#include <QFile>
#include <QGroupBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>

#include "uifixture.h"

namespace velmora::test {

class AssemblerWindowTest : public QObject {
    Q_OBJECT

private:
    static AssemblerWindowView* open(UiSession& ui) {
        ui.trigger("menuassembler");
        return ui.session.assembler();
    }
    static void trigger(AssemblerWindowView* view, const char* control) {
        QAction* action = view->action(control);
        QVERIFY2(action, control);
        action->trigger();
    }
    static int caretline(const AsmCodeEditor* editor) { return editor->textCursor().blockNumber() + 1; }
    static QString caretrow(const AsmCodeEditor* editor) { return editor->textCursor().block().text(); }
    static std::string path(const QTemporaryDir& dir, const char* name) { return dir.filePath(name).toStdString(); }

private slots:
    void typedSourceAssemblesIntoTheListingViewer() {
        UiSession ui("asmgood");
        QVERIFY(ui.session.start());
        AssemblerWindowView* view = open(ui);
        QVERIFY(view);
        QVERIFY(ui.model().registry().isopen(windows::kAssembler));
        QCOMPARE(view->windowTitle(), QString("Assembler - UNTITLED"));
        QVERIFY(!view->action("menu5")->isVisible());

        AsmCodeEditor* source = view->sourceeditor();
        source->setFocus();
        QTest::keyClicks(source, "START: LDI R16,$FF");
        QTest::keyClick(source, Qt::Key_Return);
        QTest::keyClicks(source, "       RJMP START");
        QTemporaryDir dir;
        ui.input.savepath = path(dir, "typed.asm");
        trigger(view, "menuassemble");

        QCOMPARE(view->windowTitle(), QString::fromStdString("Assembler - " + path(dir, "typed.asm")));
        const QString listing = view->listingviewer()->toPlainText();
        QVERIFY2(listing.contains("0001    000000  EF0F    START: LDI R16,$FF"), qPrintable(listing));
        QVERIFY(listing.contains("0002    000001  CFFE           RJMP START"));
        QVERIFY(listing.endsWith("Number of errors = 0"));
        QVERIFY(view->listingviewer()->isReadOnly());
        QVERIFY(!view->frame()->isVisible());
        QVERIFY(!view->action("menu5")->isVisible());
        QVERIFY(QFile::exists(dir.filePath("typed.hex")));
        // The editor keeps what was typed.
        QCOMPARE(source->toPlainText(), QString("START: LDI R16,$FF\n       RJMP START"));
        view->close();
        QVERIFY(!ui.model().registry().isopen(windows::kAssembler));
    }

    void errorsAreMarkedAndGoToNextErrorWalksThem() {
        UiSession ui("asmbad");
        QVERIFY(ui.session.start());
        AssemblerWindowView* view = open(ui);
        QVERIFY(view);
        view->show();
        QTemporaryDir dir;
        view->sourceeditor()->setPlainText("  nop\n  bogus\n  nop\n  ldi r16,999\n");
        ui.input.savepath = path(dir, "bad.asm");
        trigger(view, "menuassemble");

        QCOMPARE(ui.session.display().lasttext(),
                 std::string("Assembly was not successful.\nYour assembler source contains 2 errors."));
        QVERIFY(!QFile::exists(dir.filePath("bad.lst")));
        QCOMPARE(view->sourceeditor()->marks(), (std::vector<int>{2, 4}));
        QCOMPARE(view->listingviewer()->marks().size(), size_t(2));
        QCOMPARE(view->sourceeditor()->extraSelections().size(), 2);
        QVERIFY(view->action("menu5")->isVisible());
        QCOMPARE(caretline(view->sourceeditor()), 2);
        QVERIFY(caretrow(view->listingviewer()).startsWith("0002 Error: "));

        trigger(view, "menu5");
        QCOMPARE(caretline(view->sourceeditor()), 4);
        QVERIFY(caretrow(view->listingviewer()).startsWith("0004 Error: "));
        trigger(view, "menu5");
        QCOMPARE(caretline(view->sourceeditor()), 2);

        trigger(view, "menunew");
        QVERIFY(!view->action("menu5")->isVisible());
        QVERIFY(view->listingviewer()->toPlainText().isEmpty());
        QCOMPARE(view->windowTitle(), QString("Assembler - UNTITLED"));
    }

    void assembleAndLoadPutsTheProgramIntoTheMachine() {
        UiSession ui("asmload");
        QVERIFY(ui.session.start());
        AssemblerWindowView* view = open(ui);
        QVERIFY(view);
        QTemporaryDir dir;
        view->sourceeditor()->setPlainText("  ldi r16,$FF\n  out PORTB,r16\nloop: rjmp loop\n");
        ui.input.savepath = path(dir, "load.asm");
        trigger(view, "menuassembleload");
        QCOMPARE(int(ui.m().progmem[0]), 0x0F);
        QCOMPARE(int(ui.m().progmem[1]), 0xEF);
        QCOMPARE(int(ui.m().progmem[3]), 0xBB);
        QCOMPARE(ui.model().qprogram(), path(dir, "load.hex"));
        QCOMPARE(ui.session.display().lasttext(), loadconfirmation(6));
        // The main window runs it.
        ui.trigger("menuspeed1");
        ui.trigger("menustart");
        ui.trigger("menustep");
        ui.trigger("menustep");
        QCOMPARE(int(ui.m().datamem[0x38]), 0xFF);
        ui.trigger("menustop");
    }

    void editCommandsGoToTheTextControl() {
        UiSession ui("asmedit");
        QVERIFY(ui.session.start());
        AssemblerWindowView* view = open(ui);
        QVERIFY(view);
        AsmCodeEditor* source = view->sourceeditor();
        source->setFocus();
        QTest::keyClicks(source, "nop");
        trigger(view, "menuundo");
        QCOMPARE(source->toPlainText(), QString());
        source->setPlainText("ldi r16,1\nldi r17,2");
        ui.input.answers = {std::string("LDI"), std::string("mov")};
        trigger(view, "menureplace");
        QCOMPARE(source->toPlainText(), QString("mov r16,1\nmov r17,2"));
        QCOMPARE(ui.session.display().lasttext(), std::string("2 words replaced."));
        ui.input.answers = {std::string("r17")};
        trigger(view, "menufind");
        QCOMPARE(source->textCursor().selectedText(), QString("r17"));
        QCOMPARE(caretline(source), 2);
        // Undo takes back the replacement made through the model.
        trigger(view, "menuundo");
        QCOMPARE(source->toPlainText(), QString("ldi r16,1\nldi r17,2"));
    }

    void printSourceWritesAPdfAndTheRefusalsSpeak() {
        UiSession ui("asmprint");
        QVERIFY(ui.session.start());
        AssemblerWindowView* view = open(ui);
        QVERIFY(view);
        QTemporaryDir dir;
        view->choosepdf = [&] { return dir.filePath("out.pdf"); };
        view->sourceeditor()->setPlainText("  nop\n");
        trigger(view, "menuprint");
        QCOMPARE(ui.session.display().lasttext(), std::string("Please save the file first."));
        ui.input.savepath = path(dir, "p.asm");
        trigger(view, "menusave");
        trigger(view, "menuprint2");
        QCOMPARE(ui.session.display().lasttext(), std::string("The listing viewer is empty."));
        trigger(view, "menuprint");
        QFile pdf(dir.filePath("out.pdf"));
        QVERIFY(pdf.open(QIODevice::ReadOnly));
        QVERIFY(pdf.read(4) == "%PDF");
    }

    void closingKeepsTheGeometryAndReopeningTheLastSource() {
        UiSession ui("asmreopen");
        QVERIFY(ui.session.start());
        AssemblerWindowView* view = open(ui);
        QVERIFY(view);
        QTemporaryDir dir;
        view->sourceeditor()->setPlainText("  sleep\n");
        ui.input.savepath = path(dir, "keep.asm");
        trigger(view, "menusaveas");
        view->resize(500, 420);
        view->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!ui.session.assembler());
        QCOMPARE(ui.settings.getsetting("Window17 Width", ""), std::string("7500"));
        QVERIFY(ui.settings.getsetting("Window17 Position", "") != "");

        view = open(ui);
        QVERIFY(view);
        QCOMPARE(view->sourceeditor()->toPlainText(), QString("  sleep\n"));
        QCOMPARE(view->windowTitle(), QString::fromStdString("Assembler - " + path(dir, "keep.asm")));
        QCOMPARE(view->width(), 500);
        // The Tools menu brings the open window forward instead of making a second one; once
        // closed, it makes a new one at once, before the closed one is deleted.
        ui.trigger("menuassembler");
        QCOMPARE(ui.session.assembler(), view);
        view->close();
        ui.trigger("menuassembler");
        QVERIFY(ui.session.assembler() && ui.session.assembler() != view);
        QVERIFY(ui.model().registry().isopen(windows::kAssembler));
    }
};

VELMORA_UI_TEST(AssemblerWindowTest);

}  // namespace velmora::test

#include "assemblerwindow_test.moc"
