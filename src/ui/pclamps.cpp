#include "ui/pclamps.h"

#include <QPainter>

#include "ui/lamplist.h"
#include "ui/themecolors.h"

namespace velmora {

namespace {
constexpr int kPitch = 15;
constexpr int kLamp = 11;
}  // namespace

PcLamps::PcLamps(QWidget* parent) : QWidget(parent) { setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed); }

QSize PcLamps::sizeHint() const { return {kPcLamps * kPitch, kLamp + fontMetrics().height() + 2}; }

void PcLamps::setlamps(int count, const std::array<bool, kPcLamps>& lamps) {
    if (count == count_ && lamps == lamps_) return;
    count_ = count;
    lamps_ = lamps;
    update();
}

void PcLamps::settheme(const Theme& theme) {
    theme_ = theme;
    update();
}

void PcLamps::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.75);
    painter.setFont(small);
    for (int bit = 0; bit < count_; ++bit) {
        const int x = (kPcLamps - 1 - bit) * kPitch + (kPitch - kLamp) / 2;
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(QRect(x - 3, 0, kLamp + 6, fontMetrics().height()), Qt::AlignCenter, QString::number(bit));
        paintlamp(painter, QRect(x, fontMetrics().height() + 1, kLamp, kLamp), lamps_[bit] ? Lamp::One : Lamp::Zero,
                  theme_);
    }
}

}  // namespace velmora
