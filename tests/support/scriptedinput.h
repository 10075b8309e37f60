#pragma once
// Answers to prompts, questions and file dialogs, given by a test in advance.

#include <string>

#include "shell/userinput.h"
#include "support/scriptedquestions.h"

namespace velmora::test {

struct ScriptedInput : ScriptedAnswers<UserInput> {
    std::string openpath, savepath;
    std::string openfile(const std::string&) override { return openpath; }
    std::string savefile(const std::string&) override { return savepath; }
};

}  // namespace velmora::test
