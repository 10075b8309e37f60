#include "ui/assemblerwindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QGuiApplication>
#include <QPdfWriter>
#include <QScreen>
#include <QTextCursor>
#include <QTextDocument>
#include <QVBoxLayout>

#include "shell/asmwindowmenus.h"

namespace velmora {

namespace {

const char kAsmFilter[] = "Assembler source files (*.asm);;All files (*)";
constexpr int kDesignWidth = 720, kDesignHeight = 560;

QString qtext(const std::string& text) { return QString::fromStdString(text); }

// Menu captions are shown as written: a "&" in them is no accelerator.
QString menucaption(const std::string& caption) { return qtext(caption).replace("&", "&&"); }

// The model's state of one editor into its widget, touching only what differs so that the
// user's undo history survives commands that leave the text alone. An edit of the text
// itself (Replace All, Format Text) becomes one step that Undo takes back.
void drawEditor(AsmCodeEditor* editor, const AsmEditorState& state, bool undoable) {
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

void pullEditor(const AsmCodeEditor* editor, AsmEditorState& state) {
    state.text = editor->toPlainText().toStdString();
    state.caret = editor->caretoffset();
    state.selection = editor->selectionbytes();
}

}  // namespace

std::string QtAsmFileInput::openfile(const std::string& folder) {
    return QFileDialog::getOpenFileName(QApplication::activeWindow(), "Open", qtext(folder), kAsmFilter)
        .toStdString();
}

std::string QtAsmFileInput::savefile(const std::string& folder) {
    // The window asks its own overwrite question, on the name it makes of this one.
    return QFileDialog::getSaveFileName(QApplication::activeWindow(), "Save As", qtext(folder), kAsmFilter, nullptr,
                                        QFileDialog::DontConfirmOverwrite)
        .toStdString();
}

AssemblerWindowView::AssemblerWindowView(MainWindowModel& main, UserInput& input, Clock& clock, QWidget* parent)
    : QWidget(parent, Qt::Window), model_(main, input, clock), main_(main) {
    setObjectName("assembler");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* bar = new QMenuBar;
    layout->setMenuBar(bar);
    buildmenus(bar);

    source_ = new AsmCodeEditor;
    source_->setObjectName("edittextboxpro1");
    listing_ = new AsmCodeEditor;
    listing_->setObjectName("edittextboxpro2");
    listing_->setReadOnly(true);
    divider_ = new QSplitter(Qt::Vertical);
    divider_->setObjectName("razdelnik");
    divider_->addWidget(source_);
    divider_->addWidget(listing_);
    divider_->setChildrenCollapsible(false);
    layout->addWidget(divider_, 1);

    frame_ = new QGroupBox(kAsmFrameCaption);
    frame_->setObjectName("Frame1");
    auto* status = new QVBoxLayout(frame_);
    label1_ = new QLabel;
    label1_->setObjectName("Label1");
    label2_ = new QLabel;
    label2_->setObjectName("Label2");
    status->addWidget(label1_);
    status->addWidget(label2_);
    frame_->hide();
    layout->addWidget(frame_);

    model_.changed = [this] { draw(); };
    model_.statuschanged = [this] { drawstatus(); };
    model_.print = [this](const AsmPrintJob& job) { return printpdf(job); };
    model_.onload();

    const AsmEditorSettings& settings = model_.editorsettings();
    source_->applysettings(settings);
    listing_->applysettings(settings);
    if (settings.coloring) {
        sourcecolours_ = std::make_unique<AsmHighlighter>(source_->document(), model_.keywords(), settings, true);
        listingcolours_ = std::make_unique<AsmHighlighter>(listing_->document(), model_.keywords(), settings, false);
    }

    const AsmWindowGeometry geometry = model_.geometry();
    resize(geometry.size ? QSize(geometry.size->x, geometry.size->y) : QSize(kDesignWidth, kDesignHeight));
    divider_->setSizes({geometry.divider * 100, (100 - geometry.divider) * 100});
    if (geometry.place)
        move(geometry.place->x, geometry.place->y);
    else if (const QScreen* screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - QPoint(width() / 2, height() / 2));
    main_.registry().setopen(windows::kAssembler, true);
    draw();
}

AssemblerWindowView::~AssemblerWindowView() {
    if (!unloaded_) main_.registry().setopen(windows::kAssembler, false);
    // The highlighters go before the documents they colour.
    sourcecolours_.reset();
    listingcolours_.reset();
}

void AssemblerWindowView::buildmenus(QMenuBar* bar) {
    for (const AsmMenu& menu : asmwindowmenus()) {
        if (menu.items.empty()) {
            QAction* command = bar->addAction(menucaption(menu.caption));
            command->setObjectName(qtext(menu.control));
            connect(command, &QAction::triggered, this, [this, control = menu.control] { runcommand(control); });
            actions_[menu.control] = command;
            continue;
        }
        QMenu* drop = bar->addMenu(menucaption(menu.caption));
        drop->setObjectName(qtext(menu.control));
        menus_.push_back(drop);
        for (const AsmMenuItem& item : menu.items) {
            QAction* command = drop->addAction(menucaption(item.caption));
            command->setObjectName(qtext(item.control));
            connect(command, &QAction::triggered, this, [this, control = item.control] { runcommand(control); });
            actions_[item.control] = command;
        }
    }
}

QAction* AssemblerWindowView::action(const std::string& control) const {
    const auto it = actions_.find(control);
    return it == actions_.end() ? nullptr : it->second;
}

void AssemblerWindowView::runcommand(const std::string& control) {
    if (asmcontrolcommand(control)) {
        // Copy works in the listing too; the others change text and belong to the source.
        AsmCodeEditor* copyfrom = listing_->hasFocus() ? listing_ : source_;
        if (control == "menuundo") source_->undo();
        else if (control == "menucopy") copyfrom->copy();
        else if (control == "menucut") source_->cut();
        else if (control == "menupaste") source_->paste();
        return;
    }
    pull();
    undoable_ = control == "menureplace" || control == "menuformat";
    model_.command(control);
    draw();
    undoable_ = false;
}

void AssemblerWindowView::pull() {
    pullEditor(source_, model_.source);
    pullEditor(listing_, model_.listing);
}

void AssemblerWindowView::draw() {
    setWindowTitle(qtext(model_.caption()));
    drawEditor(source_, model_.source, undoable_);
    drawEditor(listing_, model_.listing, false);
    for (QMenu* menu : menus_) menu->setEnabled(model_.menusenabled());
    if (QAction* next = action("menu5")) next->setVisible(model_.gotonexterrorvisible());
    drawstatus();
    if (model_.sourcefocus) {
        source_->setFocus();
        model_.sourcefocus = false;
    }
}

void AssemblerWindowView::drawstatus() {
    frame_->setVisible(model_.frameshown());
    label1_->setText(qtext(model_.label1()));
    label2_->setText(qtext(model_.label2()));
}

bool AssemblerWindowView::printpdf(const AsmPrintJob& job) {
    const QString path = choosepdf ? choosepdf()
                                   : QFileDialog::getSaveFileName(this, "Print", qtext(job.title) + ".pdf",
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

void AssemblerWindowView::unload() {
    if (unloaded_) return;
    unloaded_ = true;
    const QList<int> sizes = divider_->sizes();
    const int total = sizes.size() == 2 ? sizes[0] + sizes[1] : 0;
    const int divider = total > 0 ? sizes[0] * 100 / total : 70;
    model_.onunload({pos().x(), pos().y()}, {width(), height()}, divider);
    main_.registry().setopen(windows::kAssembler, false);
    hide();
    deleteLater();
}

void AssemblerWindowView::closeEvent(QCloseEvent* event) {
    // A run yields to the event queue with the window's state on the stack: it must end first.
    if (!model_.menusenabled()) {
        event->ignore();
        return;
    }
    unload();
    event->accept();
}

}  // namespace velmora
