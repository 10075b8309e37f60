#pragma once
// The EEPROM Memory Editor window: the column heading, the row labels and the bytes, a scroll
// bar when the EEPROM has more than eight rows, the box `unosbox` that edits one byte, the
// erase button, Always On Top and Close.

#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>

#include <array>

#include "debug/eepromeditor.h"
#include "ui/memorytoolwindow.h"

namespace velmora {

// The bytes of the page in a fixed-pitch font; says which byte a click fell on.
class EepromBytes : public QWidget {
    Q_OBJECT
public:
    explicit EepromBytes(const QFont& font, QWidget* parent = nullptr);
    void setpage(const EepromPage& page);
    // Where a byte is drawn.
    QRect cellrect(int row, int column) const;
    QSize sizeHint() const override;

signals:
    void cellclicked(int row, int column);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    int charwidth() const;
    int lineheight() const;
    EepromPage page_;
};

class EepromWindow : public MemoryToolWindow {
    Q_OBJECT
public:
    explicit EepromWindow(MainWindowModel& model, QWidget* parent = nullptr);

    EepromEditor& editor() { return editor_; }
    EepromBytes* bytes() const { return bytes_; }
    QLineEdit* unosbox() const { return unosbox_; }
    QScrollBar* scrollbar() const { return scroll_; }
    QLabel* labels() const { return labels_; }
    void refreshview() override;
    // Places the edit box over a byte, as a click does.
    void clickcell(int row, int column);

private:
    void entercell();

    EepromEditor editor_;
    QLabel* labels_;
    EepromBytes* bytes_;
    QScrollBar* scroll_;
    QLineEdit* unosbox_;
    int editaddress_ = -1;
};

}  // namespace velmora
