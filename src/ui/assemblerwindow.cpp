#include "ui/assemblerwindow.h"

#include <QCloseEvent>
#include <QVBoxLayout>

#include "shell/asmwindowmenus.h"

namespace velmora {

namespace {

const char kAsmFilter[] = "Assembler source files (*.asm);;All files (*)";
constexpr int kDesignWidth = 720, kDesignHeight = 560;

QString qtext(const std::string& text) { return QString::fromStdString(text); }

}  // namespace

QtAsmFileInput::QtAsmFileInput() : QtSourceFileInput(kAsmFilter) {}

AssemblerWindowView::AssemblerWindowView(MainWindowModel& main, UserInput& input, Clock& clock, QWidget* parent)
    : QWidget(parent, Qt::Window), model_(main, input, clock), main_(main) {
    setObjectName("assembler");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* bar = new QMenuBar;
    layout->setMenuBar(bar);
    menus_ = std::make_unique<SourceMenuBar>(bar, asmwindowmenus(),
                                             [this](const std::string& control) { runcommand(control); });

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
    model_.print = [this](const AsmPrintJob& job) { return printtopdf(this, job, choosepdf); };
    model_.onload();

    const AsmEditorSettings& settings = model_.editorsettings();
    source_->applysettings(settings);
    listing_->applysettings(settings);
    if (settings.coloring) {
        const AsmKeywords& keywords = model_.keywords();
        sourcecolours_ = std::make_unique<SourceHighlighter>(
            source_->document(), [&keywords](std::string_view line) { return asmsyntaxspans(line, keywords); },
            settings);
        // The listing viewer has line numbers in its first column, no labels.
        listingcolours_ = std::make_unique<SourceHighlighter>(
            listing_->document(),
            [&keywords](std::string_view line) {
                std::vector<AsmSpan> spans = asmsyntaxspans(line, keywords);
                std::erase_if(spans, [](const AsmSpan& span) { return span.kind == AsmSpanKind::Label; });
                return spans;
            },
            settings);
    }

    const AsmWindowGeometry geometry = model_.geometry();
    placesourcewindow(this, geometry, QSize(kDesignWidth, kDesignHeight));
    divider_->setSizes({geometry.divider * 100, (100 - geometry.divider) * 100});
    main_.registry().setopen(windows::kAssembler, true);
    draw();
}

AssemblerWindowView::~AssemblerWindowView() {
    if (!unloaded_) main_.registry().setopen(windows::kAssembler, false);
    // The highlighters go before the documents they colour.
    sourcecolours_.reset();
    listingcolours_.reset();
}

void AssemblerWindowView::runcommand(const std::string& control) {
    if (asmcontrolcommand(control)) {
        // Copy works in the listing too; the others change text and belong to the source.
        runeditcommand(control, source_, listing_->hasFocus() ? listing_ : source_);
        return;
    }
    pull();
    undoable_ = control == "menureplace" || control == "menuformat";
    model_.command(control);
    draw();
    undoable_ = false;
}

void AssemblerWindowView::pull() {
    pullsourceeditor(source_, model_.source);
    pullsourceeditor(listing_, model_.listing);
}

void AssemblerWindowView::draw() {
    setWindowTitle(qtext(model_.caption()));
    drawsourceeditor(source_, model_.source, undoable_);
    drawsourceeditor(listing_, model_.listing, false);
    menus_->setmenusenabled(model_.menusenabled());
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
