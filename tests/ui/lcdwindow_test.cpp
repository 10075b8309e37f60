// The LCD Module window: opened from the Tools menu, wired through its setup panel, showing
// what a program writes over the pins; the error indicator; Select Pin and Select Option.

#include <QAction>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTest>

#include "devices/lcdpaint.h"
#include "ui/wiringdialogs.h"
#include "uifixture.h"

namespace velmora::test {

class LcdWindowTest : public QObject {
    Q_OBJECT

private:
    static QString text(QLabel* label) { return label->text(); }
    // A double click comes as the list's own signal: the offscreen platform does not turn
    // synthetic presses into one.
    static void click(QListWidget* list, int row, bool twice = false) {
        if (twice) {
            emit list->itemDoubleClicked(list->item(row));
            return;
        }
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
    }

private slots:
    // The avr-gcc firmware that velmora-cli's test runs too: 8 MHz, busy flag read over R/W.
    void programTextShowsThroughTheWiredPins() {
        UiSession ui("lcdprogram");
        QVERIFY(ui.session.start());
        QVERIFY(selectmodelnamed(ui.model().simulation(), "ATmega32"));
        ui.input.answers = {std::string("8")};
        ui.trigger("menuclock");
        ui.session.loadprogram(VELMORA_SOURCE_DIR "/tests/firmware/hex/lcdpoll-atmega32.hex");
        ui.trigger("menulcd");
        LcdWindowView* view = ui.session.lcd();
        QVERIFY(view);
        QVERIFY(ui.model().registry().isopen(windows::kLcd));
        QCOMPARE(view->windowTitle(), QString("LCD Module"));
        QCOMPARE(view->setupbutton()->text(), QString("Setup"));
        QVERIFY(!view->setuplabel(LcdSetupItem::Rw)->isVisible());

        // The program reads the busy flag: R/W goes to PB1 through Select Pin.
        view->setupbutton()->click();
        QCOMPARE(view->setupbutton()->text(), QString("Apply!"));
        ui.wiring.pins = {{kPortCodeA + 1, 1}};
        QTest::mouseClick(view->setuplabel(LcdSetupItem::Rw), Qt::LeftButton);
        QCOMPARE(text(view->setuplabel(LcdSetupItem::Rw)), QString("R/W Line ---> PORTB, 1"));
        QCOMPARE(ui.wiring.asked, std::vector<std::string>{"Select Pin"});
        view->setupbutton()->click();
        QCOMPARE(view->setupbutton()->text(), QString("Setup"));

        ui.trigger("menuspeed6");
        ui.trigger("menustart");
        QVERIFY(!ui.m().simulationrunning);
        ui.window().flush();
        const LcdModule& lcd = view->lcd().module();
        // The source's two lines; '?' is its user character, a bell.
        QCOMPARE(lcdtextrows(lcd.state, 2, 16),
                 (std::vector<std::string>{"Velmora LCD ?   ", "  sum 1..10 = 55"}));
        QVERIFY(!view->errorlabel()->isVisible());
        // The panel shows a dot of the 'V' in the top left cell, scaled by a whole factor.
        const QImage shot = view->panel()->grab().toImage();
        const int factor = view->panel()->scale();
        QVERIFY(factor >= 1);
        const int left = (view->panel()->width() - 299 * factor) / 2, top = (view->panel()->height() - 67 * factor) / 2;
        QCOMPARE(shot.pixel(left + 5 * factor, top + 5 * factor), kLcdColorSchemes[0].lit);
        QCOMPARE(shot.pixel(left + 8 * factor, top + 5 * factor), kLcdColorSchemes[0].dark);

        // Closing leaves the pins and keeps the wiring; opening again at once makes a new window.
        view->close();
        QVERIFY(!ui.model().registry().isopen(windows::kLcd));
        QVERIFY(ui.m().observers.empty());
        QCOMPARE(ui.settings.getsetting("LCD R/W Line Bit", "?"), std::string("1"));
        ui.trigger("menulcd");
        QVERIFY(ui.session.lcd() && ui.session.lcd() != view);
        QVERIFY(ui.model().registry().isopen(windows::kLcd));
        QCOMPARE(ui.m().observers.size(), size_t(1));
    }

    // A BASIC program compiled in the BASIC Compiler window, its wiring taken by the LCD Module
    // from the program's Define lines, and its text on the panel after a run.
    void basicProgramWritesToTheWindow() {
        UiSession ui("lcdbasic");
        QVERIFY(ui.session.start());
        QVERIFY(selectmodelnamed(ui.model().simulation(), "ATmega32"));
        ui.trigger("menubasic");
        BasicCompilerWindowView* basic = ui.session.basiccompiler();
        QVERIFY(basic);
        QTemporaryDir dir;
        basic->sourceeditor()->setPlainText(
            "Define LCD_LINES = 2\nDefine LCD_CHARS = 16\nDefine LCD_DREG = PORTC\nDefine LCD_DBIT = 0\n"
            "Dim w As Word\nw = 2026\nLcdinit\nLcdout \"Hello\", #w\nEnd\n");
        ui.input.savepath = dir.filePath("hello.bas").toStdString();
        QAction* load = basic->action("menucompileassembleload");
        QVERIFY(load);
        load->trigger();
        QCOMPARE(ui.model().qprogram(), dir.filePath("hello.hex").toStdString());

        ui.wiring.yes = true;  // the wiring of the program's Define lines
        ui.trigger("menulcd");
        LcdWindowView* view = ui.session.lcd();
        QVERIFY(view);
        QCOMPARE(view->setuplabel(LcdSetupItem::DataLines)->text(), QString("Data Lines ---> PORTC"));
        QCOMPARE(view->setuplabel(LcdSetupItem::Interface)->text(), QString("Interface: 4-bit, Low"));
        ui.trigger("menuinfinite");  // End's jump to itself ends the run
        ui.trigger("menuspeed6");
        ui.trigger("menustart");
        QVERIFY(!ui.m().simulationrunning);
        ui.window().flush();
        const LcdModule& lcd = view->lcd().module();
        QCOMPARE(lcdtextrows(lcd.state, 2, 16), (std::vector<std::string>{"Hello2026       ", "                "}));
    }

    void errorIndicatorShowsAndExplains() {
        UiSession ui("lcderror");
        QVERIFY(ui.session.start());
        ui.trigger("menulcd");
        LcdWindowView* view = ui.session.lcd();
        QVERIFY(view);
        view->lcd().module().error = true;
        view->refreshview();
        QVERIFY(view->errorlabel()->isVisible());
        QCOMPARE(view->errorlabel()->text(), QString("ERROR"));
        QTest::mouseClick(view->errorlabel(), Qt::LeftButton);
        QVERIFY(!view->errorlabel()->isVisible());
        QVERIFY(ui.session.display().lasttext().rfind("New command or data received while LCD was busy.", 0) == 0);
    }

    void selectPinFollowsItsModel() {
        SelectPin pin(kPortCodeA + 1, 3, false);
        SelectPinDialog dialog(pin);
        QCOMPARE(dialog.windowTitle(), QString("Select Pin"));
        QCOMPARE(dialog.ports()->currentRow(), 1);
        QCOMPARE(dialog.bits()->currentRow(), 3);
        click(dialog.ports(), 3);
        click(dialog.bits(), 6);
        QCOMPARE(pin.port(), kPortCodeA + 3);
        QCOMPARE(pin.bit(), 6);
        QVERIFY(!pin.finished());
        click(dialog.bits(), 0, true);
        QVERIFY(pin.finished());
        QCOMPARE(dialog.result(), int(QDialog::Accepted));

        SelectPin port(kPortCodeA, 0, true);
        SelectPinDialog portdialog(port);
        QCOMPARE(portdialog.windowTitle(), QString("Select Port"));
        QVERIFY(!portdialog.bits()->isEnabled());
        portdialog.reject();
        QCOMPARE(port.port(), 0);
    }

    void selectOptionShowsOnlyRowsWithText() {
        SelectOption option("Please select", "LCD module color scheme:", {"light", "", "green"}, 2);
        SelectOptionDialog dialog(option);
        QCOMPARE(dialog.options()->count(), 2);
        QCOMPARE(dialog.options()->currentRow(), 1);
        click(dialog.options(), 0);
        QCOMPARE(option.selected(), 0);
        click(dialog.options(), 1, true);
        QCOMPARE(option.selected(), 2);
        QVERIFY(option.finished());
    }
};

VELMORA_UI_TEST(LcdWindowTest);

}  // namespace velmora::test

#include "lcdwindow_test.moc"
