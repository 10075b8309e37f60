#include "devices/lcdwindow.h"

#include "devices/lcdbasic.h"
#include "devices/lcdpaint.h"

namespace velmora {

namespace {

const char* const kInterfaceCaptions[] = {"8-bit", "4-bit, High", "4-bit, Low"};
constexpr int kInterfaceValues[] = {kLcdInterface8, kLcdInterfaceHigh, kLcdInterfaceLow};

int interfaceindex(int interface) {
    for (int i = 0; i < 3; ++i)
        if (kInterfaceValues[i] == interface) return i;
    return 1;
}

std::string wiretext(const PinWire& wire) { return portname(wire.port) + ", " + std::to_string(wire.bit); }

struct DelayPrompt {
    const char* prompt;
    const char* defaultline;
    int LcdConfig::*value;
};
// The second lines keep the window's own spelling.
const DelayPrompt kDelayPrompts[] = {
    {"Please enter new initialization busy delay", "(defaule value: 1640 \xC2\xB5s)", &LcdConfig::busyinit},
    {"Please enter new command busy delay", "(defaule value: 42 \xC2\xB5s)", &LcdConfig::busycmd},
    {"Please enter new data busy delay", "(defaule value: 46 \xC2\xB5s)", &LcdConfig::busydata},
};

}  // namespace

LcdWindow::LcdWindow(Machine& m, SettingsAccess& settings, Messenger& messenger, WiringDialogs& dialogs)
    : m_(m), settings_(settings), messenger_(messenger), dialogs_(dialogs) {
    lcd_.changed = [this] {
        lcdstepphase(lcd_.state);
        cellsdirty_ = true;
    };
}

LcdWindow::~LcdWindow() { lcd_.detach(); }

void LcdWindow::open(const Paths& paths) {
    lcd_.config = loadlcdconfig(settings_);
    lcd_.tracepath = paths.trace;
    if (std::string error; !loadlcdrom(paths.data, lcd_.rom, error)) messenger_.show(error, MessageKind::Critical);
    if (const std::string basic = lcdbasicbeside(paths.program); !basic.empty() &&
        dialogs_.askyesno("Do you want to get LCD module parameters from the loaded basic program?")) {
        lcd_.config = lcdconfigfrombasicfile(basic, lcd_.config).value_or(lcd_.config);
        save();
    }
    setupopen_ = false;
    lcd_.initialise();
    reshape();
    if (!attached_) lcd_.attach(m_);
    attached_ = true;
}

void LcdWindow::close() {
    save();
    lcd_.detach();
    attached_ = false;
}

void LcdWindow::save() { savelcdconfig(settings_, lcd_.config); }

void LcdWindow::reshape() {
    const LcdColors& colours = kLcdColorSchemes[static_cast<size_t>(lcd_.config.colorscheme)];
    canvas_.resize(lcdpanelwidth(lcd_.config.chars), lcdpanelheight(lcd_.config.lines), colours.background);
    cellsdirty_ = true;
}

std::string LcdWindow::setuplabel(LcdSetupItem item) const {
    const LcdConfig& c = lcd_.config;
    switch (item) {
    case LcdSetupItem::Type: return "LCD Type: " + std::to_string(c.lines) + "x" + std::to_string(c.chars);
    case LcdSetupItem::DataLines: return "Data Lines ---> " + portname(c.dataport);
    case LcdSetupItem::Interface: return std::string("Interface: ") + kInterfaceCaptions[interfaceindex(c.interface)];
    case LcdSetupItem::Rs: return "RS Line ---> " + wiretext(c.rs);
    case LcdSetupItem::E: return "E Line ---> " + wiretext(c.e);
    case LcdSetupItem::Rw: return "R/W Line ---> " + (c.rw.connected() ? wiretext(c.rw) : std::string("Not Used"));
    case LcdSetupItem::Colors: return "Change LCD Module Color Scheme";
    case LcdSetupItem::Delays: return "Setup LCD Module Busy Delays";
    }
    return "";
}

void LcdWindow::clicksetupitem(LcdSetupItem item) {
    LcdConfig& c = lcd_.config;
    const auto choosepin = [this](PinWire& wire) {
        SelectPin dialog(wire.port, wire.bit, false);
        dialogs_.run(dialog);
        if (dialog.port() != 0) wire = PinWire{dialog.port(), dialog.bit()};
    };
    switch (item) {
    case LcdSetupItem::Type: {
        std::vector<std::string> captions;
        for (const LcdType& type : kLcdTypes) captions.push_back(type.caption);
        SelectOption dialog("Please select LCD module type:", "", captions, lcdtypeindex(c.lines, c.chars));
        dialogs_.run(dialog);
        if (dialog.selected() >= 0) applytype(dialog.selected());
        break;
    }
    case LcdSetupItem::DataLines: {
        SelectPin dialog(c.dataport, 0, true);
        dialogs_.run(dialog);
        if (dialog.port() != 0) c.dataport = dialog.port();
        break;
    }
    case LcdSetupItem::Interface: {
        SelectOption dialog("Please select the type", "of the interface with LCD module:",
                            {kInterfaceCaptions[0], kInterfaceCaptions[1], kInterfaceCaptions[2]},
                            interfaceindex(c.interface));
        dialogs_.run(dialog);
        if (dialog.selected() >= 0) c.interface = kInterfaceValues[dialog.selected()];
        break;
    }
    case LcdSetupItem::Rs: choosepin(c.rs); break;
    case LcdSetupItem::E: choosepin(c.e); break;
    case LcdSetupItem::Rw:
        if (c.rw.connected())
            c.rw = PinWire{};
        else
            choosepin(c.rw);
        break;
    case LcdSetupItem::Colors: {
        std::vector<std::string> names;
        for (const LcdColors& scheme : kLcdColorSchemes) names.push_back(scheme.name);
        SelectOption dialog("Please select", "LCD module color scheme:", names, c.colorscheme);
        dialogs_.run(dialog);
        if (dialog.selected() >= 0) {
            c.colorscheme = dialog.selected();
            reshape();
        }
        break;
    }
    case LcdSetupItem::Delays: setdelays(); break;
    }
    save();
}

void LcdWindow::applytype(int index) {
    const LcdType& type = kLcdTypes[static_cast<size_t>(index)];
    lcd_.config.lines = type.lines;
    lcd_.config.chars = type.chars;
    lcdclear(lcd_.state);
    reshape();
}

// All three entries must be good before any delay changes; a wrong one ends the sequence.
// Cancelling a prompt ends it too, silently.
void LcdWindow::setdelays() {
    LcdConfig entered = lcd_.config;
    for (const DelayPrompt& prompt : kDelayPrompts) {
        const auto answer = dialogs_.inputbox(std::string(prompt.prompt) + "\n" + prompt.defaultline,
                                              std::to_string(lcd_.config.*prompt.value));
        if (!answer) return;
        if (!parselcddelay(*answer, entered.*prompt.value)) {
            messenger_.show("Wrong entry!", MessageKind::Exclamation);
            return;
        }
    }
    lcd_.config = entered;
}

void LcdWindow::clickerror() {
    messenger_.show(
        "New command or data received while LCD was busy.\n"
        "LCD will not behave properly and probably display some garbage data.\n"
        "Appropriate delay interval in your program should be increased.",
        MessageKind::Exclamation);
    lcd_.error = false;
}

void LcdWindow::keypress(int keycode) {
    if (keycode == kLcdTraceKey) lcd_.tracing = true;
}

void LcdWindow::blinktick() {
    paint();
    const LcdColors& colours = kLcdColorSchemes[static_cast<size_t>(lcd_.config.colorscheme)];
    lcdcursortick(lcd_.state, lcd_.config.lines, lcd_.config.chars, colours, &lcd_.rom, canvas_);
    dirty_ = true;
}

bool LcdWindow::paint() {
    if (cellsdirty_) {
        cellsdirty_ = false;
        const LcdColors& colours = kLcdColorSchemes[static_cast<size_t>(lcd_.config.colorscheme)];
        lcdpaintcells(lcd_.state, lcd_.config.lines, lcd_.config.chars, colours, &lcd_.rom, canvas_);
        dirty_ = true;
    }
    if (errorshown_ != lcd_.error) {
        errorshown_ = lcd_.error;
        dirty_ = true;
    }
    const bool changed = dirty_;
    dirty_ = false;
    return changed;
}

}  // namespace velmora
