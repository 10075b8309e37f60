#pragma once
// The pin legend (F12): check boxes for the alternative pin functions to hide.

#include <QDialog>

#include "core/events.h"

namespace velmora {

class PinLegendDialog : public QDialog {
    Q_OBJECT
public:
    PinLegendDialog(SettingsAccess& settings, QWidget* parent = nullptr);
};

}  // namespace velmora
