// Window numbers of the package drawings, the window-open table, placement and Always On Top.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "core/memorysettings.h"
#include "shell/settingnames.h"
#include "shell/windowplacement.h"
#include "shell/windowregistry.h"

namespace velmora::test {
namespace {

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
    EXPECT_EQ(packagewindow(64, true), packagewindow(64, false));
    EXPECT_EQ(packagewindow(80, true), packagewindow(80, false));
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
