#include "ui/qtuserinput.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

#include "shell/messagepolicy.h"

namespace velmora {

namespace {
const char kHexFilter[] = "Intel HEX files (*.hex);;All files (*)";
// Load Program also reads the ELF files avr-gcc writes.
const char kProgramFilter[] = "Programs (*.hex *.elf);;Intel HEX files (*.hex);;ELF files (*.elf);;All files (*)";
}

std::optional<std::string> QtUserInput::inputbox(const std::string& prompt, const std::string& defaultanswer) {
    bool ok = false;
    const QString answer = QInputDialog::getText(QApplication::activeWindow(), kProductName,
                                                 QString::fromStdString(prompt), QLineEdit::Normal,
                                                 QString::fromStdString(defaultanswer), &ok);
    if (!ok) return std::nullopt;
    return answer.toStdString();
}

bool QtUserInput::askyesno(const std::string& question) {
    return QMessageBox::question(QApplication::activeWindow(), kProductName, QString::fromStdString(question),
                                 QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

std::string QtUserInput::openfile(const std::string& folder) {
    return QFileDialog::getOpenFileName(QApplication::activeWindow(), "Load Program", QString::fromStdString(folder),
                                        kProgramFilter)
        .toStdString();
}

std::string QtUserInput::savefile(const std::string& folder) {
    return QFileDialog::getSaveFileName(QApplication::activeWindow(), "Save Memory", QString::fromStdString(folder),
                                        kHexFilter, nullptr, QFileDialog::DontConfirmOverwrite)
        .toStdString();
}

}  // namespace velmora
