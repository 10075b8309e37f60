#pragma once
// The Special Breakpoints window: five entries, each with its address and condition and the
// buttons that set and delete it, and Close. The entries themselves live on after it closes.

#include <QLabel>
#include <QPushButton>

#include <array>

#include "debug/specialbreakpoints.h"
#include "ui/memorytoolwindow.h"

namespace velmora {

class SpecialBreakpointsWindow : public MemoryToolWindow {
    Q_OBJECT
public:
    explicit SpecialBreakpointsWindow(MainWindowModel& model, QWidget* parent = nullptr);

    QLabel* addresslabel(int n) const { return row(n).address; }
    QLabel* conditionlabel(int n) const { return row(n).condition; }
    QPushButton* setbutton(int n) const { return row(n).set; }
    QPushButton* deletebutton(int n) const { return row(n).del; }
    // The labels and buttons as the entries stand; a load clears them.
    void refreshview() override;

private:
    struct Row {
        QLabel* address = nullptr;
        QLabel* condition = nullptr;
        QPushButton* set = nullptr;
        QPushButton* del = nullptr;
    };
    const Row& row(int n) const { return rows_.at(static_cast<size_t>(n)); }

    SpecialBreakpoints& entries_;
    std::array<Row, kSpecialBreakpoints> rows_;
};

}  // namespace velmora
