#include "ui/selectmodeldialog.h"

#include <QButtonGroup>
#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace velmora {

std::optional<int> choosemodel(const std::vector<ModelOption>& options, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setWindowTitle(kSelectTitle);
    auto* layout = new QVBoxLayout(&dialog);
    auto* list = new QWidget;
    auto* listlayout = new QVBoxLayout(list);
    QButtonGroup group;
    for (size_t i = 0; i < options.size(); ++i) {
        auto* option = new QRadioButton(QString::fromStdString(options[i].caption));
        option->setObjectName("opcija");
        option->setChecked(options[i].current);
        group.addButton(option, static_cast<int>(i) + 1);
        listlayout->addWidget(option);
    }
    auto* scroll = new QScrollArea;
    scroll->setWidget(list);
    scroll->setWidgetResizable(true);
    scroll->setMinimumSize(list->sizeHint().width() + 30, std::min(list->sizeHint().height() + 4, 520));
    layout->addWidget(scroll);
    auto* buttons = new QHBoxLayout;
    auto* select = new QPushButton("Select");
    auto* cancel = new QPushButton("Cancel");
    select->setDefault(true);
    buttons->addStretch();
    buttons->addWidget(select);
    buttons->addWidget(cancel);
    layout->addLayout(buttons);
    QObject::connect(select, &QPushButton::clicked, &dialog, &QDialog::accept);
    QObject::connect(cancel, &QPushButton::clicked, &dialog, &QDialog::reject);
    if (dialog.exec() != QDialog::Accepted || group.checkedId() < 1) return std::nullopt;
    return group.checkedId();
}

}  // namespace velmora
