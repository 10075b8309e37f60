#pragma once
// Answers to prompts and yes/no questions, given by a test in advance, for any interface
// that asks them (the windows' Questions, the shell's UserInput, the devices' dialogs).

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "core/events.h"

namespace velmora::test {

template <class Interface = Questions>
struct ScriptedAnswers : Interface {
    std::deque<std::optional<std::string>> answers;  // inputbox answers, in order; then cancel
    std::vector<std::string> prompts, defaults;
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
};

using ScriptedQuestions = ScriptedAnswers<>;

}  // namespace velmora::test
