#pragma once
// The Alternative Registers Viewer window: the named registers in one column, or two when the
// window is wide enough, the scroll control `pointer`, the help button, Always On Top and
// Close. Double click, Delete or Backspace on a selection, and F12 edit the list of rows.

#include <QPlainTextEdit>
#include <QScrollBar>

#include <array>

#include "debug/alternativeregisters.h"
#include "ui/memorytoolwindow.h"

namespace velmora {

class AlternativeWindow : public MemoryToolWindow {
    Q_OBJECT
public:
    explicit AlternativeWindow(MainWindowModel& model, QWidget* parent = nullptr);

    AlternativeRegisters& registers() { return registers_; }
    QPlainTextEdit* column(int which) const { return text_[static_cast<size_t>(which)]; }
    QScrollBar* pointer() const { return pointer_; }
    bool twocolumns() const;
    void refreshview() override;
    // The commands of the mouse and keys, for a test as for the user.
    void doubleclickline(int which, int line);
    void deleteselection(int which);
    void restore();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void unloading() override;

private:
    int visiblelines() const;
    int columnwidth() const;

    AlternativeRegisters registers_;
    std::array<QPlainTextEdit*, 2> text_{};
    QScrollBar* pointer_;
    bool showntwo_ = false;
};

}  // namespace velmora
