// The Microcontroller View window: its drawing, the pin buttons, analog use and the legend.

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QSlider>
#include <QTest>

#include "shell/pinlegend.h"
#include "ui/pinlegenddialog.h"
#include "uifixture.h"

namespace velmora::test {

class MicrocontrollerViewTest : public QObject {
    Q_OBJECT

private:
    static MicrocontrollerViewWindow* open(UiSession& ui) {
        ui.trigger("menuperipheraldevices");
        return ui.session.microcontrollerview();
    }
    static void click(MicrocontrollerViewWindow* view, int pin, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(view->package(), button, {}, view->package()->packagegeometry().pins[pin].button.center());
    }
    static std::string level(MicrocontrollerViewWindow* view, int pin) { return view->view().shown()[pin].leveltext; }

private slots:
    void opensTheDrawingOfThePackage() {
        UiSession ui("viewopen");
        QVERIFY(ui.session.start());
        MicrocontrollerViewWindow* view = open(ui);
        QVERIFY(view);
        QCOMPARE(view->windowTitle(), QString("Microcontroller View - ATmega32"));
        QCOMPARE(view->windownumber(), packagewindow(40, true));
        QVERIFY(ui.model().registry().isopen(view->windownumber()));
        QCOMPARE(int(view->package()->packagegeometry().pins.size()), 40);
        QCOMPARE(view->view().pins()[0].name, std::string("PB0/XCK/T0_"));
        QCOMPARE(view->view().pins()[39].name, std::string("_PA0/ADC0"));
        // Pin 1 is top left, pin 40 top right.
        const auto& pins = view->package()->packagegeometry().pins;
        QVERIFY(pins[0].button.center().x() < pins[39].button.center().x());
        QCOMPARE(pins[0].button.center().y(), pins[39].button.center().y());
        view->close();
        QVERIFY(!ui.model().registry().microcontrollerviewopen());
        QVERIFY(ui.settings.getsetting("Window" + std::to_string(packagewindow(40, true)) + " Left", "") != "");
    }

    void toggleButtonDrivesAnInputAndOutputsDisableTheirButtons() {
        UiSession ui("viewtoggle");
        QVERIFY(ui.session.start());
        ui.session.loadprogram(hellohex());
        MicrocontrollerViewWindow* view = open(ui);
        QVERIFY(view);
        const int pd2 = 15, pb0 = 0;
        QCOMPARE(level(view, pd2), std::string("OFF"));
        click(view, pd2);
        QCOMPARE(level(view, pd2), std::string("ON"));
        click(view, pd2);
        QCOMPARE(level(view, pd2), std::string("OFF"));
        // The program makes PORTB an output: its buttons go grey and the levels follow it.
        ui.trigger("menuspeed1");
        ui.trigger("menustart");
        QVERIFY(view->view().shown()[pb0].enabled);
        for (int i = 0; i < 6; ++i) ui.trigger("menustep");  // the sixth writes DDRB
        QVERIFY(!view->view().shown()[pb0].enabled);
        click(view, pb0);  // disabled: nothing happens
        QCOMPARE(level(view, pb0), std::string("OFF"));
        // Run on to the second pass of the loop, which writes 1 to PORTB.
        while (ui.m().pc != 0x08 || ui.m().datamem[16] != 1) ui.trigger("menustep");
        ui.trigger("menustep");
        QCOMPARE(int(ui.m().datamem[0x38]), 1);
        QCOMPARE(level(view, pb0), std::string("ON"));
        QCOMPARE(level(view, pb0 + 1), std::string("OFF"));
        ui.trigger("menustop");
    }

    void rightClickGivesAnalogUseAndThePanel() {
        UiSession ui("viewanalog");
        QVERIFY(ui.session.start());
        MicrocontrollerViewWindow* view = open(ui);
        QVERIFY(view);
        const int pa0 = 39, pb0 = 0;
        click(view, pb0, Qt::RightButton);  // a digital-only pin ignores it
        QCOMPARE(view->view().shown()[pb0].button, PinButton::Toggle);
        click(view, pa0, Qt::RightButton);
        QCOMPARE(view->view().shown()[pa0].button, PinButton::Analog);
        QCOMPARE(level(view, pa0), std::string("0"));
        click(view, pa0);
        QVERIFY(view->analogpanel()->isVisible());
        QCOMPARE(view->findChild<QLabel*>("analog_labela1")->text(), QString("ADC0"));
        view->findChild<QSlider*>("analog_scroll")->setValue(512);
        QCOMPARE(level(view, pa0), std::string("512"));
        ui.input.answers = {"1023"};
        QTest::mouseClick(view->findChild<QLabel*>("analog_labela2"), Qt::LeftButton);
        QCOMPARE(level(view, pa0), std::string("1023"));
        QCOMPARE(ui.input.prompts.back(), std::string("Enter new analog value [0-1023]."));
        view->allanalog()->click();
        QVERIFY(view->allanalog()->isChecked());
        QCOMPARE(view->view().shown()[39 - 7].button, PinButton::Analog);  // PA7 as well
        view->allanalog()->click();
        QCOMPARE(view->view().shown()[pa0].button, PinButton::Toggle);
        // Back in digital use the pin's level drives its channel: a high input reads full scale.
        click(view, pa0);
        click(view, pa0, Qt::RightButton);
        ui.trigger("menuusevoltage");
        QCOMPARE(level(view, pa0), std::string("5.00V"));
    }

    void legendStoresEachChoiceAtOnce() {
        UiSession ui("viewlegend");
        QVERIFY(ui.session.start());
        PinLegendDialog legend(ui.settings);
        const auto boxes = legend.findChildren<QCheckBox*>();
        QCOMPARE(boxes.size(), 7);
        QCOMPARE(boxes[1]->text(), QString("ADCx - Analog input for ADC"));
        boxes[1]->click();
        QCOMPARE(ui.settings.getsetting("Remove ADCx", "?"), std::string("1"));
        MicrocontrollerViewWindow* view = open(ui);
        QVERIFY(view);
        QCOMPARE(view->view().pins()[39].name, std::string("_PA0"));
        boxes[1]->click();
        QCOMPARE(ui.settings.getsetting("Remove ADCx", "?"), std::string("0"));
    }
};

VELMORA_UI_TEST(MicrocontrollerViewTest);

}  // namespace velmora::test

#include "microcontrollerview_test.moc"
