#include "ui/packagewidget.h"

#include <QMouseEvent>
#include <QPainter>

#include "ui/themecolors.h"

namespace velmora {

namespace {
const QColor kBodyColor(0x30, 0x30, 0x34);
const QColor kLegColor(0xB8, 0xB8, 0xC0);

// Text in a rectangle, turned to read upwards when the pin stands on the top or bottom side.
void drawtext(QPainter& painter, const QRect& rect, bool vertical, Qt::Alignment align, const QString& text) {
    if (!vertical) {
        painter.drawText(rect, align, text);
        return;
    }
    painter.save();
    painter.translate(rect.left(), rect.bottom() + 1);
    painter.rotate(-90);
    painter.drawText(QRect(0, 0, rect.height(), rect.width()), align, text);
    painter.restore();
}
}  // namespace

PackageWidget::PackageWidget(MicrocontrollerView& view, bool compact, QWidget* parent)
    : QWidget(parent), view_(view), compact_(compact) {
    if (compact_) {
        QFont small = font();
        small.setPointSizeF(std::max(6.0, small.pointSizeF() * 0.8));
        setFont(small);
    }
    relayout();
}

void PackageWidget::relayout() {
    std::vector<QString> names;
    for (const ViewPin& p : view_.pins()) names.push_back(QString::fromStdString(p.name));
    geometry_ = layoutpackage(static_cast<int>(view_.pins().size()), compact_, fontMetrics(), names);
    setFixedSize(geometry_.size);
    update();
}

void PackageWidget::settheme(const Theme& theme) {
    theme_ = theme;
    update();
}

void PackageWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), qcolor(theme_, kLabelBack));
    const QRect body = geometry_.body;
    painter.setPen(Qt::NoPen);
    painter.setBrush(kBodyColor);
    painter.drawRoundedRect(body, 4, 4);
    // Pin 1 is marked by the notch of a dual package and the dot of a quad one.
    painter.setBrush(qcolor(theme_, kLabelBack));
    if (geometry_.quad)
        painter.drawEllipse(QPoint(body.left() + 14, body.top() + 14), 5, 5);
    else
        painter.drawPie(QRect(body.center().x() - 10, body.top() - 10, 20, 20), 180 * 16, 180 * 16);
    painter.setPen(QColor(0xE0, 0xE0, 0xE0));
    QFont title = font();
    title.setBold(true);
    painter.save();
    painter.setFont(title);
    painter.translate(body.center());
    if (!geometry_.quad) painter.rotate(-90);
    painter.drawText(QRect(-body.height() / 2, -body.width() / 2, body.height(), body.width()), Qt::AlignCenter,
                     QString::fromStdString(view_.modelname()));
    painter.restore();
    for (int i = 0; i < static_cast<int>(geometry_.pins.size()) && i < static_cast<int>(view_.pins().size()); ++i)
        paintpin(painter, i);
}

void PackageWidget::paintpin(QPainter& painter, int index) {
    const PinGeometry& g = geometry_.pins[index];
    const ViewPin& pin = view_.pins()[index];
    const PinShown& shown = view_.shown()[index];
    painter.setPen(Qt::NoPen);
    painter.setBrush(kLegColor);
    painter.drawRect(g.leg);
    painter.setPen(QColor(0xD0, 0xD0, 0xD0));
    drawtext(painter, g.number, false, Qt::AlignCenter, QString::number(pin.number));
    painter.setPen(qcolor(theme_, kLabelText));
    drawtext(painter, g.name, g.vertical, g.namealign, QString::fromStdString(pin.name));
    if (shown.level != PinLevel::None) {
        const int back = shown.level == PinLevel::On    ? kLampOn
                         : shown.level == PinLevel::Off ? kLampOff
                                                        : kSecondaryBack;
        const int text = shown.level == PinLevel::Analog ? kSecondaryText : kValueText;
        painter.setPen(qcolor(theme_, kHeadingText));
        painter.setBrush(qcolor(theme_, back));
        painter.drawRect(g.level.adjusted(0, 0, -1, -1));
        painter.setPen(qcolor(theme_, text));
        drawtext(painter, g.level, g.vertical, Qt::AlignCenter, QString::fromStdString(shown.leveltext));
    }
    if (shown.button != PinButton::None) {
        painter.setPen(qcolor(theme_, shown.enabled ? kCheckText : kLampOff));
        painter.setBrush(qcolor(theme_, kCheckBack));
        painter.drawRoundedRect(g.button.adjusted(0, 0, -1, -1), 3, 3);
        QColor caption = qcolor(theme_, kCheckText);
        if (!shown.enabled) caption = QColor(0x90, 0x90, 0x90);
        painter.setPen(caption);
        painter.drawText(g.button, Qt::AlignCenter, buttoncaption(shown.button));
    }
}

void PackageWidget::mousePressEvent(QMouseEvent* event) {
    const QPoint p = event->position().toPoint();
    for (int i = 0; i < static_cast<int>(geometry_.pins.size()); ++i)
        if (geometry_.pins[i].button.contains(p)) {
            emit pinclicked(i, event->button());
            return;
        }
}

}  // namespace velmora
