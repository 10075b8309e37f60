#include "ui/basiccompilerwindow.h"

#include <QTextBlock>

#include <QCloseEvent>
#include <QVBoxLayout>

#include "shell/basiccompilermenus.h"
#include "shell/basiccompilersyntax.h"

namespace velmora {

namespace {

const char kBasicFilter[] = "BASIC source files (*.bas);;All files (*)";
constexpr int kDesignWidth = 720, kDesignHeight = 560;

QString qtext(const std::string& text) { return QString::fromStdString(text); }

}  // namespace

QtBasicFileInput::QtBasicFileInput() : QtSourceFileInput(kBasicFilter) {}

BasicCompilerWindowView::BasicCompilerWindowView(MainWindowModel& main, UserInput& input, Clock& clock,
                                                 QWidget* parent)
    : QWidget(parent, Qt::Window), model_(main, input, clock), main_(main) {
    setObjectName("basiccompiler");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* bar = new QMenuBar;
    layout->setMenuBar(bar);
    menus_ = std::make_unique<SourceMenuBar>(bar, basiccompilermenus(),
                                             [this](const std::string& control) { runcommand(control); });
    header_ = new QLabel;
    header_->setObjectName("header");
    header_->setMargin(4);
    layout->addWidget(header_);
    source_ = new SourceCodeEditor;
    source_->setObjectName("edittextboxpro1");
    layout->addWidget(source_, 1);

    model_.changed = [this] { draw(); };
    model_.print = [this](const SourcePrintJob& job) { return printtopdf(this, job, choosepdf); };
    model_.showviewer = [this](const ViewerText& content) { showviewer(content); };
    model_.onload();

    const EditorSettings& settings = model_.editorsettings();
    source_->applysettings(settings);
    if (settings.coloring) {
        const SourceKeywords& keywords = model_.keywords();
        colours_ = std::make_unique<SourceHighlighter>(
            source_->document(), [&keywords](std::string_view line) { return basicsyntaxspans(line, keywords); },
            settings);
    }
    placesourcewindow(this, model_.geometry(), QSize(kDesignWidth, kDesignHeight));
    main_.registry().setopen(windows::kBasicCompiler, true);
    draw();
}

BasicCompilerWindowView::~BasicCompilerWindowView() {
    if (!unloaded_) main_.registry().setopen(windows::kBasicCompiler, false);
    // The highlighter goes before the document it colours.
    colours_.reset();
}

void BasicCompilerWindowView::runcommand(const std::string& control) {
    if (editcontrolcommand(control)) {
        runeditcommand(control, source_, source_);
        return;
    }
    pullsourceeditor(source_, model_.source);
    undoable_ = control == "menureplace" || control == "menuformat";
    model_.command(control);
    draw();
    undoable_ = false;
}

void BasicCompilerWindowView::drawheader() { header_->setText(qtext(model_.header())); }

void BasicCompilerWindowView::showmark() {
    int line = 0;
    if (!model_.takemark(line)) return;
    source_->setmarks(model_.source.marks);
    if (line <= 0) return;
    QTextCursor caret(source_->document()->findBlockByNumber(line - 1));
    source_->setTextCursor(caret);
    source_->ensureCursorVisible();
}

void BasicCompilerWindowView::draw() {
    setWindowTitle(qtext(model_.caption()));
    drawheader();
    drawsourceeditor(source_, model_.source, undoable_);
    menus_->setmenusenabled(model_.menusenabled());
    if (QAction* compatible = action("menucompatible")) compatible->setChecked(model_.compatiblelisting());
    if (QAction* arbitrary = action("menuarbitrary")) arbitrary->setChecked(model_.arbitrarybitnames());
    if (model_.sourcefocus) {
        source_->setFocus();
        model_.sourcefocus = false;
    }
}

void BasicCompilerWindowView::showviewer(const ViewerText& content) {
    if (!viewer_) viewer_ = new ViewerWindow(this);
    viewer_->showtext(content);
}

void BasicCompilerWindowView::unload() {
    if (unloaded_) return;
    unloaded_ = true;
    model_.onunload({pos().x(), pos().y()}, {width(), height()});
    main_.registry().setopen(windows::kBasicCompiler, false);
    hide();
    deleteLater();
}

void BasicCompilerWindowView::closeEvent(QCloseEvent* event) {
    unload();
    event->accept();
}

}  // namespace velmora
