#include "ui/themecolors.h"

namespace velmora {

namespace {
QString hex(const Theme& theme, int role) { return qcolor(theme, role).name(); }
}  // namespace

QString themestylesheet(const Theme& theme) {
    const QString border = theme.border ? "1px solid " + hex(theme, kHeadingText) : QString("none");
    return QString(
               "QWidget#body { background: %1; color: %2; }"
               "QGroupBox { background: %3; color: %4; border: %5; margin-top: 14px; padding-top: 4px; }"
               "QGroupBox::title { subcontrol-origin: margin; left: 6px; padding: 0 3px; color: %4; }"
               "QLabel[role=\"value\"] { background: %6; color: %7; padding: 1px 3px; }"
               "QLabel[role=\"secondary\"] { background: %8; color: %9; padding: 1px 3px; }"
               "QCheckBox { background: %10; color: %11; }")
        .arg(hex(theme, kLabelBack), hex(theme, kLabelText), hex(theme, kHeadingBack), hex(theme, kHeadingText),
             border, hex(theme, kValueBack), hex(theme, kValueText), hex(theme, kSecondaryBack),
             hex(theme, kSecondaryText))
        .arg(hex(theme, kCheckBack), hex(theme, kCheckText));
}

}  // namespace velmora
