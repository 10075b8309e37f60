#include "shell/optioncommands.h"

#include <algorithm>

#include "core/numbers.h"
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

const std::vector<ChangeCommandDef>& changecommands() {
    static const std::vector<ChangeCommandDef> commands = {
        {"menuwritetime", kEepromWriteTime, "Enter new EEPROM write time\n[us - microseconds].", 50, 20000,
         &ShellOptions::eepromwritetime},
        {"menuconversiontime", kAdConversionTime, "Enter new A/D conversion time\n[us - microseconds].", 10, 1000,
         &ShellOptions::adconversiontime},
        {"menuuarttime", kUartTime, "Enter new UART transmit/receive time\n[us - microseconds].", 50, 100000,
         &ShellOptions::uarttime},
        {"menuultimaterefresh", kUltimateTimer, "Enter new value for the Ultimate rate\nrefresh interval [ms].", 1,
         2000, &ShellOptions::ultimatetimer},
    };
    return commands;
}

const ChangeCommandDef* findchangecommand(const std::string& control) {
    for (const ChangeCommandDef& command : changecommands())
        if (control == command.control) return &command;
    return nullptr;
}

std::string allowedrangetext(const ChangeCommandDef& command) {
    return "Allowed range " + std::to_string(command.low) + "-" + std::to_string(command.high) + ".";
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
    options_.clockfrequency = text;
    settings_.putsetting(kClockFrequency, text);
    applyoptions(sim_.machine(), options_);
    notify(clockchanged);
}

void OptionCommands::change(const ChangeCommandDef& command) {
    if (refusedwhilerunning()) return;
    const auto answer = input_.inputbox(command.prompt, std::to_string(options_.*command.value));
    if (!answer || trimmed(*answer).empty()) return;
    const int64_t value = lenientdecimal(*answer);
    if (value < command.low || value > command.high) {
        messenger_.show(allowedrangetext(command), MessageKind::Exclamation);
        return;
    }
    options_.*command.value = static_cast<int32_t>(value);
    settings_.putsetting(command.setting, settingtext(static_cast<int32_t>(value)));
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
