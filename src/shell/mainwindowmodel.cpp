#include "shell/mainwindowmodel.h"

#include "core/timetext.h"
#include "image/hexload.h"
#include "shell/messagepolicy.h"
#include "shell/settingnames.h"
#include "shell/settingsstore.h"

namespace velmora {

MainWindowModel::MainWindowModel(ShellServices services, std::string datadirectory)
    : services_(services),
      datadirectory_(datadirectory),
      sim_(services.messenger, services.clock, services.settings, datadirectory),
      programs_(sim_.machine(), services.messenger, services.settings, programhost(), datadirectory),
      optioncommands_(sim_, options_, services.settings, services.messenger, services.input, registry_),
      editing_(sim_.run(), services.input),
      modelselection_(sim_, services.settings, registry_),
      tracking_(sim_.run(), options_),
      breakpoints_(sim_.machine()),
      special_(sim_.run(), services.input, services.messenger),
      watch_(sim_.machine(), services.settings, services.input, (userdatafolder() / "watch.dat").string()),
      gdb_(sim_.run(), services.clock, services.messenger, services.settings, services.input) {
    sim_.run().ekran = [this] { notify(ekran); };
    sim_.run().commandschanged = [this] { notify(menuschanged); };
    optioncommands_.registerorderchanged = [this] { notify(ekran); };
    optioncommands_.clockchanged = [this] { notify(identitychanged); };
    gdb_.changed = [this] {
        notify(ekran);
        notify(menuschanged);
    };
    gdb_.startprogram = [this] { command("menustart"); };
}

ProgramCommandHost MainWindowModel::programhost() {
    ProgramCommandHost host;
    host.disassembleropen = [this] { return registry_.isopen(windows::kDisassembler); };
    host.breakpointsmanageropen = [this] { return registry_.isopen(windows::kBreakpointsManager); };
    host.singlestepping = [this] { return machine().simulationrunning && run().simulationrate() == kRateStep; };
    host.stopsimulation = [this] { run().menustop(); };
    host.enablemenus = [this](bool on) {
        // Memory is about to be filled: from here on the unprogrammed value of the settings counts.
        if (!on) machine().unprogrammed = unprogrammedvalue(services_.settings);
        menusenabled_ = on;
        notify(menuschanged);
    };
    host.yield = [this] { services_.clock.yield(); };
    host.askyesno = [this](const std::string& question) { return services_.input.askyesno(question); };
    return host;
}

std::string MainWindowModel::title() const {
    const std::string& model = machine().modelname;
    return model.empty() ? std::string(kProductName) : std::string(kProductName) + " - " + model;
}

std::string MainWindowModel::qclockfreq() const { return getclockfrequency(options_.clockfrequency); }

RunFields MainWindowModel::fields() const { return runfields(machine(), clampscroll(machine(), scroll)); }

std::string MainWindowModel::abouttext() const {
    return std::string(kProductName) + " " + kProductVersion +
           "\nA development and simulation environment for AVR 8-bit microcontrollers.";
}

std::string MainWindowModel::helptext() {
    return "Load a program with File, Load Program, then choose Simulation, Start.\n"
           "The Rate menu sets how fast the simulation runs; at Step By Step use Step.\n"
           "While stepping, click a register, a bit lamp, an SRAM cell or the PC to change it.\n"
           "Tools, Microcontroller View shows the pins; click a T button to toggle an input.";
}

bool MainWindowModel::builtin(const std::string& control) const {
    static const char* const kBuiltin[] = {
        "menuclear", "menuload", "menusave", "menustart", "menustep", "menustop", "menustep2", "menustep3",
        "menugdb",         "menuselect", "menuclock", "menuresetstatistics", "menuunprogrammed", "menuabout", "menuhelp"};
    for (const char* name : kBuiltin)
        if (control == name) return true;
    if (ischangecommand(control)) return true;
    const MenuItemDef* item = findmenuitem(control);
    return item && item->kind != MenuItemKind::Command;
}

bool MainWindowModel::hascommand(const std::string& control) const {
    return builtin(control) || extracommands.count(control) > 0;
}

std::map<std::string, MenuItemState> MainWindowModel::menustates() const {
    const RunControl& r = sim_.run();
    MenuContext context;
    context.menusenabled = menusenabled_;
    context.startenabled = r.startenabled();
    context.stopenabled = r.stopenabled();
    context.stepenabled = r.stepenabled();
    context.hassourcelines = r.hassourcelines;
    context.rate = r.simulationrate();
    context.gdblistening = gdb_.listening();
    context.switches = options_.switches;
    const int view = packagewindow(machine().pincount, options_.on(settingnames::kCompactView));
    for (const MenuDef& menu : mainmenus())
        for (const MenuItemDef& item : menu.items)
            if (item.kind == MenuItemKind::Tool)
                context.toolavailable[item.control] = registry_.canopen(item.window == 0 ? view : item.window);
    auto states = velmora::menustates(context);
    for (const MenuDef& menu : mainmenus())
        for (const MenuItemDef& item : menu.items)
            if (item.kind == MenuItemKind::Command && !hascommand(item.control)) states[item.control].enabled = false;
    return states;
}

void MainWindowModel::command(const std::string& control) {
    RunControl& r = run();
    const MenuItemDef* item = findmenuitem(control);
    if (control == "menuload") {
        programs_.menuload([this](const std::string& folder) { return services_.input.openfile(folder); });
        afterprogramchange();
    } else if (control == "menusave") {
        programs_.menusave([this](const std::string& folder) { return services_.input.savefile(folder); });
    } else if (control == "menuclear") {
        programs_.menuclear();
        afterprogramchange();
    } else if (control == "menustart") {
        tracking_.started();
        r.menustart();
    } else if (control == "menustep" || control == "menustep2") {
        r.menustep();
    } else if (control == "menustop") {
        r.menustop();
    } else if (control == "menugdb") {
        gdb_.toggle();
    } else if (control == "menustep3") {
        tracking_.runtonext();
    } else if (item && item->kind == MenuItemKind::Rate) {
        options_.rate = item->rate;
        r.menuspeed(item->rate);
    } else if (item && item->kind == MenuItemKind::Tool) {
        opentool(*item);
    } else if (item && item->kind == MenuItemKind::Switch) {
        optioncommands_.toggle(control);
        notify(menuschanged);
    } else if (control == "menuselect") {
        selectmicrocontroller();
    } else if (control == "menuclock") {
        optioncommands_.menuclock();
    } else if (ischangecommand(control)) {
        optioncommands_.change(control);
    } else if (control == "menuunprogrammed") {
        optioncommands_.menuunprogrammed();
    } else if (control == "menuresetstatistics") {
        r.menuresetstatistics();
    } else if (control == "menuabout") {
        notify(showabout);
    } else if (control == "menuhelp") {
        notify(showhelp);
    } else if (const auto extra = extracommands.find(control); extra != extracommands.end() && extra->second) {
        extra->second();
    }
}

void MainWindowModel::loadprogramfile(const std::string& path, bool confirm) {
    programs_.menuload([&path](const std::string&) { return path; }, confirm);
    afterprogramchange();
}

void MainWindowModel::opentool(const MenuItemDef& item) {
    if (const auto refusal = toolrefusal(item.guard, machine())) {
        services_.messenger.show(*refusal, MessageKind::Exclamation);
        return;
    }
    if (item.window == 0)
        openmicrocontrollerview();
    else
        registry_.open(item.window);
}

void MainWindowModel::openmicrocontrollerview() {
    if (const auto refusal = toolrefusal(ToolGuard::SimulationModule, machine())) {
        services_.messenger.show(*refusal, MessageKind::Exclamation);
        return;
    }
    const int window = packagewindow(machine().pincount, options_.on(settingnames::kCompactView));
    // One drawing at a time: another package's window closes first.
    for (const PackageLayout& layout : packagelayouts())
        if (layout.window != window && registry_.isopen(layout.window)) registry_.unload(layout.window);
    registry_.open(window);
}

void MainWindowModel::selectmicrocontroller() {
    if (const auto refusal = modelselection_.refusal()) {
        services_.messenger.show(*refusal, MessageKind::Exclamation);
        return;
    }
    modelselection_.closedependentwindows();
    const std::optional<int> choice = choosemodel ? choosemodel(modelselection_.options()) : std::nullopt;
    if (!modelselection_.finish(choice)) {
        if (fatal) fatal(sim_.error());
        return;
    }
    scroll = {};
    afterprogramchange();
}

void MainWindowModel::refreshall() {
    notify(identitychanged);
    notify(menuschanged);
    notify(ekran);
}

void MainWindowModel::afterprogramchange() {
    tracking_.programloaded(qprogram());
    breakpoints_.clear();
    special_.clear();
    watch_.programloaded(qprogram());
    refreshall();
}

void MainWindowModel::debugkey(int functionkey, bool shift) {
    if (!machine().simulationrunning) return;
    if (functionkey == 1) run().menuspeed(shift ? kRateStep : options_.rate);
    if (functionkey == 2) run().menustep();
    if (functionkey == 3) run().menustop();
}

void MainWindowModel::clickregistername(int row) {
    if (row < 0 || row >= kRegisterRows) return;
    const RegisterRow r = fields().registers[row];
    if (editing_.editregister(r.tableindex)) notify(ekran);
}

void MainWindowModel::clickbitlamp(int row, int bit) {
    if (row < 0 || row >= kRegisterRows) return;
    const RegisterRow r = fields().registers[row];
    if (editing_.flipbit(r.tableindex, bit)) notify(ekran);
}

void MainWindowModel::clicksramname(int row) {
    if (row < 0 || row >= kSramRows) return;
    const SramRow r = fields().sram[row];
    if (editing_.editsram(r.dataaddress)) notify(ekran);
}

void MainWindowModel::clickpcname() {
    if (editing_.editpc()) notify(ekran);
}

void MainWindowModel::clickstatistic() { editing_.resetstatistics(); }

void MainWindowModel::clickprogram() {
    if (programs_.reload() != CommandResult::Cancelled) afterprogramchange();
}

}  // namespace velmora
