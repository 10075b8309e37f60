#pragma once
// A label that says when it is clicked: the main window's fields and names are commands.

#include <QLabel>
#include <QMouseEvent>

namespace velmora {

class ClickLabel : public QLabel {
    Q_OBJECT
public:
    explicit ClickLabel(const QString& role, QWidget* parent = nullptr) : QLabel(parent) {
        setProperty("role", role);
        setCursor(Qt::PointingHandCursor);
    }

signals:
    void clicked();

protected:
    void mousePressEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton) emit clicked();
    }
};

}  // namespace velmora
