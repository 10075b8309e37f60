#include "ui/watchdialogs.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace velmora {

namespace {
constexpr char kNoBit[] = "(none)";

QHBoxLayout* buttonrow(QPushButton* main, QDialog* dialog) {
    auto* cancel = new QPushButton("Cancel");
    cancel->setObjectName("Command2");
    QObject::connect(cancel, &QPushButton::clicked, dialog, &QDialog::reject);
    main->setDefault(true);
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(main);
    row->addWidget(cancel);
    return row;
}
}  // namespace

AddVariableDialog::AddVariableDialog(WatchVariables& watch, Messenger& messenger, QWidget* parent)
    : QDialog(parent), watch_(watch), messenger_(messenger) {
    setObjectName("addvariable");
    setWindowTitle("Add New Variable");
    name_ = new QLineEdit;
    name_->setObjectName("Text1");
    type_ = new QComboBox;
    type_->setObjectName("Combo1");
    type_->addItems({"Bit", "Byte", "Word", "Long"});
    type_->setCurrentIndex(-1);
    address_ = new QLineEdit;
    address_->setObjectName("Text2");
    address_->setMaxLength(8);
    bit_ = new QComboBox;
    bit_->setObjectName("Combo2");
    showbits();
    connect(type_, &QComboBox::currentIndexChanged, this, [this] { showbits(); });

    auto* add = new QPushButton("Add");
    add->setObjectName("Command1");
    connect(add, &QPushButton::clicked, this, &AddVariableDialog::submit);
    auto* form = new QFormLayout;
    form->addRow("Name:", name_);
    form->addRow("Type:", type_);
    form->addRow("Address (HEX):", address_);
    form->addRow("Bit:", bit_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttonrow(add, this));
}

// Only a Bit has a bit to choose; the others show that they have none.
void AddVariableDialog::showbits() {
    const bool bit = type_->currentText() == "Bit";
    if (bit == (bit_->count() == 8)) return;
    bit_->clear();
    if (bit) {
        for (int i = 0; i < 8; ++i) bit_->addItem(QString::number(i));
        bit_->setCurrentIndex(-1);
    } else {
        bit_->addItem(kNoBit);
    }
    bit_->setEnabled(bit);
}

void AddVariableDialog::submit() {
    const auto refusal = watch_.add(name_->text().toStdString(), type_->currentText().toStdString(),
                                    address_->text().trimmed().toStdString(), bit_->currentText().toStdString());
    if (!refusal) {
        accept();
        return;
    }
    messenger_.show(refusal->message, MessageKind::Exclamation);
    QWidget* const fields[] = {name_, type_, address_, bit_};
    fields[std::clamp(refusal->field, 0, 3)]->setFocus();
}

ChangeValueDialog::ChangeValueDialog(WatchVariables& watch, Messenger& messenger, QWidget* parent)
    : QDialog(parent), watch_(watch), messenger_(messenger) {
    setObjectName("changevalue");
    setWindowTitle("Change Variable Value");
    names_ = new QComboBox;
    names_->setObjectName("Combo1");
    for (const WatchEntry& entry : watch_.entries()) names_->addItem(QString::fromStdString(entry.name));
    decimal_ = new QLineEdit;
    decimal_->setObjectName("Text1");
    hex_ = new QLineEdit;
    hex_->setObjectName("Text2");
    hex_->setMaxLength(8);

    auto* change = new QPushButton("Change");
    change->setObjectName("Command1");
    connect(change, &QPushButton::clicked, this, &ChangeValueDialog::submit);
    auto* form = new QFormLayout;
    form->addRow("Variable:", names_);
    form->addRow("Value (Dec)", decimal_);
    form->addRow("Value (Hex)", hex_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(buttonrow(change, this));
}

void ChangeValueDialog::submit() {
    const std::string decimal = decimal_->text().trimmed().toStdString();
    const std::string hex = hex_->text().trimmed().toStdString();
    // Nothing given: nothing to do, and the window stays.
    if (names_->currentIndex() < 0 || (decimal.empty() && hex.empty())) return;
    bool clearfields = false;
    const auto refusal = watch_.change(static_cast<size_t>(names_->currentIndex()), decimal, hex, clearfields);
    if (clearfields) {
        decimal_->clear();
        hex_->clear();
        decimal_->setFocus();
        return;
    }
    if (refusal) {
        messenger_.show(*refusal, MessageKind::Exclamation);
        (decimal.empty() ? hex_ : decimal_)->setFocus();
        return;
    }
    accept();
}

}  // namespace velmora
