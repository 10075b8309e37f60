#include "ui/watchwindow.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QTextBlock>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "shell/windowregistry.h"
#include "ui/clicklabel.h"
#include "ui/savedsize.h"
#include "ui/themecolors.h"
#include "ui/watchdialogs.h"

namespace velmora {

namespace {
constexpr int kDesignCharacters = 34;
constexpr int kTabCharacters = 4;

QLabel* hintlabel(const QString& text) {
    auto* label = new QLabel(text);
    label->setAlignment(Qt::AlignHCenter);
    return label;
}
}  // namespace

WatchWindow::WatchWindow(MainWindowModel& model, QWidget* parent)
    : MemoryToolWindow(model, windows::kWatchVariables, parent), watch_(model.watch()) {
    setObjectName("watchvariables");
    setWindowTitle("Watch Variables");
    watch_.readsettings();
    const QFont font = fixedfont();

    menu_ = new QMenuBar;
    QMenu* variables = menu_->addMenu("&Variables");
    connect(addaction(variables, "menuadd", "Add New Variable"), &QAction::triggered, this, [this] { menuadd(); });
    connect(addaction(variables, "menuchange", "Change Variable Value"), &QAction::triggered, this,
            [this] { menuchange(); });
    connect(addaction(variables, "menudelete", "Delete Variable"), &QAction::triggered, this, [this] { menudelete(); });
    QMenu* options = menu_->addMenu("&Options");
    QAction* hex = addaction(options, "menuhex", "Display HEX Values");
    hex->setCheckable(true);
    hex->setChecked(watch_.hexvalues());
    connect(hex, &QAction::toggled, this, [this](bool on) {
        watch_.sethexvalues(on);
        refreshview();
    });
    QAction* confirm = addaction(options, "menuconfirm", "Confirm Delete");
    confirm->setCheckable(true);
    confirm->setChecked(watch_.confirmdelete());
    connect(confirm, &QAction::toggled, this, [this](bool on) { watch_.setconfirmdelete(on); });

    text_ = new QPlainTextEdit;
    text_->setObjectName("Text1");
    text_->setFont(font);
    text_->setReadOnly(true);
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    text_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    text_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    text_->setTabStopDistance(QFontMetrics(font).horizontalAdvance(' ') * kTabCharacters);
    text_->viewport()->installEventFilter(this);
    scroll_ = new QScrollBar(Qt::Vertical);
    scroll_->setObjectName("VScroll1");
    scroll_->setPageStep(1);
    connect(scroll_, &QScrollBar::valueChanged, this, [this](int page) {
        watch_.setscroll(page * kWatchVisibleRows);
        refreshview();
    });

    // The hint of delete mode; its last line ends the mode.
    deletepanel_ = new QWidget;
    deletepanel_->setObjectName("deletemode");
    auto* panel = new QVBoxLayout(deletepanel_);
    panel->setContentsMargins(0, 4, 0, 4);
    panel->setSpacing(1);
    QLabel* on = hintlabel("Delete mode turned ON!");
    on->setStyleSheet("font-weight: bold; color: #c02020;");
    panel->addWidget(on);
    for (const char* line : {"To delete a variable", "click on its line on the display.", "To turn OFF delete mode"})
        panel->addWidget(hintlabel(line));
    here_ = new ClickLabel("secondary");
    here_->setObjectName("here");
    here_->setText("click HERE!");
    here_->setAlignment(Qt::AlignHCenter);
    here_->setStyleSheet("font-weight: bold; text-decoration: underline;");
    connect(here_, &ClickLabel::clicked, this, [this] { enddeletemode(); });
    panel->addWidget(here_);
    deletepanel_->hide();

    auto* rows = new QHBoxLayout;
    rows->setSpacing(0);
    rows->addWidget(text_, 1);
    rows->addWidget(scroll_);
    auto* controls = new QHBoxLayout;
    controls->addStretch();
    controls->addWidget(makeontopbox());
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(menu_);
    layout->addLayout(rows, 1);
    layout->addWidget(deletepanel_);
    layout->addLayout(controls);
    setStyleSheet(themestylesheet(model_.theme));

    const QFontMetrics metrics(font);
    resize(metrics.horizontalAdvance(QString(kDesignCharacters, '0')) + 40,
           metrics.lineSpacing() * kWatchVisibleRows + 110);
    if (const QSize saved = savedsize(model_.settings(), windows::kWatchVariables); saved.isValid()) resize(saved);
    const QSize chosen = size();
    placeonscreen();  // fits the window to its contents first
    resize(chosen.expandedTo(minimumSizeHint()));
    refreshview();
}

QAction* WatchWindow::addaction(QMenu* menu, const QString& control, const QString& caption) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(control);
    return action;
}

QAction* WatchWindow::action(const QString& control) const { return menu_->findChild<QAction*>(control); }

void WatchWindow::refreshview() {
    const int count = static_cast<int>(watch_.entries().size());
    {
        const QSignalBlocker block(scroll_);
        scroll_->setEnabled(watch_.scrollenabled());
        const int pages = std::max(0, (count - 1) / kWatchVisibleRows);
        if (scroll_->maximum() != pages) scroll_->setRange(0, pages);
        scroll_->setValue(watch_.scroll() / kWatchVisibleRows);
    }
    QString text = QString::fromStdString(watch_.text());
    text.replace("\r\n", "\n");
    if (text.endsWith('\n')) text.chop(1);
    if (text_->toPlainText() != text) text_->setPlainText(text);
}

bool WatchWindow::refused(const std::optional<std::string>& refusal) {
    if (!refusal) return false;
    model_.messenger().show(*refusal, MessageKind::Exclamation);
    return true;
}

void WatchWindow::menuadd() {
    if (refused(watch_.addrefusal())) return;
    AddVariableDialog dialog(watch_, model_.messenger(), this);
    dialog.exec();
    refreshview();
}

void WatchWindow::menuchange() {
    if (refused(watch_.editrefusal())) return;
    ChangeValueDialog dialog(watch_, model_.messenger(), this);
    if (dialog.exec() == QDialog::Accepted && model_.ekran) model_.ekran();  // the main window's fields too
    refreshview();
}

void WatchWindow::menudelete() {
    if (refused(watch_.editrefusal())) return;
    setdeletemode(true);
}

void WatchWindow::enddeletemode() { setdeletemode(false); }

void WatchWindow::setdeletemode(bool on) {
    if (on == deletemode_) return;
    deletemode_ = on;
    for (QAction* command : menu_->findChildren<QAction*>()) command->setEnabled(!on);
    // The hint takes room of its own, so that the rows stay as many as before.
    const int room = deletepanel_->sizeHint().height() + layout()->spacing();
    deletepanel_->setVisible(on);
    resize(width(), height() + (on ? room : -room));
    text_->viewport()->setCursor(on ? Qt::PointingHandCursor : Qt::IBeamCursor);
}

void WatchWindow::clickrow(int row) {
    if (!deletemode_) return;
    watch_.deleterow(row);
    refreshview();
}

bool WatchWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == text_->viewport() && deletemode_ && event->type() == QEvent::MouseButtonPress) {
        const QPoint at = static_cast<QMouseEvent*>(event)->position().toPoint();
        const QTextBlock block = text_->cursorForPosition(at).block();
        // A click below the last row names none.
        const QRect area = text_->cursorRect(QTextCursor(block));
        if (block.isValid() && area.top() <= at.y() && at.y() <= area.bottom()) clickrow(block.blockNumber());
        return true;
    }
    return MemoryToolWindow::eventFilter(watched, event);
}

void WatchWindow::wheelEvent(QWheelEvent* event) {
    const int steps = event->angleDelta().y() / 120;
    if (steps != 0 && scroll_->isEnabled()) scroll_->setValue(scroll_->value() - steps);
    event->accept();
}

void WatchWindow::unloading() {
    MemoryToolWindow::unloading();
    savesize(model_.settings(), windows::kWatchVariables, size());
}

}  // namespace velmora
