#pragma once
// The main window: draws the main window model's fields and menus, sends clicks and menu
// choices back to it, and carries out the window's side of start-up and shut-down.

#include <QAction>
#include <QMainWindow>
#include <QPointer>
#include <QScrollBar>
#include <QTimer>
#include <functional>
#include <map>
#include <string>

#include "shell/mainwindowmodel.h"
#include "shell/startup.h"
#include "ui/clicklabel.h"
#include "ui/lamplist.h"
#include "ui/pclamps.h"

namespace velmora {

class MainWindow : public QMainWindow, public StartupHost {
    Q_OBJECT
public:
    explicit MainWindow(MainWindowModel& model, QWidget* parent = nullptr);

    MainWindowModel& model() { return model_; }
    // Runs a menu command as if chosen, then updates menus and fields.
    void runcommand(const std::string& control);
    QAction* action(const std::string& control) const;
    // Draws the model's present state at once (normally queued after `ekran`).
    void flush();
    // A window that minimizes and restores with this one.
    void addtoolwindow(QWidget* window);
    bool commandrunning() const { return busy_ > 0; }

    // --- StartupHost ---
    bool otherinstance() override { return instancecheck && instancecheck(); }
    std::function<bool()> instancecheck;  // true when another instance runs
    void applytheme(const Theme& theme) override;
    void placewindow(std::optional<PixelPoint> place) override;
    void yield() override;
    void fatal(const std::string& message) override;
    void restorewindow() override;
    PixelPoint windowposition() override;

    // For the tests: the widgets that show fields.
    QLabel* field(const std::string& control) const;
    LampList* registerlist() const { return registers_; }
    LampList* sramlist() const { return sram_; }

signals:
    // The fields were drawn again: open views follow a reset the same way.
    void flushed();
    // The title, model, clock or program fields were drawn again.
    void identityshown();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void buildmenus();
    QWidget* buildbody();
    void connectmodel();
    void applymenustates();
    void scheduleflush();
    void showidentity();
    ClickLabel* valuefield(const std::string& control, const char* tip = nullptr);

    MainWindowModel& model_;
    std::map<std::string, QAction*> actions_;
    std::map<std::string, QLabel*> fields_;
    LampList* registers_ = nullptr;
    LampList* sram_ = nullptr;
    QScrollBar* registerscroll_ = nullptr;
    QScrollBar* sramscroll_ = nullptr;
    PcLamps* pclamps_ = nullptr;
    QTimer ultimatetimer_;
    QTimer gdbtimer_;  // runs while the GDB stub listens
    Theme theme_ = defaulttheme();
    std::vector<QPointer<QWidget>> toolwindows_;
    bool flushpending_ = false;
    bool closepending_ = false;
    bool closing_ = false;
    int busy_ = 0;
};

}  // namespace velmora
