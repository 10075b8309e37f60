// The desktop program: one instance per user, started with an optional HEX file to load.

#include <QApplication>
#include <QDir>
#include <QLockFile>
#include <QStandardPaths>
#include <clocale>

#include "models/datadirectory.h"
#include "shell/messagepolicy.h"
#include "shell/settingsstore.h"
#include "ui/desktopsession.h"

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    // Numbers in settings and texts are written with a point whatever the user's language.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setApplicationName(velmora::kProductName);

    QString runtime = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (runtime.isEmpty()) runtime = QDir::tempPath();
    QLockFile lock(runtime + "/velmora.lock");
    lock.setStaleLockTime(0);
    bool another = false;

    velmora::SettingsStore settings;
    velmora::DesktopSession session(settings, velmora::datadirectory(VELMORA_SOURCE_DATA_DIR));
    session.window().instancecheck = [&] {
        another = !lock.tryLock(0);
        return another;
    };
    if (!session.start()) return another ? 0 : 1;
    if (argc > 1) session.loadprogram(QString::fromLocal8Bit(argv[1]).toStdString());
    return app.exec();
}
