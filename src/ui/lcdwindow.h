#pragma once
// The LCD Module window: the panel drawn from the model's canvas, the "ERROR" indicator, the
// Setup button with its panel of wiring labels, Always On Top, the 500 ms blink, and F12.

#include <QPushButton>
#include <QTimer>

#include <array>

#include "devices/lcdwindow.h"
#include "ui/canvaswidget.h"
#include "ui/clicklabel.h"
#include "ui/toolwindow.h"

class QGroupBox;

namespace velmora {

class LcdWindowView : public ToolWindow {
    Q_OBJECT
public:
    // `tracepath` is where F12 writes its trace.
    LcdWindowView(MainWindowModel& model, WiringDialogs& dialogs, const std::string& tracepath,
                  QWidget* parent = nullptr);

    LcdWindow& lcd() { return lcd_; }
    CanvasWidget* panel() const { return panel_; }
    QPushButton* setupbutton() const { return setup_; }
    ClickLabel* errorlabel() const { return error_; }
    ClickLabel* setuplabel(LcdSetupItem item) const { return labels_[static_cast<size_t>(item)]; }
    // Draws what changed in the module since the last call: after the main window's refresh
    // and on the blink timer.
    void refreshview();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void unloading() override;

private:
    void showsetup();

    LcdWindow lcd_;
    CanvasWidget* panel_;
    ClickLabel* error_;
    QPushButton* setup_;
    QGroupBox* setuppanel_;
    std::array<ClickLabel*, kLcdSetupItems> labels_{};
    QTimer blink_;
};

}  // namespace velmora
