#include "ui/mainwindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindowStateChangeEvent>

#include "shell/messagepolicy.h"
#include "ui/screenplacement.h"
#include "ui/selectmodeldialog.h"
#include "ui/themecolors.h"

namespace velmora {

namespace {
QString qtext(const std::string& text) { return QString::fromStdString(text); }

// A frame with its caption around one or more widgets.
QGroupBox* frame(const char* caption, QWidget* content) {
    auto* box = new QGroupBox(caption);
    // A styled title does not widen its frame by itself.
    box->setMinimumWidth(box->fontMetrics().horizontalAdvance(caption) + 24);
    auto* layout = new QVBoxLayout(box);
    layout->setContentsMargins(6, 4, 6, 6);
    layout->addWidget(content);
    return box;
}

void settext(QLabel* label, const std::string& text) {
    const QString q = qtext(text);
    if (label->text() != q) label->setText(q);
}
}  // namespace

MainWindow::MainWindow(MainWindowModel& model, QWidget* parent) : QMainWindow(parent), model_(model) {
    setWindowTitle(qtext(model_.title()));
    buildmenus();
    setCentralWidget(buildbody());
    connectmodel();
    connect(&ultimatetimer_, &QTimer::timeout, this, [this] { model_.run().ultimatetick(); });
    connect(&gdbtimer_, &QTimer::timeout, this, [this] { model_.gdb().tick(); });
    applytheme(theme_);
    model_.registry().setopen(windows::kMain, true);
    flush();
    applymenustates();
    // The window's size is fixed: always just what its contents need.
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

ClickLabel* MainWindow::valuefield(const std::string& control, const char* tip) {
    auto* label = new ClickLabel("value");
    label->setObjectName(qtext(control));
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QString(24, 'M')));
    if (tip) label->setToolTip(tip);
    fields_[control] = label;
    return label;
}

QWidget* MainWindow::buildbody() {
    auto* body = new QWidget;
    body->setObjectName("body");
    auto* columns = new QHBoxLayout(body);

    auto* left = new QVBoxLayout;
    ClickLabel* processor = valuefield("qprocessor", captions::kClickToChange);
    connect(processor, &ClickLabel::clicked, this, [this] { runcommand("menuselect"); });
    left->addWidget(frame(captions::kMicrocontroller, processor));
    ClickLabel* clock = valuefield("qclockfreq", captions::kClickToChange);
    connect(clock, &ClickLabel::clicked, this, [this] { runcommand("menuclock"); });
    left->addWidget(frame(captions::kClockFrequency, clock));
    ClickLabel* program = valuefield("qprogram2", captions::kClickToReload);
    program->setMinimumHeight(program->fontMetrics().height() * 2 + 4);
    program->setWordWrap(true);
    connect(program, &ClickLabel::clicked, this, [this] {
        ++busy_;
        model_.clickprogram();
        --busy_;
        applymenustates();
        flush();
    });
    left->addWidget(frame(captions::kProgramLocation, program));
    left->addWidget(frame(captions::kLastInstruction, valuefield("qinst")));
    left->addWidget(frame(captions::kNextInstruction, valuefield("qinstnext")));

    auto* stats = new QWidget;
    auto* grid = new QGridLayout(stats);
    grid->setContentsMargins(0, 0, 0, 0);
    const std::pair<const char*, const char*> statistics[] = {{captions::kInstructions, "qbrojinst"},
                                                              {captions::kClockCycles, "qcount"}};
    int row = 0;
    for (const auto& [caption, control] : statistics) {
        ClickLabel* value = valuefield(control, captions::kClickToReset);
        connect(value, &ClickLabel::clicked, this, [this] {
            model_.clickstatistic();
            flush();
        });
        grid->addWidget(new QLabel(caption), row, 0);
        grid->addWidget(value, row++, 1);
    }
    left->addWidget(frame("", stats));
    ClickLabel* realtime = valuefield("qrealtime", captions::kClickToReset);
    connect(realtime, &ClickLabel::clicked, this, [this] {
        model_.clickstatistic();
        flush();
    });
    left->addWidget(frame(captions::kRealTimeDuration, realtime));

    auto* pc = new QWidget;
    auto* pcrow = new QHBoxLayout(pc);
    pcrow->setContentsMargins(0, 0, 0, 0);
    auto* pcname = new ClickLabel("secondary");
    pcname->setObjectName("qpcname");
    pcname->setText("PC");
    pcname->setToolTip(captions::kClickToChange);
    fields_["qpcname"] = pcname;
    connect(pcname, &ClickLabel::clicked, this, [this] {
        model_.clickpcname();
        flush();
    });
    ClickLabel* pcvalue = valuefield("qpc");
    pcvalue->setMinimumWidth(pcvalue->fontMetrics().horizontalAdvance("MMMMMMM"));
    pclamps_ = new PcLamps;
    pcrow->addWidget(pcname);
    pcrow->addWidget(pcvalue);
    pcrow->addWidget(pclamps_);
    left->addWidget(frame(captions::kProgramCounter, pc));
    left->addStretch();

    auto* registers = new QWidget;
    auto* regrow = new QHBoxLayout(registers);
    regrow->setContentsMargins(0, 0, 0, 0);
    registers_ = new LampList(kRegisterRows, true);
    registerscroll_ = new QScrollBar(Qt::Vertical);
    regrow->addWidget(registers_);
    regrow->addWidget(registerscroll_);
    connect(registers_, &LampList::nameclicked, this, [this](int r) {
        model_.clickregistername(r);
        flush();
    });
    connect(registers_, &LampList::lampclicked, this, [this](int r, int bit) {
        model_.clickbitlamp(r, bit);
        flush();
    });
    connect(registerscroll_, &QScrollBar::valueChanged, this, [this](int v) {
        model_.scroll.registers = v;
        flush();
    });

    auto* sram = new QWidget;
    auto* sramrow = new QHBoxLayout(sram);
    sramrow->setContentsMargins(0, 0, 0, 0);
    sram_ = new LampList(kSramRows, false);
    sramscroll_ = new QScrollBar(Qt::Vertical);
    sramrow->addWidget(sram_);
    sramrow->addWidget(sramscroll_);
    connect(sram_, &LampList::nameclicked, this, [this](int r) {
        model_.clicksramname(r);
        flush();
    });
    connect(sramscroll_, &QScrollBar::valueChanged, this, [this](int v) {
        model_.scroll.sram = v;
        flush();
    });

    auto* middle = new QVBoxLayout;
    middle->addWidget(frame(captions::kRegisters, registers));
    middle->addStretch();
    auto* right = new QVBoxLayout;
    right->addWidget(frame(captions::kInternalDataSram, sram));
    right->addStretch();
    columns->addLayout(left);
    columns->addLayout(middle);
    columns->addLayout(right);
    return body;
}

void MainWindow::buildmenus() {
    for (const MenuDef& menu : mainmenus()) {
        if (menu.items.empty()) {
            // A top-level command of the menu bar.
            QAction* action = menuBar()->addAction(qtext(menu.caption));
            action->setObjectName(qtext(menu.control));
            connect(action, &QAction::triggered, this, [this, control = menu.control] { runcommand(control); });
            actions_[menu.control] = action;
            continue;
        }
        QMenu* qmenu = menuBar()->addMenu(qtext(menu.caption));
        qmenu->setObjectName(qtext(menu.control));
        actions_[menu.control] = qmenu->menuAction();
        for (const MenuItemDef& item : menu.items) {
            QAction* action = qmenu->addAction(qtext(item.caption));
            action->setObjectName(qtext(item.control));
            action->setCheckable(item.kind == MenuItemKind::Switch || item.kind == MenuItemKind::Rate || item.checkable);
            connect(action, &QAction::triggered, this, [this, control = item.control] { runcommand(control); });
            actions_[item.control] = action;
        }
    }
}

void MainWindow::connectmodel() {
    model_.ekran = [this] { scheduleflush(); };
    model_.menuschanged = [this] { applymenustates(); };
    model_.identitychanged = [this] { showidentity(); };
    model_.run().setultimatetimer = [this](int ms) { ultimatetimer_.start(std::clamp(ms, 1, 2000)); };
    model_.choosemodel = [this](const std::vector<ModelOption>& options) { return choosemodel(options, this); };
    model_.fatal = [this](const std::string& message) { fatal(message); };
    model_.showabout = [this] {
        QMessageBox::about(this, qtext(model_.aboutcaption), qtext(model_.abouttext()));
    };
    model_.showhelp = [this] { QMessageBox::information(this, "Help Topics", qtext(MainWindowModel::helptext())); };
}

QAction* MainWindow::action(const std::string& control) const {
    const auto it = actions_.find(control);
    return it == actions_.end() ? nullptr : it->second;
}

QLabel* MainWindow::field(const std::string& control) const {
    const auto it = fields_.find(control);
    return it == fields_.end() ? nullptr : it->second;
}

void MainWindow::runcommand(const std::string& control) {
    ++busy_;
    model_.command(control);
    --busy_;
    applymenustates();
    scheduleflush();
    if (busy_ == 0 && closepending_) {
        closepending_ = false;
        close();
    }
}

void MainWindow::applymenustates() {
    for (const auto& [control, state] : model_.menustates()) {
        QAction* a = action(control);
        if (!a) continue;
        a->setEnabled(state.enabled);
        a->setVisible(state.visible);
        if (a->isCheckable()) a->setChecked(state.checked);
    }
    if (QAction* about = action("menuabout")) about->setText(qtext(model_.aboutcaption));
    if (model_.gdb().listening() != gdbtimer_.isActive()) {
        if (model_.gdb().listening())
            gdbtimer_.start(20);
        else
            gdbtimer_.stop();
    }
}

void MainWindow::showidentity() {
    setWindowTitle(qtext(model_.title()));
    settext(fields_["qprocessor"], model_.qprocessor());
    settext(fields_["qclockfreq"], model_.qclockfreq());
    settext(fields_["qprogram2"], model_.qprogram2());
    fields_["qprogram2"]->setToolTip(qtext(model_.qprogram().empty() ? captions::kClickToReload
                                                                      : model_.qprogram() + "\n" +
                                                                            captions::kClickToReload));
    const Machine& m = model_.machine();
    registerscroll_->setRange(0, registerscrollmax(m));
    registerscroll_->setVisible(registerscrollmax(m) > 0);
    sramscroll_->setRange(0, sramscrollmax(m));
    sramscroll_->setPageStep(kSramRows);
    registerscroll_->setPageStep(kRegisterRows);
    emit identityshown();
}

void MainWindow::scheduleflush() {
    if (flushpending_) return;
    flushpending_ = true;
    QMetaObject::invokeMethod(this, [this] { flush(); }, Qt::QueuedConnection);
}

void MainWindow::flush() {
    flushpending_ = false;
    showidentity();
    const RunFields f = model_.fields();
    settext(fields_["qinst"], f.qinst);
    settext(fields_["qinstnext"], f.qinstnext);
    settext(fields_["qbrojinst"], f.qbrojinst);
    settext(fields_["qcount"], f.qcount);
    settext(fields_["qrealtime"], f.qrealtime);
    settext(fields_["qpc"], f.qpc);
    pclamps_->setlamps(f.pclampcount, f.pclamps);
    std::vector<LampRow> regs;
    for (const RegisterRow& r : f.registers) regs.push_back({qtext(r.text), qtext(r.value), r.lamps});
    registers_->setrows(regs);
    std::vector<LampRow> cells;
    for (const SramRow& r : f.sram) cells.push_back({qtext(r.address), qtext(r.value), {}});
    sram_->setrows(cells);
    emit flushed();
}

void MainWindow::addtoolwindow(QWidget* window) {
    toolwindows_.erase(std::remove(toolwindows_.begin(), toolwindows_.end(), nullptr), toolwindows_.end());
    if (std::find(toolwindows_.begin(), toolwindows_.end(), window) == toolwindows_.end())
        toolwindows_.push_back(window);
}

void MainWindow::applytheme(const Theme& theme) {
    theme_ = theme;
    model_.theme = theme;
    centralWidget()->setStyleSheet(themestylesheet(theme));
    registers_->settheme(theme);
    sram_->settheme(theme);
    pclamps_->settheme(theme);
}

void MainWindow::placewindow(std::optional<PixelPoint> place) {
    if (place)
        move(onscreenplace({place->x, place->y}, size()));
    else if (const QScreen* screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
    show();
}

void MainWindow::yield() { QCoreApplication::processEvents(); }

void MainWindow::fatal(const std::string& message) {
    QMessageBox::critical(this, kProductName, qtext(message));
    QCoreApplication::exit(1);
}

void MainWindow::restorewindow() {
    if (isMinimized()) showNormal();
}

PixelPoint MainWindow::windowposition() { return {pos().x(), pos().y()}; }

void MainWindow::closeEvent(QCloseEvent* event) {
    if (busy_ > 0) {
        // The run loop is on the stack: stop it, and close when its command has returned.
        closepending_ = true;
        model_.machine().stoprequest = true;
        if (model_.run().simulationrate() == kRateStep && model_.machine().simulationrunning)
            model_.run().menustop();
        event->ignore();
        return;
    }
    if (!closing_) {
        closing_ = true;
        if (model_.machine().simulationrunning) model_.run().menustop();
        runshutdown(model_, *this);
        model_.registry().setopen(windows::kMain, false);
    }
    event->accept();
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange) return;
    const bool minimized = isMinimized();
    for (const QPointer<QWidget>& window : toolwindows_) {
        if (!window || !window->isVisible()) continue;
        if (minimized)
            window->showMinimized();
        else
            window->showNormal();
    }
}

}  // namespace velmora
