// The LCD Module window without a display: the setup labels and the dialogs behind them,
// settings kept, the import from a BASIC program, the error indicator, the blink and the
// trace, with the module driven through the pins of a running chip.
//
// Select Pin and Select Option: clicks, double clicks, Select and Cancel.
//
// What the panel shows: cells by row and column for each module type and shift, the cursor's
// place and blink, the dots in the canvas, and the character ROM file.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "devices/lcdpaint.h"
#include "devices/lcdwindow.h"
#include "devices/selectoption.h"
#include "devices/selectpin.h"
#include "lcdfixture.h"
#include "support/scriptedwiring.h"
#include "support/sectiontable.h"
#include "support/tempfolder.h"

namespace velmora::test {
namespace {

// A window over the chip of an LcdBench, whose own module steps aside.
struct WindowBench {
    LcdBench bench;
    ScriptedWiring dialogs;
    LcdWindow window{bench.chip.m, bench.chip.settings, bench.chip.messenger, dialogs};

    explicit WindowBench(const std::string& program = "", const std::string& trace = "") {
        bench.lcd.detach();
        window.open({program, trace, VELMORA_SOURCE_DATA_DIR});
    }
    // Power on with the window's module on the pins, then the usual 4-bit start.
    void start() {
        clean(bench.chip.m);
        bench.chip.m.simulationrunning = true;
        bench.port(0, 0xFE);
        bench.init4bit();
    }
    std::vector<std::string> rows() {
        const LcdModule& lcd = window.module();
        return lcdtextrows(lcd.state, lcd.config.lines, lcd.config.chars);
    }
    // Some dots of the cell at (r, c): lit or dark by the colour scheme.
    uint32_t dot(int r, int c, int dotrow, int dotcol) const {
        return window.canvas().at(18 * c - 13 + 3 * dotcol, 29 * r - 24 + 3 * dotrow);
    }
};

std::vector<std::string> labels(const LcdWindow& window) {
    std::vector<std::string> texts;
    for (int i = 0; i < kLcdSetupItems; ++i) texts.push_back(window.setuplabel(static_cast<LcdSetupItem>(i)));
    return texts;
}

TEST(LcdWindow, SetupLabelsAndTheirDialogs) {
    const std::vector<std::string> items = {"Type", "DataLines", "Interface", "Rs", "E", "Rw", "Colors", "Delays"};
    for (const TableRow& row : tablerows("tables.txt", "Setup items")) {
        const auto item = static_cast<LcdSetupItem>(std::find(items.begin(), items.end(), row[1]) - items.begin());
        WindowBench w;
        if (!row[2].empty()) w.dialogs.pins = {pinof(row[2])};
        if (!row[3].empty()) w.dialogs.options = {static_cast<int>(row.number(3))};
        w.window.clicksetupitem(item);
        EXPECT_EQ(w.dialogs.asked, std::vector<std::string>{row[4]}) << row.where;
        EXPECT_EQ(w.window.setuplabel(item), row[5]) << row.where;
        EXPECT_EQ(w.bench.chip.settings.getsetting(row[6], "?"), row[7]) << row.where;
    }
}

TEST(LcdWindow, DefaultLabelsAndTheSetupButton) {
    WindowBench w;
    EXPECT_EQ(labels(w.window),
              (std::vector<std::string>{"LCD Type: 2x16", "Data Lines ---> PORTB", "Interface: 4-bit, High",
                                        "RS Line ---> PORTB, 3", "E Line ---> PORTB, 2", "R/W Line ---> Not Used",
                                        "Change LCD Module Color Scheme", "Setup LCD Module Busy Delays"}));
    EXPECT_EQ(w.window.setupcaption(), "Setup");
    w.window.clicksetup();
    EXPECT_TRUE(w.window.setupopen());
    EXPECT_EQ(w.window.setupcaption(), "Apply!");
    // A connected R/W line is disconnected at once, without a dialog.
    w.dialogs.pins = {{kPortB, 1}};
    w.window.clicksetupitem(LcdSetupItem::Rw);
    w.window.clicksetupitem(LcdSetupItem::Rw);
    EXPECT_EQ(w.dialogs.asked.size(), 1u);
    EXPECT_EQ(w.window.setuplabel(LcdSetupItem::Rw), "R/W Line ---> Not Used");
}

TEST(LcdWindow, BusyDelaysChangeOnlyWhenAllThreeAreGood) {
    for (const TableRow& row : tablerows("tables.txt", "Busy delays")) {
        WindowBench w;
        std::istringstream answers(row[1]);
        for (std::string a; answers >> a;) w.dialogs.answers.push_back(a == "cancel" ? std::nullopt : std::optional(a));
        w.window.clicksetupitem(LcdSetupItem::Delays);
        const LcdConfig& c = w.window.config();
        EXPECT_EQ(std::vector<long>({c.busyinit, c.busycmd, c.busydata, static_cast<long>(w.dialogs.asked.size())}),
                  std::vector<long>({row.number(2), row.number(3), row.number(4), row.number(5)}))
            << row.where;
        EXPECT_EQ(w.bench.chip.settings.getsetting("LCD Busy Delay Cmd", "?"), row[3]) << row.where;
        EXPECT_EQ(w.bench.chip.messenger.messages,
                  row[6].empty() ? std::vector<std::string>{} : std::vector<std::string>{row[6]})
            << row.where;
    }
    WindowBench w;
    w.window.clicksetupitem(LcdSetupItem::Delays);
    EXPECT_EQ(w.dialogs.asked[0], "Please enter new initialization busy delay\n(defaule value: 1640 \xC2\xB5s)|1640");
}

TEST(LcdWindow, OpeningOffersTheBasicProgramsWiring) {
    TempFolder folder;
    const std::string program = (folder / "clock.hex").string();
    std::ofstream(program) << ":00000001FF\n";
    std::ofstream((folder / "clock.bas").string()) << "Define LCD_DREG = PORTC\nDefine LCD_BITS = 8\n"
                                               "Define LCD_LINES = 4 ' four rows\nDefine LCD_CHARS = 20\n";
    for (const bool yes : {true, false}) {
        LcdBench bench;
        ScriptedWiring dialogs;
        dialogs.yes = yes;
        LcdWindow window(bench.chip.m, bench.chip.settings, bench.chip.messenger, dialogs);
        window.open({program, "", VELMORA_SOURCE_DATA_DIR});
        EXPECT_EQ(dialogs.asked,
                  std::vector<std::string>{"Do you want to get LCD module parameters from the loaded basic program?"});
        EXPECT_EQ(window.setuplabel(LcdSetupItem::Type), yes ? "LCD Type: 4x20" : "LCD Type: 2x16");
        EXPECT_EQ(window.setuplabel(LcdSetupItem::DataLines), yes ? "Data Lines ---> PORTC" : "Data Lines ---> PORTB");
        EXPECT_EQ(bench.chip.settings.getsetting("LCD Data Lines Interface", "?"), yes ? "8" : "4");
        EXPECT_EQ(window.canvas().width, yes ? 18 * 20 + 11 : 18 * 16 + 11);
        EXPECT_EQ(window.canvas().height, yes ? 29 * 4 + 9 : 29 * 2 + 9);
    }
    // No program, or none beside it: no question.
    WindowBench w((folder / "other.hex").string());
    EXPECT_TRUE(w.dialogs.asked.empty());
}

TEST(LcdWindow, TextDotsAndTheTypeChange) {
    WindowBench w;
    w.start();
    w.bench.text("Hi");
    EXPECT_EQ(w.rows(), (std::vector<std::string>{"Hi              ", "                "}));
    EXPECT_TRUE(w.window.paint());
    EXPECT_FALSE(w.window.paint()) << "nothing new";
    const LcdColors& light = kLcdColorSchemes[0];
    // 'H': its first row is X...X; 'i': its dot in the middle of the first row, then a blank row.
    EXPECT_EQ(w.dot(1, 1, 0, 0), light.lit);
    EXPECT_EQ(w.dot(1, 1, 0, 1), light.dark);
    EXPECT_EQ(w.dot(1, 1, 0, 4), light.lit);
    EXPECT_EQ(w.dot(1, 2, 0, 2), light.lit);
    EXPECT_EQ(w.dot(1, 2, 1, 2), light.dark);
    // A new type reshapes the panel and clears the display.
    w.dialogs.options = {6};
    w.window.clicksetupitem(LcdSetupItem::Type);
    EXPECT_TRUE(w.window.paint());
    EXPECT_EQ(w.window.canvas().width, 18 * 40 + 11);
    EXPECT_EQ(w.rows()[0], std::string(40, ' '));
    EXPECT_EQ(w.dot(1, 1, 0, 0), light.dark);
}

TEST(LcdWindow, BlinkStepsOnTheTimerAndOnEveryRepaint) {
    WindowBench w;
    w.start();
    w.bench.write(0x0D, false);  // display on, blink only
    w.window.paint();
    const LcdColors& light = kLcdColorSchemes[0];
    // The blink phase after the command's own repaint is the block, at cell 0.
    EXPECT_EQ(w.dot(1, 1, 0, 1), light.lit);
    w.window.blinktick();
    EXPECT_EQ(w.dot(1, 1, 0, 1), light.dark);
    w.window.blinktick();
    EXPECT_EQ(w.dot(1, 1, 0, 1), light.lit);
    // Two executed bytes step the blink twice, painted once: the block stays.
    w.bench.text("  ");
    w.window.paint();
    EXPECT_EQ(w.dot(1, 3, 0, 1), light.lit);
    w.bench.text(" ");
    w.window.paint();
    EXPECT_EQ(w.dot(1, 4, 0, 1), light.dark);
}

TEST(LcdWindow, ErrorIndicatorExplainsAndHides) {
    WindowBench w;
    w.start();
    w.bench.strobe(0x80, false);
    w.bench.strobe(0x00, false);  // Set DDRAM 0: busy for 42 us
    w.bench.strobe(0x40, true);   // at once: dropped
    EXPECT_TRUE(w.window.errorshown());
    EXPECT_TRUE(w.window.paint());
    w.window.clickerror();
    EXPECT_FALSE(w.window.errorshown());
    EXPECT_EQ(w.bench.chip.messenger.messages,
              std::vector<std::string>{"New command or data received while LCD was busy.\n"
                                       "LCD will not behave properly and probably display some garbage data.\n"
                                       "Appropriate delay interval in your program should be increased."});
}

TEST(LcdWindow, F12TracesUntilTheWindowIsInitialisedAgain) {
    TempFolder folder;
    const std::string trace = (folder / "lcdlog.txt").string();
    WindowBench w("", trace);
    w.start();
    w.bench.write('A', true);
    EXPECT_FALSE(std::filesystem::exists(trace));
    w.window.keypress(kLcdTraceKey - 1);
    w.bench.write('B', true);
    EXPECT_FALSE(std::filesystem::exists(trace));
    w.window.keypress(kLcdTraceKey);
    w.bench.write('C', true);
    std::ifstream file(trace);
    std::string strobe1, strobe2, byte;
    std::getline(file, strobe1);
    std::getline(file, strobe2);
    std::getline(file, byte);
    EXPECT_NE(strobe1.find("\tBLOK=0\tBUSY=0"), std::string::npos) << strobe1;
    EXPECT_NE(byte.find("\t43\tRS=1\tBIT=4\tBUSY=46"), std::string::npos) << byte;
    // A reset removes the file.
    clean(w.bench.chip.m);
    EXPECT_FALSE(std::filesystem::exists(trace));
}

TEST(LcdWindow, ClosingSavesAndLeavesThePins) {
    WindowBench w;
    EXPECT_EQ(w.bench.chip.m.observers.size(), 1u);
    w.dialogs.options = {3};
    w.window.clicksetupitem(LcdSetupItem::Colors);
    w.window.close();
    EXPECT_TRUE(w.bench.chip.m.observers.empty());
    EXPECT_EQ(loadlcdconfig(w.bench.chip.settings).colorscheme, 3);
}

TEST(SelectPin, ClicksAndResults) {
    for (const TableRow& row : tablerows("tables.txt", "Select pin")) {
        SelectPin dialog(6, 3, row.flag(1));
        EXPECT_EQ(dialog.caption(), row.flag(1) ? "Select Port" : "Select Pin") << row.where;
        std::istringstream clicks(row[2]);
        for (std::string click; clicks >> click;) {
            const size_t digits = click.find_first_of("0123456789");
            const int value = digits == std::string::npos ? 0 : std::stoi(click.substr(digits));
            if (click == "S")
                dialog.select();
            else if (click == "C")
                dialog.cancel();
            else if (click.starts_with("DP"))
                dialog.doubleclickport(value);
            else if (click.starts_with("DB"))
                dialog.doubleclickbit(value);
            else if (click[0] == 'P')
                dialog.clickport(value);
            else
                dialog.clickbit(value);
        }
        EXPECT_EQ(std::vector<long>({dialog.port(), dialog.bit()}), std::vector<long>({row.number(3), row.number(4)}))
            << row.where;
        EXPECT_EQ(dialog.finished(), row.flag(5)) << row.where;
    }
}

TEST(SelectOption, RowsHeadingsAndResults) {
    SelectOption dialog("Please select the type", "of the interface with LCD module:", {"8-bit", "", "4-bit, Low"}, 0);
    EXPECT_EQ(dialog.visiblerows(), (std::vector<int>{0, 2}));
    EXPECT_EQ(dialog.headinglines(), 2);
    dialog.click(1);  // empty row: not shown, not selectable
    EXPECT_EQ(dialog.selected(), 0);
    dialog.click(2);
    EXPECT_EQ(dialog.selected(), 2);
    EXPECT_FALSE(dialog.finished());
    dialog.select();
    EXPECT_TRUE(dialog.finished());

    SelectOption one("Please select LCD module type:", "", {"a", "b"}, 1);
    EXPECT_EQ(one.headinglines(), 1);
    one.doubleclick(0);
    EXPECT_TRUE(one.finished());
    EXPECT_EQ(one.selected(), 0);

    SelectOption cancelled("x", "y", std::vector<std::string>(30, "row"), 3);
    EXPECT_EQ(cancelled.options().size(), 21u);
    cancelled.cancel();
    EXPECT_EQ(cancelled.selected(), -1);
}

TEST(LcdLayout, CellAtRowAndColumnAndTheCursorsPlace) {
    for (const TableRow& row : tablerows("tables.txt", "Visible cells")) {
        const auto n = [&row](size_t i) { return static_cast<int>(row.number(i)); };
        EXPECT_EQ(lcdvisiblecell(n(0), n(1), n(2), n(3), n(4)), n(5)) << row.where;
    }
    for (const TableRow& row : tablerows("tables.txt", "Cursor places")) {
        const auto n = [&row](size_t i) { return static_cast<int>(row.number(i)); };
        const std::optional<LcdPlace> place = row[4].empty() ? std::nullopt : std::optional(LcdPlace{n(4), n(5)});
        EXPECT_EQ(lcdcursorplace(n(0), n(1), n(2), n(3)), place) << row.where;
    }
}

TEST(LcdPaint, DotsOfCellsAndTheBlinkingCursor) {
    LcdCharRom rom;
    std::string error;
    ASSERT_TRUE(loadlcdrom(VELMORA_SOURCE_DATA_DIR, rom, error)) << error;
    LcdController c;
    c.cells[0] = LcdCell{rom.glyphs['A'], 'A'};
    const LcdColors& colours = kLcdColorSchemes[0];
    Canvas canvas;
    lcdrepaint(c, 2, 16, colours, &rom, canvas);
    EXPECT_EQ(canvas.width, 18 * 16 + 11);
    EXPECT_EQ(canvas.height, 29 * 2 + 9);
    // 'A' row 0 is .###. : the dot in column 1 of cell (1,1) at x = 5 + 3, y = 5.
    EXPECT_EQ(canvas.at(8, 5), colours.lit);
    EXPECT_EQ(canvas.at(9, 6), colours.lit);
    EXPECT_EQ(canvas.at(5, 5), colours.dark);
    EXPECT_EQ(canvas.at(7, 5), colours.background) << "the gap between dots";
    // Blink only: block, plain, block.
    c.cursormode = 1;
    const int rowseven = 5 + 3 * 7;
    lcdcursortick(c, 2, 16, colours, &rom, canvas);
    EXPECT_EQ(c.cursorphase, 2);
    EXPECT_EQ(canvas.at(5, rowseven), colours.lit);
    lcdcursortick(c, 2, 16, colours, &rom, canvas);
    EXPECT_EQ(c.cursorphase, 0);
    EXPECT_EQ(canvas.at(5, rowseven), colours.dark);
    c.cursormode = 2;
    lcdcursortick(c, 2, 16, colours, &rom, canvas);
    EXPECT_EQ(c.cursorphase, 1);
    EXPECT_EQ(canvas.at(5, rowseven), colours.lit) << "underline on the eighth row";
    c.cursormode = 3;
    lcdcursortick(c, 2, 16, colours, &rom, canvas);
    EXPECT_EQ(c.cursorphase, 2);
    lcdcursortick(c, 2, 16, colours, &rom, canvas);
    EXPECT_EQ(c.cursorphase, 1);
}

TEST(LcdRom, PublishedGlyphsAndFileErrors) {
    LcdCharRom rom;
    std::string error;
    ASSERT_TRUE(loadlcdrom(VELMORA_SOURCE_DATA_DIR, rom, error)) << error;
    EXPECT_EQ(rom.glyphs['\\'], (LcdGlyph{0x11, 0x0A, 0x1F, 0x04, 0x1F, 0x04, 0x04, 0x00})) << "yen sign";
    EXPECT_EQ(rom.glyphs[126], (LcdGlyph{0x00, 0x04, 0x02, 0x1F, 0x02, 0x04, 0x00, 0x00})) << "right arrow";
    EXPECT_EQ(rom.glyphs[255], (LcdGlyph{0x1F, 0x1F, 0x1F, 0x1F, 0x1F, 0x1F, 0x1F, 0x1F})) << "block";
    EXPECT_EQ(rom.glyphs[32], LcdGlyph{});
    EXPECT_EQ(rom.glyphs[160], LcdGlyph{});
    int drawn = 0;
    for (int code = 33; code < 256; ++code) drawn += rom.glyphs[code] != LcdGlyph{};
    EXPECT_EQ(drawn, 95 + 95 - 1) << "33..127 and 161..255 drawn, FE blank";
    for (const TableRow& row : tablerows("tables.txt", "Bad character ROMs")) {
        EXPECT_FALSE(readlcdrom(row[0], rom, error)) << row.where;
        EXPECT_EQ(error, row[1]) << row.where;
    }
}

}  // namespace
}  // namespace velmora::test
