#pragma once
// The desktop's Select Pin and Select Option dialogs, and the questions of a device window
// put through the desktop's own input boxes.

#include <QDialog>

#include "devices/wiringdialogs.h"
#include "shell/userinput.h"

class QListWidget;

namespace velmora {

// Both dialogs follow their model: every click goes to it, and the lists show its selection.
class SelectPinDialog : public QDialog {
    Q_OBJECT
public:
    explicit SelectPinDialog(SelectPin& model, QWidget* parent = nullptr);
    QListWidget* ports() const { return ports_; }
    QListWidget* bits() const { return bits_; }

    void reject() override;

private:
    void show_selection();
    void after();

    SelectPin& model_;
    QListWidget* ports_;
    QListWidget* bits_;
};

class SelectOptionDialog : public QDialog {
    Q_OBJECT
public:
    explicit SelectOptionDialog(SelectOption& model, QWidget* parent = nullptr);
    QListWidget* options() const { return options_; }

    void reject() override;

private:
    void show_selection();
    void after();

    SelectOption& model_;
    QListWidget* options_;
    std::vector<int> rows_;  // option number of each list row
};

class QtWiringDialogs : public WiringDialogs {
public:
    explicit QtWiringDialogs(UserInput& input) : input_(input) {}
    void run(SelectPin& dialog) override;
    void run(SelectOption& dialog) override;
    std::optional<std::string> inputbox(const std::string& prompt, const std::string& defaultanswer) override {
        return input_.inputbox(prompt, defaultanswer);
    }
    bool askyesno(const std::string& question) override { return input_.askyesno(question); }

private:
    UserInput& input_;
};

}  // namespace velmora
