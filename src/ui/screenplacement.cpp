#include "ui/screenplacement.h"

#include <QGuiApplication>
#include <QRect>
#include <QScreen>
#include <algorithm>

namespace velmora {

namespace {
// The part of a window that must be on a screen for the user to grab it: the start of the
// title bar.
constexpr int kGrabWidth = 48, kGrabHeight = 8;
}  // namespace

QPoint primarycentre(QSize size) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return {0, 0};
    return screen->availableGeometry().center() - QPoint(size.width() / 2, size.height() / 2);
}

QPoint onscreenplace(QPoint place, QSize size) {
    const QRect grab(place, QSize(std::clamp(size.width(), 1, kGrabWidth), kGrabHeight));
    for (const QScreen* screen : QGuiApplication::screens())
        if (screen->availableGeometry().intersects(grab)) return place;
    return primarycentre(size);
}

}  // namespace velmora
