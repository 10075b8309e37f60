#pragma once
// A list of rows drawn in one widget: a clickable name, a value and, optionally, eight bit
// lamps. The register list and the SRAM list of the main window are two of these.

#include <QWidget>
#include <array>
#include <vector>

#include "shell/mainwindowfields.h"
#include "shell/themes.h"

namespace velmora {

struct LampRow {
    QString name;
    QString value;
    std::array<Lamp, 8> lamps{};  // bit 7 first
};

class LampList : public QWidget {
    Q_OBJECT
public:
    LampList(int rows, bool lamps, QWidget* parent = nullptr);
    void setrows(const std::vector<LampRow>& rows);
    void settheme(const Theme& theme);
    QSize sizeHint() const override;

    // Where a click lands, for the tests of the window.
    QRect namerect(int row) const;
    QRect lamprect(int row, int bit) const;  // bit 7..0

signals:
    void nameclicked(int row);
    void lampclicked(int row, int bit);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    int rowheight() const;
    int top() const;  // the bit heading above lamp lists
    int namewidth() const;
    int valuewidth() const;

    int rowcount_;
    bool haslamps_;
    std::vector<LampRow> rows_;
    Theme theme_ = defaulttheme();
};

// Paints one lamp in its theme colour: lit, dark, or a bit the register lacks.
void paintlamp(class QPainter& painter, const QRect& rect, Lamp lamp, const Theme& theme);

}  // namespace velmora
