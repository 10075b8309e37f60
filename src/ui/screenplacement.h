#pragma once
// Saved window places are only numbers: the screen they were on may be gone (a monitor
// unplugged, a value edited by hand). A place from which no part of the window's title bar
// would show is replaced by the centre of the primary screen.

#include <QPoint>
#include <QSize>

namespace velmora {

QPoint onscreenplace(QPoint place, QSize size);

// The centre of the primary screen's free area for a window of `size`.
QPoint primarycentre(QSize size);

}  // namespace velmora
