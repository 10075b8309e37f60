#include "ui/alternativewindow.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QTextBlock>
#include <QVBoxLayout>

#include "shell/windowregistry.h"
#include "ui/savedsize.h"
#include "ui/themecolors.h"

namespace velmora {

namespace {
constexpr int kAlternativeHookOrder = 14;
constexpr int kTabCharacters = 10;
constexpr int kColumnCharacters = 34;  // name, value and binary digits on their tab stops
constexpr int kDesignLines = 20;

void settext(QPlainTextEdit* box, const QString& text) {
    if (box->toPlainText() != text) box->setPlainText(text);
}
}  // namespace

AlternativeWindow::AlternativeWindow(MainWindowModel& model, QWidget* parent)
    : MemoryToolWindow(model, windows::kAlternativeRegisters, parent), registers_(model.machine(), model.settings()) {
    setObjectName("alternativeregisters");
    setWindowTitle("Alternative Registers Viewer");
    registers_.open();
    const QFont font = fixedfont();
    auto* columns = new QHBoxLayout;
    for (int i = 0; i < 2; ++i) {
        auto* box = new QPlainTextEdit;
        box->setObjectName(QString("Text%1").arg(i + 1));
        box->setFont(font);
        box->setReadOnly(true);
        box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        box->setLineWrapMode(QPlainTextEdit::NoWrap);
        box->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        box->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        box->setTabStopDistance(QFontMetrics(font).horizontalAdvance(' ') * kTabCharacters);
        box->setMinimumWidth(columnwidth());
        box->installEventFilter(this);
        box->viewport()->installEventFilter(this);
        text_[static_cast<size_t>(i)] = box;
        columns->addWidget(box, 1);
    }
    pointer_ = new QScrollBar(Qt::Vertical);
    pointer_->setObjectName("pointer");
    connect(pointer_, &QScrollBar::valueChanged, this, [this](int value) {
        registers_.setpointer(value);
        refreshview();
    });
    columns->addWidget(pointer_);

    auto* help = new QPushButton("?");
    help->setObjectName("Command2");
    help->setFixedWidth(help->fontMetrics().horizontalAdvance("MM") + 12);
    connect(help, &QPushButton::clicked, this,
            [this] { model_.messenger().show(kAlternativeHelpText, MessageKind::Information); });
    auto* controls = new QHBoxLayout;
    controls->addStretch();
    controls->addWidget(makeontopbox());
    controls->addWidget(help);
    controls->addWidget(makeclosebutton());
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    layout->addLayout(controls);
    setStyleSheet(themestylesheet(model_.theme));

    text_[1]->hide();
    resize(columnwidth() + 60, QFontMetrics(font).lineSpacing() * kDesignLines + 60);
    if (const QSize saved = savedsize(model_.settings(), windows::kAlternativeRegisters); saved.isValid()) resize(saved);
    const QSize chosen = size();
    placeonscreen();  // fits the window to its contents first
    resize(chosen);
    refreshview();
    followsteps(kAlternativeHookOrder);
}

int AlternativeWindow::columnwidth() const {
    return QFontMetrics(fixedfont()).horizontalAdvance(QString(kColumnCharacters, 'M')) + 12;
}

bool AlternativeWindow::twocolumns() const { return width() >= 2 * columnwidth() + 60; }

int AlternativeWindow::visiblelines() const {
    const int spacing = QFontMetrics(text_[0]->font()).lineSpacing();
    return std::max(1, (text_[0]->viewport()->height() - 8) / std::max(1, spacing));
}

void AlternativeWindow::refreshview() {
    const bool two = twocolumns();
    if (two != showntwo_) {
        showntwo_ = two;
        text_[1]->setVisible(two);
    }
    const int top = registers_.pointermax(two, visiblelines());
    if (pointer_->maximum() != top) {
        const QSignalBlocker block(pointer_);
        pointer_->setRange(0, top);
    }
    pointer_->setPageStep(visiblelines());
    if (registers_.pointer() > top) registers_.setpointer(top);
    for (int i = 0; i < 2; ++i)
        settext(text_[static_cast<size_t>(i)], QString::fromStdString(registers_.columntext(i, two)));
}

void AlternativeWindow::doubleclickline(int which, int line) {
    registers_.removeline(which, twocolumns(), line);
    refreshview();
}

void AlternativeWindow::deleteselection(int which) {
    const QTextCursor cursor = text_[static_cast<size_t>(which)]->textCursor();
    if (!cursor.hasSelection()) return;
    const bool two = twocolumns();
    registers_.removeselection(which, two, registers_.columntext(which, two), cursor.selectionStart(),
                               cursor.selectionEnd());
    refreshview();
}

void AlternativeWindow::restore() {
    registers_.restore();
    pointer_->setValue(0);
    refreshview();
}

bool AlternativeWindow::eventFilter(QObject* watched, QEvent* event) {
    for (int i = 0; i < 2; ++i) {
        QPlainTextEdit* box = text_[static_cast<size_t>(i)];
        if (watched == box->viewport() && event->type() == QEvent::MouseButtonDblClick) {
            const auto* mouse = static_cast<QMouseEvent*>(event);
            doubleclickline(i, box->cursorForPosition(mouse->position().toPoint()).blockNumber());
            return true;
        }
        if (watched == box && event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Delete || key == Qt::Key_Backspace) {
                deleteselection(i);
                return true;
            }
            if (key == Qt::Key_F12) {
                restore();
                return true;
            }
        }
    }
    return MemoryToolWindow::eventFilter(watched, event);
}

void AlternativeWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_F12) {
        restore();
        return;
    }
    QWidget::keyPressEvent(event);
}

void AlternativeWindow::resizeEvent(QResizeEvent* event) {
    MemoryToolWindow::resizeEvent(event);
    refreshview();
}

void AlternativeWindow::unloading() {
    MemoryToolWindow::unloading();
    savesize(model_.settings(), windows::kAlternativeRegisters, size());
}

}  // namespace velmora
