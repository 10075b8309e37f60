#pragma once
// The two small windows of Watch Variables: Add New Variable, which checks the entry field by
// field and names the first wrong one, and Change Variable Value, which writes a value given
// once, in decimal or in hexadecimal.

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>

#include "debug/watchvariables.h"

namespace velmora {

class AddVariableDialog : public QDialog {
    Q_OBJECT
public:
    AddVariableDialog(WatchVariables& watch, Messenger& messenger, QWidget* parent = nullptr);

    QLineEdit* namefield() const { return name_; }
    QComboBox* typebox() const { return type_; }
    QLineEdit* addressfield() const { return address_; }
    QComboBox* bitbox() const { return bit_; }
    // The checks in their order; the dialog closes once the entry is added.
    void submit();

private:
    void showbits();

    WatchVariables& watch_;
    Messenger& messenger_;
    QLineEdit* name_;
    QComboBox* type_;
    QLineEdit* address_;
    QComboBox* bit_;
};

class ChangeValueDialog : public QDialog {
    Q_OBJECT
public:
    ChangeValueDialog(WatchVariables& watch, Messenger& messenger, QWidget* parent = nullptr);

    QComboBox* namebox() const { return names_; }
    QLineEdit* decimalfield() const { return decimal_; }
    QLineEdit* hexfield() const { return hex_; }
    void submit();

private:
    WatchVariables& watch_;
    Messenger& messenger_;
    QComboBox* names_;
    QLineEdit* decimal_;
    QLineEdit* hex_;
};

}  // namespace velmora
