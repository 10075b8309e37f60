#pragma once
// The small Confirmation window: up to seven lines that go away by themselves.

#include <QLabel>
#include <QTimer>
#include <QWidget>

namespace velmora {

class ConfirmationWindow : public QWidget {
    Q_OBJECT
public:
    explicit ConfirmationWindow(QWidget* parent = nullptr);
    void showlines(const QStringList& lines, int seconds);
    QString text() const { return label_->text(); }

private:
    QLabel* label_;
    QTimer timer_;
};

}  // namespace velmora
