#pragma once
// The Watch Variables window: the rows of the watched variables with their present values,
// the scroll bar, the commands in its menu (add, change, delete, the two options), delete
// mode with its hint, and Always On Top. It redraws after each refresh of the main window.

#include <QAction>
#include <QLabel>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScrollBar>

#include "debug/watchvariables.h"
#include "ui/memorytoolwindow.h"

namespace velmora {

class ClickLabel;

class WatchWindow : public MemoryToolWindow {
    Q_OBJECT
public:
    explicit WatchWindow(MainWindowModel& model, QWidget* parent = nullptr);

    WatchVariables& watch() { return watch_; }
    QPlainTextEdit* text() const { return text_; }
    QScrollBar* scrollbar() const { return scroll_; }
    // A command of the menu by its control name ("menuadd", "menuhex", ...).
    QAction* action(const QString& control) const;
    bool deletemode() const { return deletemode_; }
    QWidget* deletepanel() const { return deletepanel_; }
    ClickLabel* herelabel() const { return here_; }
    void refreshview() override;

    void menuadd();
    void menuchange();
    void menudelete();
    // A click on a shown row in delete mode; `row` counts from the first row shown.
    void clickrow(int row);
    void enddeletemode();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void unloading() override;

private:
    QAction* addaction(QMenu* menu, const QString& control, const QString& caption);
    void setdeletemode(bool on);
    // The refusal of a command before its window opens, shown; true when there was one.
    bool refused(const std::optional<std::string>& refusal);

    WatchVariables& watch_;
    QMenuBar* menu_;
    QPlainTextEdit* text_;
    QScrollBar* scroll_;
    QWidget* deletepanel_;
    ClickLabel* here_;
    bool deletemode_ = false;
};

}  // namespace velmora
