#pragma once
// Messages as the desktop shows them: a modal message box, or the Confirmation window.

#include <memory>
#include <string>

#include "shell/messagepolicy.h"
#include "ui/confirmationwindow.h"

namespace velmora {

class QtMessageDisplay : public MessageDisplay {
public:
    void modalbox(const std::string& title, const std::string& text, MessageKind kind) override;
    void confirmation(const std::vector<std::string>& lines, int seconds) override;

    ConfirmationWindow& confirmationwindow();
    // The text of the last message either way, for the tests of the windows.
    const std::string& lasttext() const { return last_; }
    int count() const { return count_; }

private:
    std::unique_ptr<ConfirmationWindow> window_;
    std::string last_;
    int count_ = 0;
};

}  // namespace velmora
