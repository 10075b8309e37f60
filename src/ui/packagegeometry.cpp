#include "ui/packagegeometry.h"

#include <algorithm>

namespace velmora {

namespace {

struct Sizes {
    int pitch, leg, legwidth, button, level, gap, margin, bodywidth;
};

Sizes sizesfor(bool compact, const QFontMetrics& fm) {
    const int h = fm.height();
    if (compact) return {h + 4, 8, h - 4, h + 2, fm.horizontalAdvance("OFF") + 8, 3, 6, 56};
    return {h + 10, 14, h - 2, h + 8, fm.horizontalAdvance("0000") + 12, 5, 12, 110};
}

int longestname(const std::vector<QString>& names, const QFontMetrics& fm) {
    int width = fm.horizontalAdvance("PB0_");
    for (const QString& n : names) width = std::max(width, fm.horizontalAdvance(n));
    return width + 4;
}

// A pin on the left or right side of the body whose row starts at `y`: leg, number inside
// the body, then name, level and button outwards.
PinGeometry sidepin(const QRect& body, bool left, int y, const Sizes& s, int namewidth, int numberwidth) {
    PinGeometry p;
    const int cy = y + s.pitch / 2;
    if (left) {
        p.leg = QRect(body.left() - s.leg, cy - s.legwidth / 2, s.leg, s.legwidth);
        p.number = QRect(body.left() + 2, y, numberwidth, s.pitch);
        p.name = QRect(p.leg.left() - s.gap - namewidth, y, namewidth, s.pitch);
        p.namealign = Qt::AlignRight | Qt::AlignVCenter;
        p.level = QRect(p.name.left() - s.gap - s.level, cy - s.button / 2, s.level, s.button);
        p.button = QRect(p.level.left() - s.gap - s.button, cy - s.button / 2, s.button, s.button);
    } else {
        p.leg = QRect(body.right() + 1, cy - s.legwidth / 2, s.leg, s.legwidth);
        p.number = QRect(body.right() - 1 - numberwidth, y, numberwidth, s.pitch);
        p.name = QRect(p.leg.right() + 1 + s.gap, y, namewidth, s.pitch);
        p.namealign = Qt::AlignLeft | Qt::AlignVCenter;
        p.level = QRect(p.name.right() + 1 + s.gap, cy - s.button / 2, s.level, s.button);
        p.button = QRect(p.level.right() + 1 + s.gap, cy - s.button / 2, s.button, s.button);
    }
    return p;
}

// Two rows of pins: left side top to bottom, right side bottom to top.
PackageGeometry dual(int count, const Sizes& s, int namewidth, const QFontMetrics& fm) {
    PackageGeometry g;
    const int perside = count / 2;
    const int outer = s.button + s.gap + s.level + s.gap + namewidth + s.gap;
    const int bodyheight = perside * s.pitch + 2 * s.margin;
    const int top = s.margin;
    g.body = QRect(s.margin + outer + s.leg, top, s.bodywidth, bodyheight);
    g.size = QSize(g.body.right() + 1 + s.leg + outer + s.margin, top + bodyheight + s.margin);
    const int numberwidth = fm.horizontalAdvance("00") + 4;
    for (int i = 0; i < count; ++i) {
        const bool left = i < perside;
        const int row = left ? i : count - 1 - i;
        const int y = g.body.top() + s.margin + row * s.pitch;
        g.pins.push_back(sidepin(g.body, left, y, s, namewidth, numberwidth));
    }
    return g;
}

// Four rows: left top to bottom, bottom left to right, right bottom to top, top right to left.
PackageGeometry quad(int count, const Sizes& s, int namewidth, const QFontMetrics& fm) {
    PackageGeometry g;
    g.quad = true;
    const int perside = count / 4;
    const int outer = s.button + s.gap + s.level + s.gap + namewidth + s.gap;
    const int side = perside * s.pitch + 2 * s.margin;
    const int origin = s.margin + outer + s.leg;
    g.body = QRect(origin, origin, side, side);
    g.size = QSize(2 * origin + side, 2 * origin + side);
    const int numberwidth = fm.horizontalAdvance("00") + 4;
    for (int i = 0; i < count; ++i) {
        PinGeometry p;
        const int which = i / perside, k = i % perside;
        if (which == 0 || which == 2) {
            const int row = which == 0 ? k : perside - 1 - k;
            p = sidepin(g.body, which == 0, g.body.top() + s.margin + row * s.pitch, s, namewidth, numberwidth);
        } else {
            const int column = which == 1 ? k : perside - 1 - k;
            const int x = g.body.left() + s.margin + column * s.pitch;
            const int cx = x + s.pitch / 2;
            p.vertical = true;
            if (which == 1) {
                p.leg = QRect(cx - s.legwidth / 2, g.body.bottom() + 1, s.legwidth, s.leg);
                p.number = QRect(x, g.body.bottom() - 1 - fm.height(), s.pitch, fm.height());
                p.name = QRect(x, p.leg.bottom() + 1 + s.gap, s.pitch, namewidth);
                p.namealign = Qt::AlignRight | Qt::AlignVCenter;  // text runs upwards, ending at the leg
                p.level = QRect(cx - s.button / 2, p.name.bottom() + 1 + s.gap, s.button, s.level);
                p.button = QRect(cx - s.button / 2, p.level.bottom() + 1 + s.gap, s.button, s.button);
            } else {
                p.leg = QRect(cx - s.legwidth / 2, g.body.top() - s.leg, s.legwidth, s.leg);
                p.number = QRect(x, g.body.top() + 1, s.pitch, fm.height());
                p.name = QRect(x, p.leg.top() - s.gap - namewidth, s.pitch, namewidth);
                p.namealign = Qt::AlignLeft | Qt::AlignVCenter;  // starts at the leg
                p.level = QRect(cx - s.button / 2, p.name.top() - s.gap - s.level, s.button, s.level);
                p.button = QRect(cx - s.button / 2, p.level.top() - s.gap - s.button, s.button, s.button);
            }
        }
        g.pins.push_back(p);
    }
    return g;
}

}  // namespace

PackageGeometry layoutpackage(int pincount, bool compact, const QFontMetrics& metrics, const std::vector<QString>& names) {
    const Sizes s = sizesfor(compact, metrics);
    const int namewidth = longestname(names, metrics);
    if (pincount >= 64 && pincount % 4 == 0) return quad(pincount, s, namewidth, metrics);
    return dual(std::max(pincount - pincount % 2, 2), s, namewidth, metrics);
}

}  // namespace velmora
