#pragma once
// Answers to the device windows' dialogs, given by a test in advance: a pin (port 0 cancels),
// an option (-1 cancels), input box answers and the yes/no answer.

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "devices/pinwire.h"
#include "devices/wiringdialogs.h"
#include "support/scriptedquestions.h"

namespace velmora::test {

struct ScriptedWiring : ScriptedAnswers<WiringDialogs> {
    std::deque<PinWire> pins;
    std::deque<int> options;
    std::vector<std::string> asked;  // captions, headings, prompts and questions in order

    void run(SelectPin& dialog) override {
        asked.push_back(dialog.caption());
        const PinWire pick = pins.empty() ? PinWire{} : pins.front();
        if (!pins.empty()) pins.pop_front();
        if (pick.port == 0) return dialog.cancel();
        dialog.clickport(pick.port);
        dialog.clickbit(pick.bit);
        dialog.select();
    }
    void run(SelectOption& dialog) override {
        asked.push_back(dialog.heading1() + "|" + dialog.heading2());
        const int pick = options.empty() ? -1 : options.front();
        if (!options.empty()) options.pop_front();
        if (pick < 0) return dialog.cancel();
        dialog.click(pick);
        dialog.select();
    }
    std::optional<std::string> inputbox(const std::string& prompt, const std::string& defaultanswer) override {
        asked.push_back(prompt + "|" + defaultanswer);
        return ScriptedAnswers::inputbox(prompt, defaultanswer);
    }
    bool askyesno(const std::string& question) override {
        asked.push_back(question);
        return ScriptedAnswers::askyesno(question);
    }
};

}  // namespace velmora::test
