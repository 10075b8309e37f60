#include "ui/lamplist.h"

#include <QFontDatabase>
#include <QMouseEvent>
#include <QPainter>

#include "ui/themecolors.h"

namespace velmora {

namespace {
constexpr int kLampSize = 12;
constexpr int kLampPitch = 17;
constexpr int kGap = 4;
}  // namespace

void paintlamp(QPainter& painter, const QRect& rect, Lamp lamp, const Theme& theme) {
    if (lamp == Lamp::None) return;
    const int role = lamp == Lamp::One ? kLampOn : lamp == Lamp::Zero ? kLampOff : kValueBack;
    // A bit the register does not have is a flat mark without a rim.
    painter.setPen(lamp == Lamp::Masked ? QPen(Qt::NoPen) : QPen(qcolor(theme, kHeadingText)));
    painter.setBrush(qcolor(theme, role));
    if (lamp == Lamp::Masked)
        painter.drawRoundedRect(rect.adjusted(1, 3, -1, -3), 2, 2);
    else
        painter.drawEllipse(rect.adjusted(0, 0, -1, -1));
}

LampList::LampList(int rows, bool lamps, QWidget* parent)
    : QWidget(parent), rowcount_(rows), haslamps_(lamps), rows_(static_cast<size_t>(rows)) {
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

int LampList::rowheight() const { return fontMetrics().height() + 3; }
int LampList::top() const { return haslamps_ ? rowheight() : 0; }
int LampList::namewidth() const { return fontMetrics().horizontalAdvance(QString(haslamps_ ? 15 : 5, 'M')) + 6; }
int LampList::valuewidth() const { return fontMetrics().horizontalAdvance("MMM") + 6; }

QSize LampList::sizeHint() const {
    const int lamps = haslamps_ ? 8 * kLampPitch + kGap : 0;
    return {namewidth() + kGap + valuewidth() + lamps + 2, top() + rowcount_ * rowheight()};
}

QRect LampList::namerect(int row) const { return {0, top() + row * rowheight(), namewidth(), rowheight() - 1}; }

QRect LampList::lamprect(int row, int bit) const {
    const int x0 = namewidth() + kGap + valuewidth() + kGap;
    const int x = x0 + (7 - bit) * kLampPitch + (kLampPitch - kLampSize) / 2;
    const int y = top() + row * rowheight() + (rowheight() - kLampSize) / 2;
    return {x, y, kLampSize, kLampSize};
}

void LampList::setrows(const std::vector<LampRow>& rows) {
    bool changed = false;
    for (int i = 0; i < rowcount_ && i < static_cast<int>(rows.size()); ++i) {
        LampRow& mine = rows_[static_cast<size_t>(i)];
        const LampRow& next = rows[static_cast<size_t>(i)];
        if (mine.name != next.name || mine.value != next.value || mine.lamps != next.lamps) {
            mine = next;
            changed = true;
        }
    }
    if (changed) update();
}

void LampList::settheme(const Theme& theme) {
    theme_ = theme;
    update();
}

void LampList::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int h = rowheight();
    if (haslamps_) {
        // The heading "7  6  5  4  3  2  1  0", one digit over each lamp.
        painter.setPen(palette().color(QPalette::WindowText));
        const QStringList digits = QString(captions::kBitHeading).split(' ', Qt::SkipEmptyParts);
        for (int bit = 7; bit >= 0; --bit) {
            const QRect lamp = lamprect(0, bit);
            painter.drawText(QRect(lamp.x() - 3, 0, lamp.width() + 6, h), Qt::AlignCenter, digits.value(7 - bit));
        }
    }
    for (int i = 0; i < rowcount_; ++i) {
        const LampRow& row = rows_[static_cast<size_t>(i)];
        const QRect name = namerect(i);
        painter.fillRect(name, qcolor(theme_, kSecondaryBack));
        painter.setPen(qcolor(theme_, kSecondaryText));
        painter.drawText(name.adjusted(3, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft, row.name);
        const QRect value(name.right() + 1 + kGap, name.top(), valuewidth(), h - 1);
        painter.fillRect(value, qcolor(theme_, kValueBack));
        painter.setPen(qcolor(theme_, kValueText));
        painter.drawText(value, Qt::AlignCenter, row.value);
        if (haslamps_)
            for (int bit = 7; bit >= 0; --bit) paintlamp(painter, lamprect(i, bit), row.lamps[7 - bit], theme_);
    }
}

void LampList::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const QPoint p = event->position().toPoint();
    const int row = (p.y() - top()) / rowheight();
    if (p.y() < top()) return;
    if (row < 0 || row >= rowcount_) return;
    if (namerect(row).contains(p)) {
        emit nameclicked(row);
        return;
    }
    if (!haslamps_) return;
    for (int bit = 0; bit < 8; ++bit)
        if (lamprect(row, bit).adjusted(-2, -2, 2, 2).contains(p)) emit lampclicked(row, bit);
}

}  // namespace velmora
