// The desktop program at the Ultimate rate with only its main window open (or with the LCD
// Module too), offscreen: runs a HEX file to its end and prints the simulated cycles per host
// second, to set beside velmora-cli on the same firmware.
// Usage: velmora-bench-desktop FILE.hex [MODEL] [CLOCK_MHZ] [lcd]

#include <QApplication>
#include <QTemporaryDir>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <string>

#include "models/datadirectory.h"
#include "models/modelfile.h"
#include "shell/settingnames.h"
#include "shell/settingsstore.h"
#include "ui/desktopsession.h"

int main(int argc, char* argv[]) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: velmora-bench-desktop FILE.hex [MODEL] [CLOCK_MHZ] [lcd]\n");
        return 2;
    }
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    const std::string hex = argv[1];
    const std::string modelname = argc > 2 ? argv[2] : "ATmega328P";
    const std::string clock = argc > 3 ? argv[3] : "16";
    const bool lcd = argc > 4 && std::string(argv[4]) == "lcd";

    // A settings file of its own: the chosen model and clock, the Ultimate rate.
    QTemporaryDir folder;
    velmora::SettingsStore settings((folder.path() + "/settings").toStdString());
    const std::string data = velmora::datadirectory(VELMORA_SOURCE_DATA_DIR);
    const velmora::ModelList list = velmora::modellist(data + "/models");
    for (size_t i = 0; i < list.models.size(); ++i)
        if (list.models[i].name == modelname) settings.putsettingdword(velmora::settingnames::kMicrocontrollerModel, static_cast<int>(i) + 1);
    settings.putsetting(velmora::settingnames::kClockFrequency, clock);
    settings.putsettingdword(velmora::settingnames::kSimulationRate, 6);

    velmora::DesktopSession session(settings, data);
    if (!session.start()) return 1;
    session.loadprogram(hex);
    const velmora::Machine& m = session.model().machine();
    if (m.modelname != modelname) {
        std::fprintf(stderr, "model %s not loaded\n", modelname.c_str());
        return 1;
    }
    if (lcd) session.model().command("menulcd");
    // Start runs the loop until the program stops; the window keeps being served meanwhile.
    const auto t0 = std::chrono::steady_clock::now();
    session.model().command("menustart");
    while (m.simulationrunning) QApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    std::printf("desktop%s  %s  %.3f s  %llu cycles  %.1f simulated MHz\n", lcd ? "+lcd" : "", m.modelname.c_str(), seconds,
                static_cast<unsigned long long>(m.totalcycles), m.totalcycles / seconds / 1e6);
    return 0;
}
