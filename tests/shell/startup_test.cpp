// Start-up and shut-down in their order, auto start, and the Select Microcontroller window.
//
// Window numbers of the package drawings, the window-open table, placement and Always On Top.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "core/memorysettings.h"
#include "shell/autostart.h"
#include "shell/settingnames.h"
#include "shell/startup.h"
#include "shell/windowplacement.h"
#include "shell/windowregistry.h"
#include "shellfixture.h"
#include "support/sectiontable.h"

namespace velmora::test {
namespace {

struct RecordingHost : StartupHost {
    bool another = false;
    std::vector<std::string> log;
    std::optional<PixelPoint> place;
    PixelPoint position{120, 80};
    bool otherinstance() override {
        log.push_back("instance");
        return another;
    }
    void applytheme(const Theme& theme) override { log.push_back("theme " + theme.name); }
    void placewindow(std::optional<PixelPoint> p) override {
        place = p;
        log.push_back("place");
    }
    void yield() override { log.push_back("yield"); }
    void fatal(const std::string& message) override { log.push_back("fatal " + message); }
    void restorewindow() override { log.push_back("restore"); }
    PixelPoint windowposition() override { return position; }
};

// Makes every window that has a number openable and records the order of opening.
void registerall(MainWindowModel& model, std::vector<int>& opened) {
    for (int window = 2; window < 60; ++window)
        model.registry().registerwindow(window, {[&model, &opened, window] {
                                                     opened.push_back(window);
                                                     model.registry().setopen(window, true);
                                                 },
                                                 [&opened, window] { opened.push_back(-window); }});
}

size_t position(const std::vector<std::string>& reads, const std::string& name) {
    return static_cast<size_t>(std::find(reads.begin(), reads.end(), name) - reads.begin());
}

TEST(Startup, ASecondInstanceEndsWithoutAWord) {
    Shell shell;
    RecordingHost host;
    host.another = true;
    EXPECT_FALSE(runstartup(shell.model, host));
    EXPECT_EQ(host.log, std::vector<std::string>{"instance"});
    EXPECT_TRUE(shell.settings.reads.empty());
    EXPECT_TRUE(shell.messenger.messages.empty());
}

TEST(Startup, SettingsAreReadInTheirTableOrder) {
    Shell shell;
    RecordingHost host;
    ASSERT_TRUE(runstartup(shell.model, host));
    const auto& reads = shell.settings.reads;
    std::vector<std::string> order;
    for (const TableRow& row : tablerows("shelltables.txt", "startupreads")) order.push_back(row[0]);
    for (size_t i = 1; i < order.size(); ++i) {
        ASSERT_LT(position(reads, order[i]), reads.size()) << order[i];
        EXPECT_LT(position(reads, order[i - 1]), position(reads, order[i])) << order[i - 1] << " before " << order[i];
    }
    EXPECT_LT(position(reads, "Window1 Left"), position(reads, "Color Theme")) << "positions validated first";
    EXPECT_EQ(shell.settings.getsetting("Microcontroller Model", ""), std::to_string(
        shell.model.simulation().modelindex()));
    EXPECT_EQ(shell.model.qprocessor(), "ATmega32") << "the default model";
    EXPECT_EQ(shell.model.aboutcaption, "About Velmora");
    EXPECT_EQ(host.log[1], "theme Original Lite");
    ASSERT_TRUE(host.place);
    EXPECT_EQ(host.place->x, 200) << "3000 twips";
}

// A stored value at start-up: the rate goes through its command, a model index beyond the list
// becomes the last model, an auto start file that is gone is forgotten.
TEST(Startup, StoredValuesAreAppliedOrRepaired) {
    const struct {
        const char *name, *stored, *after;  // after: null for the last model's index
        int rate;
    } rows[] = {
        {"Simulation Rate", "6", "6", 6},
        {"Microcontroller Model", "999", nullptr, 4},
        {"Auto Start Hex File", "/nonexistent/velmora.hex", "", 4},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Shell shell;
        shell.settings.putsetting(row.name, row.stored);
        RecordingHost host;
        ASSERT_TRUE(runstartup(shell.model, host));
        const auto& models = shell.model.simulation().models().models;
        EXPECT_EQ(shell.settings.getsetting(row.name, "x"), row.after ? row.after : std::to_string(models.size()));
        EXPECT_EQ(shell.model.qprocessor(), row.after ? "ATmega32" : models.back().name);
        EXPECT_EQ(shell.model.run().simulationrate(), row.rate);
        EXPECT_EQ(shell.model.menustates()["menuspeed6"].checked, row.rate == 6);
        EXPECT_EQ(shell.model.qprogram(), "");
    }
}

TEST(Startup, NoModelFilesEndTheProgram) {
    RecordingSettings settings;
    RecordingMessenger messenger;
    ScriptedInput input;
    ScriptedClock clock;
    MainWindowModel model(ShellServices{settings, messenger, input, clock}, "/nonexistent-velmora-data");
    RecordingHost host;
    EXPECT_FALSE(runstartup(model, host));
    EXPECT_EQ(host.log.back(), "fatal No CFG files found.\nThe program will now end.");
}

TEST(Startup, AutoStartLoadsTheFileAndOpensFlaggedWindowsInOrder) {
    Shell shell;
    std::vector<int> opened;
    registerall(shell.model, opened);
    shell.settings.putsetting("Auto Start Hex File", hellohex());
    for (const char* flag : {"Auto Start Watch", "Auto Start Led", "Auto Start Program", "Auto Start View",
                             "Auto Start Break", "Auto Start Uart"})
        shell.settings.putsetting(flag, "1");
    RecordingHost host;
    ASSERT_TRUE(runstartup(shell.model, host));
    EXPECT_EQ(shell.model.qprogram(), hellohex());
    EXPECT_EQ(opened, (std::vector<int>{windows::kProgramMemoryEditor, packagewindow(40, true),
                                        windows::kBreakpointsManager, windows::kLedBoard, windows::kHardwareUart,
                                        windows::kWatchVariables}));
    EXPECT_EQ(shell.lastmessage(), "Operation completed.\nTotal 42 (0.04K) program bytes loaded.");
}

TEST(Startup, AutoStartSkipsWindowsTheModelCannotHave) {
    Machine m;
    for (AutoStartNeed need : {AutoStartNeed::Eeprom, AutoStartNeed::Program, AutoStartNeed::Uart})
        EXPECT_FALSE(autostartneedmet(need, m)) << static_cast<int>(need);
    Shell shell;
    const ModelList list = modellist(productdata() + "/models");
    const auto tiny = std::ranges::find_if(list.models, [](const ModelEntry& e) { return e.name == "ATtiny13"; });
    ASSERT_NE(tiny, list.models.end());
    shell.settings.putsetting("Microcontroller Model", std::to_string(tiny - list.models.begin() + 1));
    std::vector<int> opened;
    registerall(shell.model, opened);
    shell.settings.putsetting("Auto Start Break", "1");  // no program is loaded
    shell.settings.putsetting("Auto Start Uart", "1");   // the ATtiny13 has no USART
    RecordingHost host;
    ASSERT_TRUE(runstartup(shell.model, host));
    EXPECT_EQ(shell.model.qprocessor(), "ATtiny13");
    EXPECT_TRUE(opened.empty());
}

TEST(Shutdown, StoresThePositionRemembersOpenWindowsAndUnloadsThem) {
    Shell shell;
    std::vector<int> opened;
    registerall(shell.model, opened);
    RecordingHost host;
    ASSERT_TRUE(runstartup(shell.model, host));
    shell.loadhello();
    shell.model.registry().open(windows::kLedBoard);
    shell.model.openmicrocontrollerview();
    std::vector<std::string> modules;
    ModuleHooks hooks;
    hooks.objectterm = [&] { modules.push_back("term"); };
    opened.clear();
    runshutdown(shell.model, host, hooks);
    EXPECT_EQ(host.log.back(), "restore");
    const std::pair<const char*, std::string> stored[] = {
        {"Window1 Left", "1800"}, {"Window1 Top", "1200"}, {"Auto Start Led", "1"},
        {"Auto Start View", "1"}, {"Auto Start Lcd", "0"}, {"Auto Start Hex File", hellohex()}};
    for (const auto& [name, value] : stored) EXPECT_EQ(shell.settings.getsetting(name, ""), value) << name;
    EXPECT_EQ(opened, (std::vector<int>{-windows::kLedBoard, -packagewindow(40, true)})) << "ascending numbers";
    EXPECT_EQ(modules, std::vector<std::string>{"term"});

    // The next start brings the LED board back.
    Shell next;
    for (const auto& name : {"Auto Start Led", "Auto Start View", "Auto Start Hex File"})
        next.settings.putsetting(name, shell.settings.getsetting(name, ""));
    std::vector<int> reopened;
    registerall(next.model, reopened);
    RecordingHost host2;
    ASSERT_TRUE(runstartup(next.model, host2));
    EXPECT_EQ(reopened, (std::vector<int>{packagewindow(40, true), windows::kLedBoard}));
}

TEST(Shutdown, WithoutRememberTheFlagsStay) {
    Shell shell;
    std::vector<int> opened;
    registerall(shell.model, opened);
    shell.settings.putsetting("Auto Start Remember", "0");
    RecordingHost host;
    ASSERT_TRUE(runstartup(shell.model, host));
    shell.model.registry().open(windows::kLedBoard);
    runshutdown(shell.model, host);
    EXPECT_EQ(shell.settings.getsetting("Auto Start Led", ""), "0");
}

TEST(SelectMicrocontroller, RefusalsInTheirOrder) {
    Shell shell;
    shell.select("ATmega32");
    WindowRegistry& registry = shell.model.registry();
    for (int window : {windows::kAssembler, windows::kBasicCompiler, windows::kBreakpointsManager,
                       windows::kDisassembler})
        registry.setopen(window, true);
    const std::pair<int, const char*> refusals[] = {
        {windows::kDisassembler, "Disassembler"}, {windows::kBreakpointsManager, "Breakpoints Manager"},
        {windows::kBasicCompiler, "BASIC Compiler"}, {windows::kAssembler, "Assembler"}};
    for (const auto& [window, caption] : refusals) {
        shell.model.command("menuselect");
        EXPECT_EQ(shell.lastmessage(), std::string("Please close ") + caption + " window first.") << caption;
        registry.setopen(window, false);
    }
    shell.loadhello();
    shell.startpaused();
    shell.model.command("menuselect");
    EXPECT_EQ(shell.lastmessage(), "Please stop the simulation first.");
}

TEST(SelectMicrocontroller, ChoosingAnotherModelLoadsItAndForgetsTheAutoStartFiles) {
    Shell shell;
    shell.select("ATmega32");
    std::vector<ModelOption> shown;
    int chosen = 0;
    const auto& list = shell.model.simulation().models().models;
    for (size_t i = 0; i < list.size(); ++i)
        if (list[i].name == "ATtiny2313") chosen = static_cast<int>(i) + 1;
    shell.model.choosemodel = [&](const std::vector<ModelOption>& options) -> std::optional<int> {
        shown = options;
        return chosen;
    };
    shell.settings.putsetting("Auto Start Asm File", "x.asm");
    std::vector<int> unloaded;
    shell.model.registry().registerwindow(windows::kProgramMemoryEditor, {{}, [&] { unloaded.push_back(4); }});
    shell.model.registry().setopen(windows::kProgramMemoryEditor, true);
    shell.model.command("menuselect");
    EXPECT_EQ(unloaded, std::vector<int>{4}) << "memory windows close before the window opens";
    ASSERT_EQ(shown.size(), list.size());
    const auto current = std::ranges::find_if(shown, [](const ModelOption& o) { return o.current; });
    ASSERT_NE(current, shown.end());
    EXPECT_EQ(current->caption.rfind("ATmega32  (", 0), 0u);
    EXPECT_NE(current->caption.find("PINS: 40"), std::string::npos);
    EXPECT_EQ(shell.model.qprocessor(), "ATtiny2313");
    EXPECT_EQ(shell.settings.getsetting("Microcontroller Model", ""), std::to_string(chosen));
    EXPECT_EQ(shell.settings.getsetting("Auto Start Asm File", "?"), "");
    shell.settings.putsetting("Auto Start Hex File", "y.hex");
    shell.model.choosemodel = [](const std::vector<ModelOption>&) { return std::optional<int>(); };
    shell.model.command("menuselect");
    EXPECT_EQ(shell.model.qprocessor(), "ATtiny2313") << "Cancel keeps the model";
    EXPECT_EQ(shell.settings.getsetting("Auto Start Hex File", "?"), "") << "whichever button closed it";
}

TEST(PackageLayouts, FourteenDrawingsOnTheViewWindowNumbers) {
    const std::set<int> expected = {12, 14, 15, 18, 22, 24, 25, 26, 27, 28, 50, 51, 52, 53};
    std::set<int> numbers;
    for (const PackageLayout& layout : packagelayouts()) numbers.insert(layout.window);
    EXPECT_EQ(numbers, expected);
    EXPECT_EQ(packagelayouts().size(), 14u) << "one window per drawing";
    for (int window : expected) EXPECT_TRUE(ismicrocontrollerview(window)) << window;
    EXPECT_FALSE(ismicrocontrollerview(1));
    EXPECT_FALSE(ismicrocontrollerview(13));
}

TEST(PackageLayouts, CompactDrawingsUpToFortyPinsOnly) {
    for (int pins : {8, 14, 18, 20, 28, 40}) {
        EXPECT_NE(packagewindow(pins, true), packagewindow(pins, false)) << pins;
        EXPECT_NE(packagewindow(pins, true), 0) << pins;
    }
    // A 64-pin device shows the normal layout under Compact View.
    for (int pins : {64, 80}) EXPECT_EQ(packagewindow(pins, true), packagewindow(pins, false)) << pins;
    EXPECT_NE(packagewindow(64, false), 0);
    EXPECT_EQ(packagewindow(32, false), 0);
    EXPECT_EQ(packagewindow(0, true), 0);
}

TEST(WindowRegistry, OpenFlagsAndActions) {
    WindowRegistry registry;
    std::vector<std::string> log;
    registry.registerwindow(37, {[&] { log.push_back("open 37"); registry.setopen(37, true); },
                                 [&] { log.push_back("unload 37"); }});
    registry.registerwindow(24, {[&] { registry.setopen(24, true); }, [&] { log.push_back("unload 24"); }});
    EXPECT_TRUE(registry.canopen(37));
    EXPECT_FALSE(registry.canopen(20));
    registry.open(20);  // nobody makes that window: nothing happens
    EXPECT_FALSE(registry.isopen(20));
    registry.open(37);
    registry.open(24);
    registry.setopen(windows::kMain, true);
    EXPECT_TRUE(registry.microcontrollerviewopen());
    EXPECT_EQ(registry.openwindows(), (std::vector<int>{1, 24, 37}));
    registry.unloadall();
    EXPECT_EQ(log, (std::vector<std::string>{"open 37", "unload 24", "unload 37"}));
    EXPECT_EQ(registry.openwindows(), std::vector<int>{1}) << "the main window is not unloaded with the others";
    EXPECT_FALSE(registry.microcontrollerviewopen());
}

TEST(WindowPlacement, SavedInTwipsAndCentredWithoutSavePositions) {
    MemorySettings settings;
    saveposition(settings, 37, {100, 50});
    EXPECT_EQ(settings.getsetting("Window37 Left", ""), "1500");
    EXPECT_EQ(settings.getsetting("Window37 Top", ""), "750");
    ASSERT_TRUE(startposition(settings, 37));
    EXPECT_EQ(startposition(settings, 37)->x, 100);
    settings.putsetting("Save Positions", "OFF");
    settings.putsetting("Window37 Left", "-5");
    EXPECT_FALSE(startposition(settings, 37)) << "centred";
    EXPECT_EQ(settings.getsetting("Window37 Left", ""), "4000") << "repaired even when not used";
}

TEST(WindowPlacement, AlwaysOnTopOnlyUnderSaveAlwaysOnTop) {
    MemorySettings settings;
    EXPECT_FALSE(startontop(settings, 4));
    EXPECT_EQ(settings.getsetting("On Top 4", "x"), "0") << "the default is written back";
    saveontop(settings, 4, true);
    EXPECT_EQ(settings.getsetting("On Top 4", ""), "1");
    EXPECT_TRUE(startontop(settings, 4));
    settings.putsetting("Save Always On Top", "0");
    EXPECT_FALSE(startontop(settings, 4));
}

}  // namespace
}  // namespace velmora::test
