#pragma once
// The Stack SRAM Space Viewer window: the stack pointer, the seven cells from SP + 6 down to
// SP, the cell of the next push set apart, Always On Top and Close.

#include <QLabel>

#include "debug/stackviewer.h"
#include "ui/memorytoolwindow.h"

namespace velmora {

class StackWindow : public MemoryToolWindow {
    Q_OBJECT
public:
    explicit StackWindow(MainWindowModel& model, QWidget* parent = nullptr);

    StackViewer& viewer() { return viewer_; }
    QLabel* pointerlabel() const { return label_; }
    QLabel* stekpoint() const { return stekpoint_; }
    QLabel* rows() const { return text1_; }
    QLabel* pushrow() const { return text2_; }
    void refreshview() override;

private:
    StackViewer viewer_;
    QLabel* label_;
    QLabel* stekpoint_;
    QLabel* text1_;
    QLabel* text2_;
};

}  // namespace velmora
