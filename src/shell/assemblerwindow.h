#pragma once
// The Assembler window without its drawing: the source editor and listing viewer as plain
// state, the caption that names the file, the status frame of a run, the error marks, and
// the window's commands by control name. The Qt view copies the editors' text and caret in
// before a command and draws this state afterwards.

#include <functional>
#include <optional>
#include <string>

#include "assembler/asmassemble.h"
#include "assembler/asmcontext.h"
#include "shell/asmeditorsettings.h"
#include "shell/asmeditorstate.h"
#include "shell/asmsyntax.h"
#include "shell/mainwindowmodel.h"
#include "shell/windowplacement.h"

namespace velmora {

inline constexpr char kAsmSaveFirst[] = "Please save the file first.";
inline constexpr char kAsmSourceEmpty[] = "The source editor is empty.";
inline constexpr char kAsmListingEmpty[] = "The listing viewer is empty.";
inline constexpr char kAsmFrameCaption[] = "Assembling in progress...";
inline constexpr char kAsmCannotOpen[] = "The file can not be opened.";
inline constexpr char kAsmEepromEditorMissing[] = "The EEPROM Memory Editor is not available.";

// What Print Source and Print Listing hand to the printer.
struct AsmPrintJob {
    std::string title;  // the source's file name
    std::string text;
    std::string fontname;
    double fontsize = 9;
};

// The window's size and divider as saved; each part only when it was stored.
struct AsmWindowGeometry {
    std::optional<PixelPoint> place;
    std::optional<PixelPoint> size;  // width, height
    int divider = 70;                // share of the source editor, in percent
};

class AssemblerWindow : private AsmProgress {
public:
    // `input` answers this window's dialogs; `clock` gives the yields of a run.
    AssemblerWindow(MainWindowModel& main, UserInput& input, Clock& clock);
    AssemblerWindow(const AssemblerWindow&) = delete;
    AssemblerWindow& operator=(const AssemblerWindow&) = delete;

    // --- what the window shows ---
    AsmEditorState source;
    AsmEditorState listing;
    const std::string& caption() const { return caption_; }
    bool untitled() const;
    // The full name of the file in the caption; "" while untitled.
    std::string filename() const;
    bool gotonexterrorvisible() const { return gotonexterror_; }
    bool menusenabled() const { return menusenabled_; }
    bool frameshown() const { return frameshown_; }
    const std::string& label1() const { return label1_; }
    const std::string& label2() const { return label2_; }
    // The source editor should take the focus after the last command.
    bool sourcefocus = false;
    const AsmKeywords& keywords() const { return keywords_; }
    const AsmEditorSettings& editorsettings() const { return editorsettings_; }
    const AsmContext& context() const { return ctx_; }

    // --- life ---
    // The window opens: settings, keywords, and the last source when auto start wants it.
    void onload();
    AsmWindowGeometry geometry();
    // The window closes: its geometry is kept when "Save Positions" is on.
    void onunload(PixelPoint place, PixelPoint size, int divider);

    // --- commands ---
    // Runs a command by control name; the four Edit commands of the text control are the view's.
    void command(const std::string& control);
    // File commands; each returns true when it did its work.
    bool menunew();
    bool menuopen();
    bool menusave();
    bool menusaveas();
    bool menuprint(bool listingtoo);
    // Assemble: the number of errors, or nothing when no run took place.
    std::optional<int> menuassemble();
    void menuassembleload();
    void menuavrassembler();
    void menueeprom();
    void menugotonexterror();
    void menufind();
    void menufindnext();
    void menureplace();
    void menuformat();

    // Where Assemble With AVR Assembler makes its short-named copy ("" for the system's).
    std::string externaltempfolder;

    // --- what the view is told ---
    std::function<void()> changed;        // anything may have changed: draw it all
    std::function<void()> statuschanged;  // the frame and its two fields
    std::function<bool(const AsmPrintJob&)> print;

private:
    // AsmProgress
    void status(const std::string& first, const std::string& second) override;
    void yield() override;

    std::string folder() const;
    std::string lastpath();
    void loadsource(const std::string& path);
    bool writesource(const std::string& path);
    void hidegotonexterror();
    void setbusy(bool busy);
    bool prepareassembly();
    void showlisting(const std::string& path);
    void markerrors();
    void notify(const std::function<void()>& callback) const {
        if (callback) callback();
    }
    void show(const std::string& text, MessageKind kind);

    MainWindowModel& main_;
    UserInput& input_;
    Clock& clock_;
    AsmContext ctx_;
    AsmKeywords keywords_;
    AsmEditorSettings editorsettings_;
    std::string caption_;
    std::string findwhat_;
    std::string label1_, label2_;
    bool gotonexterror_ = false;
    bool menusenabled_ = true;
    bool frameshown_ = false;
};

}  // namespace velmora
