// The memory windows opened from the Tools menu on a program that runs: the Program Memory
// Editor with an edit that the main window shows, the EEPROM Memory Editor with its edit box,
// the Stack SRAM Space Viewer, the Alternative Registers Viewer with its removed rows, and
// Data Memory Usage after a compile in the BASIC Compiler window.

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>

#include "uifixture.h"

namespace velmora::test {

class MemoryToolsTest : public QObject {
    Q_OBJECT

private:
    // ATmega32 with the EEPROM firmware, started and standing at Step By Step.
    static void startpaused(UiSession& ui) {
        QVERIFY(ui.session.start());
        QVERIFY(selectmodelnamed(ui.model().simulation(), "ATmega32"));
        ui.session.loadprogram(VELMORA_SOURCE_DIR "/tests/firmware/hex/eeprom-atmega32.hex");
        ui.trigger("menuspeed1");
        ui.trigger("menustart");
    }
    static QString joined(const std::array<std::string, 7>& rows) {
        QStringList list;
        for (const std::string& row : rows) list << QString::fromStdString(row);
        return list.join('\n');
    }

private slots:
    void programMemoryEditShowsInTheMainWindow() {
        UiSession ui("programmemory");
        startpaused(ui);
        ui.trigger("menumemory");
        ProgramMemoryWindow* view = ui.session.programmemory();
        QVERIFY(view);
        QVERIFY(ui.model().registry().isopen(windows::kProgramMemoryEditor));
        QCOMPARE(view->windowTitle(), QString("Program Memory Editor"));
        const auto rows = view->editor().rows();
        for (int i = 0; i < kProgramMemoryRows; ++i)
            QCOMPARE(view->rows()->item(i)->text().toStdString(), rows[static_cast<size_t>(i)].text);

        // The next instruction becomes a NOP, typed as "0".
        ui.trigger("menustep");
        view->scrollbar()->setValue(ui.m().pc);
        const int row = ui.m().pc - view->editor().scroll();
        ui.input.answers = {std::string("0")};
        QTest::mouseClick(view->rows()->viewport(), Qt::LeftButton, {},
                          view->rows()->visualItemRect(view->rows()->item(row)).center());
        QCOMPARE(ui.input.prompts.back().substr(0, 40), std::string("Enter new instruction opcode [0000-FFFF]"));
        QCOMPARE(progword(ui.m(), ui.m().pc), uint16_t{0});
        QVERIFY(view->rows()->item(row)->text().endsWith("  NOP"));
        ui.settle();
        QCOMPARE(ui.window().field("qinstnext")->text(), QString("NOP"));
        ui.trigger("menustop");
        view->unload();
        QVERIFY(!ui.model().registry().isopen(windows::kProgramMemoryEditor));
    }

    void eepromEditorFollowsTheRunAndTakesTypedBytes() {
        UiSession ui("eeprommemory");
        startpaused(ui);
        ui.trigger("menueeprom");
        EepromWindow* view = ui.session.eeprom();
        QVERIFY(view);
        QCOMPARE(view->windowTitle(), QString("EEPROM Memory Editor"));
        QVERIFY(view->scrollbar()->isVisibleTo(view));
        ui.trigger("menuspeed6");
        ui.trigger("menustart");
        QVERIFY(!ui.m().simulationrunning);
        ui.settle();
        QCOMPARE(view->labels()->text().section('\n', 1, 1), QString("$010"));
        QCOMPARE(view->editor().page().bytes[1].substr(0, 2), std::string("5A"));

        view->clickcell(1, 0);
        QVERIFY(view->unosbox()->isVisibleTo(view));
        view->unosbox()->setText("G");
        QTest::keyClick(view->unosbox(), Qt::Key_Return);
        QVERIFY2(view->unosbox()->isVisibleTo(view), "a byte that does not read stays in its box");
        QCOMPARE(ui.m().eeprommem[0x10], uint8_t{0x5A});
        view->unosbox()->setText("7");
        QTest::keyClick(view->unosbox(), Qt::Key_Return);
        QVERIFY(!view->unosbox()->isVisibleTo(view));
        QCOMPARE(ui.m().eeprommem[0x10], uint8_t{0x07});
        view->unload();
    }

    void stackViewerFollowsTheSteps() {
        UiSession ui("stackviewer");
        startpaused(ui);
        ui.trigger("menustack");
        StackWindow* view = ui.session.stack();
        QVERIFY(view);
        QCOMPARE(view->pointerlabel()->text(), QString(" Stack Pointer (SPH:SPL):"));
        for (int i = 0; i < 40; ++i) ui.trigger("menustep");
        ui.settle();
        const StackPage page = view->viewer().page();
        QCOMPARE(view->rows()->text(), joined(page.rows));
        QCOMPARE(view->pushrow()->text().toStdString(), page.pushrow);
        QCOMPARE(view->stekpoint()->text().toStdString(), page.stekpoint);
        QVERIFY(page.sp != 0);
        ui.trigger("menustop");
        view->unload();
    }

    void alternativeRegistersKeepRemovedRows() {
        UiSession ui("alternative");
        startpaused(ui);
        ui.trigger("menualternative");
        AlternativeWindow* view = ui.session.alternative();
        QVERIFY(view);
        const int count = static_cast<int>(ui.m().namedregisters.size());
        QCOMPARE(static_cast<int>(view->registers().rows().size()), count);
        const QString first = view->column(0)->document()->firstBlock().text();
        view->doubleclickline(0, 0);
        QVERIFY(view->column(0)->document()->firstBlock().text() != first);
        view->unload();
        ui.settle();

        ui.trigger("menualternative");
        view = ui.session.alternative();
        QVERIFY(view);
        QCOMPARE(static_cast<int>(view->registers().rows().size()), count - 1);
        view->resize(view->width() * 3, view->height());
        QVERIFY(view->twocolumns());
        QVERIFY(view->column(1)->isVisibleTo(view));
        QTest::keyClick(view, Qt::Key_F12);
        QCOMPARE(static_cast<int>(view->registers().rows().size()), count);
        QCOMPARE(view->column(0)->document()->firstBlock().text(), first);
        ui.trigger("menustop");
        view->unload();
    }

    void dataMemoryUsageAfterACompile() {
        UiSession ui("memoryusage");
        QVERIFY(ui.session.start());
        QVERIFY(selectmodelnamed(ui.model().simulation(), "ATmega32"));
        ui.trigger("menubasic");
        BasicCompilerWindowView* basic = ui.session.basiccompiler();
        QVERIFY(basic);
        QTemporaryDir dir;
        basic->sourceeditor()->setPlainText("Dim n As Byte\nDim w As Word\nn = 1\nw = 300\nEnd\n");
        ui.input.savepath = dir.filePath("usage.bas").toStdString();
        basic->action("menucompile")->trigger();
        DataMemoryUsageWindow* view = ui.session.memoryusage();
        QVERIFY(view);
        QCOMPARE(view->windowTitle(), QString("Data Memory Usage"));
        const CompiledUsage& usage = view->usage().usage();
        QCOMPARE(static_cast<int>(usage.memoryusage.size()), ui.m().dataspacesize);
        QCOMPARE(std::count(usage.memoryusage.begin(), usage.memoryusage.end(), 4), 3L);  // a Byte and a Word
        QCOMPARE(usage.statistics.size(), size_t{114});
        QVERIFY(view->flashlabel()->text().endsWith("%"));

        std::string title, text;
        view->showmessage = [&](const std::string& t, const std::string& m) { title = t, text = m; };
        QTest::mouseClick(view->inststatslabel(), Qt::LeftButton);
        QCOMPARE(title, std::string("Instructions Usage Statistics"));
        QVERIFY(text.ends_with("(The table has been copied to Clipboard.)"));
        QCOMPARE(QGuiApplication::clipboard()->text().toStdString(), view->usage().statisticstable());
        view->unload();

        // With the option off, a compile opens nothing.
        ui.trigger("menuusage");
        basic->action("menucompile")->trigger();
        QVERIFY(!ui.session.memoryusage() || ui.session.memoryusage()->unloaded());
    }
};

VELMORA_UI_TEST(MemoryToolsTest);

}  // namespace velmora::test

#include "memorytools_test.moc"
