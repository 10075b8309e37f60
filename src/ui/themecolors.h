#pragma once
// Theme colours as Qt colours, and the style sheet that gives each kind of control its role.

#include <QColor>
#include <QString>

#include "shell/themes.h"

namespace velmora {

inline QColor qcolor(const Theme& theme, int role) { return QColor(QRgb(themecolor(theme.colors, role))); }

// Headings (group boxes), value fields, secondary labels and the window's body.
QString themestylesheet(const Theme& theme);

}  // namespace velmora
