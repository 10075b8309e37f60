// The Assembler window's own commands: refusals of Open, assembling, error marks, loading the
// result, the external assembler, searching and printing (sourcewindows_test.cpp has the rest).

#include "shell/assemblerwindow.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <thread>

#include "assembler/asmcommands.h"
#include "assembler/externalassembler.h"
#include "image/programcommands.h"
#include "shellfixture.h"
#include "support/sectiontable.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

namespace fs = std::filesystem;

// Two words each, known from the instruction set: LDI R16,$FF is EF0F, RJMP to itself is CFFF.
const char kGoodSource[] =
    "; blink nothing\n"
    "START: LDI R16,$FF\n"
    "       OUT PORTB,R16\n"
    "LOOP:  RJMP LOOP\n";
// Errors on lines 2 and 4; line 3 is good.
const char kBadSource[] =
    "       LDI R16,1\n"
    "       FOO R1\n"
    "       INC R2\n"
    "       LDI R16,300\n";

struct AsmFixture : ::testing::Test {
    Shell shell;
    TempFolder folder;
    AssemblerWindow window{shell.model, shell.input, shell.clock};
    std::vector<std::string> firstlabels;
    int redraws = 0;

    void SetUp() override {
        shell.select("ATmega32");
        window.statuschanged = [this] {
            if (firstlabels.empty() || firstlabels.back() != window.label1()) firstlabels.push_back(window.label1());
        };
        window.changed = [this] { ++redraws; };
        window.onload();
    }
    std::string path(const std::string& name) const { return (folder / name).string(); }
    // A titled source in the temporary folder with this text in the editor.
    void titled(const std::string& text, const std::string& name = "prog.asm") {
        window.source.text = text;
        shell.input.savepath = path(name);
        window.command("menusaveas");
        shell.messenger.messages.clear();
    }
    // The listing viewer's row at the caret.
    std::string listingrow() const {
        const std::string& text = window.listing.text;
        const size_t start = asmlineoffset(text, window.listing.caretline());
        return text.substr(start, text.find('\n', start) - start);
    }
    std::string setting(const std::string& name) { return shell.settings.getsetting(name, "?"); }
};

// Output files in any letter case, a cancelled dialog and a file that is gone open nothing.
TEST_F(AsmFixture, OpenRefusesOutputFilesAndWhatCannotBeRead) {
    const std::pair<const char*, std::string> opens[] = {
        {"a.hex", kAsmExtensionRefused}, {"b.OBJ", kAsmExtensionRefused}, {"c.Lst", kAsmExtensionRefused},
        {"d.asm.hex", kAsmExtensionRefused}, {"", ""}, {"missing.asm", kAsmCannotOpen}};
    for (const auto& [name, message] : opens) {
        if (message == kAsmExtensionRefused) writefile(folder / name, "nop\n");
        shell.messenger.messages.clear();
        shell.input.openpath = *name ? path(name) : "";
        window.command("menuopen");
        EXPECT_EQ(shell.lastmessage(), message) << name;
        EXPECT_EQ(window.caption(), "Assembler - UNTITLED") << name;
        if (message == kAsmExtensionRefused) { EXPECT_NE(setting("Last Path"), folder.path().string()) << name; }
    }
}

TEST_F(AsmFixture, PrintRefusalsThenAJobWithThePrinterFont) {
    std::vector<AsmPrintJob> jobs;
    window.print = [&](const AsmPrintJob& job) {
        jobs.push_back(job);
        return true;
    };
    window.source.text = "nop\n";
    for (const char* control : {"menuprint", "menuprint2"}) {
        window.command(control);
        EXPECT_EQ(shell.lastmessage(), kAsmSaveFirst) << control;
    }
    titled("nop\n");
    window.command("menuprint2");
    EXPECT_EQ(shell.lastmessage(), kAsmListingEmpty);
    window.source.text = " \n\t\n";
    window.command("menuprint");
    EXPECT_EQ(shell.lastmessage(), kAsmSourceEmpty);
    EXPECT_TRUE(jobs.empty());
    window.source.text = "nop\n";
    window.command("menuprint");
    ASSERT_EQ(jobs.size(), 1u);
    EXPECT_EQ(jobs[0].text, "nop\n");
    EXPECT_EQ(jobs[0].title, path("prog.asm"));
    EXPECT_EQ(jobs[0].fontname, "Lucida Console");
    EXPECT_EQ(jobs[0].fontsize, 9);
    window.command("menuassemble");
    window.command("menuprint2");
    ASSERT_EQ(jobs.size(), 2u);
    EXPECT_EQ(jobs[1].title, path("prog.lst"));
    EXPECT_NE(jobs[1].text.find("AVR ASSEMBLER LISTING"), std::string::npos);
}

// An untitled editor is saved first, then assembled once.
TEST_F(AsmFixture, AssembleAnUntitledEditor) {
    window.source.text = kGoodSource;
    shell.input.savepath = path("fresh.txt");
    EXPECT_EQ(window.menuassemble(), 0);
    EXPECT_EQ(shell.lastmessage(), "File " + path("fresh.asm") + " saved.");
    EXPECT_TRUE(fs::exists(folder / "fresh.hex"));
    EXPECT_EQ(firstlabels.size(), 5u) << "one run only";
}

TEST_F(AsmFixture, AssembleAGoodSourceWritesBothFilesAndShowsTheListing) {
    titled(kGoodSource);
    writefile(folder / "prog.asm", "stale text on disk\n");
    const int yieldsbefore = shell.clock.yields;
    EXPECT_EQ(window.menuassemble(), 0);
    EXPECT_EQ(readfile(folder / "prog.asm"), kGoodSource) << "the editor's text is what is assembled";
    ASSERT_TRUE(fs::exists(folder / "prog.lst"));
    ASSERT_TRUE(fs::exists(folder / "prog.hex"));
    // LDI R16,$FF = EF0F, OUT PORTB,R16 = BB08, RJMP LOOP = CFFF, bytes low first.
    EXPECT_EQ(readfile(folder / "prog.hex"),
              ":020000040000FA\r\n:060000000FEF08BBFFCF6B\r\n:00000001FF\r\n");
    EXPECT_NE(window.listing.text.find("0002    000000  EF0F    START: LDI R16,$FF"), std::string::npos);
    EXPECT_EQ(window.listing.text.find('\r'), std::string::npos);
    EXPECT_TRUE(window.listing.text.ends_with("Number of errors = 0"));
    EXPECT_EQ(window.listing.caret, window.listing.text.size()) << "scrolled to the count";
    EXPECT_FALSE(window.gotonexterrorvisible());
    EXPECT_TRUE(window.source.marks.empty());
    EXPECT_TRUE(shell.messenger.messages.empty());
    EXPECT_FALSE(window.frameshown());
    EXPECT_TRUE(window.menusenabled());
    EXPECT_TRUE(window.source.enabled && window.listing.enabled);
    EXPECT_TRUE(window.sourcefocus);
    EXPECT_GE(shell.clock.yields - yieldsbefore, 5 + 2 * 4) << "five before the run, one per line and pass";
    EXPECT_EQ(firstlabels, (std::vector<std::string>{"Loading source file.", "Performing pass 1.",
                                                     "Performing pass 2.", "Writing LST file.", "Writing HEX file."}));
}

TEST_F(AsmFixture, TheEditorsAreDisabledWhileTheRunYields) {
    titled(kGoodSource);
    bool sawbusy = false;
    shell.clock.onyield = [&] {
        if (window.frameshown() && !window.menusenabled() && !window.source.enabled && !window.listing.enabled)
            sawbusy = true;
        window.command("menunew");  // ignored while the run is on
    };
    EXPECT_EQ(window.menuassemble(), 0);
    EXPECT_TRUE(sawbusy);
    EXPECT_EQ(window.filename(), path("prog.asm"));
}

TEST_F(AsmFixture, AssembleABadSourceKeepsTheListingOnScreenOnly) {
    titled(kBadSource);
    writefile(folder / "prog.hex", "old");
    const std::optional<int> errors = window.menuassemble();
    ASSERT_TRUE(errors);
    EXPECT_EQ(*errors, 2);
    EXPECT_EQ(shell.lastmessage(), "Assembly was not successful.\nYour assembler source contains 2 errors.");
    EXPECT_FALSE(fs::exists(folder / "prog.lst"));
    EXPECT_FALSE(fs::exists(folder / "prog.hex"));
    EXPECT_TRUE(fs::exists(folder / "prog.asm"));
    EXPECT_NE(window.listing.text.find("0002 Error: Unrecognized instruction."), std::string::npos);
    EXPECT_TRUE(window.listing.text.ends_with("Number of errors = 2"));
    EXPECT_TRUE(window.gotonexterrorvisible());
    EXPECT_EQ(window.source.marks, (std::vector<int>{2, 4}));
    EXPECT_EQ(window.listing.marks.size(), 2u);
    // The carets stand on the first error in both.
    EXPECT_EQ(window.source.caretline(), 2);
    EXPECT_EQ(listingrow(), "0002 Error: Unrecognized instruction.");
}

TEST_F(AsmFixture, GoToNextErrorWalksBothEditorsAndGoesRound) {
    titled(kBadSource);
    window.menuassemble();
    window.command("menu5");
    EXPECT_EQ(window.source.caretline(), 4);
    EXPECT_EQ(listingrow().substr(0, 12), "0004 Error: ");
    EXPECT_TRUE(window.sourcefocus);
    window.command("menu5");
    EXPECT_EQ(window.source.caretline(), 2);
    EXPECT_EQ(listingrow().substr(0, 12), "0002 Error: ");
    // From a good line in between, the next error below it.
    window.source.gotoline(3);
    window.command("menu5");
    EXPECT_EQ(window.source.caretline(), 4);
}

TEST_F(AsmFixture, GoToNextErrorFromAMarkThatIsNoErrorFollowsTheListingsMarks) {
    titled(kBadSource);
    window.menuassemble();
    window.source.mark(3);  // a mark the run did not make
    window.command("menu5");
    EXPECT_EQ(window.source.caretline(), 3);
    // No error row belongs to line 3: the listing goes to its row 3 (a header row), then on
    // to its next mark, the first error row.
    EXPECT_EQ(listingrow().substr(0, 12), "0002 Error: ");
}

TEST_F(AsmFixture, GoToNextErrorShowsOnlyUntilNewOpenOrSave) {
    const auto failed = [&] {
        titled(kBadSource);
        window.menuassemble();
        ASSERT_TRUE(window.gotonexterrorvisible());
    };
    failed();
    window.command("menusave");
    EXPECT_FALSE(window.gotonexterrorvisible());
    failed();
    window.command("menunew");
    EXPECT_FALSE(window.gotonexterrorvisible());
    window.source.caret = 0;
    window.command("menu5");  // hidden: does nothing
    EXPECT_EQ(window.source.caret, 0u);
    failed();
    writefile(folder / "other.asm", "nop\n");
    shell.input.openpath = path("other.asm");
    window.command("menuopen");
    EXPECT_FALSE(window.gotonexterrorvisible());
    failed();
    window.source.text = kGoodSource;
    window.menuassemble();
    EXPECT_FALSE(window.gotonexterrorvisible());
}

TEST_F(AsmFixture, AssembleAndLoadPutsTheWordsIntoProgramMemory) {
    titled(kGoodSource);
    window.command("menuassembleload");
    const Machine& m = shell.m();
    const uint8_t expected[] = {0x0F, 0xEF, 0x08, 0xBB, 0xFF, 0xCF};
    for (size_t i = 0; i < sizeof expected; ++i) EXPECT_EQ(m.progmem[i], expected[i]) << i;
    EXPECT_EQ(m.progmem[6], 0xFF) << "the rest is unprogrammed";
    EXPECT_EQ(m.programbytes, 6);
    EXPECT_EQ(shell.model.qprogram(), path("prog.hex"));
    EXPECT_EQ(shell.lastmessage(), loadconfirmation(6));
}

TEST_F(AsmFixture, AssembleAndLoadOfABadSourceLoadsNothing) {
    shell.loadhello();
    const std::string before = shell.model.qprogram();
    titled(kBadSource);
    window.command("menuassembleload");
    EXPECT_EQ(shell.model.qprogram(), before);
    EXPECT_EQ(shell.lastmessage(), asmfailuremessage(2));
}

TEST_F(AsmFixture, AssembleAndLoadRefusedWhileRunningFast) {
    titled(kGoodSource);
    shell.loadhello();
    const std::vector<uint8_t> hello(shell.m().progmem.begin(), shell.m().progmem.begin() + 16);
    shell.model.command("menuspeed3");
    // The command comes in between two steps, once the run loop has begun; every later yield
    // asks the loop to end, so that the test cannot hang.
    bool done = false;
    int yields = 0;
    shell.clock.onyield = [&] {
        if (++yields < 3) return;
        if (!done) {
            done = true;
            window.command("menuassembleload");
        }
        shell.m().stoprequest = true;
    };
    shell.messenger.messages.clear();
    shell.model.command("menustart");
    ASSERT_TRUE(done);
    ASSERT_FALSE(shell.messenger.messages.empty());
    EXPECT_EQ(shell.messenger.messages.front(), kStopSimulationFirst);
    EXPECT_TRUE(std::equal(hello.begin(), hello.end(), shell.m().progmem.begin())) << "nothing loaded";
    EXPECT_EQ(shell.model.qprogram(), hellohex());
}

TEST_F(AsmFixture, AssembleAndLoadAtStepByStepStopsAndLoads) {
    shell.loadhello();
    shell.startpaused();
    ASSERT_TRUE(shell.m().simulationrunning);
    titled(kGoodSource);
    window.command("menuassembleload");
    EXPECT_FALSE(shell.m().simulationrunning);
    EXPECT_EQ(shell.m().progmem[1], 0xEF);
    EXPECT_EQ(shell.model.qprogram(), path("prog.hex"));
}

TEST_F(AsmFixture, AssembleAndLoadClosesTheWindowsThatShowTheOldProgram) {
    WindowRegistry& registry = shell.model.registry();
    std::vector<int> unloaded;
    for (int number : {windows::kDisassembler, windows::kBreakpointsManager}) {
        registry.registerwindow(number, {[&registry, number] { registry.setopen(number, true); },
                                         [&, number] {
                                             unloaded.push_back(number);
                                             registry.setopen(number, false);
                                         }});
        registry.open(number);
    }
    titled(kGoodSource);
    window.command("menuassembleload");
    EXPECT_EQ(unloaded, (std::vector<int>{windows::kDisassembler, windows::kBreakpointsManager}));
    EXPECT_EQ(shell.model.qprogram(), path("prog.hex"));
}

TEST_F(AsmFixture, EepromEditorFollowsTheModel) {
    shell.m().eepromsize = 0;
    window.command("menueeprom");
    EXPECT_EQ(shell.lastmessage(), "EEPROM data memory not available for the selected device.");
    shell.select("ATmega32");
    window.command("menueeprom");
    EXPECT_EQ(shell.lastmessage(), kAsmEepromEditorMissing);
    int opened = 0;
    shell.model.registry().registerwindow(windows::kEepromMemoryEditor, {[&] { ++opened; }, {}});
    shell.messenger.messages.clear();
    window.command("menueeprom");
    EXPECT_EQ(opened, 1);
    EXPECT_TRUE(shell.messenger.messages.empty());
}

TEST_F(AsmFixture, FindFindNextAndReplaceAll) {
    window.source.text = "ldi r16,1\nLDI r17,2\nnop\nldi r18,3\n";
    shell.input.answers = {std::string("LdI")};
    window.command("menufind");
    EXPECT_EQ(shell.input.prompts.back(), "Find what:");
    EXPECT_EQ(window.source.caret, 0u);
    EXPECT_EQ(window.source.selection, 3u);
    window.command("menufindnext");
    EXPECT_EQ(window.source.caretline(), 2);
    window.command("menufindnext");
    EXPECT_EQ(window.source.caretline(), 4);
    window.command("menufindnext");
    EXPECT_EQ(window.source.caretline(), 1) << "round to the top";

    shell.input.answers = {std::string("ldi"), std::string("mov")};
    window.command("menureplace");
    EXPECT_EQ((std::vector<std::string>(shell.input.prompts.end() - 2, shell.input.prompts.end())),
              (std::vector<std::string>{"Find what:", "Replace with:"}));
    EXPECT_EQ(window.source.text, "mov r16,1\nmov r17,2\nnop\nmov r18,3\n");
    EXPECT_EQ(shell.lastmessage(), "3 words replaced.");

    shell.input.answers = {std::string("nop"), std::nullopt};
    window.command("menureplace");
    EXPECT_NE(window.source.text.find("nop"), std::string::npos) << "cancelled";
}

TEST_F(AsmFixture, FormatTextTrimsLineEnds) {
    window.source.text = "  ldi r16,1  \t\nnop \n";
    window.source.caret = window.source.text.size();
    window.command("menuformat");
    EXPECT_EQ(window.source.text, "  ldi r16,1\nnop\n");
    EXPECT_LE(window.source.caret, window.source.text.size());
}

// The divider between the editors is kept beside the place the source windows share.
TEST_F(AsmFixture, TheDividerIsKeptUnderSavePositions) {
    EXPECT_EQ(window.geometry().divider, 70);
    EXPECT_EQ(setting("Window17 Position"), "70");
    shell.settings.putsetting("Save Positions", "ON");
    window.onunload({100, 50}, {600, 400}, 55);
    EXPECT_EQ(window.geometry().divider, 55);
}

// The Assembler group of the editor settings (whose defaults settings_test.cpp checks).
TEST_F(AsmFixture, EditorSettingsOfTheAssemblerGroup) {
    EXPECT_EQ(window.editorsettings().fontname, "Courier New");
    EXPECT_EQ(window.editorsettings().tabsize, 8);
    for (const char* word : {"PORTB", "PB3", "BRNE"}) EXPECT_TRUE(window.keywords().count(word)) << word;
}

// --- external assembler, with a stand-in script for the tool ---

struct ExternalFixture : AsmFixture {
    TempFolder temp;
    std::string tool;
    void SetUp() override {
        AsmFixture::SetUp();
        window.externaltempfolder = temp.path().string();
        tool = (temp / "fakeasm").string();
        // The scripted clock's naps take no time; a real pause per tick lets the tool finish.
        shell.clock.onyield = [] { std::this_thread::sleep_for(std::chrono::milliseconds(20)); };
    }
    // The tool gets: -i INCLUDE -fI -l LISTING SOURCE; it writes the output named by `write`.
    void maketool(bool listing, bool hex) {
        std::string script = "#!/bin/sh\necho \"$@\" > \"" + (temp / "args").string() + "\"\n";
        if (listing) script += "echo 'listing of' \"$6\" > \"$5\"\n";
        if (hex) script += "echo ':00000001FF' > \"${5%.lst}.hex\"\n";
        writefile(tool, script);
        ::chmod(tool.c_str(), 0755);
        shell.settings.putsetting(kAvrAssemblerPathSetting, tool);
    }
};

// The tool's path from the settings, else from the dialog; what a run leaves beside the source.
TEST_F(ExternalFixture, TheToolRunsAndItsFilesComeBack) {
    for (const TableRow& row : tablerows("shelltables.txt", "externalassembler")) {
        SCOPED_TRACE(row.where);
        const bool hex = row.flag(3);
        fs::remove(folder / "prog.hex");
        if (row.flag(1)) maketool(row.flag(2), hex);
        if (!row[4].empty()) shell.settings.putsetting(kAvrAssemblerPathSetting, path(row[4]));
        shell.input.openpath = row[5] == "=" ? tool : !row[5].empty() ? path(row[5]) : "";
        titled(kGoodSource);
        window.command("menuavrassembler");
        EXPECT_EQ(shell.lastmessage().substr(0, row[6].size()), row[6]);
        if (row[6].empty()) { EXPECT_TRUE(shell.messenger.messages.empty()) << shell.lastmessage(); }
        if (!row.flag(1)) continue;
        EXPECT_EQ(window.listing.text.substr(0, 11), "listing of ");
        EXPECT_EQ(fs::exists(folder / "prog.hex"), hex);
        EXPECT_EQ(readfile(temp / "args").substr(0, 15), "-i m32def.inc -");
        EXPECT_EQ(setting(kAvrAssemblerPathSetting), tool);
    }
}

// --- the editor state and the colouring, on their own ---

TEST(AsmEditorState, LinesMarksAndTheCaret) {
    AsmEditorState e;
    e.text = "a\nbb\n\nccc";
    EXPECT_EQ(e.linecount(), 4);
    e.gotoline(3);
    EXPECT_EQ(e.caret, 5u);
    EXPECT_EQ(e.caretline(), 3);
    e.gotoline(99);
    EXPECT_EQ(e.caretline(), 4);
    e.gotoline(-1);
    EXPECT_EQ(e.caret, 0u);
    EXPECT_EQ(e.gotonextmark(), 0) << "no marks";
    e.mark(4);
    e.mark(2);
    e.mark(4);
    EXPECT_EQ(e.marks, (std::vector<int>{2, 4}));
    EXPECT_EQ(e.gotonextmark(), 2);
    EXPECT_EQ(e.gotonextmark(), 4);
    EXPECT_EQ(e.gotonextmark(), 2);
    EXPECT_FALSE(e.isempty());
    e.clear();
    EXPECT_TRUE(e.isempty());
    EXPECT_TRUE(e.marks.empty());
}

TEST(AsmEditorState, SearchAndReplaceIgnoreCase) {
    EXPECT_EQ(asmfindtext("Nop nOP", "nop", 1), 4u);
    EXPECT_EQ(asmfindtext("nop", "nop", 9), std::string::npos);
    EXPECT_EQ(asmfindtext("nop", "", 0), std::string::npos);
    std::string text = "aXa xa";
    EXPECT_EQ(asmreplaceall(text, "xa", "xax"), 2) << "replaced text is not searched again";
    EXPECT_EQ(text, "axax xax");
}

TEST(AsmSyntax, LabelsKeywordsAndComments) {
    const AsmKeywords words = asmeditorkeywords({".equ PORTB = $18", "  .EQU DDRB=$17 ; comment", "; nothing"});
    EXPECT_TRUE(words.count("PORTB") && words.count("DDRB") && words.count("PB0") && words.count("PB7"));
    EXPECT_FALSE(words.count("PD0"));
    EXPECT_TRUE(words.count("R31") && words.count("ZH") && words.count(".ORG") && words.count("LDI"));

    const std::string line = "LOOP: ldi r16,PB3 ; go";
    std::vector<std::string> pieces;
    for (const AsmSpan& span : asmsyntaxspans(line, words))
        pieces.push_back(std::to_string(static_cast<int>(span.kind)) + ":" + line.substr(span.start, span.length));
    EXPECT_EQ(pieces, (std::vector<std::string>{"1:LOOP:", "0:ldi", "0:r16", "0:PB3", "2:; go"}));
    // Indented: no label; a keyword inside the comment stays comment.
    const auto spans = asmsyntaxspans("  .org 0 ;ldi", words);
    ASSERT_EQ(spans.size(), 2u);
    EXPECT_EQ(spans[0].kind, AsmSpanKind::Keyword);
    EXPECT_EQ(spans[1].start, 9u);
    const std::vector<std::string> list = asmkeywordlist();
    EXPECT_TRUE(std::is_sorted(list.begin(), list.end() - 5));
    EXPECT_EQ(list.back(), ".END");
}

}  // namespace
}  // namespace velmora::test
