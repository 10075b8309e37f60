#include "ui/pinlegenddialog.h"

#include <QCheckBox>
#include <QLabel>
#include <QVBoxLayout>

#include "shell/pinlegend.h"

namespace velmora {

PinLegendDialog::PinLegendDialog(SettingsAccess& settings, QWidget* parent) : QDialog(parent) {
    setWindowTitle(kLegendTitle);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QString(kLegendLine1) + "\n" + kLegendLine2));
    const PinFilters filters = readpinfilters(settings);
    for (const LegendBox& box : legendboxes()) {
        auto* check = new QCheckBox(box.caption);
        check->setChecked(filters[static_cast<int>(box.group)]);
        const PinFunctionGroup group = box.group;
        connect(check, &QCheckBox::toggled, this, [&settings, group](bool on) { writepinfilter(settings, group, on); });
        layout->addWidget(check);
    }
}

}  // namespace velmora
