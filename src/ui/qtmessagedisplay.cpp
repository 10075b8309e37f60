#include "ui/qtmessagedisplay.h"

#include <QApplication>
#include <QMessageBox>

namespace velmora {

ConfirmationWindow& QtMessageDisplay::confirmationwindow() {
    if (!window_) window_ = std::make_unique<ConfirmationWindow>();
    return *window_;
}

void QtMessageDisplay::modalbox(const std::string& title, const std::string& text, MessageKind kind) {
    last_ = text;
    ++count_;
    const QMessageBox::Icon icon = kind == MessageKind::Critical      ? QMessageBox::Critical
                                   : kind == MessageKind::Exclamation ? QMessageBox::Warning
                                                                      : QMessageBox::Information;
    QMessageBox box(icon, QString::fromStdString(title), QString::fromStdString(text), QMessageBox::Ok,
                    QApplication::activeWindow());
    box.exec();
}

void QtMessageDisplay::confirmation(const std::vector<std::string>& lines, int seconds) {
    QStringList qlines;
    for (const std::string& line : lines) qlines << QString::fromStdString(line);
    last_ = qlines.join('\n').toStdString();
    ++count_;
    confirmationwindow().showlines(qlines, seconds);
}

}  // namespace velmora
