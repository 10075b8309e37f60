#pragma once
// The Assembler window: a source editor over a read-only listing viewer with a divider
// between them, the status frame of a run, and the window's menus. It draws the
// AssemblerWindow model and hands every menu choice to it.

#include <QGroupBox>
#include <QLabel>
#include <QSplitter>
#include <QWidget>
#include <functional>
#include <memory>

#include "shell/assemblerwindow.h"
#include "ui/sourcecodeeditor.h"
#include "ui/sourcehighlighter.h"
#include "ui/sourcewindowparts.h"

namespace velmora {

using AsmCodeEditor = SourceCodeEditor;

// The desktop's file dialogs, for assembler sources.
class QtAsmFileInput : public QtSourceFileInput {
public:
    QtAsmFileInput();
};

class AssemblerWindowView : public QWidget {
    Q_OBJECT
public:
    // Closed, and waiting to be deleted: opening the window again makes a new one.
    bool unloaded() const { return unloaded_; }
    AssemblerWindowView(MainWindowModel& main, UserInput& input, Clock& clock, QWidget* parent = nullptr);
    ~AssemblerWindowView() override;

    AssemblerWindow& model() { return model_; }
    AsmCodeEditor* sourceeditor() const { return source_; }
    AsmCodeEditor* listingviewer() const { return listing_; }
    QGroupBox* frame() const { return frame_; }
    QAction* action(const std::string& control) const { return menus_->action(control); }
    // Runs a menu command as if chosen.
    void runcommand(const std::string& control);
    // Closes the window for good, saving its place.
    void unload();
    // Where Print writes its PDF; a file dialog when not set.
    std::function<QString()> choosepdf;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void pull();
    void draw();
    void drawstatus();

    AssemblerWindow model_;
    MainWindowModel& main_;
    AsmCodeEditor* source_;
    AsmCodeEditor* listing_;
    QSplitter* divider_;
    QGroupBox* frame_;
    QLabel* label1_;
    QLabel* label2_;
    std::unique_ptr<SourceMenuBar> menus_;
    std::unique_ptr<SourceHighlighter> sourcecolours_, listingcolours_;
    bool unloaded_ = false;
    bool undoable_ = false;  // the running command edits the source text in place
};

}  // namespace velmora
