#include "ui/wiringdialogs.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/machine.h"
#include "devices/pinwire.h"

namespace velmora {

namespace {

QListWidget* makelist(const QString& name, const QStringList& rows) {
    auto* list = new QListWidget;
    list->setObjectName(name);
    list->addItems(rows);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    const int rowheight = list->sizeHintForRow(0) > 0 ? list->sizeHintForRow(0) : list->fontMetrics().height() + 4;
    list->setFixedHeight(rowheight * static_cast<int>(rows.size()) + 2 * list->frameWidth() + 2);
    list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return list;
}

// Command1 "Select" and Command2 "Cancel".
QHBoxLayout* makebuttons(QDialog* dialog, const std::function<void()>& select) {
    auto* buttons = new QHBoxLayout;
    auto* ok = new QPushButton("Select");
    ok->setObjectName("Command1");
    ok->setDefault(true);
    auto* cancel = new QPushButton("Cancel");
    cancel->setObjectName("Command2");
    QObject::connect(ok, &QPushButton::clicked, dialog, select);
    QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    return buttons;
}

}  // namespace

SelectPinDialog::SelectPinDialog(SelectPin& model, QWidget* parent) : QDialog(parent), model_(model) {
    setWindowTitle(QString::fromStdString(model.caption()));
    setObjectName("selectpin");
    QStringList portnames, bitnames;
    for (int code = kPortCodeA; code < kPortCodeA + kPortCount; ++code)
        portnames << QString::fromStdString(portname(code));
    for (int bit = 0; bit < 8; ++bit) bitnames << QString::number(bit);
    ports_ = makelist("selectport", portnames);
    bits_ = makelist("selectpin", bitnames);
    bits_->setEnabled(!model.portonly());
    connect(ports_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        model_.clickport(kPortCodeA + ports_->row(item));
        after();
    });
    connect(ports_, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* item) {
        model_.doubleclickport(kPortCodeA + ports_->row(item));
        after();
    });
    connect(bits_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        model_.clickbit(bits_->row(item));
        after();
    });
    connect(bits_, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* item) {
        model_.doubleclickbit(bits_->row(item));
        after();
    });
    auto* lists = new QHBoxLayout;
    lists->addWidget(ports_);
    lists->addWidget(bits_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(lists);
    layout->addLayout(makebuttons(this, [this] {
        model_.select();
        after();
    }));
    show_selection();
}

void SelectPinDialog::show_selection() {
    const QSignalBlocker blockports(ports_), blockbits(bits_);
    ports_->setCurrentRow(model_.port() >= kPortCodeA ? model_.port() - kPortCodeA : -1);
    if (model_.port() < kPortCodeA) ports_->clearSelection();
    if (model_.portonly())
        bits_->clearSelection();
    else
        bits_->setCurrentRow(model_.bit());
}

void SelectPinDialog::after() {
    show_selection();
    if (model_.finished()) accept();
}

void SelectPinDialog::reject() {
    model_.cancel();
    QDialog::reject();
}

SelectOptionDialog::SelectOptionDialog(SelectOption& model, QWidget* parent)
    : QDialog(parent), model_(model), rows_(model.visiblerows()) {
    setWindowTitle("Select Option");
    setObjectName("selectoption");
    auto* layout = new QVBoxLayout(this);
    // With the second heading empty, the first takes the room of both.
    auto* heading = new QLabel(QString::fromStdString(
        model.headinglines() == 2 ? model.heading1() + "\n" + model.heading2() : model.heading1()));
    heading->setObjectName("Label1");
    heading->setMinimumHeight(2 * heading->fontMetrics().height());
    layout->addWidget(heading);
    QStringList texts;
    for (int option : rows_) texts << QString::fromStdString(model.options()[static_cast<size_t>(option)]);
    options_ = makelist("selectopt", texts);
    connect(options_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        model_.click(rows_[static_cast<size_t>(options_->row(item))]);
        after();
    });
    connect(options_, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* item) {
        model_.doubleclick(rows_[static_cast<size_t>(options_->row(item))]);
        after();
    });
    layout->addWidget(options_);
    layout->addLayout(makebuttons(this, [this] {
        model_.select();
        after();
    }));
    show_selection();
}

void SelectOptionDialog::show_selection() {
    const QSignalBlocker block(options_);
    options_->clearSelection();
    for (size_t row = 0; row < rows_.size(); ++row)
        if (rows_[row] == model_.selected()) options_->setCurrentRow(static_cast<int>(row));
}

void SelectOptionDialog::after() {
    show_selection();
    if (model_.finished()) accept();
}

void SelectOptionDialog::reject() {
    model_.cancel();
    QDialog::reject();
}

void QtWiringDialogs::run(SelectPin& dialog) {
    SelectPinDialog view(dialog, QApplication::activeWindow());
    view.exec();
}

void QtWiringDialogs::run(SelectOption& dialog) {
    SelectOptionDialog view(dialog, QApplication::activeWindow());
    view.exec();
}

}  // namespace velmora
