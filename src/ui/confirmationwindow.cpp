#include "ui/confirmationwindow.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>
#include <limits>

#include "shell/messagepolicy.h"

namespace velmora {

ConfirmationWindow::ConfirmationWindow(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint), label_(new QLabel(this)) {
    setWindowTitle(kProductName);
    setAttribute(Qt::WA_ShowWithoutActivating);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 12, 16, 12);
    layout->addWidget(label_);
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &QWidget::hide);
}

void ConfirmationWindow::showlines(const QStringList& lines, int seconds) {
    label_->setText(lines.join('\n'));
    adjustSize();
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect area = screen->availableGeometry();
        move(area.center() - rect().center());
    }
    show();
    raise();
    // The policy keeps the duration in range; this guards the product against any caller.
    constexpr int kLongestSeconds = std::numeric_limits<int>::max() / 1000;
    timer_.start(std::clamp(seconds, 1, kLongestSeconds) * 1000);
}

}  // namespace velmora
