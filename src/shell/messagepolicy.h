#pragma once
// The one decision every message of the desktop program goes through: with "Show
// Confirmation Boxes" on a plain modal box titled with the program's name; with it off the
// small Confirmation window, which shows up to seven lines and goes away by itself after
// "Message Duration" seconds. Errors in files and stack faults (critical messages) are
// always modal.

#include <string>
#include <vector>

#include "core/events.h"

namespace velmora {

inline constexpr char kProductName[] = "Velmora";
inline constexpr int kConfirmationLines = 7;
// Seconds the Confirmation window may stay: an hour is more than anyone reads a line for.
inline constexpr int kMessageDurationLow = 1, kMessageDurationHigh = 3600;

// What draws the two kinds of message.
class MessageDisplay {
public:
    virtual ~MessageDisplay() = default;
    virtual void modalbox(const std::string& title, const std::string& text, MessageKind kind) = 0;
    virtual void confirmation(const std::vector<std::string>& lines, int seconds) = 0;
};

// The lines the Confirmation window shows: the text's first seven lines.
std::vector<std::string> confirmationlines(const std::string& text);

class MessagePolicy : public Messenger {
public:
    MessagePolicy(SettingsAccess& settings, MessageDisplay& display) : settings_(settings), display_(display) {}
    void show(const std::string& text, MessageKind kind) override;

private:
    SettingsAccess& settings_;
    MessageDisplay& display_;
};

}  // namespace velmora
