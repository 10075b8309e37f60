#include "ui/desktopsession.h"

#include "models/corepins.h"
#include "shell/settingnames.h"
#include "shell/settingsstore.h"

#include <filesystem>

namespace velmora {

DesktopSession::DesktopSession(SettingsAccess& settings, const std::string& datadirectory, UserInput* input,
                               WiringDialogs* wiring)
    : settings_(settings),
      messenger_(settings, display_),
      input_(input ? *input : qtinput_),
      asminput_(input ? *input : asmqtinput_),
      basicinput_(input ? *input : basicqtinput_),
      wiring_(input_),
      model_(ShellServices{settings, messenger_, input_, clock_}, datadirectory),
      pins_(makecorepins(model_.machine())),
      window_(std::make_unique<MainWindow>(model_)) {
    registerviews();
    registerassembler();
    registerbasiccompiler();
    registerlcd(wiring ? *wiring : wiring_);
    registermemorytools();
    registerdebugtools();
    model_.optioncommands().analogdisplaychanged = [this] {
        if (view_) view_->refreshpic(true);
    };
}

DesktopSession::~DesktopSession() {
    if (view_) delete view_.data();
    if (assembler_) delete assembler_.data();
    if (basic_) delete basic_.data();
    if (lcd_) delete lcd_.data();
    for (QWidget* tool : std::initializer_list<QWidget*>{programmemory_, eeprom_, stack_, alternative_, memoryusage_,
                                                         breakpoints_, special_, watch_})
        delete tool;
}

bool DesktopSession::raise(QWidget* window) {
    if (!window) return false;
    window->raise();
    window->activateWindow();
    return true;
}

MicrocontrollerViewWindow* DesktopSession::microcontrollerview() const { return view_.data(); }

void DesktopSession::registerviews() {
    for (const PackageLayout& layout : packagelayouts()) {
        WindowActions actions;
        actions.open = [this, layout] {
            if (view_ && !view_->unloaded() && view_->windownumber() == layout.window) {
                view_->raise();
                view_->activateWindow();
                return;
            }
            if (view_) view_->unload();
            view_ = new MicrocontrollerViewWindow(model_, *pins_, layout.window, layout.compact);
            QObject::connect(view_.data(), &MicrocontrollerViewWindow::analogchanged, window_.get(),
                             [this] { window_->flush(); });
            QObject::connect(window_.get(), &MainWindow::flushed, view_.data(),
                             [view = view_.data()] { view->refreshpic(); });
            window_->addtoolwindow(view_);
            view_->show();
        };
        actions.unload = [this, window = layout.window] {
            if (view_ && view_->windownumber() == window) view_->unload();
        };
        model_.registry().registerwindow(layout.window, actions);
    }
}

void DesktopSession::registerassembler() {
    WindowActions actions;
    actions.open = [this] {
        if (assembler_ && !assembler_->unloaded() && raise(assembler_)) return;
        assembler_ = new AssemblerWindowView(model_, asminput_, clock_);
        window_->addtoolwindow(assembler_);
        assembler_->show();
    };
    actions.unload = [this] {
        if (assembler_) assembler_->unload();
    };
    model_.registry().registerwindow(windows::kAssembler, actions);
}

void DesktopSession::registerbasiccompiler() {
    WindowActions actions;
    actions.open = [this] {
        if (basic_ && !basic_->unloaded() && raise(basic_)) return;
        basic_ = new BasicCompilerWindowView(model_, basicinput_, clock_);
        QObject::connect(window_.get(), &MainWindow::identityshown, basic_.data(),
                         [view = basic_.data()] { view->drawheader(); });
        QObject::connect(window_.get(), &MainWindow::flushed, basic_.data(),
                         [view = basic_.data()] { view->showmark(); });
        window_->addtoolwindow(basic_);
        basic_->show();
    };
    actions.unload = [this] {
        if (basic_) basic_->unload();
    };
    model_.registry().registerwindow(windows::kBasicCompiler, actions);
}

void DesktopSession::registerlcd(WiringDialogs& dialogs) {
    WindowActions actions;
    actions.open = [this, &dialogs] {
        if (lcd_ && !lcd_->unloaded() && raise(lcd_)) return;
        const std::filesystem::path folder = userdatafolder();
        const std::string trace = folder.empty() ? "" : (folder / "lcdlog.txt").string();
        if (!folder.empty()) {
            std::error_code ignored;
            std::filesystem::create_directories(folder, ignored);
        }
        lcd_ = new LcdWindowView(model_, dialogs, trace);
        QObject::connect(window_.get(), &MainWindow::flushed, lcd_.data(), [view = lcd_.data()] { view->refreshview(); });
        window_->addtoolwindow(lcd_);
        lcd_->show();
    };
    actions.unload = [this] {
        if (lcd_) lcd_->unload();
    };
    model_.registry().registerwindow(windows::kLcd, actions);
}

namespace {
// Opens a memory tool window, or brings the open one forward; it follows the main window's
// refresh, which comes after every load, reset and edit there.
template <typename View, typename Make>
WindowActions memorytool(QPointer<View>& view, MainWindow& window, Make make) {
    WindowActions actions;
    actions.open = [&view, &window, make] {
        if (view && !view->unloaded()) {
            view->raise();
            view->activateWindow();
            return;
        }
        view = make();
        QObject::connect(&window, &MainWindow::flushed, view.data(), [tool = view.data()] { tool->refreshview(); });
        window.addtoolwindow(view);
        view->show();
    };
    actions.unload = [&view] {
        if (view) view->unload();
    };
    return actions;
}
}  // namespace

void DesktopSession::registermemorytools() {
    WindowRegistry& registry = model_.registry();
    MainWindow& window = *window_;
    registry.registerwindow(windows::kProgramMemoryEditor, memorytool(programmemory_, window, [this] {
        auto* view = new ProgramMemoryWindow(model_);
        QObject::connect(view, &ProgramMemoryWindow::edited, window_.get(), [this] { window_->flush(); });
        return view;
    }));
    registry.registerwindow(windows::kEepromMemoryEditor,
                            memorytool(eeprom_, window, [this] { return new EepromWindow(model_); }));
    registry.registerwindow(windows::kStackViewer, memorytool(stack_, window, [this] { return new StackWindow(model_); }));
    registry.registerwindow(windows::kAlternativeRegisters,
                            memorytool(alternative_, window, [this] { return new AlternativeWindow(model_); }));

    // Data Memory Usage shows the last compile of the BASIC Compiler window.
    WindowActions usage;
    usage.open = [this] {
        if (!basic_) return;
        const BasicCompileResult& compile = basic_->model().lastbuild().compile;
        if (!compile.ok) return;
        const Machine& m = model_.machine();
        CompiledUsage data{compile.memoryusage, 96 + m.extendedio, m.sramsize, compile.outputwords, m.flashsize, {},
                           compile.totalinstructions};
        for (const InstructionCount& count : compile.statistics) data.statistics.push_back({count.mnemonic, count.count});
        if (memoryusage_ && !memoryusage_->unloaded()) {
            memoryusage_->setusage(std::move(data));
            raise(memoryusage_);
            return;
        }
        memoryusage_ = new DataMemoryUsageWindow(model_, std::move(data));
        window_->addtoolwindow(memoryusage_);
        memoryusage_->show();
    };
    usage.unload = [this] {
        if (memoryusage_) memoryusage_->unload();
    };
    registry.registerwindow(windows::kDataMemoryUsage, usage);
}

void DesktopSession::registerdebugtools() {
    WindowRegistry& registry = model_.registry();
    MainWindow& window = *window_;
    registry.registerwindow(windows::kBreakpointsManager,
                            memorytool(breakpoints_, window, [this] { return new BreakpointsWindow(model_); }));
    registry.registerwindow(windows::kSpecialBreakpoints,
                            memorytool(special_, window, [this] { return new SpecialBreakpointsWindow(model_); }));
    registry.registerwindow(windows::kWatchVariables,
                            memorytool(watch_, window, [this] { return new WatchWindow(model_); }));
}

bool DesktopSession::start() { return runstartup(model_, *window_); }

void DesktopSession::loadprogram(const std::string& path) {
    model_.loadprogramfile(path);
    window_->flush();
}

}  // namespace velmora
