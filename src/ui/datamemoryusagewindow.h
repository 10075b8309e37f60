#pragma once
// The Data Memory Usage window after a BASIC compile: the register, I/O and SRAM panels of
// coloured stripes with their legend, the flash bar with its percentage, and the label that
// shows the instruction statistics and puts them on the clipboard.

#include <QLabel>
#include <QWidget>

#include <functional>
#include <vector>

#include "debug/datamemoryusage.h"
#include "ui/clicklabel.h"
#include "ui/toolwindow.h"

namespace velmora {

// One panel: stripes in units, scaled to the widget's width.
class UsagePanel : public QWidget {
    Q_OBJECT
public:
    UsagePanel(int pixelsperunit, QWidget* parent = nullptr);
    void setstripes(std::vector<UsageStripe> stripes, std::vector<int> marks = {});
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int scale_;
    std::vector<UsageStripe> stripes_;
    std::vector<int> marks_;
};

// The flash bar: filled in proportion to the code.
class FlashBar : public QWidget {
    Q_OBJECT
public:
    explicit FlashBar(QWidget* parent = nullptr);
    void setfraction(double fraction);
    double fraction() const { return fraction_; }
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double fraction_ = 0;
};

class DataMemoryUsageWindow : public ToolWindow {
    Q_OBJECT
public:
    DataMemoryUsageWindow(MainWindowModel& model, CompiledUsage usage, QWidget* parent = nullptr);

    const DataMemoryUsage& usage() const { return usage_; }
    // A later compile's result, shown in the open window.
    void setusage(CompiledUsage usage);
    UsagePanel* gpwrpanel() const { return gpwr_; }
    UsagePanel* iopanel() const { return io_; }
    UsagePanel* srampanel() const { return sram_; }
    QLabel* flashlabel() const { return flashlabel_; }
    ClickLabel* inststatslabel() const { return stats_; }
    // The statistics: the table goes to the clipboard, then the message shows.
    void showstatistics();
    // Shows a titled message; a test may take it instead.
    std::function<void(const std::string& title, const std::string& text)> showmessage;

private:
    void showusage();

    DataMemoryUsage usage_;
    UsagePanel* gpwr_;
    UsagePanel* io_;
    UsagePanel* sram_;
    FlashBar* flash_;
    QLabel* flashlabel_;
    ClickLabel* stats_;
};

}  // namespace velmora
