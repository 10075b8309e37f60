#pragma once
// Shows a device model's Canvas, scaled by a whole factor so every dot stays a sharp square.

#include <QWidget>

#include "devices/canvas.h"

namespace velmora {

class CanvasWidget : public QWidget {
    Q_OBJECT
public:
    // `canvas` must outlive the widget; `preferredscale` sets the size the widget asks for.
    explicit CanvasWidget(const Canvas& canvas, int preferredscale = 2, QWidget* parent = nullptr);

    // The whole factor the canvas is drawn at in the present size (at least 1).
    int scale() const;
    // The canvas changed its size: ask for a new one.
    void reshape();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Canvas& canvas_;
    int preferredscale_;
};

}  // namespace velmora
