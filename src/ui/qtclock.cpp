#include "ui/qtclock.h"

#include <QCoreApplication>
#include <QThread>
#include <chrono>

namespace velmora {

// A steady clock: wall-clock time of day would jump at midnight and with clock changes.
double QtClock::now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void QtClock::nap() { QThread::msleep(5); }

void QtClock::yieldevents() { QCoreApplication::processEvents(QEventLoop::AllEvents); }

}  // namespace velmora
