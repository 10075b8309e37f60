#include "shell/basiccompilerwindow.h"

#include "assembler/asmassemble.h"
#include "basic/systemtables.h"
#include "image/programcommands.h"
#include "shell/basiccompilersyntax.h"
#include "shell/settingnames.h"
#include "shell/settingswitches.h"
#include "shell/settingvalues.h"

namespace velmora {

using namespace settingnames;

namespace {

SourceWindowKind basiccompilerkind() {
    SourceWindowKind kind;
    kind.window = windows::kBasicCompiler;
    kind.captionprefix = kBasicCaptionPrefix;
    kind.extension = ".bas";
    kind.editorprefix = kBasicEditor;
    kind.autostartflag = kAutoStartBas;
    kind.autostartfile = kAutoStartBasFile;
    return kind;
}

// The compiler reads its rows as the editor control gives them, ended by CR LF.
std::string crlftext(const std::string& text) {
    std::string out;
    out.reserve(text.size() + text.size() / 16);
    for (char c : text) {
        if (c == '\r') continue;
        if (c == '\n') out += '\r';
        out += c;
    }
    return out;
}

// With "Show Memory Usage" on, a compile that succeeded shows what it made of the data space.
void showmemoryusage(MainWindowModel& main) {
    if (main.options().on(kShowMemoryUsage)) main.registry().open(windows::kDataMemoryUsage);
}

}  // namespace

BasicCompilerWindow::BasicCompilerWindow(MainWindowModel& main, UserInput& input, Clock& clock)
    : SourceWindow(main, input, clock, basiccompilerkind()) {}

std::string BasicCompilerWindow::header() const {
    return " Microcontroller: " + main_.machine().modelname + ";  Clock Frequency: " + main_.qclockfreq();
}

bool BasicCompilerWindow::compatiblelisting() {
    return main_.settings().getsetting(kMpasmwinListing, "OFF") == "ON";
}

bool BasicCompilerWindow::arbitrarybitnames() {
    return settingreal(readsetting(main_.settings(), kAllowArbitraryBitNames)) != 0;
}

BasicModel BasicCompilerWindow::currentmodel() const {
    // The model's names are the main window's; the clock is what it shows, as the user typed it.
    MainWindowModel& main = main_;
    return basicmodelof(main.machine(), main.simulation().definitions(), main.qclockfreq(),
                        clockmhz(main.options().clockfrequency));
}

// --- life ---

void BasicCompilerWindow::onload() {
    keywords_ = basiceditorkeywords(currentmodel());
    loadsettingsandsource();
    main_.tracking().setwindow(this);
}

void BasicCompilerWindow::onunload(PixelPoint place, PixelPoint size) {
    main_.tracking().setwindow(nullptr);
    if (readswitch(main_.settings(), kSavePositions)) saveplacement(place, size);
}

BasicCompilerWindow::~BasicCompilerWindow() { main_.tracking().setwindow(nullptr); }

void BasicCompilerWindow::markline(int line) {
    // A loop on one line marks it again at every pass: the view need not hear of it.
    if (line == markedline_ && !markpending_) return;
    source.marks.clear();
    if (line > 0) source.marks.push_back(line);
    markedline_ = line;
    markpending_ = true;
}

bool BasicCompilerWindow::takemark(int& line) {
    if (!markpending_) return false;
    markpending_ = false;
    line = markedline_;
    return true;
}

// --- commands ---

void BasicCompilerWindow::command(const std::string& control) {
    if (!menusenabled_) return;
    sourcefocus = false;
    if (sharedcommand(control)) {
        // a file or search command
    } else if (control == "menuprint") menuprint();
    else if (control == "menucompile") menucompile();
    else if (control == "menucompileassemble") menucompileassemble();
    else if (control == "menucompileassembleload") menucompileassembleload();
    else if (control == "menuvariables") menuvariables();
    else if (control == "menubitnames") menubitnames();
    else if (control == "menuinterrupts") menuinterrupts();
    else if (control == "menucompatible") menucompatible();
    else if (control == "menuarbitrary") menuarbitrary();
    notify(changed);
}

bool BasicCompilerWindow::menuprint() { return printsource(source, filename(), kSourceNothingToPrint); }

bool BasicCompilerWindow::build(bool assemble) {
    if (!preparebuild()) return false;
    const BasicModel model = currentmodel();
    BasicBuildRequest request;
    request.folder = folder();
    request.basename = basicbasename(sourcename(filename()));
    request.source = crlftext(source.text);
    request.model = &model;
    request.asmmodel = asmmodelof(main_.machine(), main_.simulation().definitions());
    request.options.allowarbitrarybitnames = arbitrarybitnames();
    request.options.compatiblelisting = compatiblelisting();
    request.assemble = assemble;

    // No yield happens while the compile runs; the flags keep a queued click out all the same.
    menusenabled_ = source.enabled = false;
    lastbuild_ = basicbuild(request);
    menusenabled_ = source.enabled = true;
    // CLOCK_FREQUENCY sets the simulator's clock, also when a later row failed.
    if (lastbuild_.compile.definedclock > 0)
        main_.optioncommands().setclock(std::to_string(static_cast<int>(lastbuild_.compile.definedclock)));

    for (const std::string& warning : lastbuild_.compile.warnings) show(warning, MessageKind::Exclamation);
    if (!lastbuild_.failure.empty()) {
        show(lastbuild_.failure, MessageKind::Critical);
        if (lastbuild_.compile.errorline > 0) gotoerrorline(lastbuild_.compile.errorline);
        return false;
    }
    if (lastbuild_.asmerrors > 0) {
        show(lastbuild_.report, MessageKind::Exclamation);
        return false;
    }
    return true;
}

bool BasicCompilerWindow::menucompile() {
    if (!build(false)) return false;
    show(lastbuild_.report, MessageKind::Information);
    showmemoryusage(main_);
    return true;
}

bool BasicCompilerWindow::menucompileassemble() {
    if (!build(true)) return false;
    show(lastbuild_.report, MessageKind::Information);
    showmemoryusage(main_);
    return true;
}

bool BasicCompilerWindow::menucompileassembleload() {
    if (!build(true)) return false;
    if (!loadbuiltprogram(lastbuild_.hexpath, false)) return false;
    const int bytes = main_.machine().programbytes;
    show(lastbuild_.report + "\nTotal " + std::to_string(bytes) + " (" + kilobytestext(bytes) +
             "K) program bytes loaded.",
         MessageKind::Information);
    showmemoryusage(main_);
    return true;
}

// --- options ---

void BasicCompilerWindow::menuvariables() {
    if (showviewer) showviewer({"System Variables", systemvariablestable(currentmodel())});
}

void BasicCompilerWindow::menubitnames() {
    if (showviewer) showviewer({"System Bit Names", systembitnamestable(currentmodel())});
}

void BasicCompilerWindow::menuinterrupts() {
    if (showviewer) showviewer({"System Interrupt Names", systeminterruptstable(currentmodel())});
}

void BasicCompilerWindow::menucompatible() {
    main_.settings().putsetting(kMpasmwinListing, compatiblelisting() ? "OFF" : "ON");
}

void BasicCompilerWindow::menuarbitrary() {
    main_.settings().putsetting(kAllowArbitraryBitNames, arbitrarybitnames() ? "0" : "1");
}

}  // namespace velmora
