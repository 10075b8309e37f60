#include "ui/toolwindow.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>

#include "shell/windowplacement.h"
#include "ui/screenplacement.h"

namespace velmora {

ToolWindow::ToolWindow(MainWindowModel& model, int window, QWidget* parent)
    : QWidget(parent, Qt::Window), model_(model), window_(window) {
    model_.registry().setopen(window_, true);
}

ToolWindow::~ToolWindow() {
    if (!unloaded_) model_.registry().setopen(window_, false);
}

QCheckBox* ToolWindow::makeontopbox() {
    auto* box = new QCheckBox("Always On Top");
    box->setChecked(startontop(model_.settings(), window_));
    setWindowFlag(Qt::WindowStaysOnTopHint, box->isChecked());
    connect(box, &QCheckBox::toggled, this, [this](bool on) {
        saveontop(model_.settings(), window_, on);
        setWindowFlag(Qt::WindowStaysOnTopHint, on);
        show();
    });
    return box;
}

void ToolWindow::placeonscreen() {
    adjustSize();
    if (const auto place = startposition(model_.settings(), window_))
        move(onscreenplace({place->x, place->y}, size()));
    else
        move(primarycentre(size()));
}

void ToolWindow::unload() {
    if (unloaded_) return;
    unloaded_ = true;
    unloading();
    saveposition(model_.settings(), window_, {pos().x(), pos().y()});
    model_.registry().setopen(window_, false);
    hide();
    deleteLater();
}

void ToolWindow::closeEvent(QCloseEvent* event) {
    unload();
    event->accept();
}

}  // namespace velmora
