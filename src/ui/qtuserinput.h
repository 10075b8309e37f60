#pragma once
// Input boxes, yes/no questions and file dialogs of the desktop.

#include "shell/userinput.h"

class QWidget;

namespace velmora {

class QtUserInput : public UserInput {
public:
    std::optional<std::string> inputbox(const std::string& prompt, const std::string& defaultanswer) override;
    bool askyesno(const std::string& question) override;
    std::string openfile(const std::string& folder) override;
    std::string savefile(const std::string& folder) override;
};

}  // namespace velmora
