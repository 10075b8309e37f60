#pragma once
// The program commands of the main window's File menu: Load Program, Save Memory, Clear
// Memory, the reload on a click on the program's path, and the load at start-up. The windows
// around them (menus, editors, breakpoints, watches, the dialogs) are reached through
// ProgramCommandHost; every message goes to the Messenger.

#include <functional>
#include <string>

#include "core/events.h"
#include "core/machine.h"

namespace velmora {

inline constexpr char kStopSimulationFirst[] = "Please stop the simulation first.";
inline constexpr char kCloseDisassemblerFirst[] = "Please close Disassembler window first.";
inline constexpr char kCloseBreakpointsFirst[] = "Please close Breakpoints Manager window first.";
inline constexpr char kProgramMemoryEmpty[] = "The program memory is empty.";
inline constexpr char kProgramMemorySaved[] = "Program memory saved.";
inline constexpr char kFileGone[] = "The file do not exist any more.";
inline constexpr char kCannotSaveText[] = "The file can not be saved.";

// What the commands ask of the windows around them. A member left empty answers "no" or
// does nothing.
struct ProgramCommandHost {
    std::function<bool()> disassembleropen;
    std::function<bool()> breakpointsmanageropen;
    std::function<bool()> singlestepping;           // the simulation runs at Step By Step
    std::function<void()> stopsimulation;           // Stop
    std::function<void(bool)> enablemenus;          // the main window's menus 1 to 6
    std::function<void()> yield;                    // let the event queue run
    std::function<void()> clearbreakpoints;         // the ten breakpoints and the special ones
    std::function<void()> refresheditors;           // the open memory editors
    std::function<void(const std::string&)> loadcompanions;  // source tracking and watches of a program
    std::function<void()> clearwatches;
    std::function<bool(const std::string&)> askyesno;
};

// A file dialog: gets the folder to start in, gives the chosen path or "" for none.
using FileChooser = std::function<std::string(const std::string& startfolder)>;

enum class CommandResult {
    Refused,    // a guard said no; its message was shown
    Cancelled,  // nothing chosen, or the user declined
    Done,
    Failed,     // the file was bad or could not be written; the message was shown
};

// "Operation completed." and "Total N (K) program bytes loaded.".
std::string loadconfirmation(int programbytes);
// N / 1024 cut to its first four characters.
std::string kilobytestext(int bytes);
// The path as the short program label shows it: "... " and its last 65 characters when longer.
std::string shortenedpath(const std::string& path);

class ProgramCommands {
public:
    // `programdirectory` is where file dialogs start before "Last Path" is known.
    ProgramCommands(Machine& m, Messenger& messenger, SettingsAccess& settings, ProgramCommandHost host,
                    std::string programdirectory);

    // `confirm` off leaves the confirmation to a caller that reports the load itself.
    CommandResult menuload(const FileChooser& choose, bool confirm = true);
    CommandResult menusave(const FileChooser& choose);
    CommandResult menuclear();
    // A click on the program's path: loads the same file again.
    CommandResult reload();
    // At start-up: loads the file of "Auto Start Hex File", or forgets it when it has gone.
    CommandResult autostartload();

    // The loaded program's full path ("" when none): the program's identity.
    const std::string& qprogram() const { return programpath_; }
    std::string qprogram2() const { return shortenedpath(programpath_); }

private:
    bool refusedwhilebusy();
    std::string startfolder();
    void rememberfolder(const std::string& path);
    void forgetprogram();
    CommandResult loadwithmenusoff(const std::string& path, bool confirm = true);
    CommandResult loadfile(const std::string& path, bool confirm = true);

    Machine& m_;
    Messenger& messenger_;
    SettingsAccess& settings_;
    ProgramCommandHost host_;
    std::string programdirectory_;
    std::string programpath_;
};

}  // namespace velmora
