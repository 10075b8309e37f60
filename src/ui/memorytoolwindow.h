#pragma once
// What the memory windows share beside ToolWindow: a fixed-pitch font, the Close button, and
// a refresh that the simulation step asks for while the window is open. The step only queues
// it, so a fast run draws at its next yield and not after every instruction.

#include <QFont>
#include <QLabel>
#include <QPushButton>

#include <vector>

#include "ui/toolwindow.h"

namespace velmora {

// A column heading over rows in a fixed-pitch font. It keeps its text as given, and draws each
// of its words (parted by two blanks or more), in its own narrower font, over the character
// column of the field it names.
class ColumnHeading : public QLabel {
    Q_OBJECT
public:
    ColumnHeading(const QString& text, std::vector<int> columns, const QFont& font, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<int> columns_;
    int advance_;  // one character of the rows
};

class MemoryToolWindow : public ToolWindow {
    Q_OBJECT
public:
    MemoryToolWindow(MainWindowModel& model, int window, QWidget* parent = nullptr);
    ~MemoryToolWindow() override;

    // Draws the machine's present state at once.
    virtual void refreshview() = 0;

protected:
    // Registers the refresh after every step at `order` of the run loop's window hooks.
    void followsteps(int order);
    void unloading() override;
    // Queues one refresh; more requests before it runs add nothing.
    void schedulerefresh();
    QPushButton* makeclosebutton();
    static QFont fixedfont();

private:
    int hook_ = 0;
    bool pending_ = false;
};

}  // namespace velmora
