#include "ui/programmemorywindow.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "shell/windowregistry.h"
#include "ui/themecolors.h"

namespace velmora {

ProgramMemoryWindow::ProgramMemoryWindow(MainWindowModel& model, QWidget* parent)
    : MemoryToolWindow(model, windows::kProgramMemoryEditor, parent), editor_(model.machine()) {
    setObjectName("programmemory");
    setWindowTitle("Program Memory Editor");
    const QFont font = fixedfont();

    // Address, word, binary digits and instruction start at these characters of a row.
    auto* heading = new ColumnHeading(kProgramMemoryHeading, {0, 9, 17, 35}, font);
    heading->setObjectName("heading");
    text_ = new QListWidget;
    text_->setObjectName("Text1");
    text_->setFont(font);
    text_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    text_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    text_->setSelectionMode(QAbstractItemView::NoSelection);
    text_->setCursor(Qt::PointingHandCursor);
    for (int i = 0; i < kProgramMemoryRows; ++i) text_->addItem(QString());
    const QFontMetrics metrics(font);
    const int rowheight = text_->sizeHintForRow(0) > 0 ? text_->sizeHintForRow(0) : metrics.height();
    text_->setFixedHeight(rowheight * kProgramMemoryRows + 2 * text_->frameWidth());
    text_->setMinimumWidth(metrics.horizontalAdvance(QString(kProgramMemoryHeading) + "MMMM") + 2 * text_->frameWidth());
    heading->setContentsMargins(text_->frameWidth() + 2, 0, 0, 0);
    connect(text_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { editrow(text_->row(item)); });

    scroll_ = new QScrollBar(Qt::Vertical);
    scroll_->setObjectName("VScroll1");
    scroll_->setRange(0, editor_.scrollmax());
    scroll_->setPageStep(kProgramMemoryRows);
    connect(scroll_, &QScrollBar::valueChanged, this, [this](int value) {
        editor_.setscroll(value);
        refreshview();
    });

    auto* hint = new QLabel(kProgramMemoryHint);
    hint->setObjectName("hint");
    hint->setProperty("role", "secondary");

    auto* list = new QHBoxLayout;
    list->setSpacing(0);
    list->addWidget(text_, 1);
    list->addWidget(scroll_);
    auto* controls = new QHBoxLayout;
    controls->addWidget(hint);
    controls->addStretch();
    controls->addWidget(makeontopbox());
    controls->addWidget(makeclosebutton());
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(heading);
    layout->addLayout(list);
    layout->addLayout(controls);
    setStyleSheet(themestylesheet(model_.theme));
    refreshview();
    placeonscreen();
}

void ProgramMemoryWindow::refreshview() {
    // A model load changes the size of program memory.
    if (scroll_->maximum() != editor_.scrollmax()) scroll_->setRange(0, editor_.scrollmax());
    const auto shown = editor_.rows();
    for (int i = 0; i < kProgramMemoryRows; ++i) {
        const QString text = QString::fromStdString(shown[static_cast<size_t>(i)].text);
        if (text_->item(i)->text() != text) text_->item(i)->setText(text);
    }
}

void ProgramMemoryWindow::editrow(int row) {
    const std::string prompt = editor_.prompt(row);
    if (prompt.empty()) return;
    if (!editor_.editrow(row, model_.input().inputbox(prompt, ""))) return;
    refreshview();
    emit edited();
}

void ProgramMemoryWindow::wheelEvent(QWheelEvent* event) {
    const int steps = event->angleDelta().y() / 120;
    if (steps != 0) scroll_->setValue(scroll_->value() - steps * 4);
    event->accept();
}

}  // namespace velmora
