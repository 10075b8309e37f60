#include "ui/confirmationwindow.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVBoxLayout>

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
    timer_.start(std::max(seconds, 1) * 1000);
}

}  // namespace velmora
