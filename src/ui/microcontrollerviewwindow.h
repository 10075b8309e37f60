#pragma once
// One Microcontroller View window: the package drawing of the model's pin count, "All
// Analog", the help button, the analog panel, Always On Top, and F12 for the pin legend.

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QWidget>

#include "models/microcontrollerview.h"
#include "shell/mainwindowmodel.h"
#include "ui/clicklabel.h"
#include "ui/packagewidget.h"
#include "ui/toolwindow.h"

namespace velmora {

class MicrocontrollerViewWindow : public ToolWindow {
    Q_OBJECT
public:
    MicrocontrollerViewWindow(MainWindowModel& model, PinAccess& pins, int window, bool compact,
                              QWidget* parent = nullptr);
    ~MicrocontrollerViewWindow() override;

    MicrocontrollerView& view() { return view_; }
    PackageWidget* package() const { return package_; }
    QGroupBox* analogpanel() const { return panel_; }
    QCheckBox* allanalog() const { return allanalog_; }
    // The run loop's hook, and the refresh after a reset or an option change.
    void refreshpic(bool force = false);
    void showlegend();

signals:
    // An analog value was applied: the main window shows it too.
    void analogchanged();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void unloading() override;

private:
    void pinclicked(int pin, Qt::MouseButton button);
    void showpanel();
    void readoptions();

    MicrocontrollerView view_;
    int hook_ = 0;
    PackageWidget* package_;
    QCheckBox* allanalog_;
    QGroupBox* panel_;
    QLabel* panelcaption_;
    ClickLabel* panelvalue_;
    QSlider* slider_;
};

}  // namespace velmora
