// What the Assembler and the BASIC Compiler windows share, run on both: the file commands,
// the caption, the auto start file, printing while untitled and the window's place.

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>

#include "shell/assemblerwindow.h"
#include "shell/basiccompilerwindow.h"
#include "shellfixture.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

namespace fs = std::filesystem;

// What tells the two windows apart as the user sees it.
struct Names {
    const char* caption;
    const char* extension;
    const char* autostart;
    const char* opened;  // a name Open takes
    const char* number;
    const char* built;   // what a build writes beside the source
    const char* source;  // a statement it builds
};

// One of the two windows, fresh over its own shell and folder.
struct Side : Names {
    explicit Side(const Names& names) : Names(names) {}
    Shell shell;
    TempFolder folder;
    std::unique_ptr<SourceWindow> window;
    std::function<void()> onload, print;
    std::function<bool()> build;
    std::function<void(PixelPoint, PixelPoint)> onunload;
    std::function<SourceWindowGeometry()> geometry;

    std::string path(const std::string& name) const { return (folder / name).string(); }
    std::string named(const std::string& base) const { return path(base + extension); }
    std::string setting(const std::string& name) { return shell.settings.getsetting(name, "?"); }
    std::string autostartfile() { return setting(std::string(autostart) + " File"); }
    std::string untitled() const { return std::string(caption) + "UNTITLED"; }
    template <class W>
    W& make() {
        shell.select("ATmega32");
        auto owned = std::make_unique<W>(shell.model, shell.input, shell.clock);
        W& w = *owned;
        window = std::move(owned);
        onload = [&w] { w.onload(); };
        print = [&w] { w.command("menuprint"); };
        geometry = [&w] { return static_cast<SourceWindowGeometry>(w.geometry()); };
        onload();
        return w;
    }
};

const Names kAssembler = {"Assembler - ", ".asm", "Auto Start Asm", "blink.s", "17", ".hex", "nop\n"};
const Names kBasic = {"BASIC Compiler - ", ".bas", "Auto Start Bas", "listing.lst", "16", ".asm", "End\n"};

// Both windows, each over its own shell and folder.
std::vector<std::unique_ptr<Side>> sides() {
    std::vector<std::unique_ptr<Side>> all;
    all.push_back(std::make_unique<Side>(kAssembler));
    AssemblerWindow& assembler = all.back()->make<AssemblerWindow>();
    all.back()->build = [&assembler] { return assembler.menuassemble() == 0; };
    all.back()->onunload = [&assembler](PixelPoint place, PixelPoint size) { assembler.onunload(place, size, 55); };
    all.push_back(std::make_unique<Side>(kBasic));
    BasicCompilerWindow& basic = all.back()->make<BasicCompilerWindow>();
    all.back()->build = [&basic] { return basic.menucompile(); };
    all.back()->onunload = [&basic](PixelPoint place, PixelPoint size) { basic.onunload(place, size); };
    return all;
}

// Save As cuts the name at its first dot and gives the window's extension; it asks before
// overwriting.
TEST(SourceWindows, SaveAsNamesTheFileAndAsksBeforeOverwriting) {
    for (const auto& side : sides()) {
        SCOPED_TRACE(side->caption);
        writefile(side->named("my"), "old\n");
        side->window->source.text = "nop\n";
        side->shell.input.savepath = side->path("my.prog.txt");
        side->shell.input.yes = false;
        EXPECT_FALSE(side->window->menusaveas());
        EXPECT_EQ(side->shell.input.questions,
                  std::vector<std::string>{"Do you want to overwrite existing file " + side->named("my") + "?"});
        EXPECT_EQ(readfile(side->named("my")), "old\n");
        EXPECT_EQ(side->window->caption(), side->untitled());
        EXPECT_TRUE(side->shell.messenger.messages.empty());
        side->shell.input.yes = true;
        EXPECT_TRUE(side->window->menusaveas());
        EXPECT_EQ(readfile(side->named("my")), "nop\n");
        EXPECT_FALSE(fs::exists(side->folder / "my.prog.txt"));
        EXPECT_EQ(side->window->caption(), side->caption + side->named("my"));
        EXPECT_EQ(side->shell.lastmessage(), "File " + side->named("my") + " saved.");
        EXPECT_EQ(side->setting("Last Path"), side->folder.path().string());
        EXPECT_EQ(side->autostartfile(), side->named("my"));
    }
}

// Untitled, Save asks for a name; then it writes in place; into a folder that is gone it fails.
TEST(SourceWindows, SaveWorksAsSaveAsWhileUntitledThenWritesInPlace) {
    for (const auto& side : sides()) {
        SCOPED_TRACE(side->caption);
        side->window->source.text = "nop\n";
        side->shell.input.savepath = side->path("nofolder/x.txt");
        EXPECT_FALSE(side->window->menusave());
        EXPECT_EQ(side->shell.lastmessage(), kCannotSaveText);
        EXPECT_EQ(side->window->caption(), side->untitled());
        side->shell.input.savepath = side->named("first");
        EXPECT_TRUE(side->window->menusave());
        EXPECT_EQ(side->window->filename(), side->named("first"));
        side->shell.input.savepath = side->named("other");  // no dialog this time
        side->window->source.text = "sleep\n";
        side->shell.settings.putsetting(std::string(side->autostart) + " File", "");
        EXPECT_TRUE(side->window->menusave());
        EXPECT_EQ(readfile(side->named("first")), "sleep\n");
        EXPECT_FALSE(fs::exists(side->named("other")));
        EXPECT_EQ(side->autostartfile(), side->named("first"));
    }
}

// Open reads the file with its line ends as "\n"; New forgets it and the auto start file; an
// untitled source is not printed.
TEST(SourceWindows, OpenLoadsTheFileAndNewForgetsIt) {
    for (const auto& side : sides()) {
        SCOPED_TRACE(side->caption);
        const std::string opened = side->path(side->opened);
        writefile(opened, "ldi r16,1\r\nnop\r\n");
        side->shell.input.openpath = opened;
        EXPECT_TRUE(side->window->menuopen());
        EXPECT_EQ(side->window->source.text, "ldi r16,1\nnop\n");
        EXPECT_EQ(side->window->caption(), side->caption + opened);
        EXPECT_EQ(side->window->filename(), opened);
        EXPECT_EQ(side->setting("Last Path"), side->folder.path().string());
        EXPECT_EQ(side->autostartfile(), opened);
        EXPECT_TRUE(side->shell.messenger.messages.empty());
        side->window->menunew();
        EXPECT_EQ(side->window->caption(), side->untitled());
        EXPECT_TRUE(side->window->source.text.empty());
        EXPECT_EQ(side->autostartfile(), "");
        side->window->source.text = "nop\n";
        side->print();
        EXPECT_EQ(side->shell.lastmessage(), "Please save the file first.");
    }
}

TEST(SourceWindows, OpeningLoadsTheLastSourceWhenAutoStartWantsIt) {
    for (const auto& side : sides()) {
        writefile(side->named("last"), "nop\n");
        const struct {
            const char* flag;  // "" leaves it unset
            std::string file;
            std::string loaded;  // "" for untitled
        } rows[] = {{"", side->named("last"), side->named("last")},
                    {"0", side->named("last"), ""},
                    {"1", side->named("gone"), ""}};
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(side->caption) + row.flag + " " + row.file);
            if (*row.flag) side->shell.settings.putsetting(side->autostart, row.flag);
            side->shell.settings.putsetting(std::string(side->autostart) + " File", row.file);
            side->onload();
            EXPECT_EQ(side->window->filename(), row.loaded);
            EXPECT_EQ(side->window->source.text, row.loaded.empty() ? "" : "nop\n");
            side->window->menunew();
        }
        EXPECT_TRUE(side->shell.messenger.messages.empty());
    }
}

// An empty editor is refused before any dialog; an untitled source is saved first, and a cancel
// of the dialog ends the build.
TEST(SourceWindows, ABuildOfAnEmptyOrUntitledEditor) {
    for (const auto& side : sides()) {
        const char* report = std::string(side->caption) == kAssembler.caption ? "File " : "The compilation";
        const struct {
            const char* text;
            const char* saveas;  // the answer of the save dialog
            bool built;
            const char* message;  // the start of the last one
        } rows[] = {{"\n  \n\t", "x.txt", false, "The editor is empty."},
                    {side->source, "", false, ""},
                    {side->source, "fresh.txt", true, report}};
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(side->caption) + row.saveas);
            side->shell.messenger.messages.clear();
            side->window->source.text = row.text;
            side->shell.input.savepath = *row.saveas ? side->path(row.saveas) : "";
            EXPECT_EQ(side->build(), row.built);
            EXPECT_TRUE(side->shell.lastmessage().starts_with(row.message)) << side->shell.lastmessage();
            EXPECT_EQ(fs::is_empty(side->folder.path()), !row.built);
        }
        EXPECT_EQ(readfile(side->named("fresh")), side->source);
        EXPECT_TRUE(fs::exists(side->path(std::string("fresh") + side->built)));
    }
}

// Twips in the settings: 15 a pixel.
TEST(SourceWindows, PlaceIsKeptOnlyUnderSavePositions) {
    for (const auto& side : sides()) {
        SCOPED_TRACE(side->caption);
        const std::string key = std::string("Window") + side->number;
        side->shell.settings.putsetting("Save Positions", "ON");
        side->onunload({100, 50}, {600, 400});
        EXPECT_EQ(side->setting(key + " Left"), "1500");
        EXPECT_EQ(side->setting(key + " Width"), "9000");
        EXPECT_EQ(side->setting(key + " Height"), "6000");
        const SourceWindowGeometry g = side->geometry();
        ASSERT_TRUE(g.place && g.size);
        EXPECT_EQ(g.place->x, 100);
        EXPECT_EQ(g.size->x, 600);
        EXPECT_EQ(g.size->y, 400);
        side->shell.settings.putsetting("Save Positions", "OFF");
        side->onunload({1, 1}, {2, 2});
        EXPECT_EQ(side->setting(key + " Left"), "1500");
        EXPECT_FALSE(side->geometry().size);
    }
}

}  // namespace
}  // namespace velmora::test
