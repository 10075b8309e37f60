#include "shell/startup.h"

#include "shell/autostart.h"
#include "shell/messagepolicy.h"
#include "shell/settingnames.h"
#include "shell/settingswitches.h"

namespace velmora {

using namespace settingnames;

namespace {
void call(const std::function<void()>& f) {
    if (f) f();
}

// A window opens by itself only when its flag is on and the loaded model or program allows it.
void openflagged(MainWindowModel& model, StartupHost& host, const AutoStartWindow& entry, bool on) {
    if (!on || !autostartneedmet(entry.need, model.machine())) return;
    if (entry.window == kMicrocontrollerViewFlag)
        model.openmicrocontrollerview();
    else
        model.registry().open(entry.window);
    host.yield();
}
}  // namespace

bool runstartup(MainWindowModel& model, StartupHost& host, const ModuleHooks& modules) {
    if (host.otherinstance()) return false;
    SettingsAccess& settings = model.settings();
    Simulation& sim = model.simulation();

    call(modules.clear);
    validatepositions(settings);
    host.applytheme(themeload(settings, defaulttheme()));

    model.options() = readshelloptions(settings, sim.datadirectory());
    applyoptions(model.machine(), model.options());
    model.run().menuspeed(model.options().rate);

    if (!sim.buildmodellist() || !sim.modelselect(sim.storedmodelindex())) {
        host.fatal(sim.error());
        return false;
    }
    for (const std::string& warning : sim.warnings()) model.messenger().show(warning, MessageKind::Critical);

    std::array<std::string, kExternalModuleSlots> names;
    for (int slot = 1; slot <= kExternalModuleSlots; ++slot)
        names[slot - 1] = readsetting(settings, settingname(kExternalModule, slot));
    if (modules.kreirajobjekte) modules.kreirajobjekte(names);

    if (model.identitychanged) model.identitychanged();
    host.placewindow(startposition(settings, windows::kMain));
    model.aboutcaption = std::string("About ") + kProductName;
    if (model.menuschanged) model.menuschanged();
    if (model.ekran) model.ekran();

    runautostart(model, host);
    return true;
}

void runautostart(MainWindowModel& model, StartupHost& host) {
    SettingsAccess& settings = model.settings();
    const bool hex = readswitch(settings, kAutoStartHex), bas = readswitch(settings, kAutoStartBas),
               asmfile = readswitch(settings, kAutoStartAsm);
    std::vector<bool> flags;
    for (const AutoStartWindow& entry : autostartwindows()) flags.push_back(readswitch(settings, entry.flag));

    if (bas && readswitch(settings, kAutoStartCompiler)) {
        model.registry().open(windows::kBasicCompiler);
        host.yield();
    }
    if (asmfile && readswitch(settings, kAutoStartAssembler)) {
        model.registry().open(windows::kAssembler);
        host.yield();
    }
    if (hex) {
        model.programs().autostartload();
        if (model.identitychanged) model.identitychanged();
        if (model.ekran) model.ekran();
        host.yield();
    }
    for (size_t i = 0; i < flags.size(); ++i) openflagged(model, host, autostartwindows()[i], flags[i]);
}

void runshutdown(MainWindowModel& model, StartupHost& host, const ModuleHooks& modules) {
    host.restorewindow();
    saveposition(model.settings(), windows::kMain, host.windowposition());
    rememberautostart(model.settings(), model.registry(), model.programs().qprogram());
    model.registry().unloadall();
    call(modules.objectterm);
}

}  // namespace velmora
