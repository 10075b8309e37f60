#include "ui/eepromwindow.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/hextext.h"
#include "image/hexload.h"
#include "shell/windowregistry.h"
#include "ui/themecolors.h"

namespace velmora {

namespace {
constexpr int kEepromHookOrder = 1;
constexpr int kRowCharacters = kEepromColumns * 3 - 1;
}  // namespace

EepromBytes::EepromBytes(const QFont& font, QWidget* parent) : QWidget(parent) {
    setFont(font);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

int EepromBytes::charwidth() const { return fontMetrics().horizontalAdvance('0'); }
int EepromBytes::lineheight() const { return fontMetrics().lineSpacing(); }

QSize EepromBytes::sizeHint() const { return {charwidth() * kRowCharacters + 4, lineheight() * kEepromRows + 4}; }

QRect EepromBytes::cellrect(int row, int column) const {
    return {2 + column * 3 * charwidth(), 2 + row * lineheight(), 2 * charwidth(), lineheight()};
}

void EepromBytes::setpage(const EepromPage& page) {
    if (page.bytes == page_.bytes) return;
    page_ = page;
    update();
}

void EepromBytes::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    for (int row = 0; row < kEepromRows; ++row)
        painter.drawText(QRect(2, 2 + row * lineheight(), width(), lineheight()), Qt::AlignLeft | Qt::AlignVCenter,
                         QString::fromStdString(page_.bytes[static_cast<size_t>(row)]));
}

void EepromBytes::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const QPoint at = event->position().toPoint() - QPoint(2, 2);
    if (at.x() < 0 || at.y() < 0) return;
    const int row = at.y() / lineheight(), column = at.x() / (3 * charwidth());
    if (row < kEepromRows && column < kEepromColumns) emit cellclicked(row, column);
}

EepromWindow::EepromWindow(MainWindowModel& model, QWidget* parent)
    : MemoryToolWindow(model, windows::kEepromMemoryEditor, parent), editor_(model.machine()) {
    setObjectName("eeprommemory");
    setWindowTitle("EEPROM Memory Editor");
    const QFont font = fixedfont();
    const int labelwidth = QFontMetrics(font).horizontalAdvance("$000") + 12;

    auto* heading = new QLabel(kEepromHeading);
    heading->setObjectName("heading");
    heading->setFont(font);
    heading->setContentsMargins(2, 0, 0, 0);
    labels_ = new QLabel;
    labels_->setObjectName("Text1");
    labels_->setFont(font);
    labels_->setProperty("role", "secondary");
    labels_->setFixedWidth(labelwidth);
    labels_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    labels_->setContentsMargins(0, 2, 0, 0);
    bytes_ = new EepromBytes(font);
    bytes_->setObjectName("Text2");
    connect(bytes_, &EepromBytes::cellclicked, this, [this](int row, int column) { clickcell(row, column); });

    unosbox_ = new QLineEdit(bytes_);
    unosbox_->setObjectName("unosbox");
    unosbox_->setFont(font);
    unosbox_->setMaxLength(2);
    unosbox_->setFrame(false);
    unosbox_->hide();
    connect(unosbox_, &QLineEdit::returnPressed, this, [this] { entercell(); });

    scroll_ = new QScrollBar(Qt::Vertical);
    scroll_->setObjectName("VScroll1");
    scroll_->setRange(0, editor_.scrollmax());
    scroll_->setPageStep(kEepromRows);
    scroll_->setVisible(editor_.scrollable());
    connect(scroll_, &QScrollBar::valueChanged, this, [this](int value) {
        editor_.setscroll(value);
        unosbox_->hide();
        refreshview();
    });

    auto* erase = new QPushButton("Erase All");
    erase->setObjectName("Command2");
    connect(erase, &QPushButton::clicked, this, [this] {
        editor_.erase(unprogrammedvalue(model_.settings()));
        refreshview();
    });

    auto* headingrow = new QHBoxLayout;
    headingrow->addSpacing(labelwidth);
    headingrow->addWidget(heading);
    headingrow->addStretch();
    auto* grid = new QHBoxLayout;
    grid->addWidget(labels_);
    grid->addWidget(bytes_);
    grid->addWidget(scroll_);
    grid->addStretch();
    auto* controls = new QHBoxLayout;
    controls->addWidget(erase);
    controls->addStretch();
    controls->addWidget(makeontopbox());
    controls->addWidget(makeclosebutton());
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(headingrow);
    layout->addLayout(grid);
    layout->addLayout(controls);
    setStyleSheet(themestylesheet(model_.theme));
    refreshview();
    placeonscreen();
    followsteps(kEepromHookOrder);
}

void EepromWindow::refreshview() {
    const EepromPage page = editor_.page();
    QStringList labels;
    for (const std::string& label : page.labels) labels << QString::fromStdString(label);
    const QString text = labels.join('\n');
    if (labels_->text() != text) labels_->setText(text);
    bytes_->setpage(page);
}

void EepromWindow::clickcell(int row, int column) {
    const std::optional<int> address = editor_.celladdress(row, column);
    if (!address) return;
    editaddress_ = *address;
    unosbox_->setGeometry(bytes_->cellrect(row, column).adjusted(-1, 0, 1, 0));
    unosbox_->setText(QString::fromStdString(hex2(model_.machine().eeprommem[static_cast<size_t>(*address)])));
    unosbox_->selectAll();
    unosbox_->show();
    unosbox_->setFocus();
}

void EepromWindow::entercell() {
    if (!editor_.entercell(editaddress_, unosbox_->text().toStdString())) return;
    unosbox_->hide();
    refreshview();
}

}  // namespace velmora
