#pragma once
// The drawing of the chip: the model's pins around the package body, each with its name,
// level and button, painted from the Microcontroller View model.

#include <QWidget>

#include "models/microcontrollerview.h"
#include "shell/themes.h"
#include "ui/packagegeometry.h"

namespace velmora {

class PackageWidget : public QWidget {
    Q_OBJECT
public:
    PackageWidget(MicrocontrollerView& view, bool compact, QWidget* parent = nullptr);
    // After the pin table was rebuilt: names and sizes may have changed.
    void relayout();
    void settheme(const Theme& theme);
    QSize sizeHint() const override { return geometry_.size; }
    const PackageGeometry& packagegeometry() const { return geometry_; }

signals:
    void pinclicked(int pin, Qt::MouseButton button);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void paintpin(class QPainter& painter, int index);

    MicrocontrollerView& view_;
    bool compact_;
    PackageGeometry geometry_;
    Theme theme_ = defaulttheme();
};

}  // namespace velmora
