#pragma once
// What every small window beside the main one shares: its number, its saved place (or the
// centre of the screen), the "Always On Top" box, and an unload that saves its place once,
// tells the registry and lets the window finish its own work first.

#include <QCheckBox>
#include <QWidget>

#include "shell/mainwindowmodel.h"

namespace velmora {

class ToolWindow : public QWidget {
    Q_OBJECT
public:
    ToolWindow(MainWindowModel& model, int window, QWidget* parent = nullptr);
    ~ToolWindow() override;

    int windownumber() const { return window_; }
    // Closes the window for good, saving its place. It is deleted later: until then it is
    // still there, but unloaded.
    void unload();
    bool unloaded() const { return unloaded_; }

protected:
    // The "Always On Top" box, kept under the window's number.
    QCheckBox* makeontopbox();
    // Saved place, or the screen's centre for the window's present size; call once it is built.
    void placeonscreen();
    // The window's own work at unload, before it is hidden: save settings, leave the machine.
    virtual void unloading() {}
    void closeEvent(QCloseEvent* event) override;

    MainWindowModel& model_;

private:
    int window_;
    bool unloaded_ = false;
};

}  // namespace velmora
