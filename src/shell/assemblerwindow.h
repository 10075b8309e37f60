#pragma once
// The Assembler window without its drawing: the shared source window (editor, caption, file
// commands) plus the listing viewer, the status frame of a run, the error marks, and the
// window's tools by control name. The Qt view copies the editors' text and caret in before a
// command and draws this state afterwards.

#include <functional>
#include <optional>
#include <string>

#include "assembler/asmassemble.h"
#include "assembler/asmcontext.h"
#include "shell/asmeditorsettings.h"
#include "shell/asmeditorstate.h"
#include "shell/asmsyntax.h"
#include "shell/sourcewindow.h"

namespace velmora {

inline constexpr const char* kAsmSaveFirst = kSourceSaveFirst;
inline constexpr const char* kAsmSourceEmpty = kSourceNothingToPrint;
inline constexpr char kAsmListingEmpty[] = "The listing viewer is empty.";
inline constexpr char kAsmFrameCaption[] = "Assembling in progress...";
inline constexpr const char* kAsmCannotOpen = kSourceCannotOpen;
inline constexpr char kAsmEepromEditorMissing[] = "The EEPROM Memory Editor is not available.";

using AsmPrintJob = SourcePrintJob;

// The window's size and divider as saved; each part only when it was stored.
struct AsmWindowGeometry : SourceWindowGeometry {
    int divider = 70;  // share of the source editor, in percent
};

class AssemblerWindow : public SourceWindow, private AsmProgress {
public:
    // `input` answers this window's dialogs; `clock` gives the yields of a run.
    AssemblerWindow(MainWindowModel& main, UserInput& input, Clock& clock);

    // --- what the window shows, beside the source ---
    AsmEditorState listing;
    bool gotonexterrorvisible() const { return gotonexterror_; }
    bool frameshown() const { return frameshown_; }
    const std::string& label1() const { return label1_; }
    const std::string& label2() const { return label2_; }
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
    bool menuprint(bool listingtoo);
    // Assemble: the number of errors, or nothing when no run took place.
    std::optional<int> menuassemble();
    void menuassembleload();
    void menuavrassembler();
    void menueeprom();
    void menugotonexterror();

    // Where Assemble With AVR Assembler makes its short-named copy ("" for the system's).
    std::string externaltempfolder;

    std::function<void()> statuschanged;  // the frame and its two fields

private:
    // AsmProgress
    void status(const std::string& first, const std::string& second) override;
    void yield() override;
    // SourceWindow
    void sourcereplaced() override;
    void sourcesaved() override { gotonexterror_ = false; }

    void setbusy(bool busy);
    bool prepareassembly();
    void showlisting(const std::string& path);
    void markerrors();

    AsmContext ctx_;
    std::string label1_, label2_;
    bool gotonexterror_ = false;
    bool frameshown_ = false;
};

}  // namespace velmora
