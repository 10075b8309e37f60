#pragma once
// Questions the desktop program puts to the user: input prompts, yes/no questions and file
// dialogs. The windows answer them with dialogs; tests answer them from a script.

#include <optional>
#include <string>

namespace velmora {

class UserInput {
public:
    virtual ~UserInput() = default;
    // The answer, or nothing when the user cancelled.
    virtual std::optional<std::string> inputbox(const std::string& prompt, const std::string& defaultanswer) = 0;
    virtual bool askyesno(const std::string& question) = 0;
    // A file to read or to write, starting in `folder`; "" when none was chosen.
    virtual std::string openfile(const std::string& folder) = 0;
    virtual std::string savefile(const std::string& folder) = 0;
};

}  // namespace velmora
