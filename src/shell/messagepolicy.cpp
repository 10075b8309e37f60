#include "shell/messagepolicy.h"

#include <sstream>

#include "shell/settingnames.h"
#include "shell/settingswitches.h"

namespace velmora {

std::vector<std::string> confirmationlines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    std::string line;
    while (lines.size() < static_cast<size_t>(kConfirmationLines) && std::getline(in, line)) lines.push_back(line);
    return lines;
}

void MessagePolicy::show(const std::string& text, MessageKind kind) {
    if (kind == MessageKind::Critical || readswitch(settings_, settingnames::kShowConfirmations)) {
        display_.modalbox(kProductName, text, kind);
        return;
    }
    const int seconds =
        readnumber(settings_, settingnames::kMessageDuration, {kMessageDurationLow, kMessageDurationHigh});
    display_.confirmation(confirmationlines(text), seconds);
}

}  // namespace velmora
