// Menu captions, check marks, enabled states and the refusals of the Tools menu.

#include <gtest/gtest.h>

#include "shell/mainwindowmenus.h"
#include "shellfixture.h"

namespace velmora::test {
namespace {

TEST(MainMenus, TopLevelMenusInOrder) {
    std::vector<std::string> captions;
    for (const MenuDef& menu : mainmenus()) captions.push_back(menu.control + "=" + menu.caption);
    EXPECT_EQ(captions, (std::vector<std::string>{"menu1=&File", "menu2=&Simulation", "menu3=&Rate", "menu4=&Tools",
                                                  "menu5=&Options", "menu6=&Help", "menustep2=STEP",
                                                  "menustep3=Run To Next BASIC Statement"}));
}

TEST(MainMenus, ToolsAndOptionsHoldEveryItem) {
    size_t tools = 0, options = 0;
    for (const MenuDef& menu : mainmenus()) {
        if (menu.control == "menu4") tools = menu.items.size();
        if (menu.control == "menu5") options = menu.items.size();
    }
    EXPECT_EQ(tools, 24u);
    EXPECT_EQ(options, 22u);
}

TEST(MainMenus, ToolRefusalsFollowTheModelAndProgram) {
    Machine m;
    m.kinds.simconf = 2;
    EXPECT_EQ(toolrefusal(ToolGuard::SimulationModule, m),
              "Simulation module not available for the selected microcontroller model.");
    EXPECT_EQ(toolrefusal(ToolGuard::Eeprom, m), "EEPROM data memory not available for the selected device.");
    EXPECT_EQ(toolrefusal(ToolGuard::Sram, m), "SRAM data memory not available for the selected device.");
    EXPECT_EQ(toolrefusal(ToolGuard::Program, m), "No program loaded.");
    EXPECT_EQ(toolrefusal(ToolGuard::Uart, m), "Hardware UART not available for the selected device.");
    m.kinds.simconf = 1;
    m.eepromsize = 64;
    m.sramsize = 64;
    m.programbytes = 2;
    m.kinds.uartconf = 2;
    for (ToolGuard g : {ToolGuard::None, ToolGuard::SimulationModule, ToolGuard::Eeprom, ToolGuard::Sram,
                        ToolGuard::Program, ToolGuard::Uart})
        EXPECT_FALSE(toolrefusal(g, m));
}

TEST(MainMenus, StepItemsShowOnlyWhileSingleStepping) {
    MenuContext c;
    auto s = menustates(c);
    EXPECT_FALSE(s["menustep2"].visible);
    EXPECT_FALSE(s["menustep3"].visible);
    EXPECT_TRUE(s["menustart"].enabled);
    EXPECT_FALSE(s["menustop"].enabled);
    c.startenabled = false;
    c.stopenabled = c.stepenabled = true;
    s = menustates(c);
    EXPECT_TRUE(s["menustep2"].visible && s["menustep2"].enabled);
    EXPECT_FALSE(s["menustep3"].visible) << "no BASIC line table";
    EXPECT_TRUE(s["menustep"].enabled);
    c.hassourcelines = true;
    EXPECT_TRUE(menustates(c)["menustep3"].visible);
}

TEST(MainMenus, MenusOffWhileALoadWorks) {
    MenuContext c;
    c.menusenabled = false;
    auto s = menustates(c);
    for (const char* menu : {"menu1", "menu2", "menu3", "menu4", "menu5", "menu6"}) EXPECT_FALSE(s[menu].enabled);
}

TEST(MainWindowMenus, RateCheckMarkAndRunStates) {
    Shell shell;
    shell.select("ATmega32");
    shell.loadhello();
    shell.model.command("menuspeed3");
    auto s = shell.model.menustates();
    EXPECT_TRUE(s["menuspeed3"].checked);
    EXPECT_FALSE(s["menuspeed4"].checked);
    EXPECT_EQ(shell.settings.getsetting("Simulation Rate", ""), "3");
    shell.startpaused();
    s = shell.model.menustates();
    EXPECT_FALSE(s["menustart"].enabled);
    EXPECT_TRUE(s["menustop"].enabled);
    EXPECT_TRUE(s["menustep"].enabled);
    EXPECT_TRUE(s["menustep2"].visible);
    shell.model.command("menustop");
    s = shell.model.menustates();
    EXPECT_TRUE(s["menustart"].enabled);
    EXPECT_FALSE(s["menustep2"].visible);
}

TEST(MainWindowMenus, SwitchCheckMarksFollowTheOptions) {
    Shell shell;
    shell.select("ATmega32");
    shell.model.options().switches["Compact View"] = true;
    EXPECT_TRUE(shell.model.menustates()["menucompact"].checked);
    shell.model.command("menucompact");
    EXPECT_FALSE(shell.model.menustates()["menucompact"].checked);
    EXPECT_EQ(shell.settings.getsetting("Compact View", ""), "OFF");
}

TEST(MainWindowMenus, ToolsWithoutAWindowAreGreyedAndRefusalsSpeakFirst) {
    Shell shell;
    shell.select("ATmega32");
    EXPECT_FALSE(shell.model.menustates()["menulcd"].enabled);
    int opened = 0;
    shell.model.registry().registerwindow(windows::kDisassembler, {[&] { ++opened; }, {}});
    EXPECT_TRUE(shell.model.menustates()["menudisassembler"].enabled);
    shell.model.command("menudisassembler");
    EXPECT_EQ(opened, 0);
    EXPECT_EQ(shell.lastmessage(), "No program loaded.");
    shell.loadhello();
    shell.model.command("menudisassembler");
    EXPECT_EQ(opened, 1);
}

TEST(MainWindowMenus, MicrocontrollerViewOpensTheDrawingOfThePackage) {
    Shell shell;
    shell.select("ATmega32");
    std::vector<int> opened;
    for (const PackageLayout& layout : packagelayouts()) {
        const int window = layout.window;
        shell.model.registry().registerwindow(window, {[&, window] {
                                                           opened.push_back(window);
                                                           shell.model.registry().setopen(window, true);
                                                       },
                                                       {}});
    }
    shell.model.options().switches["Compact View"] = false;
    shell.model.command("menuperipheraldevices");
    shell.model.options().switches["Compact View"] = true;
    shell.model.command("menuperipheraldevices");
    ASSERT_EQ(opened.size(), 2u);
    EXPECT_EQ(opened[0], packagewindow(40, false));
    EXPECT_EQ(opened[1], packagewindow(40, true));
    EXPECT_FALSE(shell.model.registry().isopen(opened[0])) << "the other drawing closed first";
}

TEST(MainWindowMenus, CommandsWithoutTheirWindowAreGreyed) {
    Shell shell;
    shell.select("ATmega32");
    auto s = shell.model.menustates();
    EXPECT_FALSE(s["menuautostart"].enabled);
    EXPECT_FALSE(s["menucolors"].enabled);
    EXPECT_TRUE(s["menuclock"].enabled);
    EXPECT_TRUE(s["menuabout"].enabled);
    shell.model.extracommands["menucolors"] = [] {};
    EXPECT_TRUE(shell.model.menustates()["menucolors"].enabled);
}

}  // namespace
}  // namespace velmora::test
