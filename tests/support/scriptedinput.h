#pragma once
// Answers to prompts, questions and file dialogs, given by a test in advance.

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "shell/userinput.h"

namespace velmora::test {

struct ScriptedInput : UserInput {
    std::deque<std::optional<std::string>> answers;  // inputbox answers, in order
    std::vector<std::string> prompts, defaults;
    std::string openpath, savepath;
    bool yes = true;
    std::vector<std::string> questions;

    std::optional<std::string> inputbox(const std::string& prompt, const std::string& defaultanswer) override {
        prompts.push_back(prompt);
        defaults.push_back(defaultanswer);
        if (answers.empty()) return std::nullopt;
        auto answer = answers.front();
        answers.pop_front();
        return answer;
    }
    bool askyesno(const std::string& question) override {
        questions.push_back(question);
        return yes;
    }
    std::string openfile(const std::string&) override { return openpath; }
    std::string savefile(const std::string&) override { return savepath; }
};

}  // namespace velmora::test
