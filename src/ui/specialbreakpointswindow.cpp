#include "ui/specialbreakpointswindow.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "shell/windowregistry.h"
#include "ui/themecolors.h"

namespace velmora {

namespace {
QLabel* valuelabel(const QFont& font, const QString& name, const QString& widest) {
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setFont(font);
    label->setProperty("role", "value");
    label->setMinimumWidth(QFontMetrics(font).horizontalAdvance(widest) + 12);
    label->setFixedHeight(QFontMetrics(font).lineSpacing() + 8);
    return label;
}

void settext(QLabel* label, const std::string& text) {
    const QString shown = QString::fromStdString(text);
    if (label->text() != shown) label->setText(shown);
}
}  // namespace

SpecialBreakpointsWindow::SpecialBreakpointsWindow(MainWindowModel& model, QWidget* parent)
    : MemoryToolWindow(model, windows::kSpecialBreakpoints, parent), entries_(model.specialbreakpoints()) {
    setObjectName("specialbreakpoints");
    setWindowTitle("Special Breakpoints");
    const QFont font = fixedfont();

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(4);
    const QStringList headings = {"", "Address", "Condition"};
    for (int column = 1; column < headings.size(); ++column) {
        auto* heading = new QLabel(headings[column]);
        heading->setProperty("role", "secondary");
        grid->addWidget(heading, 0, column);
    }
    for (int n = 0; n < kSpecialBreakpoints; ++n) {
        Row& row = rows_[static_cast<size_t>(n)];
        auto* number = new QLabel(QString::number(n + 1));
        row.address = valuelabel(font, QString("lab_register%1").arg(n), "$0000");
        row.condition = valuelabel(font, QString("lab_condition%1").arg(n), "Value = 0x00MM");
        row.set = new QPushButton("Set");
        row.set->setObjectName(QString("cmd_set%1").arg(n));
        row.del = new QPushButton("Delete");
        row.del->setObjectName(QString("cmd_del%1").arg(n));
        connect(row.set, &QPushButton::clicked, this, [this, n] {
            entries_.set(n);
            refreshview();
        });
        connect(row.del, &QPushButton::clicked, this, [this, n] {
            entries_.remove(n);
            refreshview();
        });
        const int line = n + 1;
        grid->addWidget(number, line, 0);
        grid->addWidget(row.address, line, 1);
        grid->addWidget(row.condition, line, 2);
        grid->addWidget(row.set, line, 3);
        grid->addWidget(row.del, line, 4);
    }
    grid->setColumnStretch(2, 1);

    auto* controls = new QHBoxLayout;
    controls->addStretch();
    controls->addWidget(makeclosebutton());
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addSpacing(6);
    layout->addLayout(controls);
    setStyleSheet(themestylesheet(model_.theme));
    refreshview();
    placeonscreen();
}

void SpecialBreakpointsWindow::refreshview() {
    for (int n = 0; n < kSpecialBreakpoints; ++n) {
        const Row& row = rows_[static_cast<size_t>(n)];
        const bool filled = entries_.entries()[static_cast<size_t>(n)].kind != SpecialKind::Empty;
        settext(row.address, entries_.addresslabel(n));
        settext(row.condition, entries_.conditionlabel(n));
        row.set->setEnabled(!filled);
        row.del->setEnabled(filled);
    }
}

}  // namespace velmora
