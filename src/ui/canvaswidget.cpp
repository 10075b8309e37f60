#include "ui/canvaswidget.h"

#include <QImage>
#include <QPainter>

#include <algorithm>

namespace velmora {

CanvasWidget::CanvasWidget(const Canvas& canvas, int preferredscale, QWidget* parent)
    : QWidget(parent), canvas_(canvas), preferredscale_(std::max(1, preferredscale)) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

int CanvasWidget::scale() const {
    if (canvas_.width <= 0 || canvas_.height <= 0) return 1;
    return std::max(1, std::min(width() / canvas_.width, height() / canvas_.height));
}

void CanvasWidget::reshape() {
    updateGeometry();
    update();
}

QSize CanvasWidget::sizeHint() const { return QSize(canvas_.width, canvas_.height) * preferredscale_; }

QSize CanvasWidget::minimumSizeHint() const { return QSize(canvas_.width, canvas_.height); }

void CanvasWidget::paintEvent(QPaintEvent*) {
    if (canvas_.width <= 0 || canvas_.height <= 0) return;
    const QImage image(reinterpret_cast<const uchar*>(canvas_.pixels.data()), canvas_.width, canvas_.height,
                       canvas_.width * 4, QImage::Format_RGB32);
    const int factor = scale();
    const QSize size(canvas_.width * factor, canvas_.height * factor);
    const QRect target(QPoint((width() - size.width()) / 2, (height() - size.height()) / 2), size);
    QPainter painter(this);
    // The margin takes the panel's own background, the colour of its corner.
    painter.fillRect(rect(), QColor::fromRgb(canvas_.pixels.front()));
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.drawImage(target, image);
}

}  // namespace velmora
