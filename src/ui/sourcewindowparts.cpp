#include "ui/sourcewindowparts.h"

#include <QApplication>
#include <QFileDialog>
#include <QGuiApplication>
#include <QPdfWriter>
#include <QScreen>
#include <QTextCursor>
#include <QTextDocument>

#include "ui/screenplacement.h"

namespace velmora {

namespace {
QString qtext(const std::string& text) { return QString::fromStdString(text); }
}  // namespace

std::string QtSourceFileInput::openfile(const std::string& folder) {
    return QFileDialog::getOpenFileName(QApplication::activeWindow(), "Open", qtext(folder), filter_).toStdString();
}

std::string QtSourceFileInput::savefile(const std::string& folder) {
    // The window asks its own overwrite question, on the name it makes of this one.
    return QFileDialog::getSaveFileName(QApplication::activeWindow(), "Save As", qtext(folder), filter_, nullptr,
                                        QFileDialog::DontConfirmOverwrite)
        .toStdString();
}

SourceMenuBar::SourceMenuBar(QMenuBar* bar, const std::vector<WindowMenu>& menus,
                             std::function<void(const std::string&)> run) {
    const auto additem = [&](QWidget* where, const std::string& control, const std::string& caption, bool checkable) {
        auto* command = new QAction(qtext(caption), where);
        command->setObjectName(qtext(control));
        command->setCheckable(checkable);
        QObject::connect(command, &QAction::triggered, bar, [run, control] { run(control); });
        where->addAction(command);
        actions_[control] = command;
    };
    for (const WindowMenu& menu : menus) {
        if (menu.items.empty()) {
            additem(bar, menu.control, menu.caption, false);
            continue;
        }
        QMenu* drop = bar->addMenu(qtext(menu.caption));
        drop->setObjectName(qtext(menu.control));
        menus_.push_back(drop);
        for (const WindowMenuItem& item : menu.items) additem(drop, item.control, item.caption, item.checkable);
    }
}

QAction* SourceMenuBar::action(const std::string& control) const {
    const auto it = actions_.find(control);
    return it == actions_.end() ? nullptr : it->second;
}

void SourceMenuBar::setmenusenabled(bool enabled) {
    for (QMenu* menu : menus_) menu->setEnabled(enabled);
}

void drawsourceeditor(SourceCodeEditor* editor, const SourceEditorState& state, bool undoable) {
    const QString text = qtext(state.text);
    if (editor->toPlainText() != text) {
        if (undoable) {
            QTextCursor all(editor->document());
            all.select(QTextCursor::Document);
            all.insertText(text);
        } else {
            editor->setPlainText(text);
        }
    }
    editor->setmarks(state.marks);
    if (editor->caretoffset() != state.caret || editor->selectionbytes() != state.selection)
        editor->setcaret(state.caret, state.selection);
    editor->setEnabled(state.enabled);
}

void pullsourceeditor(const SourceCodeEditor* editor, SourceEditorState& state) {
    state.text = editor->toPlainText().toStdString();
    state.caret = editor->caretoffset();
    state.selection = editor->selectionbytes();
}

void runeditcommand(const std::string& control, SourceCodeEditor* source, SourceCodeEditor* copyfrom) {
    if (control == "menuundo") source->undo();
    else if (control == "menucopy") copyfrom->copy();
    else if (control == "menucut") source->cut();
    else if (control == "menupaste") source->paste();
}

bool printtopdf(QWidget* parent, const SourcePrintJob& job, const std::function<QString()>& choosepdf) {
    const QString path = choosepdf ? choosepdf()
                                   : QFileDialog::getSaveFileName(parent, "Print", qtext(job.title) + ".pdf",
                                                                  "PDF files (*.pdf)");
    if (path.isEmpty()) return false;
    QPdfWriter writer(path);
    writer.setTitle(qtext(job.title));
    QTextDocument document;
    QFont font(qtext(job.fontname));
    font.setPointSizeF(job.fontsize > 0 ? job.fontsize : 9);
    font.setStyleHint(QFont::Monospace);
    document.setDefaultFont(font);
    document.setPlainText(qtext(job.text));
    document.print(&writer);
    return true;
}

void placesourcewindow(QWidget* window, const SourceWindowGeometry& geometry, QSize designsize) {
    window->resize(geometry.size ? QSize(geometry.size->x, geometry.size->y) : designsize);
    if (geometry.place)
        window->move(onscreenplace({geometry.place->x, geometry.place->y}, window->size()));
    else
        window->move(primarycentre(window->size()));
}

}  // namespace velmora
