#pragma once
// Questions the desktop program puts to the user: input prompts, yes/no questions and file
// dialogs. The windows answer them with dialogs; tests answer them from a script.

#include <string>

#include "core/events.h"

namespace velmora {

class UserInput : public Questions {
public:
    // A file to read or to write, starting in `folder`; "" when none was chosen.
    virtual std::string openfile(const std::string& folder) = 0;
    virtual std::string savefile(const std::string& folder) = 0;
};

}  // namespace velmora
