#pragma once
// The BASIC Compiler window without its drawing: the shared source window (editor, caption,
// file commands) plus the header with the model and clock, the three Tools commands that
// compile, assemble and load, and the Options that show the model's system tables and set
// the compiler's switches. The Qt view copies the editor's text and caret in before a
// command and draws this state afterwards.

#include <functional>
#include <string>

#include "basic/basicbuild.h"
#include "shell/basictracking.h"
#include "shell/sourcewindow.h"

namespace velmora {

inline constexpr char kBasicCaptionPrefix[] = "BASIC Compiler - ";

// What the Viewer window shows: a caption and a read-only text.
struct ViewerText {
    std::string caption;
    std::string text;
};

class BasicCompilerWindow : public SourceWindow, public TrackingWindow {
public:
    // `input` answers this window's dialogs.
    BasicCompilerWindow(MainWindowModel& main, UserInput& input, Clock& clock);
    ~BasicCompilerWindow() override;

    // --- what the window shows, beside the source ---
    // The selected model and the clock, as the main window has them now.
    std::string header() const;
    bool compatiblelisting();  // "Generate AVR Assembler Compatible Listing" is ticked
    bool arbitrarybitnames();  // "Allow Arbitrary Use of Official Bit Names" is ticked
    // The last Tools command's outcome, for the windows that show more of it.
    const BasicBuildResult& lastbuild() const { return lastbuild_; }

    // --- life ---
    // The window opens: settings, keywords, and the last source when auto start wants it.
    void onload();
    SourceWindowGeometry geometry() { return savedgeometry(); }
    // The window closes: its place and size are kept when "Save Positions" is on.
    void onunload(PixelPoint place, PixelPoint size);

    // --- commands ---
    // Runs a command by control name; the four Edit commands of the text control are the view's.
    void command(const std::string& control);
    bool menuprint();
    // Each is true when it did all of its work.
    bool menucompile();
    bool menucompileassemble();
    bool menucompileassembleload();
    void menuvariables();
    void menubitnames();
    void menuinterrupts();
    void menucompatible();
    void menuarbitrary();

    // --- what the view is told ---
    std::function<void(const ViewerText&)> showviewer;

    // --- following the running program ---
    std::string trackingcaption() const override { return caption(); }
    // Records the mark of the line that runs; the view shows it when it next draws, so a fast
    // run costs no drawing per statement.
    void markline(int line) override;
    // The line marked since the last call (0: the mark cleared); false when none was.
    bool takemark(int& line);

private:
    BasicModel currentmodel() const;
    // The compile, and the assembly when asked, with the window disabled meanwhile. The
    // warnings and a failure have been shown when it returns.
    bool build(bool assemble);

    BasicBuildResult lastbuild_;
    int markedline_ = 0;
    bool markpending_ = false;
};

}  // namespace velmora
