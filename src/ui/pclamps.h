#pragma once
// The lamps of the program counter's bits, the lowest on the right.

#include <QWidget>
#include <array>

#include "shell/mainwindowfields.h"
#include "shell/themes.h"

namespace velmora {

class PcLamps : public QWidget {
    Q_OBJECT
public:
    explicit PcLamps(QWidget* parent = nullptr);
    void setlamps(int count, const std::array<bool, kPcLamps>& lamps);
    void settheme(const Theme& theme);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    int count_ = 0;
    std::array<bool, kPcLamps> lamps_{};
    Theme theme_ = defaulttheme();
};

}  // namespace velmora
