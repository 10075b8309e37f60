#pragma once
// The Select Option dialog without its drawing: two heading lines and up to 21 option rows,
// of which only those with a text are shown. Every device window chooses its options here.

#include <string>
#include <vector>

namespace velmora {

class SelectOption {
public:
    static constexpr int kMaxOptions = 21;

    // Texts beyond the 21st are dropped; `selected` is the option shown selected at first.
    SelectOption(std::string heading1, std::string heading2, std::vector<std::string> options, int selected = 0);

    const std::string& heading1() const { return heading1_; }
    const std::string& heading2() const { return heading2_; }
    // With the second heading empty, the first takes the room of both.
    int headinglines() const { return heading2_.empty() ? 1 : 2; }
    const std::vector<std::string>& options() const { return options_; }
    // Numbers of the rows that have a text, in order: the rows the window shows.
    std::vector<int> visiblerows() const;
    // The selection; -1 after Cancel.
    int selected() const { return selected_; }
    bool finished() const { return finished_; }

    // Clicks on an empty or missing row do nothing.
    void click(int option);
    void doubleclick(int option);
    void select();  // Command1 "Select"
    void cancel();  // Command2 "Cancel"

private:
    bool shown(int option) const;

    std::string heading1_, heading2_;
    std::vector<std::string> options_;
    int selected_;
    bool finished_ = false;
};

}  // namespace velmora
