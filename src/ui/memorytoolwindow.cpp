#include "ui/memorytoolwindow.h"

#include <QFontDatabase>
#include <QPainter>
#include <QRegularExpression>

namespace velmora {

ColumnHeading::ColumnHeading(const QString& text, std::vector<int> columns, const QFont& font, QWidget* parent)
    : QLabel(text, parent), columns_(std::move(columns)), advance_(QFontMetrics(font).horizontalAdvance('0')) {
    // Slightly smaller than the rows, so that a heading word fits over a short field.
    QFont own = this->font();
    own.setPointSizeF(own.pointSizeF() * 0.85);
    setFont(own);
}

void ColumnHeading::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    const QStringList words = text().trimmed().split(QRegularExpression("  +"));
    const QRect area = contentsRect();
    for (int i = 0; i < words.size(); ++i) {
        const int column = i < static_cast<int>(columns_.size()) ? columns_[static_cast<size_t>(i)] : 0;
        painter.drawText(QRect(area.left() + column * advance_, area.top(), area.width(), area.height()),
                         Qt::AlignLeft | Qt::AlignVCenter, words[i]);
    }
}

MemoryToolWindow::MemoryToolWindow(MainWindowModel& model, int window, QWidget* parent)
    : ToolWindow(model, window, parent) {}

MemoryToolWindow::~MemoryToolWindow() {
    if (!unloaded() && hook_ != 0) model_.run().removehook(hook_);
}

void MemoryToolWindow::followsteps(int order) {
    hook_ = model_.run().addhook(HookSlot::Window, order, [this](RunControl&) { schedulerefresh(); });
}

void MemoryToolWindow::unloading() {
    if (hook_ != 0) model_.run().removehook(hook_);
    hook_ = 0;
}

void MemoryToolWindow::schedulerefresh() {
    if (pending_) return;
    pending_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            pending_ = false;
            if (!unloaded()) refreshview();
        },
        Qt::QueuedConnection);
}

QPushButton* MemoryToolWindow::makeclosebutton() {
    auto* button = new QPushButton("Close");
    button->setObjectName("Command1");
    connect(button, &QPushButton::clicked, this, [this] { unload(); });
    return button;
}

QFont MemoryToolWindow::fixedfont() { return QFontDatabase::systemFont(QFontDatabase::FixedFont); }

}  // namespace velmora
