// Writes pictures of the main window, of every Microcontroller View drawing, of the
// Assembler and BASIC Compiler windows, of the LCD Module, of the memory windows and of the
// debugging windows, for a person to look at:
// velmora/tests/ui/screenshots OUTPUT-FOLDER.

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <clocale>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "assembler/assemblefile.h"
#include "basic/basicfile.h"
#include "shell/settingnames.h"
#include "shell/settingsstore.h"
#include "support/modelchoice.h"
#include "support/scriptedinput.h"
#include "ui/desktopsession.h"
#include "ui/watchdialogs.h"

namespace {

using namespace velmora;

bool save(QWidget* widget, const QString& folder, const QString& name) {
    QApplication::processEvents();
    const QString path = folder + "/" + name + ".png";
    if (!widget->grab().save(path)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        return false;
    }
    std::printf("%s\n", qPrintable(path));
    return true;
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    const QString folder = argc > 1 ? argv[1] : "screenshots";
    QDir().mkpath(folder);
    const char* settingspath = std::getenv("VELMORA_SETTINGS");
    const std::filesystem::path file = settingspath ? settingspath : "/tmp/velmora-screenshot-settings";
    std::filesystem::remove(file);
    SettingsStore settings(file);
    test::ScriptedInput input;
    DesktopSession session(settings, VELMORA_SOURCE_DATA_DIR, &input);
    if (!session.start()) return 1;
    MainWindowModel& model = session.model();
    bool ok = true;

    // The main window paused a few steps into the example.
    session.loadprogram(VELMORA_SOURCE_DATA_DIR "/examples/hello.hex");
    session.window().runcommand("menuspeed1");
    session.window().runcommand("menustart");
    for (int i = 0; i < 12; ++i) session.window().runcommand("menustep");
    session.window().flush();
    ok = save(&session.window(), folder, "mainwindow") && ok;

    // One picture per package drawing, on a model of that pin count.
    const std::pair<int, const char*> packages[] = {{8, "ATtiny13"},  {14, "ATtiny24"}, {20, "ATtiny2313"},
                                                    {28, "ATmega8"},  {40, "ATmega32"}, {64, "ATmega128"}};
    session.window().runcommand("menustop");
    for (const auto& [pins, name] : packages) {
        test::selectmodelnamed(model.simulation(), name);
        for (bool compact : {false, true}) {
            if (compact && pins > 40) continue;
            model.options().switches[settingnames::kCompactView] = compact;
            model.openmicrocontrollerview();
            MicrocontrollerViewWindow* view = session.microcontrollerview();
            if (!view) return 1;
            ok = save(view, folder, QString("view-%1%2").arg(pins).arg(compact ? "-compact" : "")) && ok;
            view->unload();
            QApplication::processEvents();
        }
    }

    // The Assembler window after a run with one error: the coloured source with its mark, the
    // listing scrolled to the error row, and Go To Next Error in the menu bar.
    test::selectmodelnamed(model.simulation(), "ATmega32");
    const std::filesystem::path asmfolder = std::filesystem::temp_directory_path() / "velmora-screenshot-asm";
    std::filesystem::create_directories(asmfolder);
    input.savepath = (asmfolder / "blink.asm").string();
    session.window().runcommand("menuassembler");
    AssemblerWindowView* assembler = session.assembler();
    if (!assembler) return 1;
    assembler->sourceeditor()->setPlainText(
        "; Blink PORTB with a delay loop\n"
        ".equ DELAY = 200\n"
        "START:  ldi r16,$FF\n"
        "        out DDRB,r16\n"
        "LOOP:   com r17\n"
        "        out PORTB,r17\n"
        "        ldi r18,DELAY\n"
        "WAIT:   dec r18\n"
        "        brne WAIT\n"
        "        ldi r19,300      ; out of range\n"
        "        rjmp LOOP\n");
    assembler->runcommand("menuassemble");
    ok = save(assembler, folder, "assembler") && ok;

    // The BASIC Compiler window with coloured keywords, strings, comments and an ASM row under
    // its header, and the Viewer with the model's system variables.
    session.window().runcommand("menubasic");
    BasicCompilerWindowView* basic = session.basiccompiler();
    if (!basic) return 1;
    basic->sourceeditor()->setPlainText(
        "' Count key presses on PORTD.2 and show them\n"
        "Dim presses As Word\n"
        "Dim flags As Byte\n"
        "Symbol key = PIND.2\n"
        "Const limit = 1000\n"
        "\n"
        "loop:\n"
        "   If key = 0 Then presses = presses + 1\n"
        "   Lcdout \"Presses: \", #presses  ' on the LCD\n"
        "   ASM: NOP\n"
        "   WaitMs 20\n"
        "Goto loop\n");
    ok = save(basic, folder, "basiccompiler") && ok;
    basic->runcommand("menuvariables");
    if (!basic->viewer()) return 1;
    ok = save(basic->viewer(), folder, "viewer") && ok;
    std::filesystem::remove_all(asmfolder);

    // The LCD Module after a program wrote two lines over PORTB, at the size it opens in and
    // three times the panel; then with the setup panel open on the dark scheme.
    settings.putsetting("LCD R/W Line Port", "6");
    settings.putsetting("LCD R/W Line Bit", "1");
    input.answers = {std::string("8")};
    session.window().runcommand("menuclock");
    session.loadprogram(VELMORA_SOURCE_DATA_DIR "/../tests/firmware/hex/lcdpoll-atmega32.hex");
    session.window().runcommand("menulcd");
    LcdWindowView* lcd = session.lcd();
    if (!lcd) return 1;
    session.window().runcommand("menuspeed6");
    session.window().runcommand("menustart");
    session.window().flush();
    ok = save(lcd, folder, "lcd") && ok;
    lcd->resize(lcd->width() + lcd->panel()->width() / 2, lcd->height() + lcd->panel()->height() / 2);
    ok = save(lcd, folder, "lcd-large") && ok;
    lcd->unload();
    QApplication::processEvents();
    settings.putsetting("LCD Color Scheme", "1");
    session.window().runcommand("menulcd");
    lcd = session.lcd();
    if (!lcd) return 1;
    session.window().runcommand("menustart");
    session.window().flush();
    lcd->setupbutton()->click();
    ok = save(lcd, folder, "lcd-setup") && ok;
    lcd->unload();

    // The memory windows paused in the EEPROM firmware, inside its first calls.
    session.window().runcommand("menustop");
    session.loadprogram(VELMORA_SOURCE_DATA_DIR "/../tests/firmware/hex/eeprom-atmega32.hex");
    session.window().runcommand("menuspeed6");
    session.window().runcommand("menustart");
    session.window().runcommand("menuspeed1");
    session.window().runcommand("menustart");
    // Until a few return addresses stand on the stack.
    const auto stacked = [&model] {
        const int sp = StackViewer(model.machine()).stackpointer();
        return sp >= 0x85F - 24 && sp <= 0x85F - 6;  // past the start-up code
    };
    for (int i = 0; i < 5000 && !stacked(); ++i) session.window().runcommand("menustep");
    session.window().flush();
    const std::pair<const char*, const char*> tools[] = {
        {"menumemory", "programmemory"}, {"menueeprom", "eeprom"}, {"menustack", "stack"}, {"menualternative", "alternative"}};
    for (const auto& [control, name] : tools) {
        session.window().runcommand(control);
        QApplication::processEvents();
    }
    ok = save(session.programmemory(), folder, "programmemory") && ok;
    if (EepromWindow* eeprom = session.eeprom()) {
        eeprom->clickcell(1, 3);
        ok = save(eeprom, folder, "eeprom") && ok;
    }
    ok = save(session.stack(), folder, "stack") && ok;
    if (AlternativeWindow* alternative = session.alternative()) {
        alternative->resize(alternative->width() * 2 + 40, alternative->height());
        ok = save(alternative, folder, "alternative") && ok;
    }
    session.window().runcommand("menustop");

    // The Breakpoints Manager on an assembled program with its listing: two breakpoints and
    // the arrow a few steps in.
    std::filesystem::create_directories(asmfolder);
    const std::string countasm = (asmfolder / "count.asm").string();
    std::ofstream(countasm, std::ios::binary)
        << "; Sums the bytes of a table in SRAM and shows the sum on PORTB\r\n"
           ".equ COUNT = 8\r\n"
           "\r\n"
           "start:\tldi r16,$FF\r\n"
           "\tout DDRB,r16\t\t; PORTB drives the LEDs\r\n"
           "\tldi XL,low($0100)\r\n"
           "\tldi XH,high($0100)\r\n"
           "\tldi r17,COUNT\r\n"
           "fill:\tst X+,r17\t\t; the table counts down\r\n"
           "\tdec r17\r\n"
           "\tbrne fill\r\n"
           "\r\n"
           "sum:\tldi XL,low($0100)\r\n"
           "\tldi XH,high($0100)\r\n"
           "\tclr r18\r\n"
           "\tldi r17,COUNT\r\n"
           "next:\tld r19,X+\r\n"
           "\tadd r18,r19\r\n"
           "\tdec r17\r\n"
           "\tbrne next\r\n"
           "\tout PORTB,r18\r\n"
           "\tsts $0110,r18\t\t; kept for later\r\n"
           "\trjmp sum\r\n";
    {
        std::ostringstream out, err;
        if (assemblefile(countasm, "ATmega32", VELMORA_SOURCE_DATA_DIR "/models", out, err) != 0) {
            std::fprintf(stderr, "%s%s", out.str().c_str(), err.str().c_str());
            return 1;
        }
    }
    session.loadprogram((asmfolder / "count.hex").string());
    session.window().runcommand("menuspeed1");
    session.window().runcommand("menustart");
    for (int i = 0; i < 9; ++i) session.window().runcommand("menustep");
    session.window().runcommand("menubreakpointsmanager");
    if (BreakpointsWindow* breakpoints = session.breakpoints()) {
        for (const char* address : {"000007", "00000A"}) {
            const auto rows = breakpoints->manager().rows(80);
            for (int row = 0; row < kBreakpointRows; ++row)
                if (rows[static_cast<size_t>(row)].text.starts_with(address)) breakpoints->manager().clickrow(row);
        }
        breakpoints->resize(breakpoints->width() + 200, breakpoints->height());
        breakpoints->refreshview();
        ok = save(breakpoints, folder, "breakpoints") && ok;
        breakpoints->unload();
    } else {
        ok = false;
    }
    session.window().runcommand("menustop");

    // Two special breakpoints set through the answers to their prompts.
    session.window().runcommand("menuspecialbreak");
    if (SpecialBreakpointsWindow* special = session.specialbreakpoints()) {
        input.answers = {std::string("60"), std::string("1"), std::string("2A")};
        special->setbutton(0)->click();
        input.answers = {std::string("110"), std::string("2")};
        special->setbutton(1)->click();
        ok = save(special, folder, "specialbreakpoints") && ok;
        special->unload();
    } else {
        ok = false;
    }

    // Watch Variables on a compiled BASIC program some steps in, then in delete mode and in
    // hexadecimal, and its two small windows.
    const std::string watchbas = (asmfolder / "watch.bas").string();
    std::ofstream(watchbas, std::ios::binary)
        << "Dim ready As Bit\r\nDim ticks As Byte\r\nDim total As Word\r\nDim big As Long\r\n"
           "Dim samples(3) As Word\r\nready = 1\r\nbig = 100000\r\nsamples(0) = 512\r\nsamples(2) = 1023\r\n"
           "loop:\r\nticks = ticks + 1\r\ntotal = total + ticks\r\nGoto loop\r\n";
    {
        BasicFileRequest request;
        request.path = watchbas;
        request.modelname = "ATmega32";
        request.modeldir = VELMORA_SOURCE_DATA_DIR "/models";
        request.assemble = true;
        std::ostringstream out, err;
        if (!basiccompilefile(request, out, err).ok()) {
            std::fprintf(stderr, "%s", err.str().c_str());
            return 1;
        }
    }
    session.loadprogram((asmfolder / "watch.hex").string());
    session.window().runcommand("menustart");
    for (int i = 0; i < 300; ++i) session.window().runcommand("menustep");
    session.window().runcommand("menuwatch");
    if (WatchWindow* watch = session.watch()) {
        watch->refreshview();
        ok = save(watch, folder, "watch") && ok;
        watch->action("menuhex")->trigger();
        watch->menudelete();
        ok = save(watch, folder, "watch-delete") && ok;
        watch->enddeletemode();
        watch->action("menuhex")->trigger();
        AddVariableDialog add(model.watch(), model.messenger(), watch);
        add.namefield()->setText("flags");
        add.typebox()->setCurrentText("Bit");
        add.addressfield()->setText("7F");
        add.show();
        ok = save(&add, folder, "watch-add") && ok;
        ChangeValueDialog change(model.watch(), model.messenger(), watch);
        change.namebox()->setCurrentIndex(2);
        change.decimalfield()->setText("1000");
        change.show();
        ok = save(&change, folder, "watch-change") && ok;
        watch->unload();
    } else {
        ok = false;
    }
    session.window().runcommand("menustop");
    std::filesystem::remove_all(asmfolder);

    // Data Memory Usage after a compile of a few variables, one of them an array in SRAM.
    std::filesystem::create_directories(asmfolder);
    input.savepath = (asmfolder / "usage.bas").string();
    basic->sourceeditor()->setPlainText(
        "Dim n As Byte\nDim w As Word\nDim table(40) As Byte\nn = 1\nw = 300\ntable(3) = n\nEnd\n");
    basic->runcommand("menucompile");
    ok = save(session.memoryusage(), folder, "memoryusage") && ok;
    std::filesystem::remove_all(asmfolder);
    return ok ? 0 : 1;
}
