#include "shell/assemblerwindow.h"

#include <algorithm>

#include "assembler/asmcommands.h"
#include "assembler/externalassembler.h"
#include "shell/settingnames.h"
#include "shell/settingswitches.h"
#include "shell/settingvalues.h"

namespace velmora {

using namespace settingnames;

namespace {

constexpr int kStartYields = 5;
constexpr int kNapsPerTick = 40;  // one tick of the external tool's wait: 200 ms of 5 ms naps
constexpr int kDividerLow = 10, kDividerHigh = 90;

SourceWindowKind assemblerkind() {
    SourceWindowKind kind;
    kind.window = windows::kAssembler;
    kind.captionprefix = kAsmCaptionPrefix;
    kind.extension = ".asm";
    kind.editorprefix = kAssemblerEditor;
    kind.autostartflag = kAutoStartAsm;
    kind.autostartfile = kAutoStartAsmFile;
    kind.sourceallowed = asmsourceallowed;
    kind.refusedmessage = kAsmExtensionRefused;
    return kind;
}

}  // namespace

AssemblerWindow::AssemblerWindow(MainWindowModel& main, UserInput& input, Clock& clock)
    : SourceWindow(main, input, clock, assemblerkind()) {}

// --- life ---

void AssemblerWindow::onload() {
    keywords_ = asmeditorkeywords(main_.simulation().definitions().definitiontext);
    loadsettingsandsource();
}

AsmWindowGeometry AssemblerWindow::geometry() {
    AsmWindowGeometry g;
    static_cast<SourceWindowGeometry&>(g) = savedgeometry();
    g.divider = readnumber(main_.settings(), kAssemblerDivider, {kDividerLow, kDividerHigh});
    return g;
}

void AssemblerWindow::onunload(PixelPoint place, PixelPoint size, int divider) {
    SettingsAccess& settings = main_.settings();
    if (!readswitch(settings, kSavePositions)) return;
    saveplacement(place, size);
    settings.putsetting(kAssemblerDivider, settingtext(std::clamp(divider, kDividerLow, kDividerHigh)));
}

// --- commands ---

void AssemblerWindow::command(const std::string& control) {
    // A run yields to the event queue; nothing else may start meanwhile.
    if (!menusenabled_) return;
    sourcefocus = false;
    if (sharedcommand(control)) {
        // a file or search command
    } else if (control == "menuprint") menuprint(false);
    else if (control == "menuprint2") menuprint(true);
    else if (control == "menuassemble") menuassemble();
    else if (control == "menuassembleload") menuassembleload();
    else if (control == "menuavrassembler") menuavrassembler();
    else if (control == "menueeprom") menueeprom();
    else if (control == "menu5") menugotonexterror();
    notify(changed);
}

void AssemblerWindow::sourcereplaced() {
    listing.clear();
    gotonexterror_ = false;
}

bool AssemblerWindow::menuprint(bool listingtoo) {
    if (!listingtoo) return printsource(source, filename(), kAsmSourceEmpty);
    return printsource(listing, asmoutputpath(folder(), sourcename(filename()), ".lst"), kAsmListingEmpty);
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
    if (!preparebuild()) return false;
    gotonexterror_ = false;
    listing.clear();
    asmdeleteoutputs(folder(), sourcename(filename()));
    return true;
}

void AssemblerWindow::showlisting(const std::string& path) {
    listing.clear();
    if (std::optional<std::string> text = readsourcetext(path)) {
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
    const std::string name = sourcename(filename());
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
    loadbuiltprogram(asmoutputpath(folder(), sourcename(filename()), ".hex"), true);
}

void AssemblerWindow::menuavrassembler() {
    SettingsAccess& settings = main_.settings();
    std::string tool = settings.getsetting(kAvrAssemblerPathSetting, kAvrAssemblerDefaultPath);
    if (!sourcefileexists(tool)) {
        tool = input_.openfile(sourcefolder(kAvrAssemblerDefaultPath));
        if (!sourcefileexists(tool)) {
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
    request.filename = sourcename(filename());
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

}  // namespace velmora
