#include "shell/assemblerwindow.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "assembler/asmcommands.h"
#include "assembler/externalassembler.h"
#include "image/programcommands.h"
#include "shell/settingnames.h"
#include "shell/settingswitches.h"
#include "shell/settingvalues.h"

namespace velmora {

namespace fs = std::filesystem;
using namespace settingnames;

namespace {

constexpr int kStartYields = 5;
constexpr int kNapsPerTick = 40;  // one tick of the external tool's wait: 200 ms of 5 ms naps
constexpr int kDividerLow = 10, kDividerHigh = 90;

bool isfile(const std::string& path) {
    std::error_code error;
    return !path.empty() && fs::is_regular_file(path, error);
}

// The whole file with its line ends as "\n"; nothing when it cannot be read.
std::optional<std::string> readtext(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    std::ostringstream buffer;
    buffer << in.rdbuf();
    std::string text = buffer.str();
    std::erase(text, '\r');
    return text;
}

std::string folderof(const std::string& path) { return fs::path(path).parent_path().string(); }
std::string nameof(const std::string& path) { return fs::path(path).filename().string(); }

}  // namespace

AssemblerWindow::AssemblerWindow(MainWindowModel& main, UserInput& input, Clock& clock)
    : main_(main), input_(input), clock_(clock), caption_(kAsmUntitledCaption) {}

bool AssemblerWindow::untitled() const { return caption_.find("UNTITLED") != std::string::npos; }

std::string AssemblerWindow::filename() const { return untitled() ? std::string() : asmfileofcaption(caption_); }

std::string AssemblerWindow::folder() const { return folderof(filename()); }

std::string AssemblerWindow::lastpath() {
    return main_.settings().getsetting(kLastPath, main_.simulation().datadirectory());
}

void AssemblerWindow::show(const std::string& text, MessageKind kind) { main_.messenger().show(text, kind); }

// --- life ---

void AssemblerWindow::onload() {
    SettingsAccess& settings = main_.settings();
    editorsettings_ = readasmeditorsettings(settings);
    keywords_ = asmeditorkeywords(main_.simulation().definitions().definitiontext);
    lastpath();
    const std::string last = settings.getsetting(kAutoStartAsmFile, "");
    if (readswitch(settings, kAutoStartAsm) && isfile(last)) loadsource(last);
    notify(changed);
}

AsmWindowGeometry AssemblerWindow::geometry() {
    SettingsAccess& settings = main_.settings();
    AsmWindowGeometry g;
    g.place = startposition(settings, windows::kAssembler);
    g.divider = std::clamp(settinginteger(settings.getsetting(kAssemblerDivider, "70")), kDividerLow, kDividerHigh);
    if (!readswitch(settings, kSavePositions)) return g;
    const int32_t width = settinginteger(settings.getsetting(settingname(kWindowWidth, windows::kAssembler), ""));
    const int32_t height = settinginteger(settings.getsetting(settingname(kWindowHeight, windows::kAssembler), ""));
    if (width > 0 && height > 0) g.size = PixelPoint{width / kTwipsPerPixel, height / kTwipsPerPixel};
    return g;
}

void AssemblerWindow::onunload(PixelPoint place, PixelPoint size, int divider) {
    SettingsAccess& settings = main_.settings();
    if (!readswitch(settings, kSavePositions)) return;
    saveposition(settings, windows::kAssembler, place);
    settings.putsetting(settingname(kWindowWidth, windows::kAssembler), settingtext(size.x * kTwipsPerPixel));
    settings.putsetting(settingname(kWindowHeight, windows::kAssembler), settingtext(size.y * kTwipsPerPixel));
    settings.putsetting(kAssemblerDivider, settingtext(std::clamp(divider, kDividerLow, kDividerHigh)));
}

// --- commands ---

void AssemblerWindow::command(const std::string& control) {
    // A run yields to the event queue; nothing else may start meanwhile.
    if (!menusenabled_) return;
    sourcefocus = false;
    if (control == "menunew") menunew();
    else if (control == "menuopen") menuopen();
    else if (control == "menusave") menusave();
    else if (control == "menusaveas") menusaveas();
    else if (control == "menuprint") menuprint(false);
    else if (control == "menuprint2") menuprint(true);
    else if (control == "menuassemble") menuassemble();
    else if (control == "menuassembleload") menuassembleload();
    else if (control == "menuavrassembler") menuavrassembler();
    else if (control == "menueeprom") menueeprom();
    else if (control == "menu5") menugotonexterror();
    else if (control == "menufind") menufind();
    else if (control == "menufindnext") menufindnext();
    else if (control == "menureplace") menureplace();
    else if (control == "menuformat") menuformat();
    notify(changed);
}

void AssemblerWindow::hidegotonexterror() { gotonexterror_ = false; }

bool AssemblerWindow::menunew() {
    source.clear();
    listing.clear();
    caption_ = kAsmUntitledCaption;
    hidegotonexterror();
    main_.settings().putsetting(kAutoStartAsmFile, "");
    return true;
}

void AssemblerWindow::loadsource(const std::string& path) {
    const std::optional<std::string> text = readtext(path);
    if (!text) {
        show(kAsmCannotOpen, MessageKind::Critical);
        return;
    }
    listing.clear();
    hidegotonexterror();
    source.clear();
    source.text = *text;
    caption_ = asmcaption(path);
    main_.settings().putsetting(kAutoStartAsmFile, path);
}

bool AssemblerWindow::menuopen() {
    const std::string path = input_.openfile(lastpath());
    if (path.empty()) return false;
    if (!asmsourceallowed(path)) {
        show(kAsmExtensionRefused, MessageKind::Exclamation);
        return false;
    }
    main_.settings().putsetting(kLastPath, folderof(path));
    loadsource(path);
    return caption_ == asmcaption(path);
}

// The old file goes first, so that the new text never mixes with it.
bool AssemblerWindow::writesource(const std::string& path) {
    std::error_code ignored;
    fs::remove(path, ignored);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << source.text;
    out.close();
    if (!out) {
        show(kCannotSaveText, MessageKind::Critical);
        return false;
    }
    return true;
}

bool AssemblerWindow::menusave() {
    if (untitled()) return menusaveas();
    const std::string path = filename();
    if (!writesource(path)) return false;
    hidegotonexterror();
    main_.settings().putsetting(kAutoStartAsmFile, path);
    return true;
}

bool AssemblerWindow::menusaveas() {
    const std::string chosen = input_.savefile(lastpath());
    if (chosen.empty()) return false;
    const std::string path = (fs::path(chosen).parent_path() / asmsaveasname(nameof(chosen))).string();
    if (isfile(path) && !input_.askyesno("Do you want to overwrite existing file " + path + "?")) return false;
    if (!writesource(path)) return false;
    caption_ = asmcaption(path);
    hidegotonexterror();
    main_.settings().putsetting(kLastPath, folderof(path));
    main_.settings().putsetting(kAutoStartAsmFile, path);
    show("File " + path + " saved.", MessageKind::Information);
    return true;
}

bool AssemblerWindow::menuprint(bool listingtoo) {
    if (untitled()) {
        show(kAsmSaveFirst, MessageKind::Exclamation);
        return false;
    }
    const AsmEditorState& what = listingtoo ? listing : source;
    if (what.isempty()) {
        show(listingtoo ? kAsmListingEmpty : kAsmSourceEmpty, MessageKind::Exclamation);
        return false;
    }
    AsmPrintJob job;
    job.title = listingtoo ? asmoutputpath(folder(), nameof(filename()), ".lst") : filename();
    job.text = what.text;
    job.fontname = readsetting(main_.settings(), kPrinterFontName);
    job.fontsize = settingreal(readsetting(main_.settings(), kPrinterFontSize));
    return print && print(job);
}

// --- assembling ---

void AssemblerWindow::status(const std::string& first, const std::string& second) {
    label1_ = first;
    label2_ = second;
    notify(statuschanged);
}

void AssemblerWindow::yield() { clock_.yield(); }

void AssemblerWindow::setbusy(bool busy) {
    menusenabled_ = !busy;
    source.enabled = listing.enabled = !busy;
    frameshown_ = busy;
    label1_.clear();
    label2_.clear();
    notify(changed);
}

// The steps before a run, shared by both assemblers: something to assemble, a file for it
// on disk holding the editor's text, and no outputs of an earlier run.
bool AssemblerWindow::prepareassembly() {
    if (source.isempty()) {
        show(kAsmEditorEmpty, MessageKind::Exclamation);
        return false;
    }
    if (untitled()) {
        menusaveas();
        if (untitled()) return false;
    }
    hidegotonexterror();
    listing.clear();
    if (!writesource(filename())) return false;
    asmdeleteoutputs(folder(), nameof(filename()));
    return true;
}

void AssemblerWindow::showlisting(const std::string& path) {
    listing.clear();
    if (std::optional<std::string> text = readtext(path)) {
        if (text->ends_with('\n')) text->pop_back();
        listing.text = std::move(*text);
    }
    listing.gotoend();
}

void AssemblerWindow::markerrors() {
    source.marks.clear();
    listing.marks.clear();
    for (int line : ctx_.errorsourceline) source.mark(line);
    for (int row : ctx_.errorlistline) listing.mark(row);
    if (!ctx_.errorsourceline.empty() && !ctx_.errorlistline.empty()) {
        source.gotoline(ctx_.errorsourceline.front());
        listing.gotoline(ctx_.errorlistline.front());
    }
    sourcefocus = true;
}

std::optional<int> AssemblerWindow::menuassemble() {
    if (!prepareassembly()) return std::nullopt;
    const std::string name = nameof(filename());
    setbusy(true);
    for (int i = 0; i < kStartYields; ++i) clock_.yield();

    AsmEnvironment environment;
    environment.folder = folder();
    environment.model = asmmodelof(main_.machine(), main_.simulation().definitions());
    environment.progress = this;
    int mode = 0;
    std::string failure;
    const bool ran = asmassemble(ctx_, name, mode, environment, failure);

    frameshown_ = false;
    source.enabled = listing.enabled = true;
    showlisting(asmoutputpath(folder(), name, ".lst"));
    notify(changed);
    clock_.yield();
    markerrors();
    menusenabled_ = true;
    if (!ran) {
        show(failure, MessageKind::Critical);
        asmdeleteoutputs(folder(), name);
        return std::nullopt;
    }
    if (mode > 0) {
        show(asmfailuremessage(mode), MessageKind::Exclamation);
        asmdeleteoutputs(folder(), name);
    }
    gotonexterror_ = mode > 0;
    return mode;
}

void AssemblerWindow::menugotonexterror() {
    if (!gotonexterror_) return;
    const int line = source.gotonextmark();
    if (line == 0) return;
    const int row = asmerrorlistline(ctx_, source.caretline());
    if (row > 0) {
        listing.gotoline(row);
    } else {
        listing.gotoline(source.caretline());
        listing.gotonextmark();
    }
    sourcefocus = true;
}

void AssemblerWindow::menuassembleload() {
    const std::optional<int> errors = menuassemble();
    if (!errors || *errors != 0) return;
    notify(changed);
    if (main_.machine().simulationrunning) {
        if (main_.run().simulationrate() != kRateStep) {
            show(kStopSimulationFirst, MessageKind::Exclamation);
            return;
        }
        main_.run().menustop();
    }
    WindowRegistry& registry = main_.registry();
    for (int window : {windows::kDisassembler, windows::kBreakpointsManager})
        if (registry.isopen(window)) registry.unload(window);
    main_.loadprogramfile(asmoutputpath(folder(), nameof(filename()), ".hex"));
}

void AssemblerWindow::menuavrassembler() {
    SettingsAccess& settings = main_.settings();
    std::string tool = settings.getsetting(kAvrAssemblerPathSetting, kAvrAssemblerDefaultPath);
    if (!isfile(tool)) {
        tool = input_.openfile(folderof(kAvrAssemblerDefaultPath));
        if (!isfile(tool)) {
            show(kAsmToolMissing, MessageKind::Exclamation);
            return;
        }
    }
    // Paths on this system tell letter case apart, so the path is kept as it was picked.
    settings.putsetting(kAvrAssemblerPathSetting, tool);
    if (!prepareassembly()) return;
    setbusy(true);

    ExternalAsmRequest request;
    request.toolpath = tool;
    request.modelname = main_.machine().modelname;
    request.folder = folder();
    request.filename = nameof(filename());
    request.tempfolder = externaltempfolder;
    request.tick = [this] {
        for (int i = 0; i < kNapsPerTick; ++i) clock_.nap();
        clock_.yield();
    };
    const ExternalAsmResult result = asmexternal(request);

    frameshown_ = false;
    source.enabled = listing.enabled = true;
    if (result.haslisting) showlisting(result.listingpath);
    menusenabled_ = true;
    notify(changed);
    if (!result.ok) show(result.message, MessageKind::Exclamation);
}

void AssemblerWindow::menueeprom() {
    if (const auto refusal = toolrefusal(ToolGuard::Eeprom, main_.machine())) {
        show(*refusal, MessageKind::Exclamation);
        return;
    }
    if (main_.registry().canopen(windows::kEepromMemoryEditor))
        main_.registry().open(windows::kEepromMemoryEditor);
    else
        show(kAsmEepromEditorMissing, MessageKind::Exclamation);
}

// --- searching ---

void AssemblerWindow::menufind() {
    const std::optional<std::string> what = input_.inputbox("Find what:", findwhat_);
    if (!what || what->empty()) return;
    findwhat_ = *what;
    const size_t at = asmfindtext(source.text, findwhat_, std::min(source.caret, source.text.size()));
    if (at == std::string::npos) return;
    source.caret = at;
    source.selection = findwhat_.size();
    sourcefocus = true;
}

void AssemblerWindow::menufindnext() {
    if (findwhat_.empty()) {
        menufind();
        return;
    }
    // From behind the present find, and round to the top once.
    size_t at = asmfindtext(source.text, findwhat_, std::min(source.caret + source.selection, source.text.size()));
    if (at == std::string::npos) at = asmfindtext(source.text, findwhat_, 0);
    if (at == std::string::npos) return;
    source.caret = at;
    source.selection = findwhat_.size();
    sourcefocus = true;
}

void AssemblerWindow::menureplace() {
    const std::optional<std::string> what = input_.inputbox("Find what:", findwhat_);
    if (!what || what->empty()) return;
    const std::optional<std::string> with = input_.inputbox("Replace with:", "");
    if (!with) return;
    findwhat_ = *what;
    const int count = asmreplaceall(source.text, *what, *with);
    source.caret = std::min(source.caret, source.text.size());
    source.selection = 0;
    show(std::to_string(count) + " words replaced.", MessageKind::Information);
}

void AssemblerWindow::menuformat() {
    source.text = asmformattext(source.text);
    source.caret = std::min(source.caret, source.text.size());
    source.selection = 0;
}

}  // namespace velmora
