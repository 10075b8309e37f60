#pragma once
// The main window without its drawing: the simulation it controls, the pieces that hold its
// fields, menus, option commands and edits, and the dispatch of its menu commands by
// control name. The Qt window draws what this gives and sends clicks back.

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/events.h"
#include "debug/breakpointlist.h"
#include "debug/specialbreakpoints.h"
#include "debug/watchvariables.h"
#include "image/programcommands.h"
#include "shell/mainwindowfields.h"
#include "shell/mainwindowmenus.h"
#include "shell/basictracking.h"
#include "shell/gdblink.h"
#include "shell/modelselection.h"
#include "shell/optioncommands.h"
#include "shell/pausedediting.h"
#include "shell/shelloptions.h"
#include "shell/simulation.h"
#include "shell/themes.h"
#include "shell/userinput.h"
#include "shell/windowregistry.h"

namespace velmora {

// What the desktop program provides to the main window.
struct ShellServices {
    SettingsAccess& settings;
    Messenger& messenger;
    UserInput& input;
    Clock& clock;
};

inline constexpr char kProductVersion[] = "0.1";

class MainWindowModel {
public:
    MainWindowModel(ShellServices services, std::string datadirectory);
    MainWindowModel(const MainWindowModel&) = delete;
    MainWindowModel& operator=(const MainWindowModel&) = delete;

    Simulation& simulation() { return sim_; }
    Machine& machine() { return sim_.machine(); }
    const Machine& machine() const { return sim_.machine(); }
    RunControl& run() { return sim_.run(); }
    WindowRegistry& registry() { return registry_; }
    ShellOptions& options() { return options_; }
    ProgramCommands& programs() { return programs_; }
    OptionCommands& optioncommands() { return optioncommands_; }
    BasicTracking& tracking() { return tracking_; }
    PausedEditing& editing() { return editing_; }
    ModelSelection& modelselection() { return modelselection_; }
    // The debugging state of the loaded program; a load, a clear or a model change resets it.
    BreakpointList& breakpoints() { return breakpoints_; }
    SpecialBreakpoints& specialbreakpoints() { return special_; }
    WatchVariables& watch() { return watch_; }
    // avr-gdb's stub; the window's timer calls its tick() while it listens.
    GdbLink& gdb() { return gdb_; }
    // F1 (with Shift: Step By Step), F2 and F3 of a debugging window while a program runs.
    void debugkey(int functionkey, bool shift);
    SettingsAccess& settings() { return services_.settings; }
    // Product data: model files, the LCD character ROM.
    const std::string& datadirectory() const { return datadirectory_; }
    Messenger& messenger() { return services_.messenger; }
    UserInput& input() { return services_.input; }

    // --- fields ---
    std::string title() const;
    std::string qprocessor() const { return machine().modelname; }
    std::string qclockfreq() const;
    std::string qprogram() const { return programs_.qprogram(); }
    std::string qprogram2() const { return programs_.qprogram2(); }
    RunFields fields() const;
    ListScroll scroll;
    Theme theme = defaulttheme();  // the colours every window paints with

    // --- menus ---
    std::map<std::string, MenuItemState> menustates() const;
    std::string aboutcaption = "About";
    std::string abouttext() const;
    static std::string helptext();
    // Commands a later window supplies (Auto Start Options, Editor Setup, ...); a command
    // item with neither a built-in action nor one of these is greyed.
    std::map<std::string, std::function<void()>> extracommands;
    bool hascommand(const std::string& control) const;

    // Runs a menu command by its control name.
    void command(const std::string& control);
    void openmicrocontrollerview();
    // Load Program on a file named in advance (the command line, a build): the dialog is not
    // shown; without `confirm` the caller reports the load.
    void loadprogramfile(const std::string& path, bool confirm = true);

    // --- clicks on the fields ---
    void clickregistername(int row);
    void clickbitlamp(int row, int bit);  // bit 7..0
    void clicksramname(int row);
    void clickpcname();
    void clickstatistic();
    void clickprocessor() { command("menuselect"); }
    void clickclock() { command("menuclock"); }
    void clickprogram();

    // --- what the window is told ---
    std::function<void()> ekran;            // the run fields changed
    std::function<void()> menuschanged;     // enabled, checked or visible states
    std::function<void()> identitychanged;  // title, model, clock or program
    std::function<std::optional<int>(const std::vector<ModelOption>&)> choosemodel;  // the Select window
    std::function<void(const std::string&)> fatal;  // a message that ends the program
    std::function<void()> showabout;
    std::function<void()> showhelp;

private:
    ProgramCommandHost programhost();
    void refreshall();
    void afterprogramchange();
    void selectmicrocontroller();
    void opentool(const MenuItemDef& item);
    bool builtin(const std::string& control) const;
    void notify(const std::function<void()>& callback) const {
        if (callback) callback();
    }

    ShellServices services_;
    std::string datadirectory_;
    Simulation sim_;
    WindowRegistry registry_;
    ShellOptions options_;
    ProgramCommands programs_;
    OptionCommands optioncommands_;
    PausedEditing editing_;
    ModelSelection modelselection_;
    BasicTracking tracking_;
    BreakpointList breakpoints_;
    SpecialBreakpoints special_;
    WatchVariables watch_;
    GdbLink gdb_;
    bool menusenabled_ = true;
};

}  // namespace velmora
