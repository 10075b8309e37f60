#pragma once
// Where each part of a chip drawing goes: the body, and per pin its leg, number, name,
// level field and button. Dual in-line packages keep their pins on two sides (pin 1 top
// left, counting down and back up the right side); quad packages (64 and 80 pins) on four.

#include <QFontMetrics>
#include <QRect>
#include <QString>
#include <vector>

namespace velmora {

struct PinGeometry {
    QRect leg;
    QRect number;
    QRect name;
    QRect level;
    QRect button;
    bool vertical = false;        // the name is written upwards (top and bottom sides)
    Qt::Alignment namealign = Qt::AlignLeft;
};

struct PackageGeometry {
    QSize size;
    QRect body;
    bool quad = false;
    std::vector<PinGeometry> pins;
};

// `names` gives the longest text each side must hold; `compact` packs the drawing tighter.
PackageGeometry layoutpackage(int pincount, bool compact, const QFontMetrics& metrics, const std::vector<QString>& names);

}  // namespace velmora
