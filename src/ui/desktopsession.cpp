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
    model_.optioncommands().analogdisplaychanged = [this] {
        if (view_) view_->refreshpic(true);
    };
}

DesktopSession::~DesktopSession() {
    if (view_) delete view_.data();
    if (assembler_) delete assembler_.data();
    if (basic_) delete basic_.data();
    if (lcd_) delete lcd_.data();
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
        if (raise(assembler_)) return;
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
        if (raise(basic_)) return;
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

bool DesktopSession::start() { return runstartup(model_, *window_); }

void DesktopSession::loadprogram(const std::string& path) {
    model_.loadprogramfile(path);
    window_->flush();
}

}  // namespace velmora
