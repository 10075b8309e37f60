#pragma once
// The pieces both source window views (BASIC Compiler, Assembler) are built from: their file
// dialogs, the menu bar made from the window's menu table, the copy of an editor's state into
// its widget and back, the Edit commands the text control does itself, printing to PDF and
// the window's first place on the screen.

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QString>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "shell/sourcewindow.h"
#include "shell/sourcewindowmenus.h"
#include "ui/qtuserinput.h"
#include "ui/sourcecodeeditor.h"

namespace velmora {

// The desktop's file dialogs, for one kind of source file.
class QtSourceFileInput : public QtUserInput {
public:
    explicit QtSourceFileInput(const char* filter) : filter_(filter) {}
    std::string openfile(const std::string& folder) override;
    std::string savefile(const std::string& folder) override;

private:
    const char* filter_;
};

// A menu bar made from a window's menu table; every item sends its control name to `run`.
class SourceMenuBar {
public:
    SourceMenuBar(QMenuBar* bar, const std::vector<WindowMenu>& menus, std::function<void(const std::string&)> run);
    QAction* action(const std::string& control) const;
    void setmenusenabled(bool enabled);

private:
    std::map<std::string, QAction*> actions_;
    std::vector<QMenu*> menus_;
};

// The model's state of an editor into its widget, touching only what differs so that the
// user's undo history survives commands that leave the text alone. With `undoable` an edit
// of the text itself (Replace All, Format Text) becomes one step that Undo takes back.
void drawsourceeditor(SourceCodeEditor* editor, const SourceEditorState& state, bool undoable);
void pullsourceeditor(const SourceCodeEditor* editor, SourceEditorState& state);

// Undo, Copy, Cut and Paste: Copy from `copyfrom`, the others in `source`.
void runeditcommand(const std::string& control, SourceCodeEditor* source, SourceCodeEditor* copyfrom);

// Writes a print job as a PDF to the file `choosepdf` names, or one a dialog asks for.
bool printtopdf(QWidget* parent, const SourcePrintJob& job, const std::function<QString()>& choosepdf);

// The saved size, or the design size, and the saved place, or the screen's centre.
void placesourcewindow(QWidget* window, const SourceWindowGeometry& geometry, QSize designsize);

}  // namespace velmora
