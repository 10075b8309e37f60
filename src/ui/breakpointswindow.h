#pragma once
// The Breakpoints Manager window: twenty rows of the loaded program in a fixed-pitch font
// with a red mark on each row that holds a breakpoint and the yellow arrow on the program
// counter's row, the scroll bar, the ten breakpoints under their heading, Always On Top,
// Hold PC In Focus and Clear All Breakpoints. A click on a row toggles its breakpoint; F1,
// F2 and F3 drive the run while the window has the focus.

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>

#include <array>

#include "debug/breakpointsmanager.h"
#include "ui/memorytoolwindow.h"

namespace velmora {

// The rows with their marks, painted in one piece so that row, mark and arrow share a pitch.
class BreakpointRowsView : public QWidget {
    Q_OBJECT
public:
    explicit BreakpointRowsView(const QFont& font, QWidget* parent = nullptr);

    void setrows(const std::array<BreakpointRow, kBreakpointRows>& rows);
    const std::array<BreakpointRow, kBreakpointRows>& shownrows() const { return rows_; }
    // Characters of a row that fit beside the marks.
    int characters() const;
    QRect rowrect(int row) const;
    // The row the arrow stands on, or -1.
    int arrowrow() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void rowclicked(int row);
    void resized();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    int pitch() const;
    int gutter() const;

    std::array<BreakpointRow, kBreakpointRows> rows_;
};

class BreakpointsWindow : public MemoryToolWindow {
    Q_OBJECT
public:
    explicit BreakpointsWindow(MainWindowModel& model, QWidget* parent = nullptr);

    BreakpointsManager& manager() { return manager_; }
    BreakpointRowsView* rows() const { return rows_; }
    QScrollBar* scrollbar() const { return scroll_; }
    QLabel* breakpointlabel(int n) const { return labels_.at(static_cast<size_t>(n)); }
    QCheckBox* holdbox() const { return hold_; }
    QPushButton* clearbutton() const { return clear_; }
    // The hold of the program counter's row, then the rows, marks and labels.
    void refreshview() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void unloading() override;

private:
    void showrows();

    BreakpointsManager manager_;
    BreakpointRowsView* rows_;
    QScrollBar* scroll_;
    std::array<QLabel*, kBreakpointCount> labels_{};
    QCheckBox* hold_;
    QPushButton* clear_;
};

}  // namespace velmora
