#include "image/programcommands.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <span>

#include "image/elfload.h"
#include "image/hexload.h"
#include "image/hexwriter.h"

namespace velmora {

namespace fs = std::filesystem;

namespace {

constexpr char kLastPath[] = "Last Path";
constexpr char kAutoStartHexFile[] = "Auto Start Hex File";
constexpr size_t kShortPathLength = 65;

bool ask(const std::function<bool()>& question) { return question && question(); }
void call(const std::function<void()>& action) {
    if (action) action();
}
void enablemenus(const ProgramCommandHost& host, bool enabled) {
    if (host.enablemenus) host.enablemenus(enabled);
}

bool fileexists(const std::string& path) {
    std::error_code error;
    return fs::exists(path, error);
}

// The name the user typed loses any extension (from its first ".") and gets ".hex".
std::string hexfilename(const std::string& chosen) {
    const fs::path path(chosen);
    std::string name = path.filename().string();
    name = name.substr(0, name.find('.')) + ".hex";
    return (path.parent_path() / name).string();
}

bool writefile(const std::string& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    out.close();
    return static_cast<bool>(out);
}

}  // namespace

std::string kilobytestext(int bytes) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, bytes / 1024.0, std::chars_format::fixed);
    return std::string(buffer, result.ptr).substr(0, 4);
}

std::string loadconfirmation(int programbytes) {
    return "Operation completed.\nTotal " + std::to_string(programbytes) + " (" + kilobytestext(programbytes) +
           "K) program bytes loaded.";
}

std::string shortenedpath(const std::string& path) {
    if (path.size() <= kShortPathLength) return path;
    return "... " + path.substr(path.size() - kShortPathLength);
}

ProgramCommands::ProgramCommands(Machine& m, Messenger& messenger, SettingsAccess& settings, ProgramCommandHost host,
                                 std::string programdirectory)
    : m_(m),
      messenger_(messenger),
      settings_(settings),
      host_(std::move(host)),
      programdirectory_(std::move(programdirectory)) {}

// The guards of every command that changes program memory, in this order.
bool ProgramCommands::refusedwhilebusy() {
    const char* refusal = nullptr;
    if (m_.simulationrunning)
        refusal = kStopSimulationFirst;
    else if (ask(host_.disassembleropen))
        refusal = kCloseDisassemblerFirst;
    else if (ask(host_.breakpointsmanageropen))
        refusal = kCloseBreakpointsFirst;
    if (refusal != nullptr) messenger_.show(refusal, MessageKind::Exclamation);
    return refusal != nullptr;
}

std::string ProgramCommands::startfolder() { return settings_.getsetting(kLastPath, programdirectory_); }

void ProgramCommands::rememberfolder(const std::string& path) {
    settings_.putsetting(kLastPath, fs::path(path).parent_path().string());
}

// No program loaded: both memories back to the unprogrammed value.
void ProgramCommands::forgetprogram() {
    m_.programbytes = 0;
    fillunprogrammed(m_);
}

CommandResult ProgramCommands::menuload(const FileChooser& choose, bool confirm) {
    if (refusedwhilebusy()) return CommandResult::Refused;
    const std::string path = choose ? choose(startfolder()) : std::string();
    if (path.empty()) return CommandResult::Cancelled;
    rememberfolder(path);
    return loadwithmenusoff(path, confirm);
}

CommandResult ProgramCommands::loadwithmenusoff(const std::string& path, bool confirm) {
    enablemenus(host_, false);
    call(host_.yield);
    const CommandResult result = loadfile(path, confirm);
    enablemenus(host_, true);
    return result;
}

// A failed load leaves no partial program behind.
CommandResult ProgramCommands::loadfile(const std::string& path, bool confirm) {
    forgetprogram();
    call(host_.clearbreakpoints);
    clean(m_);
    const bool loaded = programload(m_, path, messenger_);
    if (loaded) {
        programpath_ = path;
        call(host_.refresheditors);
        if (confirm) messenger_.show(loadconfirmation(m_.programbytes), MessageKind::Information);
    } else {
        programpath_.clear();
        forgetprogram();
        call(host_.refresheditors);
    }
    if (host_.loadcompanions) host_.loadcompanions(path);
    return loaded ? CommandResult::Done : CommandResult::Failed;
}

CommandResult ProgramCommands::reload() {
    if (programpath_.empty()) return CommandResult::Cancelled;
    if (!fileexists(programpath_)) {
        messenger_.show(kFileGone, MessageKind::Exclamation);
        return CommandResult::Failed;
    }
    if (m_.simulationrunning) {
        if (!ask(host_.singlestepping)) {
            messenger_.show(kStopSimulationFirst, MessageKind::Exclamation);
            return CommandResult::Refused;
        }
        call(host_.stopsimulation);
    }
    const std::string path = programpath_;
    return loadwithmenusoff(path);
}

CommandResult ProgramCommands::autostartload() {
    const std::string path = settings_.getsetting(kAutoStartHexFile, "");
    if (path.empty()) return CommandResult::Cancelled;
    if (!fileexists(path)) {
        settings_.putsetting(kAutoStartHexFile, "");
        return CommandResult::Cancelled;
    }
    return loadfile(path);
}

CommandResult ProgramCommands::menuclear() {
    if (refusedwhilebusy()) return CommandResult::Refused;
    enablemenus(host_, false);
    forgetprogram();
    call(host_.clearbreakpoints);
    programpath_.clear();
    clean(m_);
    enablemenus(host_, true);
    call(host_.clearwatches);
    return CommandResult::Done;
}

CommandResult ProgramCommands::menusave(const FileChooser& choose) {
    if (refusedwhilebusy()) return CommandResult::Refused;
    const std::span<const uint8_t> memory = loadableflash(m_);
    const auto last = std::find_if(memory.rbegin(), memory.rend(), [&](uint8_t b) { return b != m_.unprogrammed; });
    if (last == memory.rend()) {
        messenger_.show(kProgramMemoryEmpty, MessageKind::Exclamation);
        return CommandResult::Refused;
    }
    const std::string chosen = choose ? choose(startfolder()) : std::string();
    if (chosen.empty()) return CommandResult::Cancelled;
    const std::string path = hexfilename(chosen);
    rememberfolder(path);
    if (fileexists(path)) {
        if (!host_.askyesno || !host_.askyesno("Do you want to overwrite existing file " + path + "?"))
            return CommandResult::Cancelled;
        std::error_code error;
        fs::remove(path, error);
    }
    // Whole words: an image that ends on an even address takes the odd byte behind it too.
    size_t end = static_cast<size_t>(memory.rend() - last);
    if (end % 2 == 1) ++end;
    const std::span<const uint8_t> image(m_.progmem.data(), std::min(end, m_.progmem.size()));
    if (!writefile(path, writeintelhex(image))) {
        messenger_.show(kCannotSaveText, MessageKind::Critical);
        return CommandResult::Failed;
    }
    messenger_.show(kProgramMemorySaved, MessageKind::Information);
    return CommandResult::Done;
}

}  // namespace velmora
