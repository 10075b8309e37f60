#include "ui/microcontrollerviewwindow.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMessageBox>
#include <QVBoxLayout>

#include "shell/messagepolicy.h"
#include "shell/pinlegend.h"
#include "shell/settingnames.h"
#include "shell/windowplacement.h"
#include "ui/pinlegenddialog.h"
#include "ui/themecolors.h"

namespace velmora {

namespace {
constexpr int kViewHookOrder = 17;
}

MicrocontrollerViewWindow::MicrocontrollerViewWindow(MainWindowModel& model, PinAccess& pins, int window,
                                                     bool compact, QWidget* parent)
    : ToolWindow(model, window, parent), view_(model.machine(), pins) {
    setObjectName(QString("microcontrollerview%1").arg(window));
    readoptions();
    view_.rebuild(readpinfilters(model_.settings()));
    setWindowTitle(QString::fromStdString(view_.title()));

    auto* body = new QWidget;
    body->setObjectName("body");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(body);
    auto* inner = new QVBoxLayout(body);
    package_ = new PackageWidget(view_, compact);
    inner->addWidget(package_, 0, Qt::AlignHCenter);
    connect(package_, &PackageWidget::pinclicked, this,
            [this](int pin, Qt::MouseButton button) { pinclicked(pin, button); });

    auto* controls = new QHBoxLayout;
    allanalog_ = new QCheckBox("All Analog");
    allanalog_->setObjectName("Check2");
    connect(allanalog_, &QCheckBox::clicked, this, [this](bool on) {
        view_.setallanalog(on);
        refreshpic(true);
        emit analogchanged();
    });
    auto* help = new QPushButton("?");
    help->setObjectName("Command2");
    help->setFixedWidth(help->fontMetrics().horizontalAdvance("MM") + 12);
    connect(help, &QPushButton::clicked, this, [this] {
        model_.messenger().show(MicrocontrollerView::helptext(), MessageKind::Information);
    });
    controls->addWidget(allanalog_);
    controls->addStretch();
    controls->addWidget(makeontopbox());
    controls->addWidget(help);
    inner->addLayout(controls);

    panel_ = new QGroupBox;
    panel_->setObjectName("analog_frame");
    auto* panellayout = new QHBoxLayout(panel_);
    panelcaption_ = new QLabel;
    panelcaption_->setObjectName("analog_labela1");
    panelcaption_->setProperty("role", "secondary");
    panelvalue_ = new ClickLabel("secondary");
    panelvalue_->setObjectName("analog_labela2");
    panelvalue_->setMinimumWidth(panelvalue_->fontMetrics().horizontalAdvance("0.00V") + 12);
    panelvalue_->setAlignment(Qt::AlignCenter);
    slider_ = new QSlider(Qt::Horizontal);
    slider_->setObjectName("analog_scroll");
    slider_->setRange(0, kAnalogTop);
    auto* closepanel = new QPushButton("Close");
    closepanel->setObjectName("analog_button");
    panellayout->addWidget(panelcaption_);
    panellayout->addWidget(panelvalue_);
    panellayout->addWidget(slider_, 1);
    panellayout->addWidget(closepanel);
    panel_->hide();
    inner->addWidget(panel_);
    connect(slider_, &QSlider::valueChanged, this, [this](int value) {
        panelvalue_->setText(QString::fromStdString(analogtext(value, view_.usevoltage)));
        if (!slider_->signalsBlocked()) view_.sliderchanged(value, false);
        package_->update();
        emit analogchanged();
    });
    connect(slider_, &QSlider::sliderReleased, this, [this] {
        view_.sliderchanged(slider_->value(), true);
        package_->update();
        emit analogchanged();
    });
    connect(panelvalue_, &ClickLabel::clicked, this, [this] {
        const auto answer = model_.input().inputbox(view_.analogprompt(), "");
        if (answer && view_.enteranalog(*answer)) {
            showpanel();
            emit analogchanged();
        }
    });
    connect(closepanel, &QPushButton::clicked, this, [this] {
        view_.closepanel();
        panel_->hide();
        adjustSize();
    });

    body->setStyleSheet(themestylesheet(model_.theme));
    package_->settheme(model_.theme);
    placeonscreen();
    hook_ = model_.run().addhook(HookSlot::Window, kViewHookOrder, [this](RunControl&) { refreshpic(); });
    refreshpic(true);
}

MicrocontrollerViewWindow::~MicrocontrollerViewWindow() {
    if (!unloaded()) model_.run().removehook(hook_);
}

void MicrocontrollerViewWindow::readoptions() {
    view_.usevoltage = model_.options().on(settingnames::kUseVoltageForAnalogInputs);
    view_.continuousslider = model_.options().on(settingnames::kAnalogSliderMode);
}

void MicrocontrollerViewWindow::refreshpic(bool force) {
    if (force) readoptions();
    if (!view_.refresh() && !force) return;
    package_->update();
    const QSignalBlocker block(allanalog_);
    allanalog_->setChecked(view_.allanalog());
    if (view_.panelchannel()) {
        const QSignalBlocker blockslider(slider_);
        slider_->setValue(view_.slidervalue());
        panelvalue_->setText(QString::fromStdString(view_.panelvalue()));
    }
}

void MicrocontrollerViewWindow::pinclicked(int pin, Qt::MouseButton button) {
    if (button == Qt::RightButton)
        view_.rightclick(pin);
    else if (button == Qt::LeftButton)
        view_.leftclick(pin);
    if (view_.panelchannel() && !panel_->isVisible()) showpanel();
    refreshpic(true);
    emit analogchanged();
}

void MicrocontrollerViewWindow::showpanel() {
    panelcaption_->setText(QString::fromStdString(view_.panelcaption()));
    panelvalue_->setText(QString::fromStdString(view_.panelvalue()));
    const QSignalBlocker block(slider_);
    slider_->setValue(view_.slidervalue());
    panel_->show();
}

void MicrocontrollerViewWindow::showlegend() {
    PinLegendDialog legend(model_.settings(), this);
    legend.exec();
    view_.rebuild(readpinfilters(model_.settings()));
    package_->relayout();
    refreshpic(true);
    adjustSize();
}

void MicrocontrollerViewWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F12) {
        showlegend();
        return;
    }
    QWidget::keyPressEvent(event);
}

void MicrocontrollerViewWindow::unloading() { model_.run().removehook(hook_); }


}  // namespace velmora
