// Writes pictures of the main window, of every Microcontroller View drawing, of the
// Assembler and BASIC Compiler windows, of the LCD Module and of the memory windows, for a
// person to look at:
// velmora/tests/ui/screenshots OUTPUT-FOLDER.

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <clocale>
#include <cstdio>
#include <filesystem>

#include "shell/settingnames.h"
#include "shell/settingsstore.h"
#include "support/scriptedinput.h"
#include "ui/desktopsession.h"

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

int modelindex(MainWindowModel& model, const std::string& name) {
    const auto& list = model.simulation().models().models;
    for (size_t i = 0; i < list.size(); ++i)
        if (list[i].name == name) return static_cast<int>(i) + 1;
    return 0;
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
        model.simulation().modelselect(modelindex(model, name));
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
    model.simulation().modelselect(modelindex(model, "ATmega32"));
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
