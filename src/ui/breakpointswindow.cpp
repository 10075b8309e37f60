#include "ui/breakpointswindow.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "shell/windowregistry.h"
#include "ui/savedsize.h"
#include "ui/themecolors.h"

namespace velmora {

namespace {
constexpr int kDesignCharacters = 64;  // address, words, and most of a source line
const QColor kMarkColor(0xD0, 0x20, 0x20);
const QColor kArrowColor(0xF5, 0xD0, 0x10);

void settext(QLabel* label, const QString& text) {
    if (label->text() != text) label->setText(text);
}
}  // namespace

BreakpointRowsView::BreakpointRowsView(const QFont& font, QWidget* parent) : QWidget(parent) {
    setFont(font);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFixedHeight(pitch() * kBreakpointRows + 2);
}

// Rows stand at least 16 pixels apart; a larger font gets the room it needs.
int BreakpointRowsView::pitch() const { return std::max(16, fontMetrics().lineSpacing() + 2); }

// The mark, then the arrow, then the text.
int BreakpointRowsView::gutter() const { return 2 * pitch() + 6; }

int BreakpointRowsView::characters() const {
    return std::max(0, (width() - gutter() - 4) / std::max(1, fontMetrics().horizontalAdvance('0')));
}

QRect BreakpointRowsView::rowrect(int row) const { return QRect(0, 1 + row * pitch(), width(), pitch()); }

int BreakpointRowsView::arrowrow() const {
    for (int i = 0; i < kBreakpointRows; ++i)
        if (rows_[static_cast<size_t>(i)].pc) return i;
    return -1;
}

QSize BreakpointRowsView::sizeHint() const {
    return QSize(gutter() + fontMetrics().horizontalAdvance(QString(kDesignCharacters, '0')) + 4,
                 pitch() * kBreakpointRows + 2);
}

QSize BreakpointRowsView::minimumSizeHint() const {
    return QSize(gutter() + fontMetrics().horizontalAdvance(QString(12, '0')), pitch() * kBreakpointRows + 2);
}

void BreakpointRowsView::setrows(const std::array<BreakpointRow, kBreakpointRows>& rows) {
    bool same = true;
    for (size_t i = 0; i < rows.size() && same; ++i)
        same = rows[i].text == rows_[i].text && rows[i].breakpoint == rows_[i].breakpoint && rows[i].pc == rows_[i].pc;
    if (same) return;
    rows_ = rows;
    update();
}

void BreakpointRowsView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(gutter() - 3, 0, gutter() - 3, height());
    const int step = pitch();
    const int mark = step - 6;
    painter.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < kBreakpointRows; ++i) {
        const BreakpointRow& row = rows_[static_cast<size_t>(i)];
        const QRect area = rowrect(i);
        if (row.breakpoint) {
            painter.setPen(kMarkColor.darker(140));
            painter.setBrush(kMarkColor);
            painter.drawEllipse(QRect(4, area.top() + 3, mark, mark));
        }
        if (row.pc) {
            // An arrow pointing at the row's text.
            const qreal left = step + 2, right = 2 * step + 2, top = area.top() + 3, bottom = area.top() + step - 3;
            const qreal middle = (top + bottom) / 2, shaft = (bottom - top) / 4;
            QPainterPath arrow;
            arrow.moveTo(left, middle - shaft);
            arrow.lineTo(right - step / 2.0, middle - shaft);
            arrow.lineTo(right - step / 2.0, top);
            arrow.lineTo(right, middle);
            arrow.lineTo(right - step / 2.0, bottom);
            arrow.lineTo(right - step / 2.0, middle + shaft);
            arrow.lineTo(left, middle + shaft);
            arrow.closeSubpath();
            painter.setPen(kArrowColor.darker(170));
            painter.setBrush(kArrowColor);
            painter.drawPath(arrow);
        }
        painter.setPen(palette().color(QPalette::Text));
        const QRect textarea(gutter(), area.top(), width() - gutter(), area.height());
        painter.drawText(textarea, Qt::AlignLeft | Qt::AlignVCenter, QString::fromStdString(row.text));
    }
}

void BreakpointRowsView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const int row = (event->position().toPoint().y() - 1) / pitch();
    if (row >= 0 && row < kBreakpointRows) emit rowclicked(row);
}

void BreakpointRowsView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    emit resized();
}

BreakpointsWindow::BreakpointsWindow(MainWindowModel& model, QWidget* parent)
    : MemoryToolWindow(model, windows::kBreakpointsManager, parent),
      manager_(model.machine(), model.breakpoints(), model.input(), model.messenger(), model.settings()) {
    setObjectName("breakpointsmanager");
    setWindowTitle("Breakpoints Manager");
    const QFont font = fixedfont();

    rows_ = new BreakpointRowsView(font);
    rows_->setObjectName("linija");
    connect(rows_, &BreakpointRowsView::rowclicked, this, [this](int row) {
        manager_.clickrow(row);
        showrows();
    });
    connect(rows_, &BreakpointRowsView::resized, this, [this] { showrows(); });
    scroll_ = new QScrollBar(Qt::Vertical);
    scroll_->setObjectName("VScroll1");
    scroll_->setPageStep(kBreakpointRows);
    scroll_->setFixedHeight(rows_->height());
    connect(scroll_, &QScrollBar::valueChanged, this, [this](int value) {
        manager_.setscroll(value);
        refreshview();
    });

    auto* defined = new QGroupBox("Defined Breakpoints");
    auto* definedlayout = new QVBoxLayout(defined);
    definedlayout->setSpacing(2);
    for (int i = 0; i < kBreakpointCount; ++i) {
        auto* label = new QLabel;
        label->setObjectName(QString("prekidlabela%1").arg(i));
        label->setFont(font);
        label->setProperty("role", "value");
        label->setMinimumWidth(QFontMetrics(font).horizontalAdvance("000000") + 12);
        label->setFixedHeight(QFontMetrics(font).lineSpacing() + 4);
        labels_[static_cast<size_t>(i)] = label;
        definedlayout->addWidget(label);
    }

    hold_ = new QCheckBox(kHoldPcInFocus);
    hold_->setObjectName("Check2");
    hold_->setChecked(manager_.holdpcinfocus());
    connect(hold_, &QCheckBox::toggled, this, [this](bool on) {
        manager_.setholdpcinfocus(on);
        showrows();
    });
    clear_ = new QPushButton("Clear All Breakpoints");
    clear_->setObjectName("Command1");
    connect(clear_, &QPushButton::clicked, this, [this] {
        manager_.clearall();
        showrows();
    });
    QCheckBox* ontop = makeontopbox();
    ontop->setObjectName("Check1");

    auto* side = new QVBoxLayout;
    side->addWidget(defined);
    side->addStretch();
    side->addWidget(ontop);
    side->addWidget(hold_);
    side->addWidget(clear_);
    auto* listing = new QHBoxLayout;
    listing->setSpacing(0);
    listing->addWidget(rows_, 1);
    listing->addWidget(scroll_, 0, Qt::AlignTop);
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(listing, 1);
    layout->addSpacing(6);
    layout->addLayout(side);
    setStyleSheet(themestylesheet(model_.theme));

    manager_.load(model_.qprogram());
    placeonscreen();
    // Only the width is the user's: the twenty rows fix the height.
    setFixedHeight(height());
    if (const int width = savedlength(model_.settings(), settingnames::kWindowWidth, windows::kBreakpointsManager))
        resize(std::max(width, minimumSizeHint().width()), height());
    refreshview();
}

void BreakpointsWindow::refreshview() {
    manager_.draw();
    showrows();
}

void BreakpointsWindow::showrows() {
    {
        const QSignalBlocker block(scroll_);
        scroll_->setEnabled(manager_.scrollenabled());
        if (scroll_->maximum() != manager_.scrollmax()) scroll_->setRange(0, manager_.scrollmax());
        scroll_->setValue(manager_.scroll());
    }
    rows_->setrows(manager_.rows(rows_->characters()));
    const auto& entries = model_.breakpoints().entries();
    for (int i = 0; i < kBreakpointCount; ++i)
        settext(labels_[static_cast<size_t>(i)], QString::fromStdString(entries[static_cast<size_t>(i)]));
}

void BreakpointsWindow::keyPressEvent(QKeyEvent* event) {
    const int keys[] = {Qt::Key_F1, Qt::Key_F2, Qt::Key_F3};
    for (int i = 0; i < 3; ++i) {
        if (event->key() != keys[i]) continue;
        model_.debugkey(i + 1, event->modifiers() & Qt::ShiftModifier);
        event->accept();
        return;
    }
    MemoryToolWindow::keyPressEvent(event);
}

void BreakpointsWindow::wheelEvent(QWheelEvent* event) {
    const int steps = event->angleDelta().y() / 120;
    if (steps != 0 && scroll_->isEnabled()) scroll_->setValue(scroll_->value() - steps * 3);
    event->accept();
}

void BreakpointsWindow::unloading() {
    MemoryToolWindow::unloading();
    savelength(model_.settings(), settingnames::kWindowWidth, windows::kBreakpointsManager, width());
}

}  // namespace velmora
