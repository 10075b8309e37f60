#pragma once
// The Program Memory Editor window: the heading, sixteen rows of words beside their scroll
// bar, the hint, Always On Top and Close. A click on a row asks for the word's new opcode.

#include <QLabel>
#include <QListWidget>
#include <QScrollBar>

#include "debug/programmemoryeditor.h"
#include "ui/memorytoolwindow.h"

namespace velmora {

class ProgramMemoryWindow : public MemoryToolWindow {
    Q_OBJECT
public:
    explicit ProgramMemoryWindow(MainWindowModel& model, QWidget* parent = nullptr);

    ProgramMemoryEditor& editor() { return editor_; }
    QListWidget* rows() const { return text_; }
    QScrollBar* scrollbar() const { return scroll_; }
    void refreshview() override;
    // Asks for the opcode of a shown row and stores it.
    void editrow(int row);

signals:
    // Program memory changed: the main window shows the next instruction again.
    void edited();

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    ProgramMemoryEditor editor_;
    QListWidget* text_;
    QScrollBar* scroll_;
};

}  // namespace velmora
