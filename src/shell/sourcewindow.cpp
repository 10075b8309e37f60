#include "shell/sourcewindow.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "image/programcommands.h"
#include "shell/settingnames.h"
#include "shell/settingswitches.h"
#include "shell/settingvalues.h"

namespace velmora {

namespace fs = std::filesystem;
using namespace settingnames;

namespace {
constexpr double kPrinterFontSizeDefault = 9;
constexpr RealRange kPrinterFontSizeRange{1, 144};  // points a printed page can hold
}  // namespace

bool sourcefileexists(const std::string& path) {
    std::error_code error;
    return !path.empty() && fs::is_regular_file(path, error);
}

std::optional<std::string> readsourcetext(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    std::ostringstream buffer;
    buffer << in.rdbuf();
    std::string text = buffer.str();
    std::erase(text, '\r');
    return text;
}

std::string sourcefolder(const std::string& path) { return fs::path(path).parent_path().string(); }
std::string sourcename(const std::string& path) { return fs::path(path).filename().string(); }

SourceWindow::SourceWindow(MainWindowModel& main, UserInput& input, Clock& clock, SourceWindowKind kind)
    : main_(main), input_(input), clock_(clock), kind_(std::move(kind)), caption_(kind_.captionprefix + "UNTITLED") {}

bool SourceWindow::untitled() const { return caption_.find("UNTITLED") != std::string::npos; }

std::string SourceWindow::filename() const {
    if (untitled() || caption_.size() <= kind_.captionprefix.size()) return {};
    return caption_.substr(kind_.captionprefix.size());
}

std::string SourceWindow::folder() const { return sourcefolder(filename()); }

std::string SourceWindow::lastpath() {
    return main_.settings().getsetting(kLastPath, main_.simulation().datadirectory());
}

// --- life ---

void SourceWindow::loadsettingsandsource() {
    SettingsAccess& settings = main_.settings();
    editorsettings_ = readeditorsettings(settings, kind_.editorprefix);
    lastpath();
    const std::string last = settings.getsetting(kind_.autostartfile, "");
    if (readswitch(settings, kind_.autostartflag) && sourcefileexists(last)) loadsource(last);
    notify(changed);
}

SourceWindowGeometry SourceWindow::savedgeometry() {
    SettingsAccess& settings = main_.settings();
    SourceWindowGeometry g;
    g.place = startposition(settings, kind_.window);
    if (!readswitch(settings, kSavePositions)) return g;
    // No default: a size missing or out of range leaves the window at its design size.
    const auto size = [&](const char* pattern) {
        return rangednumber(settings.getsetting(settingname(pattern, kind_.window), ""), 0, {1, kWindowTwipsHigh});
    };
    const int32_t width = size(kWindowWidth);
    const int32_t height = size(kWindowHeight);
    if (width > 0 && height > 0) g.size = PixelPoint{width / kTwipsPerPixel, height / kTwipsPerPixel};
    return g;
}

void SourceWindow::saveplacement(PixelPoint place, PixelPoint size) {
    SettingsAccess& settings = main_.settings();
    saveposition(settings, kind_.window, place);
    settings.putsetting(settingname(kWindowWidth, kind_.window), settingtext(size.x * kTwipsPerPixel));
    settings.putsetting(settingname(kWindowHeight, kind_.window), settingtext(size.y * kTwipsPerPixel));
}

// --- files ---

bool SourceWindow::sharedcommand(const std::string& control) {
    if (control == "menunew") menunew();
    else if (control == "menuopen") menuopen();
    else if (control == "menusave") menusave();
    else if (control == "menusaveas") menusaveas();
    else if (control == "menufind") menufind();
    else if (control == "menufindnext") menufindnext();
    else if (control == "menureplace") menureplace();
    else if (control == "menuformat") menuformat();
    else return false;
    return true;
}

bool SourceWindow::menunew() {
    source.clear();
    caption_ = kind_.captionprefix + "UNTITLED";
    sourcereplaced();
    main_.settings().putsetting(kind_.autostartfile, "");
    return true;
}

void SourceWindow::loadsource(const std::string& path) {
    const std::optional<std::string> text = readsourcetext(path);
    if (!text) {
        show(kSourceCannotOpen, MessageKind::Critical);
        return;
    }
    sourcereplaced();
    source.clear();
    source.text = *text;
    caption_ = captionof(path);
    main_.settings().putsetting(kind_.autostartfile, path);
}

bool SourceWindow::menuopen() {
    const std::string path = input_.openfile(lastpath());
    if (path.empty()) return false;
    if (kind_.sourceallowed && !kind_.sourceallowed(path)) {
        show(kind_.refusedmessage, MessageKind::Exclamation);
        return false;
    }
    main_.settings().putsetting(kLastPath, sourcefolder(path));
    loadsource(path);
    return caption_ == captionof(path);
}

// The old file goes first, so that the new text never mixes with it.
bool SourceWindow::writesource(const std::string& path) {
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

bool SourceWindow::menusave() {
    if (untitled()) return menusaveas();
    const std::string path = filename();
    if (!writesource(path)) return false;
    sourcesaved();
    main_.settings().putsetting(kind_.autostartfile, path);
    return true;
}

bool SourceWindow::menusaveas() {
    const std::string chosen = input_.savefile(lastpath());
    if (chosen.empty()) return false;
    const std::string name = sourcename(chosen);
    const std::string base = name.substr(0, name.find('.'));
    const std::string path = (fs::path(chosen).parent_path() / (base + kind_.extension)).string();
    if (sourcefileexists(path) && !input_.askyesno("Do you want to overwrite existing file " + path + "?"))
        return false;
    if (!writesource(path)) return false;
    caption_ = captionof(path);
    sourcesaved();
    main_.settings().putsetting(kLastPath, sourcefolder(path));
    main_.settings().putsetting(kind_.autostartfile, path);
    show("File " + path + " saved.", MessageKind::Information);
    return true;
}

bool SourceWindow::printsource(const SourceEditorState& what, const std::string& title, const char* emptymessage) {
    if (untitled()) {
        show(kSourceSaveFirst, MessageKind::Exclamation);
        return false;
    }
    if (what.isempty()) {
        show(emptymessage, MessageKind::Exclamation);
        return false;
    }
    SourcePrintJob job;
    job.title = title;
    job.text = what.text;
    job.fontname = readsetting(main_.settings(), kPrinterFontName);
    job.fontsize = readreal(main_.settings(), kPrinterFontSize, kPrinterFontSizeDefault, kPrinterFontSizeRange);
    return print && print(job);
}

// --- building ---

bool SourceWindow::preparebuild() {
    if (source.isempty()) {
        show(kSourceEditorEmpty, MessageKind::Exclamation);
        return false;
    }
    if (untitled()) {
        menusaveas();
        if (untitled()) return false;
    }
    return writesource(filename());
}

bool SourceWindow::loadbuiltprogram(const std::string& hexpath, bool confirm) {
    if (main_.machine().simulationrunning) {
        if (main_.run().simulationrate() != kRateStep) {
            show(kStopSimulationFirst, MessageKind::Exclamation);
            return false;
        }
        main_.run().menustop();
    }
    WindowRegistry& registry = main_.registry();
    for (int window : {windows::kDisassembler, windows::kBreakpointsManager})
        if (registry.isopen(window)) registry.unload(window);
    main_.loadprogramfile(hexpath, confirm);
    return main_.qprogram() == hexpath;
}

void SourceWindow::gotoerrorline(int line) {
    source.gotoline(line);
    sourcefocus = true;
}

// --- searching ---

void SourceWindow::menufind() {
    const std::optional<std::string> what = input_.inputbox("Find what:", findwhat_);
    if (!what || what->empty()) return;
    findwhat_ = *what;
    const size_t at = editorfindtext(source.text, findwhat_, std::min(source.caret, source.text.size()));
    if (at == std::string::npos) return;
    source.caret = at;
    source.selection = findwhat_.size();
    sourcefocus = true;
}

void SourceWindow::menufindnext() {
    if (findwhat_.empty()) {
        menufind();
        return;
    }
    // From behind the present find, and round to the top once.
    size_t at =
        editorfindtext(source.text, findwhat_, std::min(source.caret + source.selection, source.text.size()));
    if (at == std::string::npos) at = editorfindtext(source.text, findwhat_, 0);
    if (at == std::string::npos) return;
    source.caret = at;
    source.selection = findwhat_.size();
    sourcefocus = true;
}

void SourceWindow::menureplace() {
    const std::optional<std::string> what = input_.inputbox("Find what:", findwhat_);
    if (!what || what->empty()) return;
    const std::optional<std::string> with = input_.inputbox("Replace with:", "");
    if (!with) return;
    findwhat_ = *what;
    const int count = editorreplaceall(source.text, *what, *with);
    source.caret = std::min(source.caret, source.text.size());
    source.selection = 0;
    show(std::to_string(count) + " words replaced.", MessageKind::Information);
}

void SourceWindow::menuformat() {
    source.text = editorformattext(source.text);
    source.caret = std::min(source.caret, source.text.size());
    source.selection = 0;
}

}  // namespace velmora
