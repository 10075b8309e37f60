// The BASIC Compiler window: its command flow from the editor to the simulator, the report
// texts, the caret on an error, the header, its options and the files it keeps.

#include "shell/basiccompilerwindow.h"

#include <gtest/gtest.h>

#include "shell/basiccompilersyntax.h"
#include "shell/settingnames.h"
#include "shellfixture.h"
#include "support/sectiontable.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

namespace fs = std::filesystem;

// Six words on an ATmega32 (RAMEND 0x85F), worked out from the instruction set: CLR R15 =
// 24FF, LDI R16,$5F = E50F, OUT SPL,R16 = BF0D, LDI R16,$08 = E008, OUT SPH,R16 = BF0E and
// the closing jump to itself CFFF. A declaration makes no code.
const char kGoodSource[] = "' nothing but a variable\nDim level As Byte\n";
const uint8_t kGoodBytes[] = {0xFF, 0x24, 0x0F, 0xE5, 0x0D, 0xBF, 0x08, 0xE0, 0x0E, 0xBF, 0xFF, 0xCF};
// Line 3 names a variable that starts with a digit.
const char kBadSource[] = "' first\nDim a As Byte\nDim 1abc As Byte\nDim b As Byte\n";

struct BasicFixture : ::testing::Test {
    Shell shell;
    TempFolder folder;
    BasicCompilerWindow window{shell.model, shell.input, shell.clock};
    std::vector<ViewerText> viewed;

    void SetUp() override {
        shell.select("ATmega32");
        // The clock as start-up reads it from the settings.
        shell.input.answers = {std::string("4")};
        shell.model.command("menuclock");
        window.showviewer = [this](const ViewerText& text) { viewed.push_back(text); };
        window.onload();
    }
    std::string path(const std::string& name) const { return (folder / name).string(); }
    // A titled source in the temporary folder with this text in the editor.
    void titled(const std::string& text, const std::string& name = "prog.bas") {
        window.source.text = text;
        shell.input.savepath = path(name);
        window.command("menusaveas");
        shell.messenger.messages.clear();
    }
    std::string setting(const std::string& name) { return shell.settings.getsetting(name, "?"); }
    std::string report(const std::string& base) const {
        return "The compilation process was successful.\nThe size of the generated code is 12 program bytes.\n"
               "Total 32768 program bytes available.\nOutput saved as " +
               path(base) + ".asm";
    }
};

// Each of the three tools compiles the editor's text (not the file on disk), writes what it
// makes beside the source and reports in one box; the last loads the program.
TEST_F(BasicFixture, EachToolWritesItsFilesAndReportsInOneBox) {
    const std::string assembled = "\nListing file: " + path("prog.lst") + "\nGenerated HEX file: " + path("prog.hex");
    const struct {
        const char* tool;
        std::string tail;  // of the report
        bool hex, load;
    } rows[] = {
        {"menucompile", "", false, false},
        {"menucompileassemble", assembled, true, false},
        {"menucompileassembleload", assembled + "\nTotal 12 (0.01K) program bytes loaded.", true, true},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.tool);
        shell.loadhello();
        fs::remove(folder / "prog.hex");
        titled(kGoodSource);
        writefile(folder / "prog.bas", "stale text on disk\n");
        if (row.hex) writefile(folder / "prog.hex", "old");
        window.command(row.tool);
        EXPECT_EQ(readfile(folder / "prog.bas"), kGoodSource);
        const std::string generated = readfile(folder / "prog.asm");
        EXPECT_NE(generated.find("; 2: Dim level As Byte\r\n"), std::string::npos) << generated;
        EXPECT_NE(generated.find("; Clock frequency: 4.0 MHz\r\n"), std::string::npos);
        EXPECT_EQ(shell.messenger.messages, std::vector<std::string>{report("prog") + row.tail});
        EXPECT_TRUE(window.menusenabled() && window.source.enabled);
        if (row.hex) {
            EXPECT_EQ(readfile(folder / "prog.hex"),
                      ":020000040000FA\r\n:0C000000FF240FE50DBF08E00EBFFFCF8E\r\n:00000001FF\r\n");
            EXPECT_NE(readfile(folder / "prog.lst").find("Number of errors = 0"), std::string::npos);
        } else {
            EXPECT_FALSE(fs::exists(folder / "prog.hex"));
        }
        EXPECT_EQ(shell.model.qprogram(), row.load ? path("prog.hex") : hellohex());
        if (!row.load) continue;
        for (size_t i = 0; i < sizeof kGoodBytes; ++i) EXPECT_EQ(shell.m().progmem[i], kGoodBytes[i]) << i;
        EXPECT_EQ(shell.m().programbytes, 12);
    }
}

TEST_F(BasicFixture, AnErrorTakesTheCaretToItsLineAndWritesNothing) {
    titled(kBadSource);
    writefile(folder / "prog.asm", "from an earlier compile\n");
    window.source.caret = 0;
    EXPECT_FALSE(window.menucompileassemble());
    EXPECT_EQ(shell.lastmessage(), "Error in line 3: Incorrect variable name.");
    EXPECT_EQ(shell.messenger.messages.size(), 1u);
    EXPECT_EQ(window.source.caretline(), 3);
    EXPECT_TRUE(window.sourcefocus);
    EXPECT_EQ(readfile(folder / "prog.asm"), "from an earlier compile\n");
    EXPECT_FALSE(fs::exists(folder / "prog.hex"));
    EXPECT_EQ(window.lastbuild().compile.errorline, 3);
}

// Steps the loaded program and lists the lines the window was asked to mark, in order.
std::vector<int> markedlines(Shell& shell, BasicCompilerWindow& window, int steps) {
    std::vector<int> lines;
    for (int i = 0; i < steps; ++i) {
        shell.model.command("menustep");
        if (int line = 0; window.takemark(line)) lines.push_back(line);
    }
    return lines;
}

const char kTrackedSource[] = "' three statements\r\nDim a As Byte\r\na = 1\r\nWaitUs 5\r\na = 2\r\nEnd\r\n";

TEST_F(BasicFixture, TrackingMarksTheLineThatRunsAndRunToNextStopsAtTheNextStatement) {
    shell.model.options().switches[settingnames::kBasicProgramTracking] = true;
    titled(kTrackedSource);
    ASSERT_TRUE(window.menucompileassembleload());
    EXPECT_TRUE(shell.model.tracking().active());
    EXPECT_TRUE(shell.model.run().hassourcelines);
    shell.model.command("menuspeed1");
    shell.model.command("menustart");
    // Lines 1 and 2 make no code: line 3 is the first mark; the wait's routine has no line,
    // so nothing is marked while it runs; End jumps to itself and is marked once.
    EXPECT_EQ(markedlines(shell, window, 40), (std::vector<int>{3, 4, 5, 6}));
    EXPECT_EQ(window.source.marks, std::vector<int>{6});
    shell.model.command("menustart");
    int line = -1;
    ASSERT_TRUE(window.takemark(line));
    EXPECT_EQ(line, 0) << "Start clears the mark";

    // From the start again to line 4; then over the wait's routine to the next statement at
    // Extremely Fast, and back to Step By Step.
    shell.model.command("menustart");
    for (int i = 0; i < 40 && shell.model.tracking().map().lineat(shell.m().pc) != 4; ++i)
        shell.model.command("menustep");
    shell.model.command("menustep3");
    EXPECT_EQ(shell.model.run().simulationrate(), kRateStep);
    EXPECT_FALSE(shell.model.run().runtostatementrequest);
    EXPECT_EQ(shell.model.tracking().map().lineat(shell.m().pc), 5);
}

TEST_F(BasicFixture, TrackingOffOrAnotherSourceMarksNothing) {
    shell.model.options().switches[settingnames::kBasicProgramTracking] = true;
    titled(kTrackedSource);
    shell.model.command("menutracking");  // off
    ASSERT_TRUE(window.menucompileassembleload());
    shell.model.command("menuspeed1");
    shell.model.command("menustart");
    EXPECT_EQ(markedlines(shell, window, 20), std::vector<int>{});
    EXPECT_FALSE(shell.model.tracking().active());
    // Back on, the program stays untracked until it is loaded again.
    shell.model.command("menutracking");
    EXPECT_EQ(markedlines(shell, window, 5), std::vector<int>{});
    ASSERT_TRUE(window.menucompileassembleload());
    EXPECT_TRUE(shell.model.tracking().active());

    // A HEX file with no source beside it has no map, and no Run To Next BASIC Statement.
    shell.loadhello();
    EXPECT_TRUE(shell.model.tracking().map().empty());
    EXPECT_FALSE(shell.model.tracking().active());
    EXPECT_FALSE(shell.model.run().hassourcelines);
}

TEST_F(BasicFixture, AFailedCompileLoadsNothing) {
    shell.loadhello();
    titled(kBadSource);
    EXPECT_FALSE(window.menucompileassembleload());
    EXPECT_EQ(shell.model.qprogram(), hellohex());
}

TEST_F(BasicFixture, TheHeaderFollowsTheMainWindowsClock) {
    const std::pair<const char*, const char*> clocks[] = {
        {"8", "8.0 MHz"}, {".5", "0.5 MHz"}, {"3.6864", "3.6864 MHz"}, {"20", "20.0 MHz"}};
    EXPECT_EQ(window.header(), " Microcontroller: ATmega32;  Clock Frequency: 4.0 MHz");
    for (const auto& [typed, shown] : clocks) {
        shell.input.answers = {std::string(typed)};
        shell.model.command("menuclock");
        EXPECT_EQ(window.header(), std::string(" Microcontroller: ATmega32;  Clock Frequency: ") + shown) << typed;
    }
}

TEST_F(BasicFixture, ClockFrequencyDefineSetsTheSimulatorsClockAlsoWhenALaterRowFails) {
    const struct {
        const char* source;
        bool ok;
    } rows[] = {{"Define CLOCK_FREQUENCY = 8\n", true}, {"Define CLOCK_FREQUENCY = 8\nDim 1abc As Byte\n", false}};
    for (const auto& row : rows) {
        shell.input.answers = {std::string("4")};
        shell.model.command("menuclock");
        titled(row.source);
        EXPECT_EQ(window.menucompile(), row.ok) << row.source;
        EXPECT_EQ(shell.model.machine().clockfrequency, 8.0f) << row.source;
        EXPECT_EQ(setting("Clock Frequency"), "8") << row.source;
        EXPECT_EQ(window.header(), " Microcontroller: ATmega32;  Clock Frequency: 8.0 MHz") << row.source;
    }
}

TEST_F(BasicFixture, AClockOfNoWholeMegahertzWarnsAndTheCompileGoesOn) {
    shell.input.answers = {std::string("3.6864")};
    shell.model.command("menuclock");
    titled(kGoodSource);
    EXPECT_TRUE(window.menucompile());
    ASSERT_EQ(shell.messenger.messages.size(), 2u);
    EXPECT_EQ(shell.messenger.messages[0].substr(0, 62),
              "You use a non-integer value for the Clock Frequency parameter.");
    EXPECT_EQ(shell.messenger.messages[1], report("prog"));
    EXPECT_NE(readfile(folder / "prog.asm").find("; Clock frequency: 3.6864 MHz"), std::string::npos);
}

TEST_F(BasicFixture, TheCompatibleListingOptionIsKeptAndUsed) {
    EXPECT_FALSE(window.compatiblelisting());
    window.command("menucompatible");
    EXPECT_EQ(setting("MPASMWIN Listing"), "ON");
    titled(kGoodSource);
    window.menucompile();
    const std::string generated = readfile(folder / "prog.asm");
    EXPECT_EQ(generated.find(".END"), std::string::npos);
    EXPECT_NE(generated.find("LDI R16,0x5F"), std::string::npos) << "low RAMEND of the ATmega32";
    window.command("menucompatible");
    EXPECT_EQ(setting("MPASMWIN Listing"), "OFF");

    EXPECT_FALSE(window.arbitrarybitnames());
    window.command("menuarbitrary");
    EXPECT_EQ(setting("Allow Arbitrary Use of Official Bit Names"), "1");
    EXPECT_TRUE(window.arbitrarybitnames());
}

TEST_F(BasicFixture, TheShowCommandsOpenTheViewerWithTheModelsTables) {
    const std::pair<const char*, const char*> shows[] = {{"menuvariables", "System Variables"},
                                                         {"menubitnames", "System Bit Names"},
                                                         {"menuinterrupts", "System Interrupt Names"}};
    for (const auto& [control, caption] : shows) window.command(control);
    ASSERT_EQ(viewed.size(), 3u);
    for (size_t i = 0; i < viewed.size(); ++i) {
        EXPECT_EQ(viewed[i].caption, shows[i].second);
        EXPECT_EQ(viewed[i].text.substr(0, 5), "Name\t") << viewed[i].caption;
    }
    EXPECT_NE(viewed[0].text.find("\nPORTB\tByte\t0x38\n"), std::string::npos);
}

TEST_F(BasicFixture, TheBasicEditorsGroupOfSettings) {
    EXPECT_EQ(window.editorsettings().tabsize, 3);
    EXPECT_EQ(window.editorsettings().string.red, 150);
}

TEST(BasicSyntax, KeywordsStringsCommentsAndAssemblerRows) {
    const SourceKeywords keywords = keywordset({"Dim", "As", "Byte", "Lcdout", "PORTB", "ASM"});
    for (const TableRow& row : tablerows("shelltables.txt", "basicsyntax")) {
        const std::string& line = row[0];
        std::vector<std::string> pieces;
        for (const SourceSpan& span : basicsyntaxspans(line, keywords))
            pieces.push_back(std::to_string(static_cast<int>(span.kind)) + ":" + line.substr(span.start, span.length));
        EXPECT_EQ(pieces, std::vector<std::string>(row.cells.begin() + 1, row.cells.end())) << row.where;
    }
}

}  // namespace
}  // namespace velmora::test
