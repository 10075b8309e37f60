#include "ui/qtclock.h"

#include <QCoreApplication>
#include <QThread>
#include <QTime>

namespace velmora {

double QtClock::now() { return QTime::currentTime().msecsSinceStartOfDay() / 1000.0; }

void QtClock::nap() { QThread::msleep(5); }

void QtClock::yield() { QCoreApplication::processEvents(QEventLoop::AllEvents); }

}  // namespace velmora
