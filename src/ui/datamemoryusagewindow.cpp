#include "ui/datamemoryusagewindow.h"

#include <QClipboard>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "shell/windowregistry.h"
#include "ui/themecolors.h"

namespace velmora {

namespace {
constexpr int kPanelHeight = 28;
constexpr int kPixelsPerUnit = 2;
constexpr int kLegendSwatch = 14;

QColor colour(uint32_t rgb) { return QColor(QRgb(rgb)); }

QGroupBox* framed(const char* title, QWidget* inner, const char* name) {
    auto* box = new QGroupBox(title);
    box->setObjectName(name);
    auto* layout = new QVBoxLayout(box);
    layout->addWidget(inner);
    return box;
}
}  // namespace

UsagePanel::UsagePanel(int pixelsperunit, QWidget* parent) : QWidget(parent), scale_(pixelsperunit) {
    setFixedSize(sizeHint());
}

QSize UsagePanel::sizeHint() const { return {kUsagePanelUnits * scale_ + 2, kPanelHeight + 2}; }

void UsagePanel::setstripes(std::vector<UsageStripe> stripes, std::vector<int> marks) {
    stripes_ = std::move(stripes);
    marks_ = std::move(marks);
    update();
}

void UsagePanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), colour(DataMemoryUsage::colourof(0)));
    for (const UsageStripe& s : stripes_) {
        // Whole pixels, at least one, so that no cell vanishes between its neighbours.
        const int left = 1 + static_cast<int>(s.x * scale_);
        const int right = std::max(left + 1, 1 + static_cast<int>((s.x + s.width) * scale_));
        painter.fillRect(QRect(left, 1, right - left, kPanelHeight), colour(s.colour));
    }
    painter.setPen(QColor(0, 0, 0));
    for (int mark : marks_) painter.drawLine(1 + mark * scale_, 1, 1 + mark * scale_, kPanelHeight);
    painter.setPen(QColor(96, 96, 96));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

FlashBar::FlashBar(QWidget* parent) : QWidget(parent) { setFixedSize(sizeHint()); }

QSize FlashBar::sizeHint() const { return {kUsagePanelUnits * kPixelsPerUnit + 2, kPanelHeight / 2 + 2}; }

void FlashBar::setfraction(double fraction) {
    fraction_ = fraction;
    update();
}

void FlashBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(255, 255, 255));
    const double shown = std::clamp(fraction_, 0.0, 1.0);
    painter.fillRect(QRect(1, 1, static_cast<int>(shown * (width() - 2)), height() - 2),
                     colour(DataMemoryUsage::colourof(4)));
    painter.setPen(QColor(96, 96, 96));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

DataMemoryUsageWindow::DataMemoryUsageWindow(MainWindowModel& model, CompiledUsage usage, QWidget* parent)
    : ToolWindow(model, windows::kDataMemoryUsage, parent), usage_(std::move(usage)) {
    setObjectName("datamemoryusage");
    setWindowTitle("Data Memory Usage");
    showmessage = [this](const std::string& title, const std::string& text) {
        QMessageBox::information(this, QString::fromStdString(title), QString::fromStdString(text));
    };

    gpwr_ = new UsagePanel(kPixelsPerUnit);
    gpwr_->setObjectName("gpwrpanel");
    io_ = new UsagePanel(kPixelsPerUnit);
    io_->setObjectName("iopanel");
    sram_ = new UsagePanel(kPixelsPerUnit);
    sram_->setObjectName("srampanel");
    flash_ = new FlashBar;
    flash_->setObjectName("flashpanel");
    flashlabel_ = new QLabel;
    flashlabel_->setObjectName("flashlabel");
    flashlabel_->setProperty("role", "value");

    auto* legend = new QGridLayout;
    for (int kind = 0; kind < kUsageKinds; ++kind) {
        auto* swatch = new QLabel;
        swatch->setFixedSize(kLegendSwatch, kLegendSwatch);
        swatch->setStyleSheet(QString("background-color: %1; border: 1px solid #606060;")
                                  .arg(colour(DataMemoryUsage::colourof(kind)).name()));
        auto* text = new QLabel(kUsageLegend[static_cast<size_t>(kind)].text);
        text->setObjectName(QString("legend%1").arg(kind));
        legend->addWidget(swatch, kind, 0);
        legend->addWidget(text, kind, 1);
    }
    legend->setColumnStretch(2, 1);

    auto* flashrow = new QHBoxLayout;
    auto* flashheading = new QLabel(kFlashUsageHeading);
    flashrow->addWidget(flashheading);
    flashrow->addWidget(flashlabel_);
    flashrow->addStretch();
    auto* flashbox = new QGroupBox;
    auto* flashlayout = new QVBoxLayout(flashbox);
    flashlayout->addLayout(flashrow);
    flashlayout->addWidget(flash_);

    stats_ = new ClickLabel("secondary");
    stats_->setObjectName("inststatslabel");
    stats_->setText(QString("<u>%1</u>").arg(kInstructionStatisticsCaption));
    connect(stats_, &ClickLabel::clicked, this, [this] { showstatistics(); });
    auto* close = new QPushButton("Close");
    close->setObjectName("Command1");
    connect(close, &QPushButton::clicked, this, [this] { unload(); });
    auto* controls = new QHBoxLayout;
    controls->addWidget(stats_);
    controls->addStretch();
    controls->addWidget(close);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(framed("General Purpose Working Registers", gpwr_, "gpwrframe"));
    layout->addWidget(framed("I/O Registers", io_, "ioframe"));
    layout->addWidget(framed("SRAM", sram_, "sramframe"));
    layout->addWidget(flashbox);
    layout->addLayout(legend);
    layout->addLayout(controls);
    setStyleSheet(themestylesheet(model_.theme));
    showusage();
    placeonscreen();
}

void DataMemoryUsageWindow::setusage(CompiledUsage usage) {
    usage_ = DataMemoryUsage(std::move(usage));
    showusage();
}

void DataMemoryUsageWindow::showusage() {
    gpwr_->setstripes(usage_.gpwrpanel(), DataMemoryUsage::gpwrmarks());
    io_->setstripes(usage_.iopanel());
    sram_->setstripes(usage_.srampanel());
    flash_->setfraction(usage_.flashfraction());
    flashlabel_->setText(QString::fromStdString(usage_.flashlabel()));
}

void DataMemoryUsageWindow::showstatistics() {
    if (QClipboard* clipboard = QGuiApplication::clipboard())
        clipboard->setText(QString::fromStdString(usage_.statisticstable()));
    if (showmessage) showmessage(kInstructionStatisticsTitle, usage_.statisticsmessage());
}

}  // namespace velmora
