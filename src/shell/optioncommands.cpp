#include "shell/optioncommands.h"

#include <algorithm>

#include "image/programcommands.h"
#include "shell/mainwindowmenus.h"
#include "shell/settingnames.h"
#include "shell/settingswitches.h"
#include "shell/settingvalues.h"

namespace velmora {

using namespace settingnames;

namespace {
void notify(const std::function<void()>& callback) {
    if (callback) callback();
}

std::string trimmed(const std::string& text) {
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}
}  // namespace

namespace {
constexpr char kUltimateRefresh[] = "menuultimaterefresh";

const PeripheralTime* findperipheraltime(const std::string& control) {
    for (const PeripheralTime& time : peripheraltimes())
        if (control == time.command) return &time;
    return nullptr;
}
}  // namespace

bool ischangecommand(const std::string& control) {
    return control == kUltimateRefresh || findperipheraltime(control) != nullptr;
}

void reverseregisters(Machine& m) {
    auto& table = m.namedregisters;
    const auto stack = std::ranges::find_if(table, [](const NamedRegister& r) { return r.address >= kHwStackPseudoAddress; });
    std::reverse(table.begin(), stack);
}

OptionCommands::OptionCommands(Simulation& sim, ShellOptions& options, SettingsAccess& settings,
                               Messenger& messenger, UserInput& input, WindowRegistry& registry)
    : sim_(sim), options_(options), settings_(settings), messenger_(messenger), input_(input), registry_(registry) {}

bool OptionCommands::refusedwhilerunning() {
    if (!sim_.machine().simulationrunning) return false;
    messenger_.show(kStopSimulationFirst, MessageKind::Exclamation);
    return true;
}

bool OptionCommands::toggle(const std::string& control) {
    const MenuItemDef* item = findmenuitem(control);
    if (!item || item->kind != MenuItemKind::Switch) return false;
    if (item->setting == kListIoFirst) {
        menuiofirst();
        return true;
    }
    const bool on = !options_.on(item->setting);
    options_.switches[item->setting] = on;
    writeswitch(settings_, item->setting, on);
    applyoptions(sim_.machine(), options_);
    if (item->setting == kUseVoltageForAnalogInputs || item->setting == kAnalogSliderMode)
        notify(analogdisplaychanged);
    return true;
}

void OptionCommands::menuiofirst() {
    if (registry_.isopen(windows::kAlternativeRegisters)) {
        messenger_.show(kCloseAlternativeFirst, MessageKind::Exclamation);
        return;
    }
    const bool on = !options_.on(kListIoFirst);
    options_.switches[kListIoFirst] = on;
    writeswitch(settings_, kListIoFirst, on);
    reverseregisters(sim_.machine());
    // The viewer's saved choice refers to positions in the old order.
    for (const char* name : {kAlternativeSfrModel, kAlternativeSfrList1, kAlternativeSfrList2})
        settings_.putsetting(name, "");
    notify(registerorderchanged);
}

void OptionCommands::menuclock() {
    if (refusedwhilerunning()) return;
    const auto answer = input_.inputbox(kClockPrompt, options_.clockfrequency);
    if (!answer) return;
    const std::string text = trimmed(*answer);
    if (!validclocktext(text)) return;
    setclock(text);
}

void OptionCommands::setclock(const std::string& text) {
    options_.clockfrequency = text;
    settings_.putsetting(kClockFrequency, text);
    applyoptions(sim_.machine(), options_);
    notify(clockchanged);
}

void OptionCommands::change(const std::string& control) {
    const AskNumber ask = [this](const std::string& prompt, const std::string& current) {
        return input_.inputbox(prompt, current);
    };
    if (const PeripheralTime* time = findperipheraltime(control)) {
        if (changeperipheraltime(sim_.machine(), settings_, messenger_, *time, ask) == TimeChange::Changed)
            notify(timingchanged);
        return;
    }
    if (control != kUltimateRefresh) return;
    const std::optional<int32_t> value =
        asknumberinrange(messenger_, ask, kUltimateRefreshPrompt, std::to_string(options_.ultimatetimer), kUltimateTimerLow,
                         kUltimateTimerHigh)
            .value;
    if (!value) return;
    options_.ultimatetimer = *value;
    settings_.putsetting(kUltimateTimer, settingtext(*value));
    notify(timingchanged);
}

void OptionCommands::menuunprogrammed() {
    options_.unprogrammedbit = options_.unprogrammedbit == 0 ? 1 : 0;
    settings_.putsetting(kUnprogrammedBitValue, settingtext(options_.unprogrammedbit));
    messenger_.show("Unprogrammed FLASH/EEPROM bit value changed to " + std::to_string(options_.unprogrammedbit) +
                        ".\nChanges will take effect after next program load.",
                    MessageKind::Information);
}

}  // namespace velmora
