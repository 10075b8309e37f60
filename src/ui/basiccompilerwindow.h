#pragma once
// The BASIC Compiler window: the header with the model and clock over the source editor, and
// the window's menus. It draws the BasicCompilerWindow model, hands every menu choice to it,
// and shows the system tables in a Viewer window.

#include <QLabel>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>

#include "shell/basiccompilerwindow.h"
#include "ui/sourcecodeeditor.h"
#include "ui/sourcehighlighter.h"
#include "ui/sourcewindowparts.h"
#include "ui/viewerwindow.h"

namespace velmora {

// The desktop's file dialogs, for BASIC sources.
class QtBasicFileInput : public QtSourceFileInput {
public:
    QtBasicFileInput();
};

class BasicCompilerWindowView : public QWidget {
    Q_OBJECT
public:
    // Closed, and waiting to be deleted: opening the window again makes a new one.
    bool unloaded() const { return unloaded_; }
    BasicCompilerWindowView(MainWindowModel& main, UserInput& input, Clock& clock, QWidget* parent = nullptr);
    ~BasicCompilerWindowView() override;

    BasicCompilerWindow& model() { return model_; }
    SourceCodeEditor* sourceeditor() const { return source_; }
    QLabel* header() const { return header_; }
    // The Viewer window of the last Show System command, or null.
    ViewerWindow* viewer() const { return viewer_.data(); }
    QAction* action(const std::string& control) const { return menus_->action(control); }
    // Runs a menu command as if chosen.
    void runcommand(const std::string& control);
    // The main window's model or clock changed.
    void drawheader();
    // The main window drew: the line of the running program, when it moved.
    void showmark();
    // Closes the window for good, saving its place.
    void unload();
    // Where Print writes its PDF; a file dialog when not set.
    std::function<QString()> choosepdf;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void draw();
    void showviewer(const ViewerText& content);

    BasicCompilerWindow model_;
    MainWindowModel& main_;
    QLabel* header_;
    SourceCodeEditor* source_;
    QPointer<ViewerWindow> viewer_;
    std::unique_ptr<SourceMenuBar> menus_;
    std::unique_ptr<SourceHighlighter> colours_;
    bool unloaded_ = false;
    bool undoable_ = false;  // the running command edits the source text in place
};

}  // namespace velmora
