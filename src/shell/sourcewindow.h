#pragma once
// What the BASIC Compiler window and the Assembler window have in common, without drawing:
// the source editor, the caption that names the file, the file commands, searching, the
// editor settings and keywords, printing, the window's place, and loading a built program
// into the simulator. Each window adds only its own tools and options.

#include <functional>
#include <optional>
#include <string>

#include "shell/mainwindowmodel.h"
#include "shell/sourcewindoweditor.h"
#include "shell/sourcewindowsettings.h"
#include "shell/sourcewindowsyntax.h"
#include "shell/windowplacement.h"

namespace velmora {

inline constexpr char kSourceSaveFirst[] = "Please save the file first.";
inline constexpr char kSourceEditorEmpty[] = "The editor is empty.";
inline constexpr char kSourceNothingToPrint[] = "The source editor is empty.";
inline constexpr char kSourceCannotOpen[] = "The file can not be opened.";

// What tells the two source windows apart in their shared commands.
struct SourceWindowKind {
    int window = 0;                       // its number
    std::string captionprefix;            // "Assembler - "
    std::string extension;                // ".asm", given by Save As
    const char* editorprefix = "";        // its settings group, "A" or "C"
    const char* autostartflag = "";       // "Auto Start Asm"
    const char* autostartfile = "";       // "Auto Start Asm File"
    bool (*sourceallowed)(const std::string& filename) = nullptr;  // Open's refusal, if any
    const char* refusedmessage = "";
};

// What a print command hands to the printer.
struct SourcePrintJob {
    std::string title;  // the file's name
    std::string text;
    std::string fontname;
    double fontsize = 9;
};

// The window's place and size as saved; each part only when it was stored.
struct SourceWindowGeometry {
    std::optional<PixelPoint> place;
    std::optional<PixelPoint> size;  // width, height
};

class SourceWindow {
public:
    SourceWindow(MainWindowModel& main, UserInput& input, Clock& clock, SourceWindowKind kind);
    SourceWindow(const SourceWindow&) = delete;
    SourceWindow& operator=(const SourceWindow&) = delete;
    virtual ~SourceWindow() = default;

    // --- what the window shows ---
    SourceEditorState source;
    const std::string& caption() const { return caption_; }
    bool untitled() const;
    // The full name of the file in the caption; "" while untitled.
    std::string filename() const;
    bool menusenabled() const { return menusenabled_; }
    // The source editor should take the focus after the last command.
    bool sourcefocus = false;
    const SourceKeywords& keywords() const { return keywords_; }
    const EditorSettings& editorsettings() const { return editorsettings_; }

    // --- file and search commands ---
    bool menunew();
    bool menuopen();
    bool menusave();
    bool menusaveas();
    void menufind();
    void menufindnext();
    void menureplace();
    void menuformat();

    // --- what the view is told ---
    std::function<void()> changed;  // anything may have changed: draw it all
    std::function<bool(const SourcePrintJob&)> print;

protected:
    // The window opens: settings, and the last source when auto start wants it. The keywords
    // are the window's own and are set before.
    void loadsettingsandsource();
    SourceWindowGeometry savedgeometry();
    void saveplacement(PixelPoint place, PixelPoint size);

    // The commands above by control name; false for a control that is not one of them.
    bool sharedcommand(const std::string& control);
    // Something to build, saved under a name: an empty editor and a cancelled Save As stop
    // here. The editor's text is written to the file, since the tools read the file.
    bool preparebuild();
    bool writesource(const std::string& path);
    // Print Source: refused while untitled or empty.
    bool printsource(const SourceEditorState& what, const std::string& title, const char* emptymessage);
    // A built HEX file into the simulator, as the main window's Load Program does: refused
    // unless stopped or at Step By Step, which is stopped; the windows that show the old
    // program close. `confirm` shows the load's own confirmation. True when it was loaded.
    bool loadbuiltprogram(const std::string& hexpath, bool confirm);
    // The caret to a line that needs the user's eye.
    void gotoerrorline(int line);

    std::string folder() const;
    std::string lastpath();
    void show(const std::string& text, MessageKind kind) { main_.messenger().show(text, kind); }
    void notify(const std::function<void()>& callback) const {
        if (callback) callback();
    }

    // What a window forgets when its source is replaced (New, Open) or saved.
    virtual void sourcereplaced() {}
    virtual void sourcesaved() {}

    MainWindowModel& main_;
    UserInput& input_;
    Clock& clock_;
    SourceKeywords keywords_;
    EditorSettings editorsettings_;
    bool menusenabled_ = true;

private:
    void loadsource(const std::string& path);
    std::string captionof(const std::string& path) const { return kind_.captionprefix + path; }

    SourceWindowKind kind_;
    std::string caption_;
    std::string findwhat_;
};

std::string sourcefolder(const std::string& path);
std::string sourcename(const std::string& path);
bool sourcefileexists(const std::string& path);
// The whole file with its line ends as "\n"; nothing when it cannot be read.
std::optional<std::string> readsourcetext(const std::string& path);

}  // namespace velmora
