#include "devices/selectoption.h"

namespace velmora {

SelectOption::SelectOption(std::string heading1, std::string heading2, std::vector<std::string> options, int selected)
    : heading1_(std::move(heading1)), heading2_(std::move(heading2)), options_(std::move(options)), selected_(selected) {
    if (options_.size() > static_cast<size_t>(kMaxOptions)) options_.resize(kMaxOptions);
}

bool SelectOption::shown(int option) const {
    return option >= 0 && option < static_cast<int>(options_.size()) && !options_[option].empty();
}

std::vector<int> SelectOption::visiblerows() const {
    std::vector<int> rows;
    for (int i = 0; i < static_cast<int>(options_.size()); ++i)
        if (shown(i)) rows.push_back(i);
    return rows;
}

void SelectOption::click(int option) {
    if (shown(option)) selected_ = option;
}

void SelectOption::doubleclick(int option) {
    if (!shown(option)) return;
    selected_ = option;
    finished_ = true;
}

void SelectOption::select() { finished_ = true; }

void SelectOption::cancel() {
    selected_ = -1;
    finished_ = true;
}

}  // namespace velmora
