#include "ui/stackwindow.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "shell/windowregistry.h"
#include "ui/themecolors.h"

namespace velmora {

namespace {
constexpr int kStackHookOrder = 2;

void settext(QLabel* label, const QString& text) {
    if (label->text() != text) label->setText(text);
}

QLabel* cellbox(const QFont& font, const char* name, int lines) {
    auto* box = new QLabel;
    box->setObjectName(name);
    box->setFont(font);
    box->setProperty("role", "value");
    box->setFrameShape(QFrame::StyledPanel);
    box->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    box->setMargin(3);
    box->setMinimumHeight(QFontMetrics(font).lineSpacing() * lines + 8);
    return box;
}
}  // namespace

StackWindow::StackWindow(MainWindowModel& model, QWidget* parent)
    : MemoryToolWindow(model, windows::kStackViewer, parent), viewer_(model.machine()) {
    setObjectName("stackviewer");
    setWindowTitle("Stack SRAM Space Viewer");
    const QFont font = fixedfont();

    label_ = new QLabel;
    label_->setObjectName("Label1");
    stekpoint_ = new QLabel;
    stekpoint_->setObjectName("stekpoint");
    stekpoint_->setFont(font);
    stekpoint_->setProperty("role", "value");
    // Address, value and binary digits start at these characters of a row.
    auto* heading = new ColumnHeading(kStackHeading, {0, 10, 23}, font);
    heading->setObjectName("heading");
    heading->setContentsMargins(4, 0, 0, 0);
    text1_ = cellbox(font, "Text1", kStackRows);
    text2_ = cellbox(font, "Text2", 1);
    const int width = QFontMetrics(font).horizontalAdvance(QString(kStackHeading) + "MM");
    text1_->setMinimumWidth(width);
    text2_->setMinimumWidth(width);
    auto* next = new QLabel("Next push:");
    next->setProperty("role", "secondary");

    auto* pointer = new QHBoxLayout;
    pointer->addWidget(label_);
    pointer->addWidget(stekpoint_);
    pointer->addStretch();
    auto* controls = new QHBoxLayout;
    controls->addStretch();
    controls->addWidget(makeontopbox());
    controls->addWidget(makeclosebutton());
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(pointer);
    layout->addWidget(heading);
    layout->addWidget(text1_);
    layout->addSpacing(6);
    layout->addWidget(next);
    layout->addWidget(text2_);
    layout->addLayout(controls);
    setStyleSheet(themestylesheet(model_.theme));
    refreshview();
    placeonscreen();
    followsteps(kStackHookOrder);
}

void StackWindow::refreshview() {
    const StackPage page = viewer_.page();
    QStringList rows;
    for (const std::string& row : page.rows) rows << QString::fromStdString(row);
    settext(label_, QString::fromStdString(page.label));
    settext(stekpoint_, QString::fromStdString(page.stekpoint));
    settext(text1_, rows.join('\n'));
    settext(text2_, QString::fromStdString(page.pushrow));
}

}  // namespace velmora
