#include "ui/lcdwindow.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "shell/windowregistry.h"
#include "ui/themecolors.h"

namespace velmora {

LcdWindowView::LcdWindowView(MainWindowModel& model, WiringDialogs& dialogs, const std::string& tracepath,
                             QWidget* parent)
    : ToolWindow(model, windows::kLcd, parent),
      lcd_(model.machine(), model.settings(), model.messenger(), dialogs) {
    setObjectName("lcdmodule");
    setWindowTitle("LCD Module");
    lcd_.open({model.qprogram(), tracepath, model.datadirectory()});
    lcd_.paint();

    panel_ = new CanvasWidget(lcd_.canvas());
    panel_->setObjectName("panel");
    error_ = new ClickLabel("error");
    error_->setObjectName("errorlab");
    error_->setText("ERROR");
    error_->setToolTip("Click here for more info");
    error_->setStyleSheet("color: #d00000; font-weight: bold;");
    error_->hide();
    connect(error_, &ClickLabel::clicked, this, [this] {
        lcd_.clickerror();
        refreshview();
    });
    setup_ = new QPushButton("Setup");
    setup_->setObjectName("Command2");
    connect(setup_, &QPushButton::clicked, this, [this] {
        lcd_.clicksetup();
        showsetup();
    });

    setuppanel_ = new QGroupBox;
    setuppanel_->setObjectName("setup");
    auto* grid = new QGridLayout(setuppanel_);
    for (int i = 0; i < kLcdSetupItems; ++i) {
        const auto item = static_cast<LcdSetupItem>(i);
        auto* label = new ClickLabel("secondary");
        label->setObjectName(QString("Label%1").arg(i + 1));
        connect(label, &ClickLabel::clicked, this, [this, item] {
            lcd_.clicksetupitem(item);
            showsetup();
            panel_->reshape();
            refreshview();
            adjustSize();
        });
        labels_[static_cast<size_t>(i)] = label;
        grid->addWidget(label, i % 4, i / 4);
    }

    auto* controls = new QHBoxLayout;
    controls->addWidget(error_);
    controls->addStretch();
    controls->addWidget(makeontopbox());
    controls->addWidget(setup_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(panel_, 1);
    layout->addLayout(controls);
    layout->addWidget(setuppanel_);
    setStyleSheet(themestylesheet(model_.theme));
    showsetup();
    placeonscreen();

    connect(&blink_, &QTimer::timeout, this, [this] {
        lcd_.blinktick();
        refreshview();
    });
    blink_.start(kLcdBlinkMilliseconds);
}

void LcdWindowView::showsetup() {
    setup_->setText(QString::fromStdString(lcd_.setupcaption()));
    for (int i = 0; i < kLcdSetupItems; ++i)
        labels_[static_cast<size_t>(i)]->setText(QString::fromStdString(lcd_.setuplabel(static_cast<LcdSetupItem>(i))));
    setuppanel_->setVisible(lcd_.setupopen());
    if (!lcd_.setupopen()) adjustSize();
}

void LcdWindowView::refreshview() {
    if (!lcd_.paint()) return;
    error_->setVisible(lcd_.errorshown());
    panel_->update();
}

void LcdWindowView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F12) lcd_.keypress(kLcdTraceKey);
    QWidget::keyPressEvent(event);
}

void LcdWindowView::unloading() {
    blink_.stop();
    lcd_.close();
}

}  // namespace velmora
